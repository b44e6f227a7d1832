// The commands of the Fourier menu through their questions and forms.
#include <cmath>
#include <filesystem>

#include "core/text/numbers.hpp"
#include "support/command_test.hpp"
#include "support/signals.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

struct SpectraCommands : FileTest {
  // Two cycles of amplitude 2 around 1, noise, and a constant.
  void SetUp() override {
    const Samples sine = Sampled(200, [](int i) { return 1 + 2 * std::sin(2 * Pi * 2 * i / 200); });
    SetChannels(trial, {sine, NoiseChannels(1, 200)[0], Samples(200, 3.0F)}, 199.0);
    trial.ChanLabel[1] = "Sine";
    trial.ChanLabel[2] = "Noise";
    trial.TrialName = "walk";
    trial.TrialTitle = "7 A walk";
    trial.FileName = "/data/walk.vmb";
  }
  /// The form that comes up is left by these presses; the last shown graph and table are kept.
  void PressInForm(const Texts& captions) {
    for (const std::string& caption : captions) {
      questions.formAnswers.emplace_back([this, caption](Form& form) {
        graph = form.Graph().value_or(FormGraph{});
        tables = form.Tables();
        return caption;
      });
    }
  }
  [[nodiscard]] Texts Boxes() const {
    Texts texts;
    for (const Box& box : questions.boxes) {
      texts.push_back(box.title + "|" + box.text);
    }
    return texts;
  }

  FormGraph graph;
  std::vector<ResultTable> tables;
};

TEST_F(SpectraCommands, RegressionOfSeveralChannelsReportsEach) {
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    EXPECT_EQ(picker.ValueText(1), "100");
    picker.Select(1, true);
    picker.Select(3, true);
    picker.SetValue(1, "12");
    return std::string("Process");
  });
  PressInForm({"Exit", "Exit"});
  questions.boxAnswers = {Button::OK, Button::OK};
  Run("fourier.harmonic-regression");
  const std::string report =
      "DFT Results|Channel: (0) Sine\n\n Median frequency is 1.500 Hz\n Mean  frequency  is 2.000 Hz\n"
      " 95th percentile  is 1.950 Hz\n 99th percentile  is 1.990 Hz\n\n"
      "Press OK for next channel or Cancel to exit.";
  // The report of a series that could not be computed stays the one before.
  EXPECT_EQ(Boxes(), (Texts{report, "| Cannot compute Fourier series.  Data are constant.", report}));
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_EQ(workbench.report.deeds.size(), 1U);
}

TEST_F(SpectraCommands, TheViewShowsWhatItsMenusSay) {
  questions.PickChannels({1});
  questions.formAnswers.emplace_back([&](Form& form) {
    Type(form, {{"mnuSeries", "3"}, {"mnuAbscissa", "1"}, {"mnuOrdinate", "1"}, {"mnuBackground", "1"}});
    EXPECT_EQ(form.Graph()->plots.size(), 3U);
    EXPECT_EQ(form.Graph()->x.maximum, 100.0);  // 100 harmonics of 1 Hz
    EXPECT_TRUE(form.Graph()->y.log);
    EXPECT_GT(form.Graph()->y.minimum, 0.0);
    EXPECT_HAS(form.Graph()->readOut(2.2, 0), "Harmonic 2,  2.000 Hz,  Normalized power 100 %");
    return std::string("Max.");
  });
  PressInForm({"Max.", "Table", "Table", "Table to Clipboard", "Graph", "Exit"});
  questions.inputAnswers = {"101", "40"};
  Run("fourier.harmonic-regression");
  EXPECT_EQ(questions.inputs[0].prompt,
            "Enter maximum frequency for abscissa.  Must be less than or equal to 100.");
  EXPECT_EQ(graph.x.maximum, 40.0);
  EXPECT_EQ(graph.y.caption, "Power (%)");
  EXPECT_FALSE(graph.hidden);
  EXPECT_TRUE(tables.empty());
  const std::string& text = workbench.results.Clipboard;
  EXPECT_EQ(text.substr(0, text.find('\n')), "Power spectrum for: 7 A walk");
  EXPECT_HAS(text, "\nBias=1.0000\nHarmonic\tFrequency\t");
  EXPECT_HAS(text, "\n2\t2.000\t");
  const ResultTable& table = workbench.results.ResultTables.at(0);
  EXPECT_EQ(table.rows.size(), 100U);
  EXPECT_EQ(ShownCell(table, 1, 4), "100.0000");
}

TEST_F(SpectraCommands, WrongNumbersOfHarmonicsEndTheCommand) {
  RunTyping("fourier.harmonic-regression", {{1, "-3"}});
  EXPECT_EQ(LastBox(),
            "Invalid Number of Harmonics|Number of harmonics must a positive number.  "
            "Harmonic analysis canceled.");
  questions.boxes.clear();
  RunTyping("fourier.harmonic-regression", {{1, "0"}});
  EXPECT_TRUE(questions.boxes.empty());
  PressInForm({"Exit"});
  RunTyping("fourier.harmonic-regression", {{2, "1e9"}});
  EXPECT_EQ(workbench.spectrum.NHarm, 100);
}

TEST_F(SpectraCommands, CancelEndsAtEveryQuestion) {
  SetCursors(11, 110);
  questions.boxAnswers = {Button::Cancel};
  Run("fourier.harmonic-regression");
  questions.boxAnswers = {Button::Cancel};
  Run("fourier.fft");
  questions.boxAnswers = {Button::Yes};
  questions.PickCancel();
  Run("fourier.harmonic-regression");
  questions.boxAnswers = {Button::Yes};
  questions.inputAnswers = {""};
  Run("fourier.statistics");
  EXPECT_EQ(trial.CursorLo, 11);
  EXPECT_TRUE(questions.formNames.empty() && workbench.report.failures.empty());
  // Cancel of the panel: the report comes all the same, with what was there before.
  questions.boxAnswers = {Button::No};
  questions.PickChannels({2});
  questions.CancelAt("100 harmonics");
  PressInForm({"Exit"});
  Run("fourier.harmonic-regression");
  EXPECT_EQ(LastBox(), "DFT Results|");
  EXPECT_EQ(trial.CursorHi, 200);
}

TEST_F(SpectraCommands, TheFastTransformStartsAtTheFirstSample) {
  SetCursors(50, 114);
  Run("fourier.window-blackman-harris");
  EXPECT_TRUE(FindCommand("fourier.window-blackman-harris")->checked(workbench));
  EXPECT_FALSE(FindCommand("fourier.window-rectangular")->checked(workbench));
  questions.boxAnswers = {Button::Yes};
  questions.PickChannels({1});
  questions.formAnswers.emplace_back([](Form& form) {
    EXPECT_EQ(*std::get<std::int32_t*>(form.FindField("M")->target), 64);
    EXPECT_EQ(*std::get<std::int32_t*>(form.FindField("Half")->target), 32);
    EXPECT_NEAR(form.Graph()->x.maximum, 99.5, 1e-5);
    return std::string("Maximum");
  });
  questions.inputAnswers = {"20"};
  PressInForm({"Stats", "Reset", "Exit"});
  Run("fourier.fft");
  EXPECT_EQ(workbench.report.warnings.size(), 1U);
  EXPECT_EQ(trial.Notices.at(0).substr(0, 29), "The FFT took samples 1 to 64:");
  EXPECT_EQ(workbench.spectrum.WindowName, "Blackman-Harris");
  EXPECT_NEAR(graph.x.maximum, 99.5, 1e-5);
  EXPECT_EQ(Boxes()[1], "FFT Results|" + workbench.results.ResultText);
  EXPECT_EQ(workbench.results.ResultText.substr(0, 19), "Channel: (0)  Sine\n");
  EXPECT_TRUE(workbench.spectrum.HarmFreq.empty());
  trial.DiscardData();
  Run("fourier.fft");
  EXPECT_EQ(LastBox(), "|There are no data loaded.");
}

TEST_F(SpectraCommands, StatisticsOfEveryChannelAsTheGridShowsThem) {
  questions.inputAnswers = {"-20"};
  PressInForm({"Send results to Clipboard", "Exit"});
  Run("fourier.statistics");
  ASSERT_EQ(tables.at(0).rows.size(), 3U);
  const std::string& text = workbench.results.Clipboard;
  EXPECT_EQ(text.substr(0, text.find('\n', text.find("Times:"))),
            "Fourier analyses for: \t7 A walk\nCode:\twalk\nMax. harmonics\t20\nRange:\t1\t200\n"
            "Times:\t0.000 s\t1.000 s");
  EXPECT_HAS(text, "\n02\t\t3.0000\t3.0000\t0.0\t0.0\t0.0\t0.0\t3.0151\t3.0151\n");
  questions.boxAnswers = {Button::No};
  SetChannels(trial, {Samples(4000, 1.0F)});
  questions.inputAnswers = {"1500"};
  Run("fourier.statistics");
  EXPECT_EQ(LastBox(), "Confirm Request|Confirm that you want to process over 1000 harmonics.");
}

TEST_F(SpectraCommands, AGeneratedSumLandsAsANewChannel) {
  questions.FillForm({{"cwnAmplitude", "2"}, {"cwnFrequency", "5"}, {"cwnPhase", "90"}}, "Add");
  questions.FillForm({{"cwnAmplitude", "1"}, {"cwnFrequency", "0"}}, "Add");
  questions.FillForm({}, "Done");
  Run("fourier.generate");
  EXPECT_EQ(trial.NChan, 4);
  EXPECT_EQ(trial.ChanLabel[4], "Fourier");
  EXPECT_EQ(trial.ChanUnits[4], "?");
  EXPECT_TRUE(trial.FileChanged);
  // 5 cycles over 200 samples, and a constant of sin 90 degrees.
  for (int i = 1; i <= 200; ++i) {
    ASSERT_NEAR(trial.Data(i, 4), 2 * std::cos(2 * Pi * 5 * (i - 1) / 200) + 1, 1e-6);
  }
  EXPECT_NEAR(trial.Data(1, 1), 1.0, 1e-6);
}

TEST_F(SpectraCommands, WithoutATrialASumStartsOne) {
  trial.DiscardData();
  questions.FillForm({}, "Exit");
  Run("fourier.generate");
  EXPECT_EQ(trial.NData, 0);
  questions.FillForm({}, "Done");
  questions.FillForm({}, "Exit");
  Run("fourier.generate");
  EXPECT_EQ(LastBox(), "Generate Fourier Series|No waveform was added.  Press Add first, or Exit.");
  EXPECT_EQ(trial.NData, 0);
  questions.boxAnswers = {Button::No};
  questions.FillForm({{"cwnRate", "1e6"}, {"cwnTime", "1000"}}, "Add");
  questions.FillForm({}, "Exit");
  Run("fourier.generate");
  EXPECT_TRUE(
      LastBox().starts_with("Large Trial|The trial will have 1000000001 samples in 1 channel, 8.0 GB."));
  EXPECT_EQ(trial.NData, 0);
  questions.FillForm({{"cwnRate", "100"}, {"cwnTime", "2.004"}}, "Add");
  questions.FillForm({}, "Done");
  Run("fourier.generate");
  EXPECT_EQ(trial.NData, 201);
  EXPECT_EQ(trial.NChan, 1);
  EXPECT_EQ(trial.Duration, 2.004);
  EXPECT_FLOAT_EQ(trial.Data(201, 0), 2.0F);
  SetChannels(trial, std::vector<Samples>(64, {1, 2, 3}));
  questions.FillForm({}, "Add");
  questions.FillForm({}, "Done");
  questions.FillForm({}, "Exit");
  Run("fourier.generate");
  EXPECT_EQ(questions.boxes[2].title, "No Free Channels");
}

// --- Fourier transform files

TEST_F(SpectraCommands, WhatIsSavedReadsBackAsTheSignal) {
  Samples noise = NoiseChannels(1, 2401)[0];
  SetChannels(trial, {noise}, 1200.0);
  trial.FileName = "/data/Harmonic Bias=7/run.vmb";  // looks like the end of a header
  trial.ChanLabel[1] = "a\tHarmonic\nb";
  questions.PickChannels({1});
  PressInForm({"Save", "Exit"});
  questions.fileAnswers = {{directory.Path("s.ftf")}};
  Run("fourier.harmonic-regression");
  ASSERT_GT(workbench.spectrum.NHarm, 999);
  const std::vector<double> frequencies = workbench.spectrum.HarmFreq;
  const double bias = workbench.spectrum.SinCoef[0];
  // The open trial's length serves.
  questions.inputAnswers = {"1200", PlainNumber(bias)};
  LoadPath(directory.Path("s.ftf"));
  EXPECT_EQ(trial.FileTypeCode, 8);
  EXPECT_EQ(trial.ChanLabel[1], "From FTF");
  ASSERT_EQ(trial.NData, 2401);
  EXPECT_EQ(trial.Rate, 1200.0);
  // The frequencies count intervals and the coefficients samples, so that the first half alone comes close.
  double error = 0;
  for (int i = 1; i <= 20; ++i) {
    error = std::max(
        error, std::abs(static_cast<double>(trial.Data(i, 1)) - noise[static_cast<std::size_t>(i - 1)]));
  }
  EXPECT_LT(error, 0.2);
  EXPECT_EQ(frequencies[1000], 500.0);
}

std::string Ftf(const std::string& lines) {
  return "Filename:\tx\n\nSlope=\t0\tBias=\t  1.5000\nHarmonic\t Freq.\n" + lines;
}

TEST_F(SpectraCommands, AFourierFileIsReadByItsColumns) {
  trial.DiscardData();
  questions.inputAnswers = {"11", "9", "", "2"};
  Load("a.ftf",
       Ftf("       001\t    0.5000\t    2.0000\t    1.0000\r\n       003\t    1.0000\t    1.0000\n"));
  ASSERT_EQ(trial.NData, 11);
  EXPECT_EQ(questions.inputs[2].defaultText, "1.5");
  EXPECT_EQ(trial.Rate, 5.0);
  EXPECT_NEAR(trial.Data(1, 1), 2.0, 1e-6);   // cos 0
  EXPECT_NEAR(trial.Data(6, 1), -2.0, 1e-6);  // half a turn at 1 s
  EXPECT_NEAR(trial.Data(3, 1), 2 * std::cos(Pi * 0.4) + std::sin(Pi * 0.4), 1e-6);
  EXPECT_EQ(LastBox(),
            "|End-of-file reached before all harmonics read.\nNumber of harmonics in reconstrucion was 1.");
  // The last digit of a frequency is in no column.
  trial.DiscardData();
  questions.inputAnswers = {"3", "1", "0", "1"};
  Load("b.ftf", Ftf("       001\t  100.1234\t    1.0000\n"));
  EXPECT_NEAR(trial.Data(2, 1), std::cos(2 * Pi * 100.123 * 0.5), 1e-6);
}

// The stored trial's length and duration serve: the series comes beside the signal that it was made of.
TEST_F(SpectraCommands, AFourierFileIsMergedAsOneMoreChannel) {
  WriteFile(directory.Path("s.ftf"), Ftf("       001\t    1.0000\t    2.0000\t    0.0000\n"));
  questions.FillForm({}, "Save");
  Run("file.merge");
  questions.inputAnswers = {"1", "0.5"};
  questions.FillForm({}, "Merge");
  LoadPath(directory.Path("s.ftf"));
  ASSERT_EQ(trial.NChan, 4);
  ASSERT_EQ(trial.NData, 200);
  EXPECT_EQ(Labels(), (Texts{"Sine", "Noise", "", "From FTF"}));
  EXPECT_NEAR(trial.Data(1, 1), 1.0, 1e-6);
  EXPECT_NEAR(trial.Data(1, 4), 2.5, 1e-6);
  EXPECT_TRUE(questions.inputAnswers.empty());
}

TEST_F(SpectraCommands, BadFourierFilesLeaveNoTrial) {
  const std::string error =
      "File Error|Error reading Fourier Transform File (.FTF).  File may be corrupt or in wrong format.";
  std::string endless;
  for (int i = 0; i < 30; ++i) {
    endless += "a line\n";
  }
  for (const std::string& text :
       {std::string(), std::string("\0\xff\x01", 3), endless, std::string("Harmo")}) {
    SetUp();
    Load("bad.ftf", text);
    EXPECT_EQ(LastBox(), error);
    EXPECT_EQ(trial.NData, 0);
  }
  for (const std::deque<std::string>& answers :
       {std::deque<std::string>{""}, {"1"}, {"5", ""}, {"5", "0"}, {"5", "1", "0", "-1"}}) {
    trial.DiscardData();
    questions.inputAnswers = answers;
    Load("ok.ftf", Ftf("       001\t    0.5000\t    2.0000\t    1.0000\n"));
    EXPECT_EQ(trial.NData, 0);
    EXPECT_TRUE(questions.inputAnswers.empty());
  }
  // A name that cannot be written: no box, and the step fails.
  SetUp();
  questions.boxes.clear();
  workbench.report = {};
  questions.PickChannels({2});
  PressInForm({"Save", "Exit"});
  questions.fileAnswers = {{directory.Path("no/where.ftf")}};
  Run("fourier.harmonic-regression");
  EXPECT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(workbench.report.failures.size(), 1U);
}

}  // namespace
}  // namespace velmora::test
