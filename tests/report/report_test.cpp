#include <filesystem>

#include "core/questions/result_table.hpp"
#include "graph/picture.hpp"
#include "support/command_test.hpp"
#include "support/environment_variable.hpp"
#include "support/full_disk.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

struct ReportTest : FileTest {
  EnvironmentVariable epoch{"SOURCE_DATE_EPOCH", "1700000000"};
  PictureFormat drawn = PictureFormat::Png;
  std::string pages;

  void SetUp() override {
    SetChannels(trial, {{1, 2, 3, 4}, {5, 6, 7, 8}}, 1000);
    trial.ChanLabel[1] = "<b>A\t&\"B\"</b>";
    trial.TrialTitle = "Gait of 'S1' <no. 3>";
    trial.TrialName = "walk";
    trial.Notices = {"The file ends after 4 of 5 samples."};
    WriteFile(directory.Path("walk.txt"), "abc");
    workbench.LoadedFile = directory.Path("walk.txt");
    workbench.desktop.draw = [this](const PictureOrder& order) {
      drawn = order.format;
      return std::string(
          "<?xml version=\"1.0\"?>\n<!DOCTYPE svg>\n<svg width=\"9\"><text>Drawn</text></svg>");
    };
    workbench.desktop.drawDocument = [this](const DocumentOrder& order) {
      pages = order.html;
      EXPECT_EQ(order.time, 1700000000);
      EXPECT_NE(order.picture, nullptr);
      return "%PDF of " + order.title;
    };
    workbench.stepsDone = [] {
      return StepsDone{.words = {"Low-pass 6 Hz: <b>A", "Scaled"}, .recipe = "velmora2: 1\n# a < b\n"};
    };
  }
  void KeepResult(std::size_t rows, std::size_t columns) {
    ResultTable table{.name = "frmPeaks", .title = "Peaks\nof <all>", .columns = {"Channel", "Label"}};
    for (std::size_t k = 2; k < columns; ++k) {
      table.columns.push_back("p" + std::to_string(k));
    }
    for (std::size_t i = 0; i < rows; ++i) {
      std::vector<ResultTable::Cell>& row = table.rows.emplace_back();
      row.emplace_back("00");
      row.emplace_back("<i>");
      for (std::size_t k = 2; k < columns; ++k) {
        row.push_back(k == 3 ? CellOf(NAN) : CellOf(0.25));
      }
    }
    table.formats.assign(columns, ThroughPattern("0.000"));
    workbench.results.ResultTables = {std::move(table)};
  }
  std::string Save(const std::string& name, Edits edits = {}) {
    questions.fileAnswers = {{directory.Path(name)}};
    AnswerForm(edits, "Save");
    Run("report.save");
    return fs::exists(directory.Path(name)) ? ReadFile(directory.Path(name)) : "";
  }
  static bool Has(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
  }
  static std::size_t Count(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }
};

TEST_F(ReportTest, TellsFileResultsGraphAndStepsAndIsTheSameWhenMadeAgain) {
  KeepResult(2, 4);
  Run("graph.all");
  const std::string html = Save("a.html");
  EXPECT_EQ(questions.files.back().defaultName, "walk.html");
  // SHA-256 of "abc": FIPS 180-2, appendix B.1.
  EXPECT_HAS(html, "<td>ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad</td>");
  EXPECT_HAS(html, "<td>walk.txt</td>");
  EXPECT_HAS(html, "<td>3 bytes</td>");
  EXPECT_HAS(html, "2023-11-14 22:13:20 UTC");
  EXPECT_HAS(html, "<h1>Gait of 'S1' &lt;no. 3&gt;</h1>");
  EXPECT_HAS(html, "<td>&lt;b&gt;A &amp;&quot;B&quot;&lt;/b&gt;</td>");
  EXPECT_HAS(html, "The file ends after 4 of 5 samples.");
  EXPECT_HAS(html, "Peaks<br/>of &lt;all&gt;");
  EXPECT_HAS(html, "<td>&lt;i&gt;</td><td class=\"number\" align=\"right\">0.250</td><td></td>");
  EXPECT_HAS(html, "<svg width=\"9\"><text>Drawn</text></svg>");
  EXPECT_FALSE(Has(html, "<?xml"));
  EXPECT_EQ(drawn, PictureFormat::Svg);
  EXPECT_HAS(html, "<li>Low-pass 6 Hz: &lt;b&gt;A.</li>\n<li>Scaled.</li>");
  EXPECT_HAS(html, "velmora2: 1\n# a &lt; b\n</pre>");
  for (const char* outside : {"<b>", "http:", "https:", "src=", "href=", "<script"}) {
    EXPECT_FALSE(Has(html, outside)) << outside;
  }
  EXPECT_EQ(Save("b.html"), html);
  EXPECT_EQ(Save("a.pdf", {{"optFormat", "PDF"}}), "%PDF of Gait of 'S1' <no. 3>");
  EXPECT_HAS(pages, "<img src=\"picture\"/>");
  EXPECT_FALSE(trial.FileChanged);

  const EnvironmentVariable nonsense("SOURCE_DATE_EPOCH", "soon");
  EXPECT_FALSE(Has(Save("c.html"), "2023-11-14"));

  CloseView(workbench);
  trial.TrialTitle = directory.Path("walk.txt");  // as files without a title have it
  Run("graph.all");
  const std::string untitled = Save("d.html");
  EXPECT_FALSE(Has(untitled, directory.Path(""))) << "the directory is nobody's business";
  EXPECT_HAS(untitled, "Graph of walk.txt");
}

TEST_F(ReportTest, HasThePartsThatWereChosenAndNoneThatIsEmpty) {
  KeepResult(1, 4);
  const std::string all = Save("a.html", {{"txtTitle", ""}});
  EXPECT_HAS(all, "<h1></h1>");
  EXPECT_FALSE(Has(all, "Graph</h2>")) << "none is open";
  EXPECT_FALSE(Has(all, "<h2>Experiment"));
  EXPECT_HAS(all, "<h2>Channels");
  const std::string none =
      Save("b.html", {{"chkTables", "no"}, {"chkSteps", "no"}, {"chkChannels", "no"}, {"chkGraph", "no"}});
  for (const char* heading : {"<h2>Results", "<h2>Steps", "<h2>Channels"}) {
    EXPECT_HAS(all, heading);
    EXPECT_FALSE(Has(none, heading)) << heading;
  }
  AnswerForm({{"txtSurname", "O'Neil & <Son>"}, {"txtMass", "72.5"}});
  Run("edit.experiment-information");
  const std::string asked = Save("c.html", {{"chkExperiment", "yes"}});
  EXPECT_HAS(asked, "<td class=\"name\">Surname</td><td>O'Neil &amp; &lt;Son&gt;</td>");
  EXPECT_HAS(asked, "<td class=\"name\">Mass</td><td>72.5</td>");
  EXPECT_FALSE(Has(asked, "Height"));
  EXPECT_FALSE(Has(Save("d.html"), "O'Neil")) << "that of another file, unless it is asked for";
}

TEST_F(ReportTest, HasNoTableOfTheTrialBefore) {
  KeepResult(1, 4);
  WriteTrialFile(directory.Path("next.vmb"), [](Trial& next) { SetChannels(next, {{1, 2}}); });
  LoadPath(directory.Path("next.vmb"));
  const std::string html = Save("a.html");
  EXPECT_HAS(html, "next.vmb");
  EXPECT_FALSE(Has(html, "Peaks"));
}

TEST_F(ReportTest, CutsTablesThatNoPageHolds) {
  KeepResult(501, 20);
  const std::string html = Save("a.html", {{"chkChannels", "no"}, {"chkSteps", "no"}});
  EXPECT_HAS(html, "The first 500 of 501 rows.");
  // The first two lead each part.
  EXPECT_EQ(Count(html, ">Channel</th><th align=\"left\">Label</th>"), 2U);
  for (int k = 2; k < 20; ++k) {
    EXPECT_EQ(Count(html, ">p" + std::to_string(k) + "</th>"), 1U) << k;
  }
  EXPECT_EQ(Count(html, "<tr><td>00</td>"), 2U * 500U);
}

TEST_F(ReportTest, LeavesTheOldFileWhenItCannotBeWrittenOrDrawn) {
  WriteFile(directory.Path("old.html"), "old");
  fs::create_directory(directory.Path("folder.html"));
  std::size_t failures = 0;
  for (const char* name : {"old.html", "folder.html", "missing/a.html"}) {
    questions.fileAnswers = {{directory.Path(name)}};
    AnswerForm({}, "Save");
    AnswerForm({}, "Cancel");
    const FullDisk full(10);
    Run("report.save");
    EXPECT_EQ(workbench.report.failures.size(), ++failures) << name;
  }
  EXPECT_EQ(ReadFile(directory.Path("old.html")), "old");

  Run("graph.all");
  workbench.desktop.draw = nullptr;
  workbench.desktop.drawDocument = nullptr;
  const auto refused = [this](Edits edits) {
    workbench.report = {};
    questions.fileAnswers = {{directory.Path("old.html")}};
    AnswerForm(edits, "Save");
    AnswerForm({}, "Cancel");
    Run("report.save");
    return LastBox().substr(0, LastBox().find('|'));
  };
  EXPECT_EQ(refused({}), "Drawing Not Available");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(refused({{"chkGraph", "no"}, {"optFormat", "PDF"}}), "Drawing Not Available");
  EXPECT_EQ(ReadFile(directory.Path("old.html")), "old");
  EXPECT_HAS(Save("old.html", {{"chkGraph", "no"}}), "<h2>Trial");
}

TEST_F(ReportTest, CancelLeavesNothingAndAFileThatIsGoneIsTold) {
  fs::resize_file(directory.Path("walk.txt"), (std::uintmax_t{65} << 20U));
  questions.CancelAt("Processing...");
  questions.fileAnswers = {{directory.Path("a.html")}};
  AnswerForm({}, "Save");
  AnswerForm({}, "Cancel");
  Run("report.save");
  EXPECT_FALSE(fs::exists(directory.Path("a.html")));
  EXPECT_TRUE(workbench.report.deeds.empty());

  questions.onProgress = nullptr;
  fs::remove(directory.Path("walk.txt"));
  EXPECT_HAS(Save("b.html"), "the file cannot be read any more: ");
  trial.DiscardData();
  Run("report.save");
  EXPECT_EQ(questions.formNames.size(), 3U);
}

}  // namespace
}  // namespace velmora::test
