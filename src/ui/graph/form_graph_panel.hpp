#pragma once

#include <QWidget>
#include <memory>

#include "core/questions/form_graph.hpp"
#include "graph/drawn_form_graph.hpp"

class QLabel;

namespace velmora {
class GraphWidget;
struct GraphRange;
}  // namespace velmora

namespace velmora::ui {

/// The graph of a form under the mouse, with the wheel, drag and double click of the other graphs, and
/// below it what lies under the pointer. What a person zoomed to stays until the form asks for other
/// ranges.
class FormGraphPanel : public QWidget {
 public:
  explicit FormGraphPanel(QWidget* parent = nullptr);

  void Show(const FormGraph& graph);
  /// Of the plot, in pixels; 360 unless told.
  void SetLeastHeight(int height);

 private:
  void ShowRange(const GraphRange& range);
  void ShowWhole();
  void ShowPlace(double x, double y);

  FormGraph shown_;
  std::unique_ptr<DrawnFormGraph> drawn_;
  // Children.
  GraphWidget* plot_;
  QLabel* place_;
};

}  // namespace velmora::ui
