#pragma once

#include <cstdio>
#include <deque>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/command_table.hpp"
#include "ui/main/main_window.hpp"
#include "ui/person.hpp"

// Somebody who walks through the program and keeps pictures of its windows.
namespace velmora::pictures {

namespace fs = std::filesystem;

class Photographer {
 public:
  Photographer(ui::MainWindow& window, fs::path to, QString suffix)
      : window_(window), to_(std::move(to)), suffix_(std::move(suffix)) {}

  void Keep(QWidget* shown, const char* name) {
    QTest::qWait(120);
    Store(shown->grab().toImage(), name);
  }

  /// Two windows as they stand on the screen, `front` above.
  void KeepScreen(QWidget& front, QWidget& behind, const char* name) {
    QTest::qWait(120);
    const QRect all = front.geometry() | behind.geometry();
    QImage image(all.size(), QImage::Format_RGB32);
    image.fill(front.palette().color(QPalette::Mid));
    QPainter painter(&image);
    for (QWidget* window : {&behind, &front}) {
      painter.drawPixmap(window->geometry().topLeft() - all.topLeft(), window->grab());
    }
    painter.end();
    Store(image, name);
  }

  /// Runs a command and keeps its dialogue, which `fill` may work on first and `leave` leaves.
  void Dialogue(const char* id, const QString& window, const char* name, const QString& leave,
                const test::Person::Act& fill = {}) {
    person_.When(window, [this, name, leave, fill](QWidget* dialog) {
      if (fill) {
        fill(dialog);
      }
      Keep(dialog, name);
      test::Person::Press(dialog, leave);
    });
    window_.RunCommand(*FindCommand(id));
    person_.Work();
  }

  test::Person& Helper() { return person_; }

 private:
  void Store(const QImage& image, const char* name) const {
    const QString path = QString::fromStdString((to_ / name).string()) + QStringLiteral("-") + suffix_ +
                         QStringLiteral(".png");
    if (!image.save(path)) {
      throw std::runtime_error("cannot write " + path.toStdString());
    }
    std::printf("%s\n", path.toUtf8().constData());
  }

  ui::MainWindow& window_;
  fs::path to_;
  QString suffix_;
  test::Person person_;
};

inline QWidget* WindowOf(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->objectName() == QString::fromLatin1(name)) {
      return window;
    }
  }
  throw std::runtime_error(std::string("there is no ") + name);
}

inline void Choose(QWidget* dialog, const QString& choice) {
  for (auto* button : dialog->findChildren<QRadioButton*>()) {
    if (button->text().remove('&') == choice) {
      button->click();
      return;
    }
  }
  for (auto* list : dialog->findChildren<QComboBox*>()) {
    const int row = list->findText(choice);
    if (row >= 0) {
      list->setCurrentIndex(row);
      Q_EMIT list->activated(row);
      return;
    }
  }
  throw std::runtime_error("no choice " + choice.toStdString());
}

inline void PickRow(QWidget* dialog, int row) {
  auto* table = dialog->findChild<QTableView*>();
  table->setCurrentIndex(table->model()->index(row, 0));
  QTest::keyClick(table, Qt::Key_Space);
}

inline void Type(QWidget* dialog, const char* field, const QString& text) {
  auto* line = dialog->findChild<QLineEdit*>(QString::fromUtf8(field));
  dialog->activateWindow();
  line->setFocus();
  if (!test::WaitFor([line] { return line->hasFocus(); })) {
    throw std::runtime_error(std::string("nothing can be typed into ") + field);
  }
  line->selectAll();
  QTest::keyClicks(line, text);
  QTest::keyClick(line, Qt::Key_Tab);
}

inline void Tick(QWidget* dialog, const char* field) {
  dialog->findChild<QCheckBox*>(QString::fromUtf8(field))->click();
}

/// What a person does in one dialogue after the other: works in it, keeps a picture, presses a button.
struct DialogueStep {
  QString window;
  const char* press;
  const char* picture = nullptr;
  test::Person::Act act{};
};

// A dialogue may ask anew at once: the next step is taken once the one before is over.
inline void Follow(Photographer& photographer, std::deque<DialogueStep> steps) {
  if (steps.empty()) {
    return;
  }
  const DialogueStep step = steps.front();
  steps.pop_front();
  photographer.Helper().When(step.window, [&photographer, step, steps](QWidget* dialog) {
    if (step.act) {
      step.act(dialog);
    }
    if (step.picture != nullptr) {
      photographer.Keep(dialog, step.picture);
    }
    Follow(photographer, steps);
    test::Person::Press(dialog, QString::fromUtf8(step.press));
  });
}

inline void Run(ui::MainWindow& window, Photographer& photographer, const char* id,
                const std::deque<DialogueStep>& steps) {
  Follow(photographer, steps);
  window.RunCommand(*FindCommand(id));
  photographer.Helper().Work();
}

inline test::Person::Act Pick(std::vector<int> rows) {
  return [rows](QWidget* dialog) {
    for (const int row : rows) {
      PickRow(dialog, row);
    }
  };
}

inline test::Person::Act GraphOf(const char* kind) {
  return [kind](QWidget* dialog) { Choose(dialog, QString::fromUtf8(kind)); };
}

// Opens a menu by its letter.
inline void KeepMenu(QWidget* window, Qt::Key letter, Photographer& photographer, const char* name) {
  window->activateWindow();
  if (!QTest::qWaitForWindowActive(window)) {
    throw std::runtime_error("the window does not become active");
  }
  QTest::keyClick(window, letter, Qt::AltModifier);
  QWidget* menu = QApplication::activePopupWidget();
  if (menu == nullptr) {
    throw std::runtime_error("the menu does not open");
  }
  photographer.Keep(menu, name);
  menu->close();
}

/// Loads a trial as a double click would.
inline void Open(ui::MainWindow& window, const fs::path& path) {
  window.State().trial.FileChanged = false;
  window.State().events = {};
  window.OpenFile(path.string());
  QTest::qWait(300);
}

}  // namespace velmora::pictures
