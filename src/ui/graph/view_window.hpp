#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>

#include "core/action_listener.hpp"
#include "core/command.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "graph/graph_view.hpp"

class QLabel;
class QMenu;

namespace velmora::ui {

class GraphPictures;

/// The window of the graph that is open in `workbench.view`; one class a kind of graph.
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
  virtual void Rest() = 0;
  void Refresh();
  /// Whether the view that is open is of the kind that this window shows.
  [[nodiscard]] virtual bool Fits() const = 0;

 Q_SIGNALS:
  void Changed();

 protected:
  ViewWindow(Workbench& workbench, Run run, QWidget* parent);

  /// Everything of the view that is open, which fits.
  virtual void ShowView() = 0;
  /// What the first graph of a session tells of itself, and where.
  [[nodiscard]] virtual QString Hint() const = 0;
  [[nodiscard]] virtual QWidget& HintPlace() const = 0;

  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

  /// nullptr while the view that is open does not fit.
  [[nodiscard]] GraphView* View() const;
  void RunCommand(const Command& command);
  void RunById(const char* id);
  /// What a person does in the view without a command: heard by whoever writes down what was done, and
  /// never the end of the program.
  void Act(const Action& action, const std::function<void()>& work);
  /// Pictures, the way to the main window, and the exit.
  void AddFileEntries(QMenu* file, GraphPictures& pictures);
  void ShowTitle();

  Workbench& workbench_;

 private:
  static constexpr Qt::Key kTurnKey = Qt::Key_F12;  // to the graph and back

  void ConnectParent();
  void ShowHint();
  void PlaceHint();

  Run run_;
  const OpenView* bound_ = nullptr;  // the view that was shown last
  bool closing_ = false;
  QPointer<QLabel> hint_;  // gone after a while
};

/// A window for the view that is open.
ViewWindow* MakeViewWindow(Workbench& workbench, ViewWindow::Run run, QWidget* parent);

}  // namespace velmora::ui
