#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "support/signals.hpp"
#include "support/table_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct EmgCommandsTest : TableTest {
  // Amplitudes 0.5, 1.5, ... 99.5 once with each sign, and the largest, 100.
  void SetUniform() {
    Samples x =
        Sampled(100, [](int i) { return (static_cast<float>(i) + 0.5F) * (i % 2 == 0 ? 1.0F : -1.0F); });
    x.push_back(-100.0F);
    SetChannels(trial, {x}, 1000);
    trial.ChanLabel[1] = "Vastus lat";
  }
};

TEST_F(EmgCommandsTest, UniformAmplitudesMakeAStraightDistribution) {
  SetUniform();
  questions.FillForm({});
  questions.boxAnswers = {Button::OK};
  Run("emg.apdf");
  const ResultTable& table = Table("frmAPDF");
  ASSERT_EQ(table.rows.size(), 100U);
  for (std::size_t b = 1; b <= 99; ++b) {
    EXPECT_EQ(Cell(table, b - 1, "Frequency"), 1) << b;
    EXPECT_NEAR(Cell(table, b - 1, "Cum.APDF"), 100.0 * static_cast<double>(b) / 101, 1e-4) << b;
  }
  EXPECT_EQ(Cell(table, 99, "Frequency"), 2);  // the largest too
  // 10.1 bins below the level of 10 %, carried on from bin 10, the last one below it; 50.5 and 90.9 likewise.
  EXPECT_EQ(workbench.results.ResultText,
            "Channel: (0)  Vastus lat\n Amplitude of 10th percentile is 10.100\n"
            " Amplitude of 50th percentile is 50.500\n Amplitude of 90th percentile is 90.900\n");
  EXPECT_EQ(questions.boxes.back().text.find(workbench.results.ResultText), 0U);
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(EmgCommandsTest, RunningSumsOfChosenChannelsAndLimitsLieOverEachOther) {
  SetChannels(trial, {{1, 2, 3, 4}, {4, 4, 4, 4}, {0, 0, 0, 0}}, 1000);
  trial.ChanLabel[2] = "Deltoid";
  questions.PickChannels({1, 2, 3});
  questions.formAnswers.emplace_back([](Form& form) {
    Type(form, {{"chkAll", "true"}, {"chkLimits", "true"}});
    const std::vector<FormGraph::Plot>& plots = form.Graph()->plots;
    EXPECT_EQ(plots.size(), 4U);  // bars, two sums, limits: a channel of zeros has no sum
    EXPECT_EQ(plots.at(2).name, "CAPDF 01 Deltoid");
    EXPECT_EQ(plots.at(2).y.at(98), 0);
    EXPECT_EQ(plots.at(2).y.at(99), 100);
    EXPECT_EQ(plots.at(3).x.at(2), 50);  // % of the largest, which 90 % of the samples stay below
    EXPECT_TRUE(form.Tables().front().hidden);
    return std::string("Exit");
  });
  questions.boxAnswers = {Button::Cancel};
  trial.CursorLo = 2;
  Run("emg.apdf");
  EXPECT_EQ(trial.Notices, Texts{"C/APDF took all samples, also those outside the cursors."});
}

TEST_F(EmgCommandsTest, TablesOfStatisticsLeadToEachOther) {
  SetChannels(trial, {{9, 1, -1, 2, -2, 1, -1, 9, 9, 9}, Samples(10, 1.0F)}, 10);
  trial.CursorLo = 2;
  trial.CursorHi = 7;
  questions.boxAnswers = {Button::Yes};
  questions.PickChannels({1});
  for (const char* press : {"EMG stats.", "Fourier stats."}) {
    questions.FillForm({}, press);
  }
  questions.inputAnswers = {"2"};  // harmonics
  questions.FillForm({}, "Integration stats.");
  questions.PickChannels({2});
  for (int left = 0; left < 4; ++left) {
    questions.FillForm({});
  }
  Run("integrate.statistics");
  EXPECT_EQ(questions.formNames, (Texts{"frmIntegral", "frmEMGstats", "frmFourierStats", "frmIntegral",
                                        "frmFourierStats", "frmEMGstats", "frmIntegral"}));
  EXPECT_EQ(Cell(Table("frmEMGstats"), 0, "Abs. Sum"), 8);  // of samples 2 to 7
  EXPECT_NEAR(Cell(Table("frmFourierStats"), 0, "Mean Abs.Value"), 8.0 / 6, 1e-6);
  EXPECT_EQ(Cell(Table("frmIntegral"), 0, "Sum"), 6);
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(EmgCommandsTest, BinsOtherThanAHundredKeepTheirWidth) {
  SetUniform();
  questions.FillForm({{"EpochCount", "50"}}, "Stats");
  questions.inputAnswers = {"20"};
  questions.FillForm({}, "Max.");
  questions.fileAnswers = {{directory.Path("a")}};
  questions.FillForm({}, "Save");
  questions.FillForm({{"EpochCount", "-3"}}, "Table");
  questions.FillForm({});
  questions.boxAnswers = {Button::OK};
  Run("emg.apdf");
  // Bins of half a percent of the largest: all above a quarter of it lie in the last one.
  const std::string file = ReadFile(directory.Path("a.apd"));
  EXPECT_HAS(file,
             "Channel:\t00\tVastus lat\nMaximum amplitude=\t20\nBin size=\t1\nNumber of samples=\t101\n");
  EXPECT_HAS(file, "\n002\t    2.0000\t     1.000\t    0.9901\t    0.9901\n");
  EXPECT_HAS(file, "\n050\t   50.0000\t    77.000\t   76.2376\t  100.0000\n");
  EXPECT_EQ(Table("frmAPDF").rows.size(), 100U);  // below 1
}

TEST_F(EmgCommandsTest, ChannelsWithoutADistributionAreToldAndTheNextGoesOn) {
  SetChannels(trial, {{0, 0, 0}, {1, kNan, 2}, {1, 2, 4}}, 1000);
  for (int k = 0; k < 3; ++k) {
    questions.FillForm({});
  }
  questions.PickChannels({1, 2, 3});
  questions.boxAnswers = {Button::OK, Button::OK, Button::OK};
  Run("emg.apdf");
  EXPECT_EQ(workbench.report.warnings, (Texts{"Invalid APDF: Invalid data.  APDF could not be computed.",
                                              "Invalid APDF: Invalid data.  APDF could not be computed."}));
  ASSERT_EQ(workbench.report.deeds.size(), 1U) << "told of the third alone";
  EXPECT_EQ(workbench.report.deeds[0].channels.size(), 1U);
  EXPECT_EQ(workbench.report.deeds[0].refused.size(), 2U);
  questions.formNames.clear();
  questions.FillForm({});
  questions.PickChannels({2, 3});
  questions.boxAnswers = {Button::Cancel};
  Run("emg.apdf");
  EXPECT_EQ(questions.formNames.size(), 1U);
  EXPECT_TRUE(Table("frmAPDF").rows.empty());
}

TEST_F(EmgCommandsTest, StatisticsOfATone) {
  // Ten periods of amplitude 3 around 0, sampled off its zeros; a constant; one with exact zeros.
  const Samples tone = Sampled(1000, [](int i) { return 3 * std::sin(2 * Pi * (i + 0.5) / 100); });
  const Samples zeros = Sampled(1000, [](int i) { return i % 2 == 0 ? 0.0F : (i % 4 == 1 ? 1.0F : -1.0F); });
  SetChannels(trial, {tone, Samples(1000, -2.0F), zeros}, 1000);
  trial.CursorLo = 5;
  questions.inputAnswers = {"1"};
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    EXPECT_NEAR(picker.Value(1), 3 / std::sqrt(2.0), 1e-5);
    picker.SetValue(1, "9");  // to look at: not kept
    return std::string("Process");
  });
  questions.PickValues({{1, "-1.5"}, {3, "0.5"}});
  questions.FillForm({}, "Calculate thresholds");
  questions.FillForm({}, "Enter threshold");
  questions.FillForm({});
  ResultTable first;
  questions.formAnswers.push_front([&](Form& form) {
    first = form.Tables().front();
    return std::string("Send results to Clipboard");
  });
  Run("emg.statistics");
  ExpectCells(first, 0, {{"RMS", 3 / std::sqrt(2.0)}}, 1e-5);
  ExpectCells(first, 0, {{"Mean Abs.Value", 6 / Pi}, {"Abs. Integ'l", 6 / Pi}}, 1e-3);  // of 1 s
  ExpectCells(first, 0, {{"Zero-cross", 19}});
  ExpectCells(first, 1, {{"Sum", -2000}, {"Abs. Max.", 2}});
  ExpectCells(first, 2, {{"Zero-cross", 0}});  // each crossing is hidden by a zero
  // Zeros lie below the threshold now.
  ExpectCells(Table("frmEMGstats"), 2, {{"Zero-cross", 499}, {"Peak Count", 499}});
  EXPECT_EQ(workbench.thresholds.ChanThreshold[1], 1.5);
  EXPECT_NEAR(workbench.thresholds.ChanSD[1], 3 / std::sqrt(2.0), 1e-5);
  EXPECT_EQ(workbench.thresholds.ChanSD[2], 0);
  EXPECT_EQ(workbench.thresholds.SDMultiplier, 1.0F);
  EXPECT_TRUE(workbench.thresholds.ThresholdsValid);
  EXPECT_HAS(workbench.results.Clipboard,
             "Range:\t1\t1000\nTimes:\t0.000\t0.999\nChannel\tLabel\tMean Abs.Value");
  EXPECT_HAS(workbench.results.Clipboard,
             "\n01\t\t2.0000\t2.0000\t0\t0\t2.0000\t2.0000\t-2000.0000\t2000.0000\n");
  EXPECT_FALSE(trial.FileChanged);
  // The thresholds serve the next trial too, which says so; one missing sample leaves a channel without
  // numbers.
  EXPECT_EQ(workbench.report.warnings, Texts());
  workbench.LoadedFile = "/data/next.vmb";
  trial.Data(9, 1) = kNan;
  questions.fileAnswers = {{directory.Path("s")}};
  questions.FillForm({}, "Save");
  questions.FillForm({}, "Send results to Clipboard");
  questions.FillForm({});
  Run("emg.statistics");
  EXPECT_HAS(ReadFile(directory.Path("s.tab")), "\n00\t\t\t\t\t\t\t\t\t\r\n01\t");
  EXPECT_HAS(workbench.results.Clipboard, "\n00\t\t\t\t\t\t\t\t\t\n01\t");
  EXPECT_EQ(workbench.report.warnings,
            Texts{"Zero crossings and peaks: The thresholds are those of another trial."});
  for (const char* head : {"RMS", "Zero-cross", "Peak Count", "Abs. Max.", "Abs. Sum"}) {
    ExpectCells(Table("frmEMGstats"), 0, {{head, NAN}});
  }
}

TEST_F(EmgCommandsTest, RemovesTheDelayOfTheSensorsAlone) {
  const Samples x = Sampled(200, [](int i) { return i + 1; });
  SetChannels(trial, {x, x, x}, 1925.9);
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    EXPECT_EQ(picker.Remark(),
              "48 ms at 1925.90 Hz: they move to the left by 92 samples; as many at the end become 0.");
    picker.Select(1, true);
    picker.Select(3, true);
    return std::string("Process");
  });
  Run("emg.trigno-delay");
  EXPECT_EQ(trial.Data(1, 1), 93.0F);  // round(92.44) samples earlier
  EXPECT_EQ(trial.Data(108, 3), 200.0F);
  EXPECT_EQ(trial.Data(109, 3), 0.0F);
  EXPECT_EQ(Channel(trial, 2), x);
  EXPECT_TRUE(trial.FileChanged);
  trial.Rate = 1e6;
  RunPicking("emg.trigno-delay", {2});
  EXPECT_EQ(Channel(trial, 2), Samples(200, 0.0F));
}

TEST_F(EmgCommandsTest, RectifiesAndIntegratesAndEnvelops) {
  SetChannels(trial, {{-2, 4, -6}, {-1, 1, 1}}, 4);
  RunPicking("emg.rectify-integrate", {1});
  EXPECT_EQ(Channel(trial, 1), (Samples{0.5F, 1.5F, 3.0F}));
  EXPECT_EQ(Channel(trial, 2), (Samples{-1, 1, 1}));
  SetChannels(trial, {{1, 3e38F, -3e38F}}, 1);
  RunPicking("emg.rectify-integrate", {});
  EXPECT_HAS(LastBox(), "The result for channel 00, sample 3, is not a number that data can hold.");
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 3e38F, -3e38F}));

  const Samples hum = Sampled(4000, [](int i) { return std::sin(2 * Pi * 80 * i / 1000.0 + 0.1); });
  SetChannels(trial, {hum, hum}, 1000);
  trial.FileChanged = false;
  workbench.filters.LastLowPassCutoffs[1] = 7;
  std::vector<double> shown;
  questions.pickAnswers.emplace_back([&shown](ChannelPicker& picker) {
    EXPECT_EQ(picker.PreviewOf(2).plots.size(), 2U);  // raw and rectified
    picker.SetValue(1, "600");
    EXPECT_EQ(picker.PreviewOf(1).plots.size(), 2U);  // there is no such filter
    picker.SetValue(1, "6");
    const FormGraph preview = picker.PreviewOf(1);
    EXPECT_EQ(preview.plots.at(2).name, "Envelope, 6 Hz");
    shown = preview.plots.at(2).y;
    return std::string("Process");
  });
  Run("emg.linear-envelope");
  const Samples filtered = Channel(trial, 1);
  EXPECT_EQ(shown, std::vector<double>(filtered.begin(), filtered.end()));
  EXPECT_NEAR(trial.Data(2000, 1), 2 / Pi, 1e-3);  // the mean of a rectified sine
  EXPECT_EQ(Channel(trial, 2), hum);
  EXPECT_EQ(workbench.filters.LastLowPassCutoffs[1], 7);
  EXPECT_TRUE(trial.FileChanged);
  trial.FileChanged = false;
  questions.PickCancel();
  Run("emg.linear-envelope");
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(EmgCommandsTest, EntriesThatForwardRunTheOtherCommand) {
  SetChannels(trial, {{-1, 2, -3, 4}}, 1000);
  RunPicking("emg.rectify", {1});
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2, 3, 4}));
  questions.FillForm({}, "Cancel");
  Run("emg.smoothing");
  EXPECT_EQ(questions.formNames.back(), "frmButterworth");
}

}  // namespace
}  // namespace velmora::test
