#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>

#include "core/action_listener.hpp"
#include "core/command.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "graph/graph_view.hpp"
#include "ui/graph/graph_bar.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_pictures.hpp"
#include "ui/graph/key_names.hpp"

class QLabel;

namespace velmora {
class DrawnPlot;
struct GraphRange;
}  // namespace velmora

namespace velmora::ui {

class GraphStatusBar;

/// The window of the graph that is open in `workbench.view`; one class a kind of graph. What they have in
/// common is here: menus, bar and status of the graph, its pictures, keys, clicks, the way in and out.
///
/// Whoever opens it:
///  - makes one with MakeViewWindow when there is a view after a command and no window yet, and shows
///    it with ShowGraph; it deletes itself when it is closed (keep a QPointer);
///  - calls Rest before every command that runs elsewhere, since samples and the view itself may go while
///    it runs, and Refresh after it: the window then shows the trial as it is, takes over another view of
///    its kind, or closes when there is none;
///  - runs the commands that the window hands out, as those of its own menus; the window refreshes
///    itself after each;
///  - on Changed shows the trial anew: a key or the mouse moved cursors, or cropped.
/// Closing the window closes the view by the command "view.exit", which may be called off.
class ViewWindow : public QMainWindow {
  Q_OBJECT

 public:
  using Run = std::function<void(const Command&)>;

  /// Shows the window as large as the view wants it.
  void ShowGraph();
  /// Lets go of the view; the last picture stays until Refresh.
  void Rest();
  void Refresh();
  /// Whether the view that is open is of the kind that this window shows.
  [[nodiscard]] bool Fits() const { return View() != nullptr; }
  [[nodiscard]] virtual DrawnPlot& Plot() const = 0;

 Q_SIGNALS:
  void Changed();

 protected:
  /// What differs from the start.
  struct Kind {
    const char* name;  // of the window
    QString hint;      // what the first graph of a session tells of itself
    void (*addMenus)(GraphMenus& menus, QMenuBar* bar);
    KeysHeld keys = KeysHeld::Paging;
  };
  ViewWindow(Workbench& workbench, Run run, QWidget* parent, const Kind& kind);
  /// The last of making one, when everything stands in it.
  void Begin(const QSize& size);

  /// nullptr while the view that is open is of another kind.
  [[nodiscard]] virtual GraphView* View() const = 0;
  /// Everything of the view that is open, which fits.
  void ShowView();
  /// Has the plot draw the view, and shows what stands beside it.
  virtual void ShowGraphs() = 0;
  /// Returns whether the window answers a key itself, in place of the view and the bar.
  virtual bool TakeKey(const KeyPress& key, const QKeyEvent& event) = 0;

  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  void RunCommand(const Command& command);
  void RunById(const char* id);
  /// What a person does in the view without a command: heard by whoever writes down what was done, and
  /// never the end of the program.
  void Act(const Action& action, const std::function<void()>& work);
  void Click(int graph, Clicked how);
  /// What the mouse chose of a graph's axes.
  void ShowRange(int graph, const GraphRange& range);

  Workbench& workbench_;
  GraphMenus menus_;
  GraphBar bar_;
  GraphStatusBar* status_;  // a child of the window

 private:
  static constexpr Qt::Key kTurnKey = Qt::Key_F12;  // to the graph and back

  void ConnectParent();
  /// Pictures, the way to the main window, and the exit.
  void AddFileEntries(QMenu* file);
  void LeaveMode();
  void ShowTitle();
  void ShowHint();
  void PlaceHint();

  Run run_;
  GraphPictures pictures_;
  QString hintText_;
  KeysHeld keys_;
  const OpenView* bound_ = nullptr;  // the view that was shown last
  bool closing_ = false;
  QPointer<QLabel> hint_;  // gone after a while
};

/// A window for the view that is open.
ViewWindow* MakeViewWindow(Workbench& workbench, ViewWindow::Run run, QWidget* parent);

}  // namespace velmora::ui
