// Filters by design and residual analysis through their dialogues: what is run is what is shown, in every
// family.
#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/design/section_runs.hpp"
#include "support/command_test.hpp"
#include "support/number_rows.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

struct FilterDesignDialogue : FileTest {
  void Filter(Edits edits, int channel = 1) {
    edits.emplace_back("channels " + std::to_string(channel), "yes");
    questions.FillForm(edits, "Filter");
    Run("filter.design");
  }
  std::string Refused(Edits edits) {
    const auto before = Bits(trial);
    edits.emplace_back("channels 1", "yes");
    questions.FillForm(edits, "Filter");
    questions.FillForm({}, "Cancel");
    Run("filter.design");
    EXPECT_EQ(Bits(trial), before);
    return LastBox();
  }
  [[nodiscard]] const ResultTable& Table(const char* name) const {
    for (const ResultTable& table : workbench.results.ResultTables) {
      if (table.name == name) {
        return table;
      }
    }
    throw std::out_of_range(name);
  }
  // The root mean square of the middle of a filtered tone against that of the tone.
  double GainOfTone(double frequency, const Edits& edits) {
    Samples tone;
    for (int i = 0; i < 8000; ++i) {
      tone.push_back(static_cast<float>(std::sin(2 * Pi * frequency * i / 1000)));
    }
    SetChannels(trial, {tone}, 1000);
    Filter(edits);
    double before = 0;
    double after = 0;
    for (int i = 3000; i < 5000; ++i) {
      before += std::pow(tone[static_cast<std::size_t>(i)], 2);
      after += std::pow(double{trial.Data(i + 1, 1)}, 2);
    }
    return std::sqrt(after / before);
  }
};

TEST_F(FilterDesignDialogue, EveryFamilyPassesWhatItShouldAndTellsIt) {
  struct Case {
    Edits edits;
    double frequency;
    double gain;
    const char* words;
  };
  const Case cases[] = {
      {{{"txtCutoff", "50"}, {"txtOrder", "4"}},
       50,
       std::sqrt(0.5),
       "Low-pass Butterworth, order 4, zero-lag, 50 Hz over both passes"},
      {{{"txtCutoff", "50"}, {"chkKeepCutoff", "no"}},
       50,
       0.5,
       "Low-pass Butterworth, order 2, zero-lag, 50 Hz"},
      {{{"optFamily", "1"}, {"txtCutoff", "50"}, {"txtRipple", "1"}, {"optDirection", "1"}},
       50,
       std::pow(10, -0.05),
       "Low-pass Chebyshev, order 2, forward only, 50 Hz"},
      {{{"optFamily", "2"}, {"txtCutoff", "50"}, {"txtAttenuation", "30"}, {"optDirection", "1"}},
       50,
       std::pow(10, -1.5),
       "Low-pass Inverse Chebyshev, order 2, forward only, 50 Hz"},
      {{{"optFamily", "3"}, {"optPassType", "2"}, {"txtCutoff", "20"}, {"txtHigher", "90"}},
       20,
       std::pow(10, -0.05),
       "Band-pass Elliptic, order 2, zero-lag, 20 to 90 Hz"},
      {{{"optFamily", "4"}, {"optPassType", "1"}, {"txtCutoff", "100"}, {"optFirWindow", "2"}},
       100,
       0.5,
       "High-pass FIR, Blackman, 101 taps, zero-lag, 100 Hz"},
      {{{"optFamily", "4"},
        {"optFirWindow", "3"},
        {"txtCutoff", "100"},
        {"txtAttenuation", "60"},
        {"txtTransition", "20"}},
       100,
       0.5,
       "Low-pass FIR, Kaiser, 183 taps, zero-lag, 100 Hz"},
      {{{"optFamily", "5"}, {"txtCutoff", "50"}, {"txtHarmonics", "12"}},
       100,
       0,
       "Notch, zero-lag, 50 Hz and 12 harmonics, 2 Hz wide over both passes"},
      {{{"optFamily", "6"}, {"comClass", "60"}}, 100, std::sqrt(0.5), "CFC 60, zero-lag"},
      {{{"optFamily", "7"}, {"txtWindow", "5"}, {"txtPolynomial", "2"}},
       250,
       // (17 - 2*12*cos(pi/2) ...)/35 with weights -3, 12, 17: 17/35 + 2*(12 cos(w) - 3 cos(2w))/35.
       (17.0 + 2 * (12 * std::cos(Pi / 2) - 3 * std::cos(Pi))) / 35,
       "Savitzky-Golay, 5 points, polynomial 2"},
      {{{"optFamily", "8"}, {"txtNumerator", "1 1"}, {"txtDenominator", "2"}, {"optDirection", "1"}},
       250,
       std::cos(Pi / 4),
       "Filter b = 1 1, a = 2, forward only"},
  };
  for (const Case& one : cases) {
    EXPECT_NEAR(GainOfTone(one.frequency, one.edits), one.gain, 0.02) << one.words;
    EXPECT_EQ(workbench.report.deeds.back().what, one.words);
    EXPECT_FALSE(Table("frmFilterDesignCoefficients").rows.empty());
    for (const auto& row : Table("frmFilterDesign").rows) {
      if (std::get<double>(row[0]) == one.frequency) {
        EXPECT_NEAR(std::get<double>(row[1]), one.gain, 0.02) << one.words;
      }
    }
  }
}

TEST_F(FilterDesignDialogue, OffersWhatTheChosenChannelWasFilteredWith) {
  SetChannels(trial, NoiseChannels(3, 400), 1000);
  workbench.filters.FilterCutoffs[1] = 30;
  workbench.filters.FilterCutoffs[2] = 12;
  workbench.filters.SecondCutoffs[2] = 90;
  const auto filtered = [this](const Edits& edits) {
    questions.FillForm(edits, "Filter");
    Run("filter.design");
    return workbench.report.deeds.back().what;
  };
  const std::string band = "Band-pass Butterworth, order 2, zero-lag, ";
  EXPECT_EQ(filtered({{"optPassType", "2"}, {"channels 2", "yes"}, {"channels 3", "yes"}}),
            band + "12 to 90 Hz over both passes");
  EXPECT_EQ(filtered({{"txtHigher", "60"}, {"optPassType", "2"}, {"channels 2", "yes"}}),
            band + "12 to 60 Hz over both passes");
  EXPECT_EQ(filtered({{"optPassType", "2"}, {"channels 1", "yes"}, {"txtCutoff", "40"}}),
            band + "40 to 265 Hz over both passes");
}

TEST_F(FilterDesignDialogue, RefusesWithItsMessages) {
  SetChannels(trial, NoiseChannels(2, 40), 1000);
  EXPECT_EQ(Refused({{"txtCutoff", "500"}}), "Invalid Entry|Cutoff frequency must be from 0 to 500.");
  EXPECT_EQ(Refused({{"txtOrder", "21"}}), "Invalid Entry|Order must be from 1 to 20.");
  EXPECT_EQ(Refused({{"optPassType", "2"}, {"txtCutoff", "60"}, {"txtHigher", "50"}}),
            "Invalid Filter|The lower cutoff must lie below the higher cutoff.");
  EXPECT_EQ(Refused({{"optFamily", "4"}}),
            "Filter Too Long|The filter has 101 taps and the channel 40 samples.");
  EXPECT_EQ(Refused({{"optFamily", "4"}, {"txtTaps", "20"}}),
            "Invalid Filter|The number of taps must be odd and from 3 to 9999.");
  // What would be worked out for ever, or fill the memory, is not even drawn.
  EXPECT_EQ(Refused({{"optFamily", "4"}, {"txtTaps", "2000000001"}}),
            "Invalid Entry|Taps (odd) must be from 3 to 9999.");
  EXPECT_EQ(Refused({{"optFamily", "3"}, {"txtAttenuation", "1e30"}}),
            "Invalid Entry|Attenuation (dB) must be from 10 to 120.");
  EXPECT_EQ(Refused({{"optFamily", "5"}, {"txtCutoff", "600"}}),
            "Invalid Entry|Frequency must be from 0 to 500.");
  EXPECT_EQ(Refused({{"optFamily", "6"}, {"comClass", "600"}}),
            "Invalid Filter|The sampling rate is too low for class 600.");
  EXPECT_EQ(Refused({{"optFamily", "7"}, {"txtWindow", "41"}}),
            "Filter Too Long|The filter has 41 points and the channel 40 samples.");
  EXPECT_EQ(Refused({{"optFamily", "8"}, {"txtDenominator", "1 -2"}}),
            "Invalid Filter|The filter is not stable.");
  questions.FillForm({}, "Filter");
  questions.FillForm({}, "Cancel");
  Run("filter.design");
  EXPECT_EQ(LastBox(), "Too Few Channels Selected|You must choose at least 1 channel.");
  const std::vector<float> before = Channel(trial, 1);
  Filter({{"optFamily", "8"}, {"txtNumerator", "1e40"}}, 1);
  EXPECT_EQ(
      LastBox(),
      "Digital filter design|The result for channel 00 is not one that data can hold.  Nothing was changed.");
  EXPECT_EQ(Channel(trial, 1), before);
  trial.Data(3, 1) = NAN;
  Filter({}, 2);
  questions.boxes.clear();
  workbench.report = {};
  questions.FillForm({{"channels 1", "yes"}, {"channels 2", "yes"}}, "Filter");
  Run("filter.design");
  EXPECT_EQ(questions.boxes.at(0).title, "Missing Data");
  EXPECT_EQ(workbench.report.deeds.back().refused.size(), 1U) << "the other channel is filtered all the same";
  trial.Rate = 0;
  Run("filter.design");
  EXPECT_EQ(LastBox(), "Invalid Sampling Rate or Timebase|Data not time based.  Processing cannot continue.");
}

TEST_F(FilterDesignDialogue, ALowRateForAClassIsToldAndOneSampleStays) {
  SetChannels(trial, NoiseChannels(1, 200), 1000);
  Filter({{"optFamily", "6"}, {"comClass", "180"}});
  EXPECT_EQ(LastBox(),
            "Sampling Rate Low|The sampling rate is below ten times the class; the standard asks for more.");
  EXPECT_EQ(workbench.report.deeds.back().what, "CFC 180, zero-lag");
  for (const char* family : {"0", "3", "5", "6", "8"}) {
    SetChannels(trial, {{7}}, 1000);
    Filter({{"optFamily", family}});
    EXPECT_NEAR(trial.Data(1, 1), 7, family[0] == '3' ? 0.8 : 1e-5) << "family " << family;
  }
}

TEST_F(FilterDesignDialogue, CancelLeavesTheTrialAsItWas) {
  SetChannels(trial, NoiseChannels(40, 5000), 1000);
  const auto before = Bits(trial);
  int turns = 0;
  questions.onProgress = [&turns](ProgressPanel& panel) {
    if (++turns == 30) {
      panel.PressCancel();
    }
  };
  questions.FillForm(WithChannels(40), "Filter");
  questions.FillForm({}, "Cancel");
  Run("filter.design");
  EXPECT_GE(turns, 30);
  EXPECT_EQ(Bits(trial), before);
  EXPECT_TRUE(workbench.report.deeds.empty());
}

// The sums that another library published for four EMGs of this recording, filtered forward and backward.
TEST_F(FilterDesignDialogue, PublishedSumsOfARecording) {
  const auto path = Recording("vendor/vicon_nexus_analogs.csv");
  if (!path) {
    GTEST_SKIP() << "no recordings here";
  }
  const NumberRows rows = NumbersOf(*path);
  ASSERT_EQ(rows.size(), 11600U);
  const auto sumAfter = [&](const Edits& edits) {
    SetFrom(
        trial, rows,
        [](const auto& row) {  // EMG1, EMG10, EMG11, EMG12
          return Samples{static_cast<float>(row[8]), static_cast<float>(row[17]), static_cast<float>(row[18]),
                         static_cast<float>(row[19])};
        },
        2000);
    questions.FillForm(WithChannels(4, edits), "Filter");
    Run("filter.design");
    return Sum(1) + Sum(2) + Sum(3) + Sum(4);
  };
  EXPECT_NEAR(sumAfter({{"txtCutoff", "5"}, {"chkKeepCutoff", "no"}}), 0.342223358074015, 1e-5);
  EXPECT_NEAR(
      sumAfter({{"optPassType", "3"}, {"txtCutoff", "40"}, {"txtHigher", "60"}, {"chkKeepCutoff", "no"}}),
      0.342335416199246, 1e-5);
}

// --- Residual analysis

struct ResidualAnalysis : CommandTest {
  void SetUp() override {
    Samples x = NoiseChannels(1, 600, 9)[0];
    for (std::size_t i = 0; i < x.size(); ++i) {
      x[i] = 0.01F * x[i] + static_cast<float>(std::sin(2 * Pi * static_cast<double>(i) / 100));
    }
    SetChannels(trial, {x, Samples(600, 2.0F)}, 100);
  }
};

TEST_F(ResidualAnalysis, OffersTheCutOffAndTellsWhatHasNone) {
  questions.FillForm({{"channels 1", "yes"}, {"channels 2", "yes"}, {"txtLinearity", "0.9"}}, "Compute");
  questions.FillForm({}, "Exit");
  Run("filter.residuals");
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(LastBox(),
            "No Straight Part|No cut-off was found for channel 01: the residuals have no straight part.  Set "
            "where the line starts.");
  const ResultTable& table = workbench.results.ResultTables.at(0);
  ASSERT_EQ(table.name, "frmResiduals");
  const double cutoff = std::get<double>(table.rows[0][2]);
  EXPECT_GT(cutoff, 1) << "the movement has 1 Hz";
  EXPECT_LT(cutoff, 8);
  EXPECT_TRUE(std::holds_alternative<std::monostate>(table.rows[1][2]));
  EXPECT_EQ(workbench.filters.LastLowPassCutoffs[1], static_cast<float>(cutoff));
  EXPECT_EQ(workbench.filters.LastLowPassCutoffs[2], 0);
  EXPECT_EQ(workbench.results.ResultTables.at(1).rows.size(), 101U);
  EXPECT_FALSE(trial.FileChanged);
  // From 10 Hz on there is noise alone.
  questions.FillForm({{"channels 1", "yes"}, {"txtFrom", "10"}, {"txtLinearity", "0.9"}}, "Compute");
  questions.FillForm({}, "Exit");
  Run("filter.residuals");
  EXPECT_EQ(
      LastBox(),
      "Line Not Reached|No cut-off was found for channel 00: the residuals lie below their straight part "
      "from the first frequency on.  Begin at a lower one.");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(workbench.results.ResultTables.at(0).rows[0][2]));
}

TEST_F(ResidualAnalysis, RefusesWithItsMessages) {
  const auto refused = [this](const Edits& edits) {
    questions.FillForm(edits, "Compute");
    questions.FillForm({}, "Cancel");
    Run("filter.residuals");
    return LastBox();
  };
  EXPECT_EQ(refused({{"channels 1", "yes"}, {"txtSteps", "19"}}),
            "Invalid Entry|Steps must be from 20 to 1000.");
  EXPECT_EQ(refused({{"channels 1", "yes"}, {"txtFrom", "30"}, {"txtTo", "20"}}),
            "Invalid Entry|To must be from 30 to 50.");
  EXPECT_EQ(refused({{"channels 1", "yes"}, {"txtTo", "49"}}).substr(0, 14), "Invalid Filter");
  SetChannels(trial, {{1, 2, 3}}, 100);
  EXPECT_EQ(refused({}), "Too Few Data|Too few data points.");
}

}  // namespace
}  // namespace velmora::test
