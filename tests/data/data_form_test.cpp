#include <limits>

#include "data/sample_cell.hpp"
#include "run/report/json_text.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct DataForm : CommandTest {
  void SetUp() override {
    SetChannels(trial, {{0.1F, 2.5e-7F, NAN, 4}, {1e30F, -2, 3, INFINITY}}, 1000);
    trial.ChanLabel[1] = "EMG\t<a>";
    trial.ChanUnits[1] = "mV";
    trial.FileChanged = false;
  }
  void Set(const std::string& sample, const std::string& channel, const std::string& value) {
    AnswerForm({{"txtSample", sample}, {"comChannel", channel}, {"txtValue", value}}, "Set");
  }
  void RunToExit() {
    AnswerForm({}, "Exit");
    Run("data.table");
  }
  Json Table() { return JsonTable(workbench.results.ResultTables.front()); }
};

TEST_F(DataForm, ListsRowsWithAllDigitsAndShowsThemReadably) {
  AnswerForm({{"txtTo", "4"}, {"txtFrom", "2"}}, "Exit");
  Run("data.table");
  EXPECT_EQ(Table()["columns"][2], "00: EMG <a> (mV)");
  EXPECT_EQ(Table()["rows"][0], Json({2.0, 0.001, 2.5e-07, -2.0}));
  EXPECT_TRUE(Table()["rows"][1][2].is_null());
  EXPECT_EQ(Table()["rows"].size(), 3U);
  // The pattern alone would show 0.0000, and 1e30 with 31 digits.
  EXPECT_EQ(Table()["shown"][0], Json({"2", "0.0010", "2.5e-07", "-2.0000"}));
  RunToExit();
  EXPECT_EQ(Table()["shown"][0], Json({"1", "0.0000", "0.1000", "1e+30"}));
  EXPECT_EQ(Table()["rows"][0][2], 0.1);
  EXPECT_FALSE(trial.FileChanged);

  workbench.time.Base = TimeBase::HhMmSs;
  RunToExit();
  EXPECT_EQ(Table()["shown"][1][1], "00:00:00.0010");
}

TEST_F(DataForm, RefusesRowsThatAreNotThereOrTooMany) {
  const auto list = [this](const char* from, const char* to) {
    AnswerForm({{"txtFrom", from}, {"txtTo", to}}, "Exit");
    Run("data.table");
    return Table()["rows"].size();
  };
  for (const auto& [from, to] : {std::pair("0", "1"), {"3", "2"}, {"1", "5"}, {"5", "6"}}) {
    EXPECT_EQ(list(from, to), 0U) << from << " to " << to;
  }
  EXPECT_EQ(workbench.report.warnings, (Texts{"Invalid Entry: From sample must be from 1 to 4.",
                                              "Invalid Entry: to sample must be from 3 to 4.",
                                              "Invalid Entry: to sample must be from 1 to 4.",
                                              "Invalid Entry: From sample must be from 1 to 4."}));
  SetChannels(trial, {Samples(10005, 1.0F)});
  EXPECT_EQ(list("2", "10001"), 10000U);
  EXPECT_EQ(list("2", "10002"), 0U);
}

TEST_F(DataForm, ChangesOneCellAtATimeAndTellsIt) {
  const auto before = Bits(trial);
  Set("3", "1", " 16777217 ");  // between two values of 32 bits: the even one
  Set("4", "01: ", "-1e-3");
  RunToExit();
  EXPECT_EQ(trial.Data(3, 1), 16777216.0F);
  EXPECT_EQ(trial.Data(4, 2), -1e-3F);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(Table()["rows"][2][2], 16777216.0);
  EXPECT_EQ(
      WordsOf(workbench.report.deeds),
      "Sample 3 changed from nan to 16777216: EMG\t<a>. Sample 4 changed from inf to -0.001: channel 01");
  trial.Data(3, 1) = NAN;
  trial.Data(4, 2) = INFINITY;
  auto after = Bits(trial);
  EXPECT_EQ(after.size(), before.size());
  after[2 * 3 + 1] = before[2 * 3 + 1];  // one NaN is as good as another
  EXPECT_EQ(after, before);
}

TEST_F(DataForm, RefusesWhatIsNoValueOrNoCell) {
  const auto before = Bits(trial);
  for (const char* value : {"", "abc", "1,5", "1 2", "nan", "inf", "0x10"}) {
    Set("1", "1", value);
  }
  Set("1", "1", "3.5e38");
  Set("1", "1", "-1e400");
  Set("0", "1", "1");
  Set("5", "1", "1");
  Set("1", "0", "1");
  RunToExit();
  EXPECT_EQ(workbench.report.warnings.size(), 12U);
  EXPECT_EQ(workbench.report.warnings[0], "Invalid Entry: The value must be a number.");
  EXPECT_EQ(workbench.report.warnings[7],
            "Invalid Entry: Value must be from -3.4028234663852886e+38 to 3.4028234663852886e+38.");
  EXPECT_EQ(workbench.report.warnings[9], "Invalid Entry: Sample must be from 1 to 4.");
  EXPECT_EQ(workbench.report.warnings[11],
            "Invalid Entry: The abscissa cannot be changed while it counts seconds.");
  EXPECT_EQ(Bits(trial), before);
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_TRUE(workbench.report.deeds.empty());

  workbench.time.Base = TimeBase::UserUnits;
  Set("2", "0", "7.5");
  RunToExit();
  EXPECT_EQ(trial.Data(2, 0), 7.5F);
}

TEST_F(DataForm, ASampleIsNamedByItsNumberOrItsTime) {
  const auto named = [this](const char* text) { return SampleNamed(workbench, text).value_or(0); };
  EXPECT_EQ(named(" 4 "), 4);
  EXPECT_EQ(named("0.0021 s"), 3);
  EXPECT_EQ(named("0.003S"), 4);
  trial.Data(1, 0) = 5;  // a crop that kept its times
  EXPECT_EQ(named("5.001s"), 2);
  EXPECT_EQ(workbench.report.warnings.size(), 0U);
  for (const char* text : {"0", "5", "99999999999999", "x", "", "s", "4.9 s", "5.1 s"}) {
    EXPECT_EQ(named(text), 0) << text;
  }
  EXPECT_EQ(workbench.report.warnings.size(), 8U);
  EXPECT_EQ(workbench.report.warnings[6], "Invalid Entry: Time (s) must be from 5 to 5.003.");
  workbench.time.Base = TimeBase::Percentage;
  EXPECT_EQ(named("5.001s"), 0);

  SetChannels(trial, {{3}});
  workbench.time.Base = TimeBase::Seconds;
  EXPECT_EQ(named("1"), 1);
  RunToExit();
  EXPECT_EQ(Table()["rows"].size(), 1U);
}

}  // namespace
}  // namespace velmora::test
