#pragma once

#include <memory>
#include <vector>

#include "graph/multi/multi_view.hpp"
#include "plot/stack_overlay.hpp"
#include "ui/graph/graph_pictures.hpp"
#include "ui/graph/view_window.hpp"

class QPushButton;
class QScrollBar;

namespace velmora {
class StackWidget;
}  // namespace velmora

namespace velmora::ui {

class EventTable;
class GraphMenus;
class GraphStatusBar;
class MultiSidebar;

/// The window of the multi-axis graph: the stack with a scroll bar for what does not fit, and the sidebar.
class MultiWindow : public ViewWindow {
  Q_OBJECT

 public:
  MultiWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);
  ~MultiWindow() override;

  void Rest() override;
  [[nodiscard]] bool Fits() const override { return View() != nullptr; }
  [[nodiscard]] StackWidget& Plot() { return *plot_; }

 protected:
  void ShowView() override;
  [[nodiscard]] QString Hint() const override;
  [[nodiscard]] QWidget& HintPlace() const override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] MultiView* View() const;
  void AddBar();
  void AddButton(QLayout& bar, const char* name, const QString& caption, const char* id);
  void ConnectPlot();
  void ConnectEvents();
  void DragCursor(int graph, int cursor, double x);
  void DragThreshold(int graph, double y);
  void TakeThreshold(int graph);
  void ChooseEvent(int event);
  void SelectGraph(int graph);
  void EndDrag();
  void ShowScrolled();
  void LeaveMode();
  [[nodiscard]] bool IsDoubled(const QKeyEvent& event);

  CursorMove dragged_{0, 0.0, 0};
  ThresholdMove draggedLine_{0, 0.0};
  int lastKey_ = 0;
  qint64 lastKeyTime_ = 0;
  std::unique_ptr<GraphMenus> menus_;
  // Children of the window.
  StackWidget* plot_ = nullptr;
  QScrollBar* scroll_ = nullptr;
  MultiSidebar* sidebar_ = nullptr;
  EventTable* events_ = nullptr;
  GraphStatusBar* status_ = nullptr;
  QPushButton* windowButton_ = nullptr;
  std::vector<std::pair<TrackMode, QPushButton*>> modes_;
  GraphPictures pictures_;
};

}  // namespace velmora::ui
