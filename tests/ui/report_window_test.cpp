// A report saved from the window, and the same one from the recipe of the history.
#include "support/environment_variable.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

class ReportWindow : public Story {};

TEST_F(ReportWindow, IsSavedWithWhatWasDoneAndTheRecipeMakesTheSameBytes) {
  const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", "1700000000");
  OpenWalkAsExpert();
  person_.When("frmChoose", [](QWidget* dialog) {
    Person::Press(dialog, "All");
    Person::Press(dialog, "Process");
  });
  Choose("Absolute value (|X|)");
  person_.When("frmHeaderLines", [](QWidget* dialog) {
    Shot(*dialog, "header");
    Person::Press(dialog, "Exit");
  });
  Choose("Header");
  person_.When("frmReport", [](QWidget* dialog) {
    auto* title = dialog->findChild<QLineEdit*>("txtTitle");
    title->selectAll();
    QTest::keyClicks(title, "Walk <1>");
    Shot(*dialog, "report");
    Person::Press(dialog, "Save");
  });
  ExpectSaveTo("walk.html");
  Choose("Save a report");
  const std::string html = ReadFile(Path("walk.html"));
  EXPECT_NE(html.find("<h1>Walk &lt;1&gt;</h1>"), std::string::npos) << html;
  EXPECT_NE(html.find("Lines of the header"), std::string::npos);
  EXPECT_NE(html.find("do: math.absolute"), std::string::npos);
  EXPECT_NE(html.find("2023-11-14"), std::string::npos);

  std::string recipe = SavedRecipe();
  EXPECT_NE(recipe.find("report.save"), std::string::npos) << recipe;
  // The header was a look, which the history does not repeat.
  recipe.insert(recipe.find("  - do: report.save"),
                "  - do: data.header\n    answers: [{form: {press: Exit}}]\n");
  RunRecipe(recipe);
  const std::string again = ReadFile(Path("again/walk.html"));
  const auto upToSteps = [](const std::string& text) { return text.substr(0, text.find("<h2>Steps")); };
  EXPECT_EQ(upToSteps(again), upToSteps(html));
  EXPECT_NE(again.find("do: math.absolute"), std::string::npos);

  // Undo takes back what was done to the trial and writes no file.
  std::filesystem::remove(Path("walk.html"));
  auto* history = Find<QListWidget>("historyList");
  ASSERT_TRUE(test::WaitFor([history] { return history->count() == 3; }));
  QTest::mouseClick(Find<QPushButton>("undo"), Qt::LeftButton);
  EXPECT_TRUE(test::WaitFor([history] { return history->currentRow() == 1; }));
  EXPECT_FALSE(std::filesystem::exists(Path("walk.html")));
}

TEST_F(ReportWindow, SaysWhyItCannotBeWrittenAndStaysOpen) {
  OpenWalkAsExpert();
  person_.When("frmReport", [](QWidget* dialog) { Person::Press(dialog, "Save"); });
  person_.WhenA<QFileDialog>(
      [path = Path("missing/a.html")](QWidget* dialog) { TypePath(dialog, path, "Save"); });
  person_.When("QMessageBox", [](QWidget* box) { Person::Press(box, "OK"); });
  person_.When("frmReport", [](QWidget* dialog) { Person::Press(dialog, "Cancel"); });
  Choose("Save a report");
  EXPECT_EQ(Find<QListWidget>("historyList")->count(), 1);
}

}  // namespace
}  // namespace velmora::test
