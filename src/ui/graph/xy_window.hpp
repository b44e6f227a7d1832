#pragma once

#include <memory>

#include "graph/xy/xy_view.hpp"
#include "ui/graph/graph_pictures.hpp"
#include "ui/graph/view_window.hpp"

class QPushButton;

namespace velmora {
class GraphWidget;
}  // namespace velmora

namespace velmora::ui {

class GraphBar;
class GraphMenus;
class GraphStatusBar;

/// The window of the X-Y plot.
class XYWindow : public ViewWindow {
  Q_OBJECT

 public:
  XYWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);
  ~XYWindow() override;

  void Rest() override;
  [[nodiscard]] bool Fits() const override { return View() != nullptr; }
  [[nodiscard]] GraphWidget& Plot() { return *plot_; }

 protected:
  void ShowView() override;
  [[nodiscard]] QString Hint() const override;
  [[nodiscard]] QWidget& HintPlace() const override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] XYView* View() const;
  void AddBar();
  void ConnectPlot();
  void Pick(double x, double y);
  void LeaveMode();

  std::unique_ptr<GraphMenus> menus_;
  std::unique_ptr<GraphBar> bar_;
  // Children of the window.
  GraphWidget* plot_ = nullptr;
  GraphStatusBar* status_ = nullptr;
  QPushButton* windowButton_ = nullptr;
  GraphPictures pictures_;
};

}  // namespace velmora::ui
