// A report saved by a person at work: its recipe leads to what it shows.
#include "graph/single_view.hpp"
#include "support/recorded_person.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct ReportHistory : RecordedPerson {
  void SetUp() override {
    RecordedPerson::SetUp();
    WriteTrialFile(input, [](Trial& trial) { SetChannels(trial, {{1, -2, 3, -4}, {5, 6, 7, 8}}); });
    workbench.desktop.draw = [](const PictureOrder& /*order*/) { return std::string("<svg></svg>"); };
  }
  std::string Save(const std::string& name) {
    person.FillForm({}, "Save");
    person.fileAnswers.push_back({directory.Path(name)});
    Do("report.save");
    return ReadFile(directory.Path(name));
  }
  static bool Has(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }
};

TEST_F(ReportHistory, TellsTheStepsToThePictureAndNotThoseToItself) {
  Load();
  person.PickChannels({1});
  Do("math.absolute");
  EXPECT_FALSE(Has(Save("a.html"), "report.save"));
  person.FillForm({{"channels 2", "true"}});
  Do("graph.single");
  OpenSingleView(workbench).PressKey({.name = "2"});
  const std::string html = Save("b.html");
  EXPECT_HAS(html, "do: math.absolute");
  EXPECT_HAS(html, "do: graph.single");
  EXPECT_FALSE(Has(html, "report.save"));
  EXPECT_FALSE(Has(html, "Report saved"));
  // The history itself has the reports, and with them the graph of the second.
  const std::string recipe = history.Recipe();
  EXPECT_LT(recipe.find("a.html"), recipe.find("graph.single"));
  EXPECT_LT(recipe.find("graph.single"), recipe.find("b.html"));
  CloseView(workbench);
  EXPECT_FALSE(Has(Save("c.html"), "graph.single")) << "it is closed, and nothing came of it";
}

}  // namespace
}  // namespace velmora::test
