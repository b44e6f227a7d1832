// The steps of an average: files in, files out, and what does not fit.
#include <cmath>

#include "ensemble/ensemble_steps.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

TEST_F(EnsembleFormTest, AveragesFilesOfDifferentLengthsSampleBySample) {
  Begin(Ramp("a.vmb", 0, 10, 21));
  Open({Ramp("b.vmb", 2, 22, 41, 50), Ramp("c.vmb", 4, 4, 11, 200)});
  Average();
  ASSERT_EQ(trial.NChan, 2);
  ASSERT_EQ(trial.NData, 11);
  for (int k = 0; k <= 10; ++k) {
    const double x[] = {1.0 * k, 2 + 2.0 * k, 4};
    const double mean = (x[0] + x[1] + x[2]) / 3;
    double squares = 0;
    for (const double value : x) {
      squares += (value - mean) * (value - mean);
    }
    EXPECT_NEAR(trial.Data(k + 1, 1), mean, 1e-5) << k;
    EXPECT_NEAR(trial.Data(k + 1, 2), std::sqrt(squares / 2), 1e-4) << k;
    EXPECT_FLOAT_EQ(trial.Data(k + 1, 0), static_cast<float>(10 * k));
  }
  EXPECT_EQ(Labels(), (Texts{"Force 1", "SDForce 1"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N"}));
  EXPECT_EQ(trial.ChanLabel[0].Text() + trial.ChanUnits[0].Text(), "Percentage%");
  EXPECT_EQ(trial.TrialTitle, "Ensemble averaged data");
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_EQ(trial.FileTypeCode, 2);
  EXPECT_EQ(trial.Duration, 100.0);
  EXPECT_EQ(trial.Rate, 0.1);
  EXPECT_EQ(trial.CursorHi, 11);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(workbench.time.Base, TimeBase::Percentage);
  const std::string a = Out("a.vmb");
  EXPECT_TRUE(list.starts_with("Added file: " + a)) << list;
  const std::string log = ReadFile(Out("log.ens"));
  EXPECT_TRUE(log.starts_with("Ensemble average by Velmora2, version 1.00 (build 001)\nFirst file: " + a +
                              "\nTrial: a.\n       From 0.0000 s to 0.2000 s\nAdded file: " + a +
                              "\nTrial: a."))
      << log;
  EXPECT_HAS(log, "\nNumber of files in average: 3\nCoeff. of var. for Channel 00, 'Force 1' = ");
}

TEST_F(EnsembleFormTest, TheMeanOfEqualFilesIsTheFile) {
  const std::vector<float> file = Sampled(41, [](int i) { return static_cast<float>(i % 7) - 2.5F; });
  const std::string same = File("same.vmb", {file});
  Begin(same, {}, {{"txtNumber", "40"}});
  Open({same, same, same});
  Average();
  EXPECT_EQ(Channel(trial, 1), file);
  EXPECT_EQ(Channel(trial, 2), std::vector<float>(41, 0.0F));
  EXPECT_TRUE(list.ends_with("Coeff. of var. for Chan. 00, 'Force 1' =0.0000%")) << list;
}

TEST_F(EnsembleFormTest, StepsComeInTheirOrder) {
  const std::string a = Ramp("a.vmb", 0, 10, 21);
  const auto could = [this](const char* step) { return possible.contains(step); };
  End();
  EXPECT_TRUE(could(kFirst) && could("Read Ensemble") && could("Exit"));
  EXPECT_FALSE(could(kChannels) || could(kBegin) || could(kOpen) || could("Graph Last File"));
  Begin(a);
  Press("10. Save to .VMB");  // which cannot be pressed yet
  End();
  EXPECT_TRUE(could(kOpen) && could(kCalculate) && could("Graph Last File"));
  EXPECT_FALSE(could(kFirst) || could(kBegin) || could(kAdd) || could(kRemove) || could("Save to ASCII"));
  EXPECT_HAS(Warnings(), "\"10. Save to .VMB\" cannot be pressed now.");
  EXPECT_TRUE(questions.files.size() == 1) << "and asked nothing";
  EXPECT_HAS(ReadFile(Out("log.ens")), "No means were calculated.");

  Begin(a);
  Press(kCalculate);  // of a single file
  Open({a});
  Average();
  EXPECT_HAS(Warnings(), "Too few files to calculate and average. Calculations cancelled.");
  EXPECT_TRUE(could("10. Save to .VMB") && could("Save to .VME") && could("Graph Results") && could(kFirst));
  EXPECT_FALSE(could(kBegin) || could(kOpen) || could(kCalculate) || could(kRemove));
  EXPECT_EQ(LastBox().substr(0, 17), "Results Not Saved");
}

TEST_F(EnsembleFormTest, AFileThatDoesNotFitIsNamedAndTheAverageGoesOn) {
  const float nothing = std::numeric_limits<float>::quiet_NaN();
  const std::vector<float> x = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  const std::vector<float> y = {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
  std::vector<float> gap = x;
  gap[4] = nothing;
  WriteFile(Out("broken.vmb"), "Velmora2 binary file that ends early");
  WriteFile(Out("empty.vmb"), "");
  Begin(File("a.vmb", {x, x}), {1, 2});
  Open({Out("broken.vmb"), File("narrow.vmb", {y}), Out("none.vmb"), File("one.vmb", {{5}, {5}}),
        File("gap.vmb", {x, gap}), Out("empty.vmb"), File("wide.vmb", {y, x, y}),
        File("wider.vmb", {y, y, y, y})});
  questions.boxAnswers = {Button::OK, Button::Cancel};  // of the two that are too wide
  Average();
  EXPECT_EQ(Channel(trial, 1)[0], 2.0F);
  EXPECT_EQ(Channel(trial, 3)[0], 1.0F);
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 2");
  EXPECT_TRUE(workbench.report.failures.empty()) << workbench.report.failures.front();
  for (const char* warning :
       {"broken.vmb was not averaged: File read error", "none.vmb was not averaged: Error reading file",
        "narrow.vmb was not averaged: it has 1 channel, there needs to be 2",
        "one.vmb was not averaged: it has one sample only",
        "gap.vmb was not averaged: it has samples that are missing or too large to be squared",
        "empty.vmb was not averaged: ", "wider.vmb was not averaged: it has 4 channels, the first file 2"}) {
    EXPECT_NE(Warnings().find(warning), std::string::npos) << warning << "\nin\n" << Warnings();
  }
}

TEST_F(EnsembleFormTest, RemovesTheLastFileAndTakesItBack) {
  const std::string a = Ramp("a.vmb", 1, 1, 11);
  const std::string b = Ramp("b.vmb", 5, 5, 101);
  Begin(a, {}, {{"chkUseTime", "true"}});
  Open({Ramp("c.vmb", 3, 3, 21), b});
  Press(kRemove);
  questions.boxAnswers = {Button::Yes};
  Press(kRemove);  // the one before it is not at hand any more
  Average();
  EXPECT_EQ(Channel(trial, 1), std::vector<float>(11, 2.0F));
  EXPECT_EQ(questions.boxes.front().text, "Remove file: " + b);
  EXPECT_FLOAT_EQ(static_cast<float>(trial.Duration), 0.15F) << "the mean of 0.1 s and 0.2 s";
  EXPECT_EQ(trial.ChanLabel[0].Text(), "Mean time");
  EXPECT_EQ(trial.HeaderLines[2], "Mean time (s): 0.1500");
  EXPECT_FLOAT_EQ(trial.Data(11, 0), 0.15F);
  EXPECT_HAS(ReadFile(Out("log.ens")), "\nRemoved file: " + b + "\nNumber of files in average: 2\nMean time");

  Begin(a);
  Open({b});
  Press(kRemove);
  questions.boxAnswers = {Button::Yes};
  Press(kAdd);
  Average();
  EXPECT_EQ(Channel(trial, 1), std::vector<float>(11, 3.0F));
  EXPECT_EQ(Channel(trial, 2), std::vector<float>(11, std::sqrt(8.0F)));
}

TEST_F(EnsembleFormTest, ADirectoryStandsForItsFilesOfTheMask) {
  for (const int k : {1, 2, 3}) {
    Ramp("walk" + std::to_string(k) + ".vmb", static_cast<float>(k), static_cast<float>(k), 15);
  }
  Ramp("run1.vmb", 100, 100, 15);
  // The first of them opens the average, the others come with it.
  Begin(directory.Path(""), {}, {{"txtMask", "walk?.vmb"}});
  Average();
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_EQ(trial.Data(1, 1), 2.0F);
  // Later, those that are not in the average yet.
  Begin(Out("walk2.vmb"));
  Open({directory.Path("")});
  Open({Out("r*.vmb"), Out("jump*.vmb")});
  Average();
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 4") << "the mask is remembered";
  EXPECT_HAS(Warnings(), "fits the mask jump*.vmb");
  // What another command has written is averaged without being looked for.
  workbench.ensemble.Files = {Out("walk3.vmb"), Out("walk1.vmb")};
  Press(kChannels, {{"txtFilename", Out("log.ens")}});
  Press(kBegin);
  Average();
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 2");
}

TEST_F(EnsembleFormTest, TheListMarksWhatIsOdd) {
  const std::vector<float> x(101, 1.0F);
  Begin(File("a.vmb", {x}));
  Open({File("b.vmb", {x}), File("far.vmb", {std::vector<float>(301, 2.0F)}), Out("b.vmb")});
  WriteTrialFile(Out("mv.vmb"), [&](Trial& made) {
    SetChannels(made, {x});
    made.ChanUnits[1] = "mV";
  });
  Open({Out("mv.vmb")});
  Average();
  EXPECT_EQ(Remarks(), (Texts{"a.vmb|", "b.vmb|", "far.vmb|far from the others' duration, 1.000",
                              "b.vmb|added more than once", "mv.vmb|channel 00 is in mV, not N"}));
  EXPECT_HAS(Warnings(), "far.vmb: its duration, 3.000, is far from the others', 1.000");
  EXPECT_HAS(Warnings(), "mv.vmb: channel 00 is in mV, not N");
}

TEST_F(EnsembleFormTest, AsksBeforeEachFileAndForAtMost32Channels) {
  const std::vector<float> x(11, 1.0F);
  const std::string a = File("a.vmb", std::vector<std::vector<float>>(33, x));
  Press(kFirst, {{"txtFilename", Out("log.ens")}, {"txtNumber", "9"}, {"chkPrompt", "true"}});
  questions.fileAnswers.push_back({a});
  std::vector<int> all(33);
  for (int c = 1; c <= 33; ++c) {
    all[static_cast<std::size_t>(c - 1)] = c;
  }
  for (const std::vector<int>& channels : {std::vector<int>{}, all, std::vector<int>{33}}) {
    Press(kChannels);
    questions.PickChannels(channels);
  }
  Press(kBegin);
  questions.boxAnswers = {Button::Yes, Button::No, Button::Yes};
  Open({a, a});
  Average();
  EXPECT_EQ(trial.NData, 101) << "9 intervals are not taken";
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 2");
  EXPECT_EQ(trial.ChanLabel[1].Text(), "Force 33");
  ASSERT_GE(questions.boxes.size(), 4U);
  EXPECT_EQ(questions.boxes[0].title, "No Channels Selected");
  EXPECT_EQ(questions.boxes[1].title, "Too Many Channels Selected");
  EXPECT_TRUE(questions.boxes[3].text.starts_with("Add file: " + a)) << questions.boxes[3].text;
}

TEST_F(EnsembleFormTest, CancelBetweenFilesLeavesAnAverageToGoOnWith) {
  Begin(Ramp("a.vmb", 1, 1, 11));
  Open({Ramp("b.vmb", 3, 3, 11), Ramp("c.vmb", 5, 5, 11), Ramp("d.vmb", 7, 7, 11)});
  questions.CancelAt("File 2 of 3");
  Open({Out("d.vmb")});
  Average();
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_FLOAT_EQ(trial.Data(1, 1), 11.0F / 3);
  EXPECT_HAS(Warnings(), "Cancelled: 2 files of 3 not added.");
}

}  // namespace
}  // namespace velmora::test
