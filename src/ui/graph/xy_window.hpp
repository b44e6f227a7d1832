#pragma once

#include "graph/xy/xy_view.hpp"
#include "plot/graph_widget.hpp"
#include "ui/graph/view_window.hpp"

namespace velmora::ui {

/// The window of the X-Y plot.
class XYWindow : public ViewWindow {
  Q_OBJECT

 public:
  XYWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);

  [[nodiscard]] GraphWidget& Plot() const override { return *plot_; }

 protected:
  [[nodiscard]] XYView* View() const override { return dynamic_cast<XYView*>(workbench_.view.get()); }
  void ShowGraphs() override;
  bool TakeKey(const KeyPress& key, const QKeyEvent& event) override;

 private:
  void AddBar();
  void ConnectPlot();
  void Pick(double x, double y);

  GraphWidget* plot_;  // a child of the window
};

}  // namespace velmora::ui
