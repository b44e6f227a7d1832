#pragma once

#include "graph/single_view.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/view_window.hpp"

class QHBoxLayout;

namespace velmora::ui {

class CursorValuesPanel;
class GraphSidebar;

/// The window of the single-axis graph.
class GraphWindow : public ViewWindow {
  Q_OBJECT

 public:
  GraphWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);

  [[nodiscard]] GraphWidget& Plot() const override { return *plot_; }

 protected:
  [[nodiscard]] SingleView* View() const override { return dynamic_cast<SingleView*>(workbench_.view.get()); }
  void ShowGraphs() override;
  bool TakeKey(const KeyPress& key, const QKeyEvent& event) override;

 private:
  // graph_window.cpp
  void ConnectPlot();
  void DragCursor(int cursor, double x);
  void EndDrag();
  void ShowState(const SingleView& view);
  void DrawBeside(SingleView::Redraw what);
  void ShowCursors();
  void FitSidebar();

  // graph_window_bars.cpp
  void AddBar();
  void AddReadOuts(QHBoxLayout& bar);

  int dragged_ = 0;
  int active_ = 1;             // the cursor that arrows move
  bool sidebarMoved_ = false;  // by hand
  // Children of the window.
  GraphWidget* plot_ = nullptr;
  GraphSidebar* sidebar_ = nullptr;
  CursorValuesPanel* values_ = nullptr;
  QPushButton* pointsButton_ = nullptr;
  QLabel* trial_ = nullptr;
  QLabel* countCaption_ = nullptr;
  QLabel* count_ = nullptr;
  QLabel* intervalCaption_ = nullptr;
  QLabel* interval_ = nullptr;
};

}  // namespace velmora::ui
