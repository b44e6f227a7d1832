#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <string>

#include "core/questions/form.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct ImpactCommandsTest : TableTest {
  std::map<std::string, std::string> told;  // by the form's texts
  Texts lastButtons;                        // of each form

  // 2 s at 20 kHz; an impact of 80 g over 20 ms, in channel 2 with a sample below 0 before it.
  void SetUp() override {
    std::vector<float> a(40000, 0.0F);
    for (int i = 0; i <= 400; ++i) {
      a[static_cast<std::size_t>(20000 + i)] = static_cast<float>(80 * std::sin(std::numbers::pi * i / 400));
    }
    std::vector<float> below = a;
    below[100] = -3.0F;
    SetChannels(trial, {a, below}, 20000);
    trial.ChanUnits[1] = "m/s^2";
  }

  /// The next form is filled in, pressed, looked at and left.
  void See(const Edits& edits, const std::string& press = "Recalculate") {
    questions.FillForm(edits, press);
    questions.formAnswers.emplace_back([this](Form& form) {
      for (const char* name : {"txtWarnings", "txtReduction", "txtScaling"}) {
        told[name] = Form::TextOf(*form.FindField(name));
      }
      lastButtons.push_back(form.Buttons().back().caption);
      return std::string("OK");
    });
  }
  void Reduce(const Edits& edits, const std::string& press = "Recalculate", int channel = 1) {
    questions.PickChannels({channel});
    questions.boxAnswers = {Button::OK};
    See(edits, press);
    Run("impact.gsi-hic");
  }
  void Expect(const NamedNumbers& quantities, double within = 0) {
    ExpectRows(Table("frmGSIHIC"), "Value", quantities, within);
  }
  double Of(std::string_view quantity) {
    return Cell(Table("frmGSIHIC"), RowOf(Table("frmGSIHIC"), quantity), "Value");
  }
  std::string UnitsOf(std::string_view quantity) {
    return ShownCell(Table("frmGSIHIC"), RowOf(Table("frmGSIHIC"), quantity), 2);
  }
};

TEST_F(ImpactCommandsTest, ReducesAnewAfterEveryEdit) {
  Reduce({{"cwnCutoff", "0"}, {"HeadformMass", "5"}, {"cwnHICtime", "20"}});
  const double area = 80 * 0.02 * 2 / std::numbers::pi;  // of the half sine, g s
  Expect({{"GSI", 0.45766 * std::pow(80, 2.5) * 0.02}, {"HIC", std::pow(area / 0.02, 2.5) * 0.02}}, 1);
  Expect({{"Time to peak", 1010}}, 1e-3);
  Expect({{"HIC start time", 1000}}, 1);
  Expect({{"       end time", Of("HIC start time") + 20}}, 1e-4);
  EXPECT_EQ(UnitsOf("Time to peak"), "ms");
  EXPECT_EQ(told["txtWarnings"], "   No warnings.");
  EXPECT_EQ(workbench.impact.HeadformMass, 5.0F);
  EXPECT_HAS(told["txtReduction"], "HIC over 400 samples, 20.000 ms\nThe channel is in m/s^2");
  EXPECT_FALSE(trial.FileChanged);

  Reduce({{"txtScaling", "g"}, {"optAbscissa", "1"}, {"cwnCutoff", "0"}});
  EXPECT_EQ(told["txtScaling"], "9.80667");
  Expect({{"Maximum acc.", 80 * 9.80667}}, 1e-2);
  Expect({{"Time to peak", 1.010}}, 1e-5);
  EXPECT_EQ(UnitsOf("Time to peak"), "s");
  Reduce({{"chkMtoG", "1"}, {"chkMtoG", "0"}});
  EXPECT_EQ(told["txtScaling"], "1.000");
  Reduce({{"txtScaling", "2"}, {"txtScaling", ""}});
  EXPECT_EQ(told["txtScaling"], "2") << "nothing typed is no scaling by 0";
}

TEST_F(ImpactCommandsTest, WarnsOfWhatSpoilsAReduction) {
  const auto warnings = [this](const Edits& edits, const std::string& press, int channel) {
    Reduce(edits, press, channel);
    return told["txtWarnings"];
  };
  EXPECT_EQ(warnings({}, "Recalculate", 2),
            " Data values cannot be negative. \nPress Zero Negative Numbers button.\nHeadform mass is zero.");
  Expect({{"GSI", 0}});
  EXPECT_EQ(trial.Notices,
            (Texts{"Channel 01 has 1 value below 0: nothing was reduced, and all its measures of "
                   "an impact are 0."}));
  EXPECT_EQ(warnings({}, "Zero Negative Numbers", 2), "Headform mass is zero.");
  Expect({{"GSI", 0.45766 * std::pow(80, 2.5) * 0.02}}, 1);
  EXPECT_EQ(warnings({{"txtScaling", "none"}}, "Recalculate", 1),
            "Results are low.  Did you scale the data to g's?\nHeadform mass is zero.");
  questions.boxes.clear();
  Reduce({{"cwnCutoff", "9900"}});  // above half the rate once adjusted for the passes
  EXPECT_EQ(questions.boxes.back().title, "Invalid Cutoff Frequency");
  EXPECT_EQ(trial.Notices.back(), "Channel 00 is in m/s^2: a scaling of 0.101972 makes g's of it.");
  EXPECT_HAS(warnings({{"txtScaling", "1e20"}}, "Recalculate", 1),
             " Could not perform integration.\nValues are too large.  Is the scaling right?");
  EXPECT_HAS(trial.Notices.back(), "values too large");
  trial.Rate = 100;
  EXPECT_HAS(warnings({}, "Recalculate", 1), "Sampling rate too low for 1000 Hz cutoff.  ");
  EXPECT_HAS(trial.Notices.back(), "was reduced without a filter");
  Run("timebase.percentage");
  EXPECT_HAS(warnings({}, "Recalculate", 1), "The abscissa is not in seconds");
  EXPECT_HAS(trial.Notices.back(), "The abscissa is not in seconds");
  // A sample that is no number leaves no measure, and above all no harmless one.
  trial.Data(7, 1) = kNan;
  EXPECT_HAS(warnings({{"cwnCutoff", "0"}}, "Recalculate", 1), " Could not perform integration.");
  const ResultTable& table = Table("frmGSIHIC");
  EXPECT_TRUE(std::holds_alternative<std::monostate>(table.rows.at(RowOf(table, "HIC")).at(1)));
  EXPECT_HAS(trial.Notices.back(), "1 sample without a number");
}

TEST_F(ImpactCommandsTest, GoesFromChannelToChannelAndEndsAtEveryCancel) {
  questions.PickChannels({1, 2});
  questions.boxAnswers = {Button::OK};
  See({});
  See({});
  Run("integrate.gsi-hic");
  EXPECT_EQ(lastButtons, (Texts{"&Next channel", "E&xit"}));
  // The table of the last channel, and a row for each.
  Expect({{"HIC", 0}});
  const double area = 80 * 0.02 * 2 / std::numbers::pi;
  ExpectCells(Table("frmGSIHICChannels"), 0, {{"HIC", std::pow(area / 0.036, 2.5) * 0.036}}, 0.5);
  ExpectCells(Table("frmGSIHICChannels"), 0, {{"Maximum acc. (g)", 80}, {"Time to peak", 1010}}, 0.5);
  ExpectCells(Table("frmGSIHICChannels"), 1, {{"HIC", 0}});
  EXPECT_EQ(ShownCell(Table("frmGSIHICChannels"), 1, 0), "01");
  EXPECT_EQ(ShownCell(Table("frmGSIHICChannels"), 1, 2), "ms");
  questions.formNames.clear();
  questions.PickChannels({1});
  questions.boxAnswers = {Button::Cancel};
  Run("impact.gsi-hic");
  questions.PickCancel();
  Run("impact.gsi-hic");
  EXPECT_TRUE(questions.formNames.empty());
}

TEST_F(ImpactCommandsTest, IntegratesByThreeRules) {
  // Simpson's weights are kept as they are: 10/3 and not the true 4, (0 + 8 + 4 4 + 2 8)/3 and not 16; of an
  // even count x(5) has the weight 4.
  SetChannels(trial, {{1, 1, 1, 1, 1}, {0, 2, 4, 6, 8}, {2, -1, 5, 0, 3}}, 1);
  EXPECT_EQ(OfferedBy("integrate.simpson"), (Texts{"3.33333", "13.33333", "7.66667"}));
  EXPECT_EQ(OfferedBy("integrate.trapezoid"), (Texts{"4.00000", "16.00000", "6.50000"}));
  SetChannels(trial, {{1, 2, 3, 4, 5, 6}, {0, 2, 4, 6, 8, 8}}, 2);
  EXPECT_EQ(OfferedBy("integrate.simpson")[0], "8.50000");
  EXPECT_EQ(OfferedBy("integrate.trapezoid")[0], "8.75000");
  EXPECT_FALSE(trial.FileChanged);
  RunPicking("integrate.indefinite", {2});
  EXPECT_EQ(Channel(trial, 2), (Samples{0, 1, 3, 6, 10, 14}));
  EXPECT_TRUE(trial.FileChanged);
  SetChannels(trial, {{1, 2, 3, 4}}, 1);
  for (const char* id : {"integrate.gsi-hic", "integrate.indefinite", "integrate.simpson",
                         "integrate.trapezoid", "integrate.statistics"}) {
    Run(id);
    EXPECT_EQ(LastBox(), "Too Few Data|Too few data points to integrate.");
  }
}

TEST_F(ImpactCommandsTest, ShowsIntegrationStatisticsOfTheRange) {
  SetChannels(trial, {{5, 1, -1, 1, 5}, {1e6F, 1e6F, -1e6F, 0, 0}}, 2);
  trial.ChanLabel[1] = "Chan01";
  trial.ChanLabel[2] = "Chan02";
  SetCursors(2, 4);
  questions.PickChannels({1, 2});
  questions.boxAnswers = {Button::Yes};
  questions.formAnswers.emplace_back([](Form&) { return std::string("Send results to Clipboard"); });
  questions.FillForm({});
  Run("integrate.statistics");
  EXPECT_EQ(workbench.results.Clipboard,
            "Filename:\t\nTrial:\t\nRange:\t0.500\t1.500\n"
            "Channel\tLabel\tMean\tStd.Dev.\tPath Integ'l\tTime Integ'l\tAbs. Integ'l\tCoeff. var'n\tSum\t"
            "Abs. sum\n"
            "00\tChan01\t0.3333\t0.9428\t4.0000\t0.5000\t1.5000\t282.8%\t1.0000\t3.0000\n"
            "01\tChan02\t0.0000\t816496.5809\t3000000.\t0.0000\t1000000.\t0.0%\t0.0000\t2000000.\n");
  EXPECT_FALSE(trial.FileChanged);
}

}  // namespace
}  // namespace velmora::test
