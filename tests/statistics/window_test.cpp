#include <limits>

#include "core/questions/result_table.hpp"
#include "statistics/window_statistics.hpp"
#include "support/table_test.hpp"

namespace velmora::test {
namespace {

struct WindowTest : AnalysisTest {
  WindowTest() : AnalysisTest("statistics.windows") {}
  void SetUp() override { SetChannels(trial, {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, Samples(10, 3.0F)}, 10); }

  /// "1-4 3-6 ..." of the table's rows of one channel.
  std::string Pieces(const std::string& channel = "00") {
    const ResultTable& table = Table("frmWindowStats");
    std::string pieces;
    for (std::size_t k = 0; k < table.rows.size(); ++k) {
      if (std::get<std::string>(table.rows[k][0]) == channel) {
        pieces += (pieces.empty() ? "" : " ") + ShownCell(table, k, 3) + "-" + ShownCell(table, k, 4);
      }
    }
    return pieces;
  }
};

TEST_F(WindowTest, CutsARangeInTwoWays) {
  Compute({{"channels 1", "yes"}, {"WindowWidth", "4"}, {"txtOverlap", "50"}});
  EXPECT_EQ(Pieces(), "1-4 3-6 5-8 7-10");
  EXPECT_EQ(workbench.smoothing.WindowWidth, 4);
  const ResultTable& table = Table("frmWindowStats");
  ExpectCells(table, 1, {{"Mean", 4.5}, {"Minimum", 3}, {"Maximum", 6}, {"Median", 4.5}});
  ExpectCells(table, 1, {{"Std.Dev.", std::sqrt(5.0 / 3)}, {"RMS", std::sqrt(86.0 / 4)}, {"Integral", 1.8}},
              1e-15);
  EXPECT_NEAR(Cell(table, 1, "Slope"), 10, 1e-6);  // per second; the abscissa has 32 bits
  EXPECT_EQ(questions.formNames, (Texts{"frmWindowStats", "frmWindowStats"}));
  Compute({{"channels 1", "yes"}, {"optSplit", "Equal windows"}, {"txtCount", "4"}});
  EXPECT_EQ(Pieces(), "1-2 3-5 6-8 9-10");
  EXPECT_EQ(workbench.report.deeds.back().what, "Statistics of 4 windows");
}

TEST_F(WindowTest, EventsAndCursorsCutWherePeopleDid) {
  workbench.events.ChannelEvents.resize(3);
  workbench.events.ChannelEvents[0][1] = {0.1, 0.3};
  workbench.events.ChannelEvents[1][1] = {0.5, EventTimes::kNone};
  workbench.events.ChannelEvents[2][1] = {0.5, 0.9};
  workbench.events.ChannelEvents[2][2] = {0.0, 0.2};
  Compute({{"channels 1", "yes"}, {"optSplit", "3"}, {"channels 2", "yes"}});
  EXPECT_EQ(Pieces(), "2-4 6-10");
  EXPECT_EQ(Pieces("01"), "1-3");

  questions.FillForm({{"channels 1", "true"}});
  Run("graph.single");
  ASSERT_NE(workbench.view, nullptr);
  Run("cursor.two");
  workbench.view->MoveCursor(1, 0.7);
  workbench.view->MoveCursor(2, 0.2);
  questions.boxAnswers = {Button::Yes};
  AnswerForm({{"channels 1", "yes"}});
  AnswerForm({});
  Run("statistics.cursors");
  EXPECT_EQ(questions.boxes.back().title, "Compute Stats between Cursors?");
  EXPECT_EQ(Pieces(), "3-7");
  questions.boxAnswers = {Button::No};
  const std::size_t forms = questions.formNames.size();
  Run("statistics.cursors");
  EXPECT_EQ(questions.formNames.size(), forms);
}

TEST_F(WindowTest, RefusesWhatCutsNothing) {
  AnswerForm({}, "Compute");
  AnswerForm({{"channels 1", "yes"}, {"WindowWidth", "10"}}, "Compute");
  AnswerForm({{"optSplit", "2"}}, "Compute");
  AnswerForm({{"optSplit", "3"}}, "Compute");
  AnswerForm({}, "Cancel");
  Run("statistics.windows");
  EXPECT_EQ(workbench.report.warnings,
            (Texts{"Too Few Channels Selected: You must choose at least 1 channel.",
                   "Invalid Window Width: The window must be from 1 to 9 samples wide.",
                   "No Series of Cursors: Open a graph and set two or more cursors.",
                   "No Events: No events were recorded."}));
  SetCursors(2, 4);
  questions.boxAnswers = {Button::Yes};
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"WindowWidth", "5"}}), "Too Few Data|Too few data points.");
  EXPECT_TRUE(workbench.results.ResultTables.empty());
}

TEST_F(WindowTest, MissingSamplesAndTimesLeaveCellsEmpty) {
  trial.Data(2, 1) = std::numeric_limits<float>::quiet_NaN();
  Compute({{"channels 1", "yes"}, {"optSplit", "1"}, {"txtCount", "2"}});
  ExpectCells(Table("frmWindowStats"), 0, {{"n", 4}, {"Mean", 13.0 / 4}, {"Integral", NAN}, {"Slope", NAN}});
  ExpectCells(Table("frmWindowStats"), 1, {{"Integral", 4}});
  trial.Rate = 0;
  Compute({{"channels 1", "yes"}, {"optSplit", "1"}, {"txtCount", "10"}});
  ExpectCells(Table("frmWindowStats"), 5, {{"Integral", NAN}, {"Std.Dev.", NAN}});
  ExpectCells(Table("frmWindowStats"), 1, {{"n", 0}});
}

}  // namespace
}  // namespace velmora::test
