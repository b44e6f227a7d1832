#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>

#include "core/action_listener.hpp"
#include "core/command.hpp"
#include "core/workbench.hpp"
#include "graph/single_view.hpp"
#include "ui/graph/graph_pictures.hpp"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace velmora {
class GraphWidget;
struct GraphRange;
}  // namespace velmora

namespace velmora::ui {

class CursorValuesPanel;
class GraphMenus;
class GraphSidebar;
class GraphStatusBar;

/// The window of the single-axis graph that is open in `workbench.view`.
///
/// Whoever opens it:
///  - makes one when `workbench.view` is a SingleView after a command and there is none yet, and shows
///    it with ShowGraph; it deletes itself when it is closed (keep a QPointer);
///  - calls Rest before every command that runs elsewhere, since samples and the view itself may go while
///    it runs, and Refresh after it: the window then shows the trial as it is, takes over another view,
///    or closes when the view is gone;
///  - runs the commands that the window hands out, as those of its own menus; the window refreshes
///    itself after each;
///  - on Changed shows the trial anew: a key or the mouse moved cursors, or cropped.
/// Closing the window closes the view by the command "view.exit".
class GraphWindow : public QMainWindow {
  Q_OBJECT

 public:
  using Run = std::function<void(const Command&)>;

  GraphWindow(Workbench& workbench, Run run, QWidget* parent = nullptr);
  ~GraphWindow() override;

  /// Shows the window as large as the view wants it.
  void ShowGraph();
  /// Lets go of the view; the last picture stays until Refresh.
  void Rest();
  void Refresh();
  [[nodiscard]] GraphWidget& Plot() { return *plot_; }

 Q_SIGNALS:
  void Changed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  // graph_window.cpp
  [[nodiscard]] SingleView* View() const;
  void RunCommand(const Command& command);
  void RunById(const char* id);
  template <typename Work>
  void Act(const Action& action, const Work& work);
  void ConnectPlot();
  void ConnectParent();
  void DragCursor(int cursor, double x);
  void EndDrag();
  void LeaveMode();
  bool StepByArrow(const KeyPress& key);
  void ShowState(const SingleView& view);
  void ShowCursors();
  void FitSidebar();

  // graph_window_bars.cpp
  void AddBar();
  struct BarButton;
  QPushButton* AddButton(QLayout& bar, const BarButton& button);
  void Caption(QPushButton& button, const QString& caption) const;
  bool PressBarKey(const KeyPress& key);
  void AddModes(QLayout& bar);
  void AddReadOuts(QHBoxLayout& bar);
  void AddFileEntries();
  void ShowHint();
  static constexpr Qt::Key kTurnKey = Qt::Key_F12;  // to the graph and back
  void PlaceHint();

  Workbench& workbench_;
  Run run_;
  const OpenView* bound_ = nullptr;  // the view that was shown last
  int dragged_ = 0;
  int active_ = 1;  // the cursor that arrows move
  bool closing_ = false;
  bool sidebarMoved_ = false;  // by hand
  std::unique_ptr<GraphMenus> menus_;
  // Children of the window.
  GraphWidget* plot_ = nullptr;
  GraphStatusBar* status_ = nullptr;
  GraphSidebar* sidebar_ = nullptr;
  CursorValuesPanel* values_ = nullptr;
  QPushButton* windowButton_ = nullptr;
  QPushButton* pointsButton_ = nullptr;
  std::map<std::string, QPushButton*> barKeys_;  // that the view itself has no use for
  std::vector<std::pair<TrackMode, QPushButton*>> modes_;
  QLabel* trial_ = nullptr;
  QLabel* countCaption_ = nullptr;
  QLabel* count_ = nullptr;
  QLabel* intervalCaption_ = nullptr;
  QLabel* interval_ = nullptr;
  QPointer<QLabel> hint_;  // gone after a while
  GraphPictures pictures_;
};

}  // namespace velmora::ui
