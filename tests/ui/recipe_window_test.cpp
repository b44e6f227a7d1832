// A recipe over several files from the window, which stays alive meanwhile.
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTreeWidget>

#include "ui/recipes/recipe_dialog.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"
#include "ui/text.hpp"

namespace velmora::test {
namespace {

class RecipeWindow : public Story {
 protected:
  /// Opens the dialogue by the menu and fills it in.
  void Ask(const std::string& steps, const std::vector<std::string>& files) {
    window_->State().UserLevel = UserLevelKind::Expert;  // who is not told of every load
    WriteFile(Path("r.yaml"), "velmora2: 1\nsteps:\n  - do: file.load\n    file: \"${input}\"\n" + steps);
    Choose("Run a recipe...");
    dialog_ = window_->findChild<ui::RecipeDialog*>();
    ASSERT_NE(dialog_, nullptr);
    ASSERT_TRUE(test::WaitForWindowExposed(dialog_));
    Type("recipe", Path("r.yaml"));
    Type("results", Path("results"));
    QStringList paths;
    for (const std::string& file : files) {
      paths.append(ui::ToQt(Path(file)));
    }
    dialog_->AddFiles(paths);
    dialog_->AddFiles(paths);  // each once
  }
  void Type(const char* name, const std::string& text) {
    auto* line = dialog_->findChild<QLineEdit*>(QString::fromUtf8(name));
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, ui::ToQt(text));
  }
  QTreeWidgetItem* Row(int k) { return dialog_->findChild<QTreeWidget*>("files")->topLevelItem(k); }
  std::string State(int k) { return ui::ToStd(Row(k)->text(1)); }
  std::string Said() { return ui::ToStd(dialog_->findChild<QLabel*>("said")->text()); }
  void DoubleClickRow(int k) {
    auto* files = dialog_->findChild<QTreeWidget*>("files");
    Person::DoubleClickCell(files, files->indexFromItem(Row(k)));
  }

  ui::RecipeDialog* dialog_ = nullptr;
};

TEST_F(RecipeWindow, TellsWhatBecameOfEachFileAndOpensIt) {
  WriteTrial("first.vmb", 2);
  WriteTrial("second.vmb", 2);
  WriteFile(Path("broken.vmb"), "Velmora2");
  Ask("  - collect: \"${out}/t.csv\"\n    columns: {name: \"${stem}\", peak: {channel: \"Vastus*\", "
      "statistic: maximum}}\n",
      {"first.vmb", "broken.vmb", "second.vmb"});
  ASSERT_EQ(dialog_->findChild<QTreeWidget*>("files")->topLevelItemCount(), 3);
  Person::Press(dialog_, "Run");
  EXPECT_TRUE(Becomes([this] { return Said(); }, "2 done, 1 failed"));
  EXPECT_EQ(State(0), "done");
  EXPECT_EQ(State(1), "FAILED");
  EXPECT_NE(Row(1)->text(2).indexOf("step 1 (file.load"), -1);
  EXPECT_EQ(ReadFile(Path("results/t.csv")).substr(0, 16), "name,peak\nfirst,");
  Shot(*dialog_, "recipe-done");
  person_.WhenA<QMessageBox>([](QWidget* box) {
    EXPECT_NE(static_cast<QMessageBox*>(box)->text().indexOf("step 1 (file.load"), -1);
    Person::Press(box, "OK");
  });
  DoubleClickRow(1);
  person_.Work();
  DoubleClickRow(2);
  EXPECT_TRUE(Becomes([this] { return Shown().FileName; }, Path("second.vmb")));
  Type("recipe", Path("none.yaml"));
  Person::Press(dialog_, "Run");
  EXPECT_TRUE(test::WaitFor([this] { return Said().find("No such file") != std::string::npos; })) << Said();
  EXPECT_EQ(State(0), "not run");
}

TEST_F(RecipeWindow, StaysAliveWhileARunGoesOnAndCancelEndsIt) {
  std::string steps;
  for (int k = 0; k < 5000; ++k) {
    steps += "  - do: math.negate\n    answers: [pick: {channels: all}]\n  - info: \"${out}/${stem}.json\"\n";
  }
  WriteTrial("long.vmb", 3);
  WriteTrial("later.vmb", 3);
  Ask(steps, {"long.vmb", "later.vmb"});
  dialog_->findChild<QSpinBox*>("atOnce")->setValue(1);
  Person::Press(dialog_, "Run");
  EXPECT_TRUE(test::WaitFor([this] { return State(0).starts_with("step "); })) << State(0);
  DoubleClickFile("walk.vmb");
  EXPECT_EQ(Shown().NChan, 3) << "the window does what it is asked to meanwhile";
  EXPECT_TRUE(State(0).starts_with("step ")) << State(0);
  Shot(*dialog_, "recipe-running");
  const auto leaves = [this](const char* button) {
    person_.When("Recipe Is Running", [button](QWidget* box) { Person::Press(box, button); });
    window_->close();
    person_.Work();
  };
  leaves("Cancel");
  EXPECT_TRUE(window_->isVisible());
  EXPECT_TRUE(State(0).starts_with("step ")) << State(0);
  Person::Press(dialog_, "Cancel");
  EXPECT_TRUE(Becomes([this] { return Said(); }, "Cancelled: 0 done, 0 failed, 1 interrupted, 1 not run"));
  EXPECT_EQ(State(0), "interrupted");
  EXPECT_EQ(State(1), "not run");
  Person::Press(dialog_, "Run");
  EXPECT_TRUE(test::WaitFor([this] { return State(0).starts_with("step "); })) << State(0);
  leaves("OK");
  EXPECT_TRUE(test::WaitFor([this] { return !window_->isVisible(); }));
  EXPECT_EQ(Said(), "Cancelled: 0 done, 0 failed, 1 interrupted, 1 not run") << "the run was not killed";
}

}  // namespace
}  // namespace velmora::test
