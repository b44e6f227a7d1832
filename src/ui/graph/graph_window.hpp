#pragma once

#include <memory>

#include "graph/single_view.hpp"
#include "ui/graph/graph_pictures.hpp"
#include "ui/graph/view_window.hpp"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace velmora {
class GraphWidget;
}  // namespace velmora

namespace velmora::ui {

class CursorValuesPanel;
class GraphBar;
class GraphMenus;
class GraphSidebar;
class GraphStatusBar;

/// The window of the single-axis graph.
class GraphWindow : public ViewWindow {
  Q_OBJECT

 public:
  GraphWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);
  ~GraphWindow() override;

  void Rest() override;
  [[nodiscard]] bool Fits() const override { return View() != nullptr; }
  [[nodiscard]] GraphWidget& Plot() { return *plot_; }

 protected:
  void ShowView() override;
  [[nodiscard]] QString Hint() const override;
  [[nodiscard]] QWidget& HintPlace() const override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // graph_window.cpp
  [[nodiscard]] SingleView* View() const;
  void ConnectPlot();
  void DragCursor(int cursor, double x);
  void EndDrag();
  void LeaveMode();
  bool StepByArrow(const KeyPress& key);
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
  std::unique_ptr<GraphMenus> menus_;
  std::unique_ptr<GraphBar> bar_;
  // Children of the window.
  GraphWidget* plot_ = nullptr;
  GraphStatusBar* status_ = nullptr;
  GraphSidebar* sidebar_ = nullptr;
  CursorValuesPanel* values_ = nullptr;
  QPushButton* windowButton_ = nullptr;
  QPushButton* pointsButton_ = nullptr;
  QLabel* trial_ = nullptr;
  QLabel* countCaption_ = nullptr;
  QLabel* count_ = nullptr;
  QLabel* intervalCaption_ = nullptr;
  QLabel* interval_ = nullptr;
  GraphPictures pictures_;
};

}  // namespace velmora::ui
