#pragma once

#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QtWidgets>
#include <deque>
#include <functional>
#include <stdexcept>

#include "ui/waiting.hpp"

namespace velmora::test {

/// The visible windows of a class, or with this object name.
template <typename Window = QWidget>
QList<Window*> VisibleWindows(const QString& name = {}) {
  QList<Window*> visible;
  for (QWidget* top : QApplication::topLevelWidgets()) {
    auto* window = qobject_cast<Window*>(top);
    if (window != nullptr && window->isVisible() && (name.isEmpty() || window->objectName() == name)) {
      visible << window;
    }
  }
  return visible;
}

/// An entry of a window's menus by the command that it runs.
inline void ChooseIn(QWidget& window, const char* id) {
  auto* action = window.findChild<QAction*>(QString::fromUtf8(id));
  if (action == nullptr || !action->isEnabled()) {
    throw std::runtime_error(std::string("cannot be chosen: ") + id);
  }
  action->trigger();
  QApplication::processEvents();
}

/// Files are dropped in the middle of a widget.
inline void DropFiles(QWidget* widget, const std::vector<std::string>& paths) {
  QMimeData files;
  QList<QUrl> urls;
  for (const std::string& path : paths) {
    urls << QUrl::fromLocalFile(QString::fromStdString(path));
  }
  files.setUrls(urls);
  const QPoint middle = widget->rect().center();
  QDragEnterEvent enter(middle, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &enter);
  if (!enter.isAccepted()) {
    throw std::runtime_error("files are not taken");
  }
  QDropEvent drop(middle, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(widget, &drop);
}

/// Somebody at the window: waits for what is expected to appear and then acts on it with mouse and keys,
/// also while the program waits for an answer.
class Person {
 public:
  using Act = std::function<void(QWidget*)>;

  Person() { Arm(); }

  /// When a visible window has this title, object name or class, acts on it. In the order of the calls.
  void When(const QString& window, Act act) {
    expected_.push_back({window, std::move(act)});
    waiting_.restart();
  }

  /// The same for the next window of this class.
  template <typename Dialog>
  void WhenA(Act act) {
    When(QString::fromUtf8(Dialog::staticMetaObject.className()), std::move(act));
  }

  /// Serves the program until everything expected has come. Throws what went wrong meanwhile, and when
  /// something does not come in time.
  void Work() {
    const bool done = QTest::qWaitFor(
        [this] { return (expected_.empty() && acting_ == 0) || !fault_.empty(); }, 2 * kPatience);
    QApplication::processEvents();
    if (!done || !fault_.empty()) {
      throw std::runtime_error(std::exchange(fault_, {}));
    }
  }

  /// The button with this caption, without regard to '&'.
  static void Press(QWidget* in, const QString& caption) {
    for (auto* button : in->findChildren<QAbstractButton*>()) {
      if (QString(button->text()).remove('&') == caption && button->isVisible()) {
        QTest::mouseClick(button, Qt::LeftButton);
        return;
      }
    }
    throw std::runtime_error("no button " + caption.toStdString());
  }

  /// Types a value into a cell of a table.
  static void TypeCell(QTableView* table, int row, int column, const QString& text) {
    const QModelIndex index = table->model()->index(row, column);
    table->scrollTo(index);
    table->setCurrentIndex(index);
    table->edit(index);
    QLineEdit* editor = nullptr;
    for (auto* line : table->viewport()->findChildren<QLineEdit*>()) {
      editor = line->isVisible() ? line : editor;
    }
    if (editor == nullptr) {
      throw std::runtime_error("the cell cannot be edited");
    }
    editor->selectAll();
    QTest::keyClicks(editor, text);
    const QPointer<QLineEdit> open = editor;
    QTest::keyClick(editor, Qt::Key_Return);
    if (!WaitFor([&open] { return open == nullptr || !open->isVisible(); })) {
      throw std::runtime_error("the cell does not take " + text.toStdString());
    }
  }

  static void DoubleClickCell(QAbstractItemView* view, const QModelIndex& index) {
    view->scrollTo(index);
    const QPoint at = view->visualRect(index).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
  }

 private:
  struct Expected {
    QString window;
    Act act;
  };

  static QString Titles() {
    QStringList titles;
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->isVisible()) {
        titles << window->windowTitle() + QStringLiteral(" (") + window->objectName() + QStringLiteral(")");
      }
    }
    return titles.join(QStringLiteral(", "));
  }

  // Armed anew before each look: a timer does not fire again while what it set off still goes on.
  void Arm() {
    QTimer::singleShot(15, &context_, [this] {
      Arm();
      Look();
    });
  }

  void Look() {
    if (!fault_.empty()) {
      LeaveAll();
    } else if (QWidget* window = Appeared()) {  // before patience: on a busy machine both may come at once
      Do(window);
    } else if (waiting_.isValid() && waiting_.hasExpired(kPatience) && Stuck()) {
      const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      fault_ = (box != nullptr ? box->text().toStdString() + ": " : std::string()) + "waited in vain for \"" +
               (expected_.empty() ? "its end" : expected_.front().window.toStdString()) + "\"; there is " +
               Titles().toStdString();
    }
  }

  // What is expected does not come, or a dialogue that was acted on does not go.
  [[nodiscard]] bool Stuck() const {
    return !expected_.empty() || (acting_ == 0 && QApplication::activeModalWidget() != nullptr);
  }

  // A window behind one that waits for an answer cannot be acted on.
  QWidget* Appeared() const {
    if (expected_.empty()) {
      return nullptr;
    }
    const QString& name = expected_.front().window;
    QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const bool found = window->windowTitle() == name || window->objectName() == name ||
                         name == QString::fromUtf8(window->metaObject()->className());
      if (window->isVisible() && found && (modal == nullptr || modal == window)) {
        return window;
      }
    }
    return nullptr;
  }

  void Do(QWidget* window) {
    const Act act = expected_.front().act;
    expected_.pop_front();
    waiting_.restart();
    ++acting_;
    try {
      act(window);
    } catch (const std::exception& error) {  // must not pass through the event loop
      fault_ = error.what();
    }
    --acting_;
  }

  // After a fault: out of every dialogue, so that the test can end.
  void LeaveAll() {
    expected_.clear();
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box != nullptr && box->windowTitle() == QStringLiteral("Confirm Exit")) {
      box->button(QMessageBox::Yes)->click();
    } else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
      dialog->reject();
      return;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {  // one that waits without being modal
      if (auto* dialog = qobject_cast<QDialog*>(window); dialog != nullptr && dialog->isVisible()) {
        dialog->reject();
      }
    }
  }

  QObject context_;
  std::deque<Expected> expected_;
  QElapsedTimer waiting_;
  std::string fault_;
  int acting_ = 0;
};

}  // namespace velmora::test
