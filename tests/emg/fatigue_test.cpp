// Spectra of successive intervals: the arithmetic of the intervals, and the analysis through its forms.
#include "emg/fatigue.hpp"

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "emg/fatigue_series.hpp"
#include "emg/fatigue_slopes.hpp"
#include "support/command_test.hpp"
#include "support/signals.hpp"

namespace velmora::test {
namespace {

Samples Zeros(std::size_t n) {
  return Samples(n, 0.0F);
}

TEST(FatigueIntervals, FollowOneAnother) {
  Trial trial;
  SetChannels(trial, {Zeros(1001)}, 1000);  // both cursors at the ends
  const auto of = [&](FatigueSettings settings) { return IntervalsOf(trial, settings); };
  // 100 steps each: 1-101, 101-201, ... 901-1001, each on the last sample of the one before.
  const FatigueIntervals plain = of({.interval = 0.1});
  EXPECT_EQ(plain.Count(), 10);
  EXPECT_EQ(plain.At(0, 1).last, 101);
  EXPECT_EQ(plain.At(1, 1).first, 101);
  EXPECT_EQ(plain.At(9, 1).last, 1001);
  EXPECT_EQ(of({.interval = 0.1, .divisor = 2}).Count(), 19);  // 900 / 50 + 1
  EXPECT_EQ(of({.interval = 0.1, .divisor = 4}).Count(), 37);  // 900 / 25 + 1
  // The refractory interval of the last one must fit, too: 880 / 120 + 1.
  const FatigueIntervals apart = of({.interval = 0.1, .refractory = 0.02});
  EXPECT_EQ(apart.Count(), 8);
  EXPECT_EQ(apart.At(7, 1).first, 841);
  EXPECT_LT(apart.Overlap(), 0);
  // A half goes to the even neighbour: 10 / 4 = 2.5 and 101 / 2 = 50.5 down, 103 / 2 = 51.5 up.
  EXPECT_EQ(of({.interval = 0.01, .divisor = 4}).step, 2);
  EXPECT_EQ(AllHarmonics(of({.interval = 0.101})), 50);
  EXPECT_EQ(AllHarmonics(of({.interval = 0.103})), 52);
  // By FFT: 32 samples, the steps 31, 15 and 7.
  FatigueSettings fft{.method = FatigueMethod::FastFourierTransform, .data = 32};
  EXPECT_EQ(of(fft).Count(), 32);  // 969 / 31 + 1
  fft.divisor = 2;
  EXPECT_EQ(of(fft).step, 15);
  fft.divisor = 4;
  EXPECT_EQ(of(fft).step, 7);
  EXPECT_DOUBLE_EQ(of(fft).Overlap(), 100.0 * 25 / 32);
  // What does not move on, does not fit, or is none.
  EXPECT_EQ(of({.interval = 0}).Count(), 2001);
  EXPECT_EQ(of({.interval = 0.001, .divisor = 4}).Count(), 2001);
  EXPECT_EQ(of({.interval = 1.001}).Count(), 0);
  EXPECT_EQ(of({.interval = 1e300}).Count(), 0);
  EXPECT_EQ(of({.interval = 0.1, .refractory = 1e300}).Count(), 0);
  trial.Rate = 0;
  EXPECT_EQ(of({.interval = 1}).Count(), 0);
}

// By hand: 101 at the start and 2 less each second; Student's t of one degree of freedom for three points.
TEST(FatigueSlopes, LeastSquaresAndTheilSen) {
  const double time[] = {0.5, 1.5, 2.5, 3.5};
  const auto line = SlopeOver(time, std::vector<double>{100, 98, 96, 94});
  ASSERT_TRUE(line);
  EXPECT_DOUBLE_EQ(line->initial, 101);
  EXPECT_DOUBLE_EQ(line->slope * 60, -120);
  EXPECT_DOUBLE_EQ(line->theilSen * 60, -120);
  EXPECT_DOUBLE_EQ(*line->r2, 1);
  EXPECT_NEAR(*line->low, -2, 1e-9);
  const auto bent = SlopeOver(std::span(time, 3), std::vector<double>{0, 1, 5});
  // Residuals 0.5, -1, 0.5 about 2.5 t - 1.75; error sqrt(1.5/1/2), t = 12.7062.
  EXPECT_NEAR(bent->slope, 2.5, 1e-12);
  EXPECT_NEAR(*bent->high - 2.5, 12.706205 * std::sqrt(0.75), 1e-5);
  EXPECT_EQ(bent->theilSen, 2.5) << "of 1, 2.5 and 4";
  EXPECT_FALSE(SlopeOver(std::span(time, 2), std::vector<double>{1, 2})->low);
  EXPECT_FALSE(SlopeOver(std::span(time, 2), std::vector<double>{1, NAN}));
  // Half of the power, 5, lies a quarter into the second harmonic: 2 (1 + 1/4).
  EXPECT_DOUBLE_EQ(ExactMedianFrequency(std::vector<double>{0, 4, 4, 2}, 2), 2.5);
  EXPECT_TRUE(std::isnan(ExactMedianFrequency(std::vector<double>{0, 0}, 2)));
}

struct Fatigue : FileTest {
  void SetUp() override {
    trial.TrialName = "lift";
    trial.FileName = "/data/lift.vmb";
  }
  /// Three channels at 1000 Hz, the second 1 and -1 in turn.
  void SetAlternating() {
    const Samples turns = Sampled(101, [](int i) { return i % 2 == 0 ? 1.0F : -1.0F; });
    SetChannels(trial, {Zeros(101), turns, Samples(101, 2.0F)}, 1000);
    trial.ChanLabel[2] = "Delt ant";
    trial.ChanUnits[2] = "mV";
  }
  /// Fills the dialogue, starts, and leaves the results by `presses` and Done, then the dialogue.
  void Analyse(const Edits& edits, const Texts& presses = {}, const char* id = "emg.fatigue") {
    questions.FillForm(edits);
    for (const std::string& press : presses) {
      questions.FillForm({}, press);
    }
    questions.FillForm({});
    questions.FillForm({}, "Exit");
    Run(id);
  }
  /// The dialogue does not start with these; it says why.
  std::string RefusalOf(const Edits& edits) {
    const std::size_t forms = questions.formNames.size();
    questions.FillForm(edits);
    questions.FillForm({}, "Exit");
    Run("emg.fatigue");
    EXPECT_EQ(questions.formNames.size(), forms + 2);
    return LastBox();
  }
  const ResultTable& Table() { return workbench.results.ResultTables.at(0); }
  double Cell(std::size_t row, std::size_t column) {
    return std::get<double>(Table().rows.at(row).at(column));
  }
};

enum Column : std::size_t { From, To, Median, Mean, FirstMedian, FirstMean, AbsMean, Rms, Integral };

TEST_F(Fatigue, AToneKeepsItsFrequencyByBothMethods) {
  const Samples tone = Sampled(5001, [](int i) { return 3 * std::sin(2 * Pi * 100 * (i + 0.5) / 1000); });
  SetChannels(trial, {tone}, 1000);
  Analyse({{"txtInterval", "1"}});
  ASSERT_EQ(Table().rows.size(), 5U);
  // The mean of the first interval from the definition, 1001 samples and 500 harmonics of 1 Hz.
  double power = 0;
  double weighted = 0;
  for (int k = 1; k <= 500; ++k) {
    double re = 0;
    double im = 0;
    for (int i = 0; i <= 1000; ++i) {
      re += tone[static_cast<std::size_t>(i)] * std::cos(2 * Pi * k * i / 1001);
      im += tone[static_cast<std::size_t>(i)] * std::sin(2 * Pi * k * i / 1001);
    }
    power += re * re + im * im;
    weighted += k * (re * re + im * im);
  }
  for (std::size_t row = 0; row < 5; ++row) {
    EXPECT_EQ(Cell(row, From), static_cast<double>(row));
    EXPECT_EQ(Cell(row, To), static_cast<double>(row + 1));
    EXPECT_NEAR(Cell(row, Mean), weighted / power, 1e-3);
    EXPECT_NEAR(Cell(row, Median), 100, 1);
    EXPECT_NEAR(Cell(row, FirstMedian), 100, 1e-3);
    EXPECT_NEAR(Cell(row, FirstMean), 100, 1e-3);
    EXPECT_NEAR(Cell(row, Rms), 3 / std::sqrt(2.0), 2e-3);
    EXPECT_NEAR(Cell(row, AbsMean), 6 / Pi, 0.05);
    EXPECT_NEAR(Cell(row, Integral), Cell(row, AbsMean) * 1.001, 1e-9);
  }
  EXPECT_FALSE(trial.FileChanged);

  // 102.4 cycles in 1024 samples stand a line higher, at 103.4 of 1000 / 1023 Hz.
  Analyse({{"optMethod", "1"}, {"optInterleave", "50%"}}, {}, "fourier.time-series");
  ASSERT_EQ(Table().rows.size(), 8U);  // 3977 / 511 + 1
  for (std::size_t row = 0; row < 8; ++row) {
    EXPECT_NEAR(Cell(row, From), 0.511 * static_cast<double>(row), 1e-9);
    EXPECT_NEAR(Cell(row, Mean), 103.4 * 1000 / 1023, 1);
  }
}

TEST_F(Fatigue, TheMeanFrequencyFallsWithAChirp) {
  // 200 Hz - 10 Hz/s
  const Samples chirp = Sampled(10001, [](int i) {
    const double t = i / 1000.0;
    return std::sin(2 * Pi * (200 * t - 5 * t * t));
  });
  SetChannels(trial, {chirp}, 1000);
  FormGraph graph;
  std::map<std::string, std::size_t> plots;
  questions.FillForm({{"txtInterval", "1"}, {"optInterleave", "25%"}});
  questions.formAnswers.emplace_back([&](Form& form) {
    graph = *form.Graph();
    for (const char* kind :
         {"Percent first interval", "Integrated", "Spectra by interval", "First and last spectrum"}) {
      form.Edit(*form.FindField("optGraph"), kind);
      plots[kind] = form.Graph()->plots.size();
    }
    return std::string("Done");
  });
  questions.FillForm({}, "Exit");
  Run("emg.fatigue");
  EXPECT_EQ(plots.at("Percent first interval"), 2U);
  EXPECT_EQ(plots.at("Integrated"), 1U);
  EXPECT_EQ(plots.at("Spectra by interval"), 19U) << "every other one of 37";
  EXPECT_EQ(plots.at("First and last spectrum"), 2U);
  ASSERT_EQ(Table().rows.size(), 37U);
  for (std::size_t row = 0; row < 37; ++row) {
    EXPECT_NEAR(Cell(row, Mean), 195 - 10 * Cell(row, From), 2.5) << row;
    EXPECT_NEAR(Cell(row, FirstMean), 100 * Cell(row, Mean) / Cell(0, Mean), 1e-9);
  }
  ASSERT_EQ(graph.plots.size(), 4U) << "median and mean, and a line through each";
  EXPECT_EQ(graph.plots[1].y[36], Cell(36, Mean));
  EXPECT_NEAR(graph.plots[3].y[0], 195, 2);
  EXPECT_NEAR(graph.plots[3].y[1], 105, 2);
  const ResultTable& slopes = workbench.results.ResultTables.at(1);
  EXPECT_EQ(slopes.name, "frmFatigueSlope");
  for (std::size_t row = 0; row < 3; ++row) {  // 200 Hz at its start, 10 Hz less each second
    EXPECT_NEAR(std::get<double>(slopes.rows[row][1]), 200, 3) << row;
    EXPECT_NEAR(std::get<double>(slopes.rows[row][2]), -600, 20) << row;
    EXPECT_NEAR(std::get<double>(slopes.rows[row][7]), -600, 20) << row;
  }
}

// A pause makes the intervals one by one; else they are made ahead, on all cores.
TEST_F(Fatigue, IntervalsMadeAheadAreThoseMadeOneByOne) {
  SetChannels(trial, NoiseChannels(1, 10'000), 1000);
  FatigueOrder order{.settings = {.method = FatigueMethod::FastFourierTransform, .data = 32}};
  const FatigueSeries ahead = RunFatigue(workbench, order);
  ASSERT_EQ(ahead.rows.size(), 322U);  // 9968 / 31 + 1
  order.pause = true;
  questions.boxAnswers.assign(ahead.rows.size() - 1, Button::OK);
  const FatigueSeries single = RunFatigue(workbench, order);
  ASSERT_EQ(single.rows.size(), ahead.rows.size());
  const auto numbers = [](const FatigueRow& row) {
    return std::array{row.from, row.median, row.percentMedian, row.percentMean, row.rms, row.exactMedian};
  };
  for (std::size_t k = 0; k < ahead.rows.size(); ++k) {
    EXPECT_EQ(numbers(ahead.rows[k]), numbers(single.rows[k])) << k;
  }
  EXPECT_EQ(ahead.lastPower, single.lastPower);
  ASSERT_EQ(ahead.spectra.size(), single.spectra.size());
  EXPECT_EQ(ahead.spectra.back().power, single.spectra.back().power);
}

TEST_F(Fatigue, FilesHoldWhatWasDone) {
  SetAlternating();
  std::string opened;
  workbench.desktop.open = [&](const std::string& program, const std::string& path) {
    opened = program + "|" + path;
    return std::string();
  };
  questions.PickChannels({2});
  questions.fileAnswers = {{directory.Path("s")}, {directory.Path("a")}};
  Analyse({{"txtInterval", "0.02"}, {"chkSave", "true"}, {"optPower", "Relative power"}},
          {"Excel", "Save", "Excel"});
  ASSERT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(
      LastBox(),
      "Data Not Saved|To send data to Notepad or a spreadsheet, first press the Save button to asve the "
      "data to a file.");
  EXPECT_EQ(opened, "Excel.exe|" + directory.Path("a.fat"));
  const std::string head = "Filename:\t/data/lift.vmb\nTrial code:\tlift\tTrial:\t" +
                           std::to_string(trial.TrialIndex) +
                           "\nDuration (s):\t0.100\nSampling rate (Hz):\t1000.00\n";
  const std::string frequencies =
      FormatNumber(Cell(0, Median), "0.0000") + "\t" + FormatNumber(Cell(0, Mean), "0.0000");
  const std::string fat = ReadFile(directory.Path("a.fat"));
  EXPECT_TRUE(fat.starts_with(
      head +
      "Channel:\t01\tDelt ant\nWindowing type:\trectangular\nNumber of harmonics:\t10\nTime interval "
      "(s):\t0.02\n\nCount\tChan.\tTime\tMedian f\tMean f\t%Med.1\t%Mean1\tAbs.Mean\tRMS\tAbs.Int'l\n"
      "001\t    01\t0.0000\t" +
      frequencies + "\t100.00\t100.00\t1.0000\t1.0000\t0.0210\n002\t    01\t0.0200\t"))
      << fat;
  EXPECT_EQ(std::count(fat.begin(), fat.end(), '\n'), 10 + 5 + 6) << "rows, then the slopes";
  // Ten harmonics of 50 Hz.
  const std::string tab = ReadFile(directory.Path("s.tab"));
  EXPECT_TRUE(tab.starts_with(head +
                              "\nTime (s)\t50.000\t100.000\t150.000\t200.000\t250.000\t300.000\t350.000"
                              "\t400.000\t450.000\t500.000\n0.0000\t"))
      << tab;
  const std::string last = tab.substr(tab.rfind("\n0.0800\t") + 8);
  double total = 0;
  for (std::size_t at = 0; at != std::string::npos && at < last.size(); at = last.find('\t', at + 1)) {
    total += Val(last.substr(at + (last[at] == '\t' ? 1 : 0)));
  }
  EXPECT_NEAR(total, 100, 1e-3);
  EXPECT_EQ(last.find('E'), 8U);  // 0.000000E+00
}

TEST_F(Fatigue, StopKeepsTheIntervalsDone) {
  SetAlternating();
  for (const char* method : {"0", "1"}) {
    questions.PickChannels({2});
    std::size_t seen = 0;  // rows, while the third is made
    questions.onProgress = [&seen](ProgressPanel& panel) {
      if (panel.Status() == "Interval 3 of 5") {
        seen = panel.Table()->rows.size();
        panel.PressCancel();
      }
    };
    questions.fileAnswers = {{directory.Path("s.tab")}};
    if (*method == '1') {
      trial.CursorHi = 94;  // 62 / 15 + 1 by FFT of 32 samples
      questions.boxAnswers = {Button::Yes};
    }
    Analyse({{"optMethod", method},
             {"txtInterval", "0.02"},
             {"comNData", "32"},
             {"optInterleave", *method == '1' ? "50%" : "None"},
             {"chkSave", "true"}});
    EXPECT_EQ(seen, 2U);
    EXPECT_EQ(Table().rows.size(), 2U) << method;
    EXPECT_TRUE(workbench.report.deeds.back().what.ends_with("2 of 5 intervals, spectra saved"));
    const std::string tab = ReadFile(directory.Path("s.tab"));
    EXPECT_EQ(std::count(tab.begin(), tab.end(), '\n'), 6 + 2) << tab;
  }
  trial.CursorHi = trial.NData;
  // Before the first is done the old file stays as it was, and nothing was done.
  WriteFile(directory.Path("s.tab"), "old");
  const std::size_t deeds = workbench.report.deeds.size();
  questions.PickChannels({2});
  questions.CancelAt("Interval 1 of 5");
  questions.fileAnswers = {{directory.Path("s.tab")}};
  Analyse({{"txtInterval", "0.02"}, {"chkSave", "true"}}, {"Graph"});
  EXPECT_TRUE(Table().rows.empty());
  EXPECT_EQ(ReadFile(directory.Path("s.tab")), "old");
  EXPECT_EQ(workbench.report.deeds.size(), deeds);
  questions.onProgress = {};
  questions.PickChannels({2});
  questions.fileAnswers = {{directory.Path("none/s.tab")}};
  Analyse({{"txtInterval", "0.02"}, {"chkSave", "true"}});
  EXPECT_EQ(workbench.report.failures.size(), 1U) << "no such directory";
  EXPECT_EQ(Table().rows.size(), 5U);
  // In a pause.
  questions.PickChannels({2});
  questions.boxAnswers = {Button::OK, Button::Cancel};
  Analyse({{"txtInterval", "0.02"}, {"chkPause", "true"}});
  EXPECT_EQ(Table().rows.size(), 2U);
  EXPECT_EQ(LastBox(), "EMG Fatigue Analysis|Press OK for next interval or Cancel to exit.");
}

TEST_F(Fatigue, RefusesWhatMakesNoSeries) {
  SetChannels(trial, {Zeros(4002)}, 1000);
  const std::string title = "EMG Fatigue Analysis|";
  const std::string few = title + "Two few intervals.  Reduce interval or increase interleaving.";
  const std::string many =
      title + "Number of intervals is greater than 2000.  Increase interval or reduce interleaving.";
  const std::string refractory = title + "Refractory interval must be zero (0.0) for interleaving.";
  EXPECT_EQ(RefusalOf({}), few);  // the interval is the whole range at first
  EXPECT_EQ(RefusalOf({{"optMethod", "1"}, {"comNData", "65536"}}), few);
  EXPECT_EQ(RefusalOf({{"txtInterval", "0"}}), many);
  EXPECT_EQ(RefusalOf({{"txtInterval", "words"}}), many);
  EXPECT_EQ(RefusalOf({{"txtInterval", "9"}, {"txtRefractory", "1"}, {"optInterleave", "50%"}}), refractory);
  EXPECT_EQ(RefusalOf({{"txtInterval", "1"}, {"txtHarmonics", "501"}}),
            title + "Enter maximum number of harmonics to analyze.  Must be less than or equal to 500.");
  // 4001 steps of 2: 2000 intervals; with 4 samples more 2002.
  Analyse({{"txtInterval", "0.002"}});
  EXPECT_EQ(Table().rows.size(), 2000U);
  SetChannels(trial, {Zeros(4006)}, 1000);
  EXPECT_EQ(RefusalOf({{"txtInterval", "0.002"}}), many);

  const std::size_t forms = questions.formNames.size();
  const std::string base = "Invalid Sampling Rate or Timebase|Data not time based";
  trial.Rate = 239.9;
  Run("emg.fatigue");
  EXPECT_EQ(LastBox(), base + " or sampling rate < 240 Hz.  Processing cannot continue.");
  trial.Rate = 50;
  workbench.time.Base = TimeBase::Percentage;
  Run("fourier.time-series");
  EXPECT_EQ(LastBox(), base + ".  Processing cannot continue.");
  EXPECT_EQ(questions.formNames.size(), forms);
  workbench.time.Base = TimeBase::HhMmSs;
  questions.FillForm({}, "Exit");
  Run("fourier.time-series");
  EXPECT_EQ(questions.formNames.size(), forms + 1);
}

TEST_F(Fatigue, TheDialogueAsksForRangeChannelAndFile) {
  SetAlternating();
  trial.CursorLo = 21;
  trial.CursorHi = 81;
  questions.boxAnswers = {Button::Cancel};
  Run("emg.fatigue");
  EXPECT_TRUE(questions.formNames.empty());
  // The picker and the file are left, then the dialogue shows what its settings make.
  questions.boxAnswers = {Button::Yes};
  questions.FillForm({{"txtInterval", "0.02"}});
  questions.PickCancel();
  questions.FillForm({{"chkSave", "1"}});
  questions.PickChannels({2});
  questions.fileAnswers = {{}};
  Texts shown;
  questions.formAnswers.emplace_back([&](Form& form) {
    for (const char* name : {"Intervals", "FrequencyStep", "Overlap"}) {
      shown.push_back(Form::TextOf(*form.FindField(name)));
    }
    form.Edit(*form.FindField("optInterleave"), "50%");
    shown.push_back(Form::TextOf(*form.FindField("Intervals")));
    return std::string("Exit");
  });
  Run("emg.fatigue");
  ASSERT_EQ(shown.size(), 4U);
  EXPECT_EQ(shown[0], "3");
  EXPECT_EQ(shown[1], "50");
  EXPECT_NEAR(Val(shown[2]), 100.0 / 21, 1e-9);  // one sample of 21
  EXPECT_EQ(shown[3], "5");
  EXPECT_EQ(questions.formNames, (Texts{"frmFatigue", "frmFatigue", "frmFatigue"}));
  // No sets the cursors; a channel that is constant, and one with a sample that is not finite.
  questions.boxAnswers = {Button::No};
  questions.PickChannels({3});
  Analyse({{"txtInterval", "0.02"}});
  EXPECT_EQ(trial.CursorHi, 101);
  EXPECT_EQ(Cell(4, Mean), 0);
  EXPECT_EQ(Cell(4, FirstMean), 0);
  EXPECT_EQ(Cell(4, AbsMean), 2);
  trial.Data(50, 2) = std::numeric_limits<float>::quiet_NaN();
  questions.PickChannels({2});
  Analyse({{"txtInterval", "0.02"}});
  EXPECT_TRUE(std::isnan(Cell(2, Rms)));
  EXPECT_EQ(Cell(2, Mean), 0);
  EXPECT_EQ(Cell(3, Rms), 1);
  // The interval without a spectrum reads 0, which is no frequency on the way of the others: theirs is one.
  const ResultTable& slopes = workbench.results.ResultTables.at(1);
  for (std::size_t row = 0; row < slopes.rows.size(); ++row) {
    EXPECT_NEAR(std::get<double>(slopes.rows[row][2]), 0, 1e-6) << row;
    EXPECT_EQ(std::get<double>(slopes.rows[row][8]), 4) << row;
  }
}

}  // namespace
}  // namespace velmora::test
