#pragma once

#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QtWidgets>
#include <deque>
#include <functional>
#include <stdexcept>

namespace velmora::test {

/// Somebody at the window: waits for what is expected to appear and then acts on it with mouse and keys,
/// also while the program waits for an answer.
class Person {
 public:
  using Act = std::function<void(QWidget*)>;

  Person() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
    timer_.start(15);
  }

  /// When a visible window has this title or object name, acts on it. In the order of the calls.
  void When(const QString& window, Act act) { expected_.push_back({window, std::move(act)}); }

  /// Serves the program until everything expected has come. Throws when it does not come in time.
  void Work(int milliseconds = 20000) {
    if (!QTest::qWaitFor([this] { return expected_.empty() && acting_ == 0; }, milliseconds)) {
      throw std::runtime_error("waited in vain for \"" + expected_.front().window.toStdString() +
                               "\"; there is " + Titles().toStdString());
    }
    QTest::qWait(30);
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
    QWidget* editor = table->viewport()->findChild<QLineEdit*>();
    if (editor == nullptr) {
      throw std::runtime_error("the cell cannot be edited");
    }
    static_cast<QLineEdit*>(editor)->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
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

  void Look() {
    if (expected_.empty()) {
      return;
    }
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const Expected& next = expected_.front();
      const bool found = window->windowTitle() == next.window || window->objectName() == next.window;
      QWidget* modal = QApplication::activeModalWidget();
      if (window->isVisible() && found && (modal == nullptr || modal == window)) {
        const Act act = next.act;
        expected_.pop_front();
        ++acting_;
        act(window);
        --acting_;
        return;
      }
    }
  }

  QTimer timer_;
  std::deque<Expected> expected_;
  int acting_ = 0;
};

}  // namespace velmora::test
