// Dialogues as a person meets them: what the keys do first, where they stand, what they say.
#include <QAccessible>
#include <QMenuBar>
#include <QScreen>
#include <QSplitter>
#include <map>
#include <set>

#include "ui/dialogs/asking_dialog.hpp"
#include "ui/main/menus.hpp"
#include "ui/main/theme.hpp"
#include "ui/screen_room.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"
#include "ui/trial/channel_table_view.hpp"

namespace velmora::test {
namespace {

const std::string kLongName =
    "Vastus_lateralis_of_the_dominant_leg_recorded_with_the_second_amplifier_" + std::string(40, 'x');

// Columns of the picker and of the filters.
constexpr int kPickerValue = 5;
constexpr int kCutoff = 4;

struct Dialogues : Story {
  /// A key for whatever has the focus.
  static void Type(int key) {
    if (!test::WaitFor([] { return QApplication::focusWidget() != nullptr; })) {
      throw std::runtime_error("nothing has the focus");
    }
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
  }
  static void WaitForFocusIn(QWidget* window) {
    if (!test::WaitFor([window] {
          return QApplication::focusWidget() != nullptr && QApplication::focusWidget()->window() == window;
        })) {
      throw std::runtime_error("the keys do not come back to " + window->objectName().toStdString());
    }
  }
  void OpenGraph() {
    person_.When("frmGraphChoose", [](QWidget* dialog) { Person::Press(dialog, "All"); });
    person_.When("frmGraphChoose", [](QWidget* dialog) { Person::Press(dialog, "OK"); });
    Choose("Select Channels for Single-Axis Graph");
  }
  static QWidget* Graph() {
    const auto graphs = VisibleWindows("frmGraph");
    return graphs.isEmpty() ? throw std::runtime_error("no graph") : graphs.front();
  }
};

TEST_F(Dialogues, AValueIsTypedAtOnceAndEnterTakesItAndThenRuns) {
  OpenWalkAsExpert();
  const float first = Shown().Data(100, 1);
  const float second = Shown().Data(100, 2);
  person_.When("frmChoose", [](QWidget* dialog) {
    WaitForFocusIn(dialog);
    Type(Qt::Key_6);
    Type(Qt::Key_Return);
    const auto* table = dialog->findChild<ui::ChannelTableView*>();
    const auto value = [table](int row) {
      return table->model()->index(row, table->model()->columnCount() - 1).data().toDouble();
    };
    EXPECT_TRUE(test::WaitFor([&] { return value(0) == 6; }));
    EXPECT_TRUE(test::WaitFor([table] { return table->hasFocus(); }));
    EXPECT_TRUE(dialog->isVisible()) << "Enter in a cell is not the button";
    EXPECT_EQ(value(1), 1);
    Type(Qt::Key_Return);
  });
  Choose("Scaling");
  EXPECT_EQ(Shown().Data(100, 1), 6 * first);
  EXPECT_EQ(Shown().Data(100, 2), second);
}

TEST_F(Dialogues, ValuesOfAnotherTrialAreShownAsSuch) {
  OpenWalkAsExpert();
  person_.When("frmChoose", [](QWidget* dialog) {
    Person::TypeCell(dialog->findChild<ui::ChannelTableView*>(), 1, kPickerValue, "2");
    Person::Press(dialog, "Process");
  });
  Choose("Scaling");
  person_.When("frmButterworth", [](QWidget* dialog) {
    Person::TypeCell(dialog->findChild<ui::ChannelTableView*>(), 0, kCutoff, "6");
    Person::Press(dialog, "Filter");
  });
  Choose("Butterworth, Critically-damped, or Bessel");

  const auto origins = [](QWidget* dialog, int column) {
    const auto* table = dialog->findChild<ui::ChannelTableView*>();
    QStringList found;
    for (int row = 0; row < table->model()->rowCount(); ++row) {
      const QModelIndex cell = table->model()->index(row, column);
      if (cell.data(Qt::FontRole).isValid()) {
        found << QString::number(row) + ' ' + cell.data(Qt::ToolTipRole).toString();
      }
    }
    return found.join(", ").toStdString();
  };
  // Of this trial they are what they are.
  person_.When("frmChoose", [&](QWidget* dialog) {
    EXPECT_EQ(origins(dialog, kPickerValue), "");
    Person::Press(dialog, "Cancel");
  });
  Choose("Scaling");
  WriteTrial("run.vmb", 4);
  Entry("Refresh")->trigger();
  Shown().FileChanged = false;
  DoubleClickFile("run.vmb");
  person_.When("frmChoose", [&](QWidget* dialog) {
    EXPECT_EQ(origins(dialog, kPickerValue), "1 from walk.vmb");
    Shot(*dialog, "left-scaling");
    Person::TypeCell(dialog->findChild<ui::ChannelTableView*>(), 1, kPickerValue, "3");
    EXPECT_TRUE(test::WaitFor([&] { return origins(dialog, kPickerValue).empty(); }));
    Person::Press(dialog, "Cancel");
  });
  Choose("Scaling");
  person_.When("frmButterworth", [&](QWidget* dialog) {
    EXPECT_EQ(origins(dialog, kCutoff), "0 from walk.vmb");
    Shot(*dialog, "left-cutoffs");
    Person::Press(dialog, "Cancel");
  });
  Choose("Butterworth, Critically-damped, or Bessel");
}

// The sentence with the limit takes more than one line.
TEST_F(Dialogues, ARefusedCutoffIsReadWhole) {
  OpenWalkAsExpert();
  person_.When("frmButterworth", [](QWidget* dialog) {
    auto* table = dialog->findChild<ui::ChannelTableView*>();
    Person::TypeCell(table, 0, 4, "900");
    auto* picture = dialog->findChild<QWidget*>("picture");
    const auto rows = [picture] {  // that hold letters of the refusal
      const QImage image = picture->grab().toImage();
      const QRgb warning = ui::WarningColour(picture->palette()).rgb();
      std::set<int> found;
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
          if (image.pixel(x, y) == warning) {
            found.insert(y);
          }
        }
      }
      return found;
    };
    if (!test::WaitFor([&rows] { return !rows().empty(); })) {
      throw std::runtime_error("nothing is refused");
    }
    const int height = *rows().rbegin() - *rows().begin();
    EXPECT_GT(height, 1.3 * picture->fontMetrics().height());
    EXPECT_LT(height, picture->height() / 2);
    Shot(*dialog, "refused-cutoff");
    Person::Press(dialog, "Cancel");
  });
  Choose("Butterworth, Critically-damped, or Bessel");
}

// Over the one that asks, and the keys are its own again when it has gone.
TEST_F(Dialogues, ABoxStandsOverItsDialogueAndGivesTheKeysBack) {
  OpenWalkAsExpert();
  for (int round = 0; round < 3; ++round) {
    QPointer<QWidget> field;
    person_.When("frmButterworth", [&field](QWidget* dialog) {
      WaitForFocusIn(dialog);
      field = dialog->focusWidget();
      Person::Press(dialog, "Help");
    });
    person_.When("Filter Help", [](QWidget* box) {
      EXPECT_EQ(box->parentWidget()->objectName(), "frmButterworth");
      const QPoint off = box->geometry().center() - box->parentWidget()->geometry().center();
      EXPECT_LT(off.manhattanLength(), 120);
      WaitForFocusIn(box);
      Type(Qt::Key_Return);
    });
    person_.When("frmButterworth", [&field](QWidget* dialog) {
      WaitForFocusIn(dialog);
      EXPECT_NE(dialog->focusWidget(), nullptr);
      Type(Qt::Key_Escape);
    });
    Choose("Butterworth, Critically-damped, or Bessel");
    WaitForFocusIn(window_.get());
  }
}

TEST_F(Dialogues, TheGraphStandsOverItsWindowAndOneKeyGoesThereAndBack) {
  OpenWalkAsExpert();
  OpenGraph();
  QWidget* graph = Graph();
  ASSERT_TRUE(test::WaitForWindowActive(graph));
  EXPECT_EQ(graph->windowHandle()->transientParent(), window_->windowHandle());
  EXPECT_EQ(graph->screen(), window_->screen());
  auto* sidebar = graph->findChild<QTreeWidget*>("sidebar");
  EXPECT_LT(sidebar->width(), 300) << "short names";
  for (int round = 0; round < 2; ++round) {
    QTest::keyClick(graph, Qt::Key_F12);
    EXPECT_TRUE(test::WaitForWindowActive(window_.get()));
    QTest::keyClick(window_.get(), Qt::Key_F12);
    EXPECT_TRUE(test::WaitForWindowActive(graph));
  }
  graph->close();
  person_.Work();
}

/// Looks at every dialogue that appears, and leaves it.
class Inspector {
 public:
  Inspector() { Arm(); }
  std::set<std::string> seen;

 private:
  void Arm() {
    QTimer::singleShot(10, &context_, [this] {
      Arm();
      QDialog* dialog = Asking();
      if (dialog != nullptr && dialog->isVisible() && dialog != last_) {
        last_ = dialog;
        Inspect(*dialog);
        Leave(*dialog);
        last_ = nullptr;
      }
    });
  }
  // One that stands beside a graph is not modal.
  static QDialog* Asking() {
    if (auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
      return modal;
    }
    return VisibleWindows<ui::AskingDialog>().value(0);
  }
  static void Leave(QDialog& dialog) {
    if (dialog.windowTitle() == "Confirm Exit") {
      Person::Press(&dialog, "Yes");
    } else {
      dialog.reject();
    }
  }
  void Inspect(QDialog& dialog) {
    const std::string name =
        (dialog.objectName().isEmpty() ? dialog.windowTitle() : dialog.objectName()).toStdString();
    const QSize room = ui::RoomOn(dialog).size();
    EXPECT_LE(dialog.width(), room.width()) << name;
    EXPECT_LE(dialog.height(), room.height()) << name;
    if (dialog.layout() != nullptr) {
      const QSize least = dialog.layout()->totalMinimumSize();
      EXPECT_LE(least.width(), dialog.width()) << name << " is squeezed";
      EXPECT_LE(least.height(), dialog.height()) << name << " is squeezed";
    }
    if (seen.insert(name).second) {
      Shot(dialog, "fits-" + name);
      if (qobject_cast<ui::AskingDialog*>(&dialog) != nullptr) {
        ExpectLettersOfTheirOwn(dialog, name);
        ExpectTabThrough(dialog, name);
      }
    }
  }
  // Two with one letter would take neither.
  static void ExpectLettersOfTheirOwn(const QDialog& dialog, const std::string& name) {
    std::map<QString, QStringList> owners;
    for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
      owners[button->shortcut().toString()] << button->text();
    }
    for (const auto* label : dialog.findChildren<QLabel*>()) {
      owners[label->buddy() != nullptr ? QKeySequence::mnemonic(label->text()).toString() : QString()]
          << label->text();
    }
    for (const auto& [key, captions] : owners) {
      EXPECT_TRUE(key.isEmpty() || captions.size() == 1) << name << ": " << captions.join(", ").toStdString();
    }
  }
  // Round all that can be typed in or pressed, each with a name for those who have it read to them.
  static void ExpectTabThrough(QDialog& dialog, const std::string& name) {
    ASSERT_TRUE(test::WaitFor([&dialog] {
      return QApplication::focusWidget() != nullptr && QApplication::focusWidget()->window() == &dialog;
    })) << name;
    QWidget* const first = QApplication::focusWidget();
    QWidget* at = first;
    std::set<QWidget*> passed;
    do {
      passed.insert(at);
      const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(at);
      EXPECT_FALSE(read == nullptr || read->text(QAccessible::Name).isEmpty())
          << name << ": " << at->objectName().toStdString() << " has no name";
      QTest::keyClick(at, Qt::Key_Tab);
      at = QApplication::focusWidget();
      ASSERT_TRUE(at == first || !passed.contains(at))
          << name << ": stays at " << at->metaObject()->className();
    } while (at != first);
  }
  QObject context_;
  QPointer<QDialog> last_;
};

// With names that are longer than any screen is wide. At a factor of 2 there are 800 x 500 points.
TEST_F(Dialogues, EveryDialogueAndTheGraphFitTheScreen) {
  OpenWalkAsExpert();
  for (int c = 1; c <= kMaxChannels; ++c) {
    Shown().ChanLabel[static_cast<std::size_t>(c)] = kLongName;
  }
  Shown().TrialTitle = kLongName;
  OpenGraph();
  QWidget* graph = Graph();
  EXPECT_LE(graph->frameGeometry().width(), graph->screen()->availableGeometry().width());
  EXPECT_LE(graph->frameGeometry().height(), graph->screen()->availableGeometry().height());
  EXPECT_LE(graph->minimumSizeHint().width(), graph->width());
  EXPECT_LE(graph->minimumSizeHint().height(), graph->height());
  EXPECT_LE(graph->findChild<QTreeWidget*>("sidebar")->width(), graph->width() / 2);
  Shot(*graph, "fits-graph");
  const std::set<std::string_view> elsewhere = {"file.exit", "file.explore", "view.exit", "file.load"};
  Inspector inspector;
  for (const Command& command : AllCommands()) {
    const bool starts = command.id.starts_with("programs.") || command.id.starts_with("help.manual");
    if (!starts && !elsewhere.contains(command.id) && ui::IsPossible(command, window_->State())) {
      RunCommand(window_->State(), command);
    }
  }
  for (const char* form : {"frmGraphChoose", "frmButterworth", "frmSmooth", "frmFiltering", "frmClip",
                           "frmSetEpochDuration", "frmExperiment", "frmMerge", "frmChoose"}) {
    EXPECT_TRUE(inspector.seen.contains(form)) << form;
  }
  graph->close();
  person_.Work();
}

}  // namespace
}  // namespace velmora::test
