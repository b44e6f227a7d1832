#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "sample_trials.hpp"
#include "support/command_test.hpp"
#include "ui/browser/file_list_view.hpp"
#include "ui/main/main_window.hpp"
#include "ui/person.hpp"

namespace velmora::test {

/// The program on a directory with one trial, as somebody finds it who starts it.
class Story : public testing::Test {
 protected:
  TemporaryDirectory directory_;
  std::filesystem::path before_ = std::filesystem::current_path();
  SettingsStore store_{directory_.Path("settings")};
  Person person_;
  std::unique_ptr<ui::MainWindow> window_;

  void SetUp() override {
    std::filesystem::create_directories(Path(""));
    WriteTrial("walk.vmb", kMaxChannels);
    std::filesystem::current_path(Path(""));
    Start();
  }
  void TearDown() override {
    Shown().FileChanged = false;  // it goes without a question
    window_.reset();
    std::filesystem::current_path(before_);
  }

  [[nodiscard]] std::string Path(const std::string& name) const { return directory_.Path("data/" + name); }

  /// The first channels of the example.
  void WriteTrial(const char* name, int channels) const {
    WriteTrialFile(Path(name), [channels](Trial& trial) {
      examples::MakeEmgBursts(trial);
      trial.CutChannels(std::min<int>(channels, trial.NChan));
    });
  }
  void Start(const std::vector<std::string>& items = {";"}) {
    window_ = std::make_unique<ui::MainWindow>(store_, items, examples::MakeEmgBursts);
    window_->show();
    window_->Begin();
    ASSERT_TRUE(test::WaitForWindowExposed(window_.get()));
  }
  Trial& Shown() { return window_->State().trial; }

  template <typename Widget>
  Widget* Find(const char* name) {
    auto* widget = window_->findChild<Widget*>(QString::fromUtf8(name));
    if (widget == nullptr) {
      throw std::runtime_error(std::string("no ") + name);
    }
    return widget;
  }
  QAction* Entry(const char* caption) {
    for (auto* action : window_->findChildren<QAction*>()) {
      if (QString(action->text()).remove('&') == QString::fromUtf8(caption)) {
        return action;
      }
    }
    throw std::runtime_error(std::string("no entry ") + caption);
  }
  /// Waits for what the window is to show.
  template <typename Shows>
  static testing::AssertionResult Becomes(const Shows& shows, const std::string& wanted) {
    if (test::WaitFor([&] { return shows() == wanted; })) {
      return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "it shows " << shows();
  }
  void Choose(const char* caption) {
    Entry(caption)->trigger();
    person_.Work();
  }
  /// Somebody who needs no panel to wait for them opens the trial.
  void OpenWalkAsExpert() {
    window_->State().UserLevel = UserLevelKind::Expert;
    DoubleClickFile("walk.vmb");
    ASSERT_EQ(Shown().NData, 6001);
  }
  QModelIndex FileRow(const char* name) {
    auto* files = Find<ui::FileListView>("dataFiles");
    const QList<QTreeWidgetItem*> found = files->findItems(QString::fromUtf8(name), Qt::MatchExactly);
    return found.size() == 1 ? files->indexFromItem(found.front()) : QModelIndex();
  }
  void DoubleClickFile(const char* name) {
    const QModelIndex row = FileRow(name);
    ASSERT_TRUE(row.isValid());
    Person::DoubleClickCell(Find<ui::FileListView>("dataFiles"), row);
    person_.Work();
  }
  /// The panel of a finished load or save waits for a novice.
  void ExpectDone() {
    person_.When("frmLoading", [](QWidget* panel) { Person::Press(panel, "Done"); });
  }
  /// Pastes a path into a file dialogue and presses a button: typing brings up completions, which would take
  /// the press. The directory comes in meanwhile, and may change the line and the button.
  static void TypePath(QWidget* fileDialog, const std::string& path, const char* button) {
    auto* line = fileDialog->findChild<QLineEdit*>("fileNameEdit");
    const QString wanted = QString::fromStdString(path);
    const auto ready = [fileDialog, button](const QAbstractButton* other) {
      return QString(other->text()).remove('&') == QString::fromUtf8(button) &&
             other->isVisibleTo(fileDialog) && other->isEnabled();
    };
    // Only a line with the focus lets go of the file that is selected in the list.
    ASSERT_TRUE(test::WaitFor([line] {
      line->setFocus();
      return line->hasFocus();
    }));
    line->clear();
    ASSERT_TRUE(test::WaitFor([&] {
      const auto buttons = fileDialog->findChildren<QAbstractButton*>();
      if (line->text() == wanted && std::any_of(buttons.begin(), buttons.end(), ready)) {
        return true;
      }
      line->setText(wanted);
      return false;
    }));
    Person::Press(fileDialog, QString::fromUtf8(button));
  }
  void ExpectSaveTo(const std::string& name) {
    person_.WhenA<QFileDialog>([path = Path(name)](QWidget* dialog) { TypePath(dialog, path, "Save"); });
  }
  /// The history as the recipe that its button saves.
  std::string SavedRecipe() {
    ExpectSaveTo("steps.yaml");
    QTest::mouseClick(Find<QPushButton>("saveRecipe"), Qt::LeftButton);
    person_.Work();
    return ReadFile(Path("steps.yaml"));
  }
  /// Runs a recipe over walk.vmb without the window, with results in a directory.
  void RunRecipe(const std::string& recipe, const std::string& out = "again") {
    std::filesystem::create_directories(Path(out));
    Variables variables = {{"out", Path(out)}};
    SetInputVariables(variables, Path("walk.vmb"));
    RecipeRun run({.input = Path("walk.vmb"), .strict = true});
    const Outcome outcome = run.Run(ReadRecipe(recipe, "steps.yaml", variables));
    ASSERT_FALSE(outcome.failure) << outcome.failure->why;
  }
};

}  // namespace velmora::test
