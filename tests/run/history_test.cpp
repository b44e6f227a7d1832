#include "run/history/history.hpp"

#include "graph/single_view.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

/// A person at work, without a window: what they do is heard by a history.
class HistoryTest : public testing::Test {
 protected:
  TemporaryDirectory directory_;
  ScriptedQuestions person_;
  History history_{person_};
  Workbench workbench_{history_.Recording()};
  std::string input_ = directory_.Path("walk.vmb");

  void SetUp() override {
    history_.Attach(workbench_);
    WriteTrialFile(input_, [](Trial& trial) {
      SetChannels(trial, NoiseChannels(3, 500), 200.0);
      trial.TrialTitle = "7 noises";
      for (int c = 1; c <= 3; ++c) {
        trial.ChanLabel[c] = "EMG " + std::to_string(c);
      }
    });
  }

  void Do(const char* id) { RunCommand(workbench_, *FindCommand(id)); }
  void Load() {
    workbench_.trial.FileName = input_;
    Do("file.load");
  }
  /// The trial as a file of its own, without a trace in the history of what was done.
  std::string Bytes(const std::string& name) {
    person_.fileAnswers.push_back({directory_.Path(name)});
    Do("save.vmb");
    return ReadFile(directory_.Path(name));
  }
  std::vector<std::string> Words() const {
    std::vector<std::string> words;
    for (const HistoryLine& line : history_.Lines()) {
      words.push_back((line.undone ? "undone: " : "") + line.words);
    }
    return words;
  }
  /// Runs the recipe in a fresh program on the same input, with results in `out`.
  void Replay(const std::string& out) {
    Variables variables = {{"out", directory_.Path(out)}};
    std::filesystem::create_directories(directory_.Path(out));
    SetInputVariables(variables, input_);
    RecipeRun run({.input = input_, .strict = true});
    const Outcome outcome = run.Run(ReadRecipe(history_.Recipe(), "history", variables));
    ASSERT_FALSE(outcome.failure) << PlaceText(outcome.failure->at) << ": " << outcome.failure->why << "\n"
                                  << history_.Recipe();
  }

  void Filter() {
    person_.FillForm({{"optFilter", "1"}, {"FilterCutoffs 2", "12.5"}}, "All");
    person_.FillForm({{"FilterCutoffs 3", "0"}, {"ZeroLag 1", "false"}}, "Filter");
    Do("smooth.butterworth");
  }
  void Scale() {
    person_.PickValues({{1, "0.1"}, {3, "-2.5e-3"}});
    Do("math.multiply");
  }
  void Crop(double from = 0.5, double to = 0.7) {
    person_.FillForm({{"channels 1", "true"}});
    Do("graph.single");
    auto& view = OpenSingleView(workbench_);
    view.Drawing().Abscissa.SetMinMax(from - 0.2,
                                      to + 0.4);  // zoomed with the wheel, which nobody writes down
    view.PressKey({.name = "2"});
    for (const double x : {from, (from + to) / 2, to}) {
      view.MoveCursor(2, x);
    }
    person_.FillForm({});
    Do("crop.outside");
    CloseView(workbench_);
  }
  void Look() {
    person_.FillForm({{"channels 2", "true"}});
    Do("graph.single");
    auto& view = OpenSingleView(workbench_);
    view.PressKey({.name = "2"});
    view.MoveCursor(1, view.Drawing().Cursors[1].XPosition - 0.25);
    CloseView(workbench_);
  }
};

// Analyses that change no sample are steps as well, with the files they leave.
TEST_F(HistoryTest, AnalysesAreRepeatedWithTheirFiles) {
  const auto press = [this](const Edits& edits, const std::string& button, const std::string& file = "") {
    person_.FillForm(edits, button);
    if (!file.empty()) {
      person_.fileAnswers.push_back({directory_.Path(file)});
    }
  };
  Load();
  Do("fourier.window-hamming");
  person_.PickValues({{2, "40"}});
  press({{"mnuSeries", "4"}, {"mnuOrdinate", "Log"}}, "Save", "walk.ftf");
  press({}, "Exit");
  Do("fourier.harmonic-regression");
  person_.PickChannels({1});
  press({}, "Save", "walk.apd");
  press({{"EpochCount", "50"}}, "Exit");
  person_.boxAnswers = {Button::OK};
  Do("emg.apdf");
  press({{"txtInterval", "0.5"}, {"optInterleave", "50%"}, {"chkSave", "true"}}, "Select Channel");
  person_.PickChannels({3});
  person_.fileAnswers.push_back({directory_.Path("walk.tab")});
  press({}, "Save", "walk.fat");
  press({}, "Done");
  press({}, "Exit");
  Do("fourier.time-series");
  std::filesystem::create_directories(directory_.Path("again"));
  Replay("again");
  for (const char* name : {"walk.ftf", "walk.apd", "walk.tab", "walk.fat"}) {
    const std::string bytes = ReadFile(directory_.Path(name));
    EXPECT_GT(bytes.size(), 100U) << name;
    EXPECT_EQ(ReadFile(directory_.Path(std::string("again/") + name)), bytes) << name;
  }
}

// What goes in are files of their own; what comes out, and the log, is the same again.
TEST_F(HistoryTest, AnAverageIsRepeatedWithItsFiles) {
  std::vector<std::string> strides;
  for (unsigned k = 0; k < 3; ++k) {
    strides.push_back(directory_.Path("stride" + std::to_string(k) + ".vmb"));
    WriteTrialFile(strides.back(), [k](Trial& trial) {
      SetChannels(trial, NoiseChannels(2, 40 + static_cast<int>(k)), 100.0);
      trial.ChanLabel[1] = "Fz";
      trial.ChanLabel[2] = "Knee";
    });
  }
  const auto press = [this](const char* button, const Edits& edits = {}) { person_.FillForm(edits, button); };
  press("4. Select First File", {{"txtFilename", directory_.Path("mean.ens")}, {"txtNumber", "20"}});
  person_.fileAnswers.push_back({strides[0]});
  press("5. Channel Selection");
  person_.PickChannels({1, 2});
  press("6. Begin Average");
  press("7. Open Next File");
  person_.fileAnswers.push_back({strides[1], strides[2]});
  press("9. Calculate Means &SDs");
  press("10. Save to .VMB");
  person_.fileAnswers.push_back({directory_.Path("mean.vmb")});
  press("Exit");
  Do("ensemble.average");
  ASSERT_TRUE(person_.formAnswers.empty());
  const std::string mean = ReadFile(directory_.Path("mean.vmb"));
  const std::string log = ReadFile(directory_.Path("mean.ens"));
  EXPECT_NE(log.find("Number of files in average: 3"), std::string::npos) << log;
  Replay("again");
  EXPECT_EQ(ReadFile(directory_.Path("again/mean.vmb")), mean);
  EXPECT_EQ(ReadFile(directory_.Path("again/mean.ens")), log);
}

// The next file of the study may have its channels in another order.
TEST_F(HistoryTest, ARecipeNamesChannelsByLabelWhereLabelsTellThemApart) {
  Load();
  Filter();
  Scale();
  const std::string recipe = history_.Recipe();
  EXPECT_NE(recipe.find("{\"EMG 1\": 0.1"), std::string::npos) << recipe;
  EXPECT_NE(recipe.find("\"EMG 2\": 12.5"), std::string::npos) << recipe;
  const std::vector<float> second = Channel(workbench_.trial, 2);
  const std::vector<float> third = Channel(workbench_.trial, 3);
  WriteTrialFile(input_, [](Trial& trial) {
    const std::vector<std::vector<float>> noise = NoiseChannels(3, 500);
    SetChannels(trial, {noise[2], noise[0], noise[1]}, 200.0);
    trial.ChanLabel[1] = " emg 3";
    trial.ChanLabel[2] = "Emg 1";
    trial.ChanLabel[3] = "EMG 2";
  });
  RecipeRun turned({.input = input_});
  Variables variables;
  SetInputVariables(variables, input_);
  EXPECT_FALSE(turned.Run(ReadRecipe(recipe, "history", variables)).failure);
  EXPECT_EQ(Channel(turned.State().trial, 3), second);
  EXPECT_EQ(Channel(turned.State().trial, 1), third);

  WriteTrialFile(input_, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 500), 200.0);
    trial.ChanLabel[1] = "EMG";
    trial.ChanLabel[2] = "emg ";
    trial.ChanLabel[3] = "Fz";
  });
  Load();
  Scale();
  EXPECT_NE(history_.Recipe().find("{1: 0.1"), std::string::npos) << history_.Recipe();
}

TEST_F(HistoryTest, SavedAsRecipeItRepeatsToTheSameBits) {
  // What earlier trials left behind is not there when the recipe runs.
  workbench_.smoothing.WindowWidth = 17;
  workbench_.filters.FilterCutoffs.fill(3.0F);
  workbench_.chooser.ChanConst.fill(7.0F);
  Load();
  Filter();
  Scale();
  person_.FillForm({{"channels 2", "true"}});
  Do("smooth.moving-average");
  person_.PickNames({{2, "K: \"l\", 5%"}});
  Do("edit.labels");
  Crop();
  person_.inputAnswers = {"8 noises at $5, ${input} and ${"};
  Do("edit.title");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory_.Path("again/walk-done.vmb")), bytes);
  EXPECT_TRUE(person_.formAnswers.empty());
}

TEST_F(HistoryTest, WhatWasFoundInATextIsWrittenOut) {
  input_ = directory_.Path("walk.csv");
  WriteFile(input_, "Devices\n250\nFrame,m1_X (m)\n1,5\n2,6\n3,7\n");
  person_.formAnswers.emplace_back([](Form& form) {
    form.TakeFound();
    return std::string("Read");
  });
  Load();
  const std::string bytes = Bytes("found.vmb");
  EXPECT_EQ(workbench_.trial.ChanLabel[1], "m1_X");
  EXPECT_EQ(history_.Recipe().find("found:"), std::string::npos);
  EXPECT_NE(history_.Recipe().find("ParseLabelsLine: 3"), std::string::npos) << history_.Recipe();
  Replay("again");
  EXPECT_EQ(ReadFile(directory_.Path("again/found.vmb")), bytes);
}

TEST_F(HistoryTest, SentencesOfWhatHappenedAndNoneOfWhatDidNot) {
  Load();
  person_.PickCancel();
  Do("math.absolute");
  person_.PickValues({{1, "1"}, {2, "0"}});
  Do("math.multiply");
  person_.FillForm({{"FilterCutoffs 1", "900"}}, "Filter");
  Do("smooth.butterworth");  // refused
  Do("file.refresh");
  person_.fileAnswers.push_back({"/no/such/directory/x.vmb"});
  Do("save.vmb");
  Look();  // nothing after depends on it
  person_.PickChannels({1, 3});
  Do("math.absolute");
  Filter();
  Crop();
  Look();
  const std::vector<std::string> expected = {
      "Opened walk.vmb, 3 channels, 500 samples at 200 Hz", "Absolute value: EMG 1, EMG 3",
      "Low-pass critically-damped, 2nd order, one way, 12.5 Hz: EMG 1. Low-pass critically-damped, 2nd "
      "order, "
      "zero-lag, 12.5 Hz: EMG 2",
      "Graph: 2 cursors at 0.500 s and 0.700 s", "Cropped to samples 101 to 141 (0.5000 to 0.7000 s)"};
  EXPECT_EQ(Words(), expected);
  EXPECT_NE(history_.Text().find("Velmora2, version 1.00"), std::string::npos);
  EXPECT_NE(history_.Text().find("5. Cropped to samples 101 to 141 (0.5000 to 0.7000 s).\n"),
            std::string::npos);
}

TEST_F(HistoryTest, WalksBackAndOnUntilSomethingElseIsDone) {
  Load();
  Scale();
  const std::string scaled = Bytes("scaled.vmb");
  Filter();
  Crop();
  const std::string cropped = Bytes("cropped.vmb");
  const std::vector<std::string> words = Words();
  std::filesystem::remove(directory_.Path("scaled.vmb"));
  workbench_.trial.FileName = directory_.Path("selected-in-the-browser.vmb");
  EXPECT_EQ(history_.GoTo(2), "");  // load, scale, save
  EXPECT_EQ(history_.Place(), 2);
  EXPECT_FALSE(std::filesystem::exists(directory_.Path("scaled.vmb"))) << "nothing is saved again";
  EXPECT_EQ(Words()[2], words[2]);
  EXPECT_EQ(Words()[3], "undone: " + words[3]);
  Look();  // a look in between changes nothing, though it moves the cursors
  EXPECT_EQ(history_.GoTo(6), "");
  EXPECT_EQ(Words(), words);
  EXPECT_EQ(history_.GoTo(4), "");
  EXPECT_EQ(history_.GoTo(5), "");
  CloseView(workbench_);
  EXPECT_EQ(Bytes("again.vmb"), cropped);

  EXPECT_EQ(history_.GoTo(1), "");
  EXPECT_EQ(Bytes("back.vmb"), scaled);  // a save is something else
  EXPECT_EQ(Words().size(), 3U);

  std::filesystem::last_write_time(input_,
                                   std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  Scale();
  EXPECT_NE(history_.GoTo(0).find("is not what it was"), std::string::npos);
  EXPECT_EQ(workbench_.trial.NData, 500);
}

TEST_F(HistoryTest, RecalledLabelsAreFixed) {
  const std::string first = directory_.Path("first.vmb");
  WriteTrialFile(first, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 20), 200.0);
    trial.ChanLabel[2] = "Gas \"m\" $";
    trial.ChanUnits[2] = "uV";
  });
  workbench_.trial.FileName = first;
  Do("file.load");
  Load();
  Do("edit.recall-labels");
  Scale();
  EXPECT_EQ(history_.GoTo(1), "");  // which reads the file again, and it is no file before itself
  EXPECT_EQ(history_.GoTo(2), "");
  EXPECT_EQ(workbench_.trial.ChanLabel[2], "Gas \"m\" $");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory_.Path("again/walk-done.vmb")), bytes);
}

TEST_F(HistoryTest, TheSamplesBetweenCursorsOfAClosedGraphAreFoundAgain) {
  // 534 s after the start of a recording.
  WriteTrialFile(input_, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 500), 200.0);
    for (int i = 1; i <= 500; ++i) {
      trial.Data(i, 0) += 534.0F;
    }
  });
  Load();
  Look();
  person_.PickChannels({1});
  Do("bias.mean");
  Crop(534.5, 534.7);
  EXPECT_EQ(Words()[1].substr(0, 19), "Graph: 2 cursors at");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory_.Path("again/walk-done.vmb")), bytes);
}

}  // namespace
}  // namespace velmora::test
