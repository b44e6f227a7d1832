// Contacts of feet with plates and belts, as the command finds and stores them.
#include "core/text/numbers.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct FootContacts : AnalysisTest {
  FootContacts() : AnalysisTest("plates.contacts") {}

  void Find(Edits edits) {
    edits.insert(edits.begin(), {"channels 1", "yes"});
    Compute(edits);
  }
  /// "0.01-0.04 0.08-0.08!" of a channel's rows; an exclamation mark where it is not whole.
  std::string Times(const std::string& channel = "00") {
    std::string times;
    const ResultTable& table = Table("frmContacts");
    for (std::size_t k = 0; k < table.rows.size(); ++k) {
      if (ShownCell(table, k, 0) == channel) {
        times += (times.empty() ? "" : " ") + FormatNumber(Cell(table, k, "On"), "0.000") + "-" +
                 FormatNumber(Cell(table, k, "Off"), "0.000") + (ShownCell(table, k, 11) == "yes" ? "" : "!");
      }
    }
    return times;
  }
};

TEST_F(FootContacts, AreMeasuredFromTheirSamples) {
  SetChannels(trial, {{0, 30, 30, 5, 30, 0, 0, 0, 30, 0}}, 100);
  const auto before = Bits(trial);
  Find({{"txtMinContact", "0.01"}, {"txtMinGap", "0.02"}, {"chkInterpolate", "no"}});
  EXPECT_EQ(Bits(trial), before) << "the channels stay as they are";
  EXPECT_EQ(Times(), "0.010-0.040 0.080-0.080");
  const ResultTable& table = Table("frmContacts");
  ExpectCells(table, 0, {{"Peak", 30}, {"Mean", 95.0 / 4}});
  ExpectCells(table, 0, {{"Contact time", 0.03}, {"Swing time", 0.04}, {"Stride time", 0.07}}, 1e-16);
  ExpectCells(table, 0, {{"Impulse", 0.30 + 0.175 + 0.175}}, 1e-15);
  ExpectCells(table, 1, {{"Swing time", NAN}, {"Stride time", NAN}});
  EXPECT_EQ(workbench.events.ChannelEvents.at(0)[1], (EventTimes{0.01, 0.04}));
  EXPECT_EQ(workbench.events.ChannelEvents.at(1)[1], (EventTimes{0.08, 0.08}));
  Find({{"txtMinContact", "0.02"}, {"txtMinGap", "0.02"}, {"chkInterpolate", "no"}, {"chkEvents", "no"}});
  EXPECT_EQ(Times(), "0.010-0.020");
  EXPECT_EQ(workbench.events.NEvents(), 2) << "stored before";
  // A spike of two samples in the flight is no contact, and joins none.
  SetChannels(trial, {{30, 0, 30, 30, 30, 30, 30, 0, 30, 30, 0, 0, 30, 30, 30, 30, 30, 0}}, 100);
  workbench.events = {};
  Find({{"chkInterpolate", "no"}});
  EXPECT_EQ(Times(), "0.000-0.060! 0.120-0.160");
  EXPECT_EQ(workbench.events.ChannelEvents.at(0)[1], (EventTimes{EventTimes::kNone, 0.06}))
      << "nobody saw it begin";
  // A recording that was interrupted: the table tells the abscissa.
  for (std::int64_t i = 11; i <= trial.NData; ++i) {
    trial.Data(i, 0) += 5;
  }
  Find({{"chkInterpolate", "no"}, {"chkEvents", "no"}});
  EXPECT_EQ(Times(), "0.000-0.060! 5.120-5.160");
}

TEST_F(FootContacts, InterpolateTurnAndCompareTwoFeet) {
  // Trapezoids of 100 N up and down within a sample: crossings 0.2 and 0.9 of a sample away.
  const Samples left = {100, 100, 0, 0, 0, 100, 100, 0, 0, 0, 100, 100, 0, 0, 0, 100};
  Samples right(left.size(), 0.0F);
  for (const std::size_t k : {3U, 4U, 5U, 8U, 9U, 10U, 13U, 14U}) {
    right[k] = -50;
  }
  SetChannels(trial, {left, right}, 10);
  trial.ChanUnits[1] = "N";
  trial.ChanUnits[2] = "V";
  trial.ChanLabel[2] = "Fz right";
  SetCursors(1, trial.NData);
  Find({{"channels 2", "yes"}, {"txtMinGap", "0"}});
  EXPECT_EQ(Times(), "0.000-0.190! 0.420-0.690 0.920-1.190 1.420-1.500!");
  EXPECT_EQ(Times("01"), "0.240-0.580 0.740-1.080 1.240-1.480");
  EXPECT_EQ(LastBox(), "Not in Newtons|Channel 01 is in V.  It is taken as if it were in newtons.");
  EXPECT_HAS(Table("frmContacts").title, "Fz right points down and was turned");
  const ResultTable& summary = Table("frmContactsSummary");
  ExpectCells(summary, 0, {{"Contacts", 4}, {"Whole", 2}});
  ExpectCells(summary, 0, {{"Contact time", 0.27}, {"Contact time SD", 0}, {"Swing time", 0.23}}, 1e-12);
  ExpectCells(summary, 0, {{"Cadence (/min)", 120}}, 1e-9);
  ExpectCells(summary, 1, {{"Peak", 50}});
  ExpectCells(summary, 1,
              {{"Contact time", (0.34 + 0.34 + 0.24) / 3}, {"Contact time SD", 0.1 / std::sqrt(3.0)}}, 1e-12);
  EXPECT_EQ(ShownCell(summary, 2, 1), "Symmetry (%)");
  ExpectCells(summary, 2, {{"Peak", 100 * 50 / 75.0}, {"Cadence (/min)", 0}}, 1e-9);
}

TEST_F(FootContacts, ThresholdsInPercentServeLightPeople) {
  SetChannels(trial, {{0, 4, 12, 18, 12, 3, 0, 0, 0, 0}, Samples(10, 0.0F)}, 100);
  Find({{"chkInterpolate", "no"}});
  EXPECT_EQ(Table("frmContacts").rows.size(), 0U);
  Find({{"channels 2", "yes"},
        {"optUnits", "1"},
        {"txtOn", "50"},
        {"txtOff", "20"},
        {"txtMinContact", "0"},
        {"chkInterpolate", "no"}});
  EXPECT_EQ(Times(), "0.020-0.040");  // 9 and 3.6 of 18
  EXPECT_EQ(Times("01"), "") << "all zeros have no largest force";
}

TEST_F(FootContacts, RefuseWhatCannotBe) {
  SetChannels(trial, {Samples(10, 5.0F), Samples(10, 5.0F)}, 100);
  EXPECT_EQ(Refused({}), "Too Few Channels Selected|You must choose at least 1 channel.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"txtOff", "21"}}),
            "Invalid Entry|Off below must be from 0 to 20.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"optUnits", "1"}, {"txtOn", "120"}}),
            "Invalid Entry|On from must be from 0 to 100.");
  EXPECT_EQ(Refused({{"channels 1", "yes"}, {"txtMinGap", "1"}}),
            "Invalid Entry|Shortest gap (s) must be from 0 to 0.1.");
  trial.Data(4, 1) = kNan;
  EXPECT_EQ(Refused({{"channels 1", "yes"}}),
            "Missing Data|Channel 00 has 1 samples that are no numbers between samples 1 and 10.");
  SetChannels(trial, {Samples(4, 5.0F)}, 100);
  EXPECT_EQ(RefusedAtOnce(), "Too Few Data|Too few data points.");
  trial.Rate = 0;
  EXPECT_EQ(RefusedAtOnce(),
            "Invalid Sampling Rate or Timebase|Data not time based.  Processing cannot continue.");
}

}  // namespace
}  // namespace velmora::test
