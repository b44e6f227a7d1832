#pragma once

#include "graph/multi/multi_view.hpp"
#include "plot/stack_widget.hpp"
#include "ui/graph/view_window.hpp"

class QScrollBar;

namespace velmora::ui {

class EventTable;
class MultiSidebar;

/// The window of the multi-axis graph: the stack with a scroll bar for what does not fit, and the sidebar.
class MultiWindow : public ViewWindow {
  Q_OBJECT

 public:
  MultiWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);

  [[nodiscard]] StackWidget& Plot() const override { return *plot_; }

 protected:
  [[nodiscard]] MultiView* View() const override { return dynamic_cast<MultiView*>(workbench_.view.get()); }
  void ShowGraphs() override;
  bool TakeKey(const KeyPress& key, const QKeyEvent& event) override;

 private:
  void AddBar();
  void ConnectPlot();
  void ConnectEvents();
  void DragCursor(int graph, int cursor, double x);
  void DragThreshold(int graph, double y);
  void TakeThreshold(int graph);
  void ChooseEvent(int event);
  void SelectGraph(int graph);
  void EndDrag();
  void ShowScrolled();
  [[nodiscard]] bool IsDoubled(const QKeyEvent& event);

  CursorMove dragged_{0, 0.0, 0};
  ThresholdMove draggedLine_{0, 0.0};
  int lastKey_ = 0;
  qint64 lastKeyTime_ = 0;
  // Children of the window.
  StackWidget* plot_ = nullptr;
  QScrollBar* scroll_ = nullptr;
  MultiSidebar* sidebar_ = nullptr;
  EventTable* events_ = nullptr;
};

}  // namespace velmora::ui
