#include <sstream>

#include "graph/single_view.hpp"
#include "support/recorded_person.hpp"

namespace velmora::test {
namespace {

/// A person at work, without a window: what they do is heard by a history.
struct HistoryTest : RecordedPerson {
  void SetUp() override {
    RecordedPerson::SetUp();
    WriteTrialFile(input, [](Trial& trial) {
      SetChannels(trial, NoiseChannels(3, 500), 200.0);
      trial.TrialTitle = "7 noises";
      for (int c = 1; c <= 3; ++c) {
        trial.ChanLabel[c] = "EMG " + std::to_string(c);
      }
    });
  }

  /// The trial as a file of its own, without a trace in the history of what was done.
  std::string Bytes(const std::string& name) {
    person.fileAnswers.push_back({directory.Path(name)});
    Do("save.vmb");
    return ReadFile(directory.Path(name));
  }
  std::vector<std::string> Words() const {
    std::vector<std::string> words;
    for (const HistoryLine& line : history.Lines()) {
      words.push_back((line.undone ? "undone: " : "") + line.words);
    }
    return words;
  }
  void Filter() {
    person.FillForm({{"optFilter", "1"}, {"FilterCutoffs 2", "12.5"}}, "All");
    person.FillForm({{"FilterCutoffs 3", "0"}, {"ZeroLag 1", "false"}}, "Filter");
    Do("smooth.butterworth");
  }
  void Scale() {
    person.PickValues({{1, "0.1"}, {3, "-2.5e-3"}});
    Do("math.multiply");
  }
  void Crop(double from = 0.5, double to = 0.7) {
    person.FillForm({{"channels 1", "true"}});
    Do("graph.single");
    auto& view = OpenSingleView(workbench);
    view.Drawing().Abscissa.SetMinMax(from - 0.2,
                                      to + 0.4);  // zoomed with the wheel, which nobody writes down
    view.PressKey({.name = "2"});
    for (const double x : {from, (from + to) / 2, to}) {
      view.MoveCursor(2, x);
    }
    person.FillForm({});
    Do("crop.outside");
    CloseView(workbench);
  }
  /// At 0.5 and 0.7 s.
  void OpenGraphWithCursors() {
    person.FillForm({{"channels 1", "true"}});
    Do("graph.single");
    OpenSingleView(workbench).PressKey({.name = "2"});
    OpenSingleView(workbench).MoveCursor(1, 0.5);
    OpenSingleView(workbench).MoveCursor(2, 0.7);
  }
  void Look() {
    person.FillForm({{"channels 2", "true"}});
    Do("graph.single");
    auto& view = OpenSingleView(workbench);
    view.PressKey({.name = "2"});
    view.MoveCursor(1, view.Drawing().Cursors[1].XPosition - 0.25);
    CloseView(workbench);
  }
};

// Analyses that change no sample are steps as well, with the files they leave.
TEST_F(HistoryTest, AnalysesAreRepeatedWithTheirFiles) {
  int copies = 0;
  workbench.desktop.copy = [&copies](const std::string& /*text*/) { ++copies; };
  Do("fourier.window-hanning");  // for a trial before; it stays chosen
  Load();
  person.PickValues({{2, "40"}});
  Press("Save", {}, "first.ftf");
  Press("Exit");
  Do("fourier.harmonic-regression");
  Do("fourier.window-hamming");
  EXPECT_EQ(history.GoTo(1), "");
  EXPECT_EQ(workbench.spectrum.WindowType, 6) << "what was gone back behind is not chosen";
  EXPECT_EQ(history.GoTo(2), "");
  person.PickValues({{2, "40"}});
  Press("Save", {{"mnuSeries", "4"}, {"mnuOrdinate", "Log"}}, "walk.ftf");
  Press("Exit");
  Do("fourier.harmonic-regression");
  person.PickChannels({1});
  Press("Save", {}, "walk.apd");
  Press("Table to Clipboard");
  Press("Exit", {{"EpochCount", "50"}});
  person.boxAnswers = {Button::OK};
  Do("emg.apdf");
  Press("Select Channel", {{"txtInterval", "0.5"}, {"optInterleave", "50%"}, {"chkSave", "true"}});
  person.PickChannels({3});
  person.fileAnswers.push_back({directory.Path("walk.tab")});
  Press("Save", {}, "walk.fat");
  Press("Done");
  Press("Exit");
  Do("fourier.time-series");
  std::filesystem::create_directories(directory.Path("again"));
  Replay("again");
  for (const char* name : {"first.ftf", "walk.ftf", "walk.apd", "walk.tab", "walk.fat"}) {
    const std::string bytes = ReadFile(directory.Path(name));
    EXPECT_GT(bytes.size(), 100U) << name;
    EXPECT_EQ(ReadFile(directory.Path(std::string("again/") + name)), bytes) << name;
  }
  // A file of another name and length is asked about in other words.
  const std::string other = directory.Path("run.vmb");
  WriteTrialFile(other, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 700), 200.0);
    for (int c = 1; c <= 3; ++c) {
      trial.ChanLabel[c] = "EMG " + std::to_string(c);
    }
  });
  ReplayOn(other, "other", true);
  EXPECT_TRUE(std::filesystem::exists(directory.Path("other/run.fat")));
  // Going back and on leaves everything outside the trial alone.
  WriteFile(directory.Path("walk.apd"), "worked on since");
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(history.GoTo(history.Lines().size() - 1), "");
  EXPECT_EQ(ReadFile(directory.Path("walk.apd")), "worked on since");
  EXPECT_EQ(copies, 1);
}

// A baseline of a trial at rest serves those that are loaded later, and is part of their recipes.
TEST_F(HistoryTest, ThresholdsOfAnEarlierTrialGoIntoTheRecipe) {
  const std::string rest = directory.Path("rest.vmb");
  std::filesystem::copy_file(input, rest);
  workbench.trial.FileName = rest;
  Do("file.load");
  Press("Calculate thresholds");
  person.inputAnswers = {"1.3"};
  person.PickValues({});
  Press("Exit");
  Do("emg.statistics");
  workbench.thresholds.ChanThreshold[3] = std::nan("");  // of a region of one sample
  workbench.thresholds.BaselineTaken = true;
  Load();
  Press("Exit");
  Do("emg.statistics");
  const std::string expected = TableText(workbench.results.ResultTables.front());

  const auto run = ReplayOn(input, "again", false);
  EXPECT_EQ(TableText(run->State().results.ResultTables.front()), expected);
  const ThresholdMemory& thresholds = run->State().thresholds;
  EXPECT_EQ(thresholds.ThresholdsOf, "rest.vmb");
  EXPECT_EQ(thresholds.ChanThreshold[2], workbench.thresholds.ChanThreshold[2]);
  EXPECT_TRUE(thresholds.BaselineTaken);
  EXPECT_EQ(history.Recipe().find(directory.Path("")), std::string::npos) << history.Recipe();
  workbench.thresholds = {};
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(workbench.thresholds.ThresholdsOf, rest);
}

// What goes in are files of their own; what comes out, and the log, is the same again.
TEST_F(HistoryTest, AnAverageIsRepeatedWithItsFiles) {
  std::vector<std::string> strides;
  for (unsigned k = 0; k < 3; ++k) {
    strides.push_back(directory.Path("stride" + std::to_string(k) + ".vmb"));
    WriteTrialFile(strides.back(), [k](Trial& trial) {
      SetChannels(trial, NoiseChannels(2, 40 + static_cast<int>(k)), 100.0);
      trial.ChanLabel[1] = "Fz";
      trial.ChanLabel[2] = "Knee";
    });
  }
  Press("4. Select First File", {{"txtFilename", directory.Path("mean.ens")}, {"txtNumber", "20"}});
  person.fileAnswers.push_back({strides[0]});
  Press("5. Channel Selection");
  person.PickChannels({1, 2});
  Press("6. Begin Average");
  Press("7. Open Next File");
  person.fileAnswers.push_back({strides[1], strides[2]});
  Press("9. Calculate Means &SDs");
  Press("10. Save to .VMB", {}, "mean.vmb");
  Press("Exit");
  Do("ensemble.average");
  ASSERT_TRUE(person.formAnswers.empty());
  const std::string mean = ReadFile(directory.Path("mean.vmb"));
  const std::string log = ReadFile(directory.Path("mean.ens"));
  EXPECT_NE(log.find("Number of files in average: 3"), std::string::npos) << log;
  Replay("again");
  EXPECT_EQ(ReadFile(directory.Path("again/mean.vmb")), mean);
  EXPECT_EQ(ReadFile(directory.Path("again/mean.ens")), log);
}

// The next file of the study may have its channels in another order.
TEST_F(HistoryTest, ARecipeNamesChannelsByLabelWhereLabelsTellThemApart) {
  Load();
  Filter();
  Scale();
  Press("Compute", {{"comX", "1"}, {"comY", "2"}, {"chkShift", "true"}});
  Press("Exit");
  Do("statistics.cross-correlation");
  const std::string recipe = history.Recipe();
  EXPECT_NE(recipe.find("comX: \"EMG 1\""), std::string::npos) << recipe;
  EXPECT_NE(recipe.find("{\"EMG 1\": 0.1"), std::string::npos) << recipe;
  EXPECT_NE(recipe.find("\"EMG 2\": 12.5"), std::string::npos) << recipe;
  const std::vector<float> second = Channel(workbench.trial, 2);
  const std::vector<float> third = Channel(workbench.trial, 3);
  WriteTrialFile(input, [](Trial& trial) {
    const std::vector<std::vector<float>> noise = NoiseChannels(3, 500);
    SetChannels(trial, {noise[2], noise[0], noise[1]}, 200.0);
    trial.ChanLabel[1] = " emg 3";
    trial.ChanLabel[2] = "Emg 1";
    trial.ChanLabel[3] = "EMG 2";
  });
  RecipeRun turned({.input = input});
  Variables variables;
  SetInputVariables(variables, input);
  EXPECT_FALSE(turned.Run(ReadRecipe(recipe, "history", variables)).failure);
  EXPECT_EQ(Channel(turned.State().trial, 3), second);
  EXPECT_EQ(Channel(turned.State().trial, 1), third);

  WriteTrialFile(input, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 500), 200.0);
    trial.ChanLabel[1] = "EMG";
    trial.ChanLabel[2] = "emg ";
    trial.ChanLabel[3] = "Fz";
  });
  Load();
  Scale();
  EXPECT_NE(history.Recipe().find("{1: 0.1"), std::string::npos) << history.Recipe();
}

TEST_F(HistoryTest, SavedAsRecipeItRepeatsToTheSameBits) {
  // What earlier trials left behind is not there when the recipe runs.
  workbench.smoothing.WindowWidth = 17;
  workbench.filters.FilterCutoffs.fill(3.0F);
  workbench.chooser.ChanConst.fill(7.0F);
  Load();
  Filter();
  Scale();
  person.FillForm({{"channels 2", "true"}});
  Do("smooth.moving-average");
  person.PickNames({{2, "K: \"l\", 5%"}});
  Do("edit.labels");
  Crop();
  person.inputAnswers = {"8 noises at $5, ${input} and ${"};
  Do("edit.title");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory.Path("again/walk-done.vmb")), bytes);
  EXPECT_TRUE(person.formAnswers.empty());
}

TEST_F(HistoryTest, WhatWasFoundInATextIsWrittenOut) {
  input = directory.Path("walk.csv");
  WriteFile(input, "Devices\n250\nFrame,m1_X (m)\n1,5\n2,6\n3,7\n");
  person.formAnswers.emplace_back([](Form& form) {
    form.TakeFound();
    return std::string("Read");
  });
  Load();
  const std::string bytes = Bytes("found.vmb");
  EXPECT_EQ(workbench.trial.ChanLabel[1], "m1_X");
  EXPECT_EQ(history.Recipe().find("found:"), std::string::npos);
  EXPECT_NE(history.Recipe().find("ParseLabelsLine: 3"), std::string::npos) << history.Recipe();
  Replay("again");
  EXPECT_EQ(ReadFile(directory.Path("again/found.vmb")), bytes);
}

TEST_F(HistoryTest, SentencesOfWhatHappenedAndNoneOfWhatDidNot) {
  Load();
  person.PickCancel();
  Do("math.absolute");
  person.PickValues({{1, "1"}, {2, "0"}});
  Do("math.multiply");
  person.FillForm({{"FilterCutoffs 1", "900"}}, "Filter");
  Do("smooth.butterworth");  // refused
  Do("file.refresh");
  person.fileAnswers.push_back({"/no/such/directory/x.vmb"});
  Do("save.vmb");
  Look();  // nothing after depends on it
  person.PickChannels({1, 3});
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
  EXPECT_NE(history.Text().find("Velmora2, version 1.00"), std::string::npos);
  EXPECT_NE(history.Text().find("5. Cropped to samples 101 to 141 (0.5000 to 0.7000 s).\n"),
            std::string::npos);
}

TEST_F(HistoryTest, WalksBackAndOnUntilSomethingElseIsDone) {
  workbench.thresholds.ChanThreshold[1] = 0.25;  // of a trial before
  Load();
  Press("Enter threshold");
  person.PickValues({{1, "0.5"}});
  Press("Exit");
  Do("emg.statistics");
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(workbench.thresholds.ChanThreshold[1], 0.25) << "what was gone back behind is not in force";
  EXPECT_EQ(history.GoTo(1), "");
  EXPECT_EQ(workbench.thresholds.ChanThreshold[1], 0.5);
  Load();
  Scale();
  const std::string scaled = Bytes("scaled.vmb");
  Filter();
  Crop();
  const std::string cropped = Bytes("cropped.vmb");
  const std::vector<std::string> words = Words();
  std::filesystem::remove(directory.Path("scaled.vmb"));
  workbench.trial.FileName = directory.Path("selected-in-the-browser.vmb");
  EXPECT_EQ(history.GoTo(2), "");  // load, scale, save
  EXPECT_EQ(history.Place(), 2);
  EXPECT_FALSE(std::filesystem::exists(directory.Path("scaled.vmb"))) << "nothing is saved again";
  EXPECT_EQ(Words()[2], words[2]);
  EXPECT_EQ(Words()[3], "undone: " + words[3]);
  Look();  // a look in between changes nothing, though it moves the cursors
  EXPECT_EQ(history.GoTo(6), "");
  EXPECT_EQ(Words(), words);
  EXPECT_EQ(history.GoTo(4), "");
  EXPECT_EQ(history.GoTo(5), "");
  CloseView(workbench);
  EXPECT_EQ(Bytes("again.vmb"), cropped);

  EXPECT_EQ(history.GoTo(1), "");
  EXPECT_EQ(Bytes("back.vmb"), scaled);  // a save is something else
  EXPECT_EQ(Words().size(), 3U);

  std::filesystem::last_write_time(input,
                                   std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  Scale();
  EXPECT_NE(history.GoTo(0).find("is not what it was"), std::string::npos);
  EXPECT_EQ(workbench.trial.NData, 500);
}

TEST_F(HistoryTest, AMergedFileThatWasSavedOverIsNotReadAgain) {
  const std::string second = directory.Path("second.vmb");
  std::filesystem::copy_file(input, second);
  Load();
  person.FillForm({}, "Save");
  Do("file.merge");
  person.FillForm({}, "Merge");
  workbench.trial.FileName = second;
  Do("file.load");
  ASSERT_EQ(workbench.trial.NChan, 6);
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(history.GoTo(2), "");
  EXPECT_EQ(workbench.trial.NChan, 6);
  std::filesystem::last_write_time(second,
                                   std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  Scale();
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_NE(history.GoTo(2).find("second.vmb is not what it was"), std::string::npos);
  EXPECT_EQ(workbench.trial.NChan, 3);
  // What was there before going back is not lost for all that.
  EXPECT_EQ(history.GoTo(3), "");
  EXPECT_EQ(workbench.trial.NChan, 6);
}

// What a step went by without asking is there again, whatever was done since.
TEST_F(HistoryTest, TheWayBackLeadsThroughWhatThereWas) {
  WriteTrialFile(input, [](Trial& trial) { SetChannels(trial, NoiseChannels(20, 500), 200.0); });
  Load();
  person.boxAnswers = {Button::OK};
  person.fileAnswers.push_back({directory.Path("cut.vma")});
  Do("save.vma");  // it saves sixteen channels and keeps no more
  ASSERT_EQ(workbench.trial.NChan, 16);
  const auto definePlate = [this](const Edits& fields) {
    person.boxAnswers = {Button::OK};
    person.FillForm(fields);
    Do("plates.change-type");
  };
  definePlate({{"optMaker", "AMTI"}, {"comGainsFx", "2000"}});
  Scale();
  definePlate({{"comGainsFx", "3000"}});
  const float scaled = workbench.trial.Data(7, 1);
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(workbench.trial.NChan, 20);
  EXPECT_EQ(workbench.plates.PlateTable[0].comGains[0], 1000);
  EXPECT_EQ(history.GoTo(history.Lines().size() - 2), "");
  EXPECT_EQ(workbench.trial.NChan, 16);
  EXPECT_EQ(workbench.trial.Data(7, 1), scaled);
  EXPECT_EQ(workbench.plates.PlateTable[0].comGains[0], 2000);
}

TEST_F(HistoryTest, RecalledLabelsAreFixed) {
  const std::string first = directory.Path("first.vmb");
  WriteTrialFile(first, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 20), 200.0);
    trial.ChanLabel[2] = "Gas \"m\" $";
    trial.ChanUnits[2] = "uV";
  });
  workbench.trial.FileName = first;
  Do("file.load");
  Load();
  Do("edit.recall-labels");
  Scale();
  EXPECT_EQ(history.GoTo(1), "");  // which reads the file again, and it is no file before itself
  EXPECT_EQ(history.GoTo(2), "");
  EXPECT_EQ(workbench.trial.ChanLabel[2], "Gas \"m\" $");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory.Path("again/walk-done.vmb")), bytes);
}

TEST_F(HistoryTest, APlateSavedToADatabaseIsAStepWhateverBecomesOfTheDefinition) {
  Load();
  person.boxAnswers = {Button::OK};
  Press("Save", {{"a", "7"}}, "lab.dbp");
  person.inputAnswers = {"North"};
  Press("Cancel");
  Do("plates.change-type");
  EXPECT_EQ(Words().back(), "Force plate \"North\" saved in lab.dbp");
  Replay("again");
  EXPECT_EQ(ReadFile(directory.Path("again/lab.dbp")), ReadFile(directory.Path("lab.dbp")));
}

TEST_F(HistoryTest, TheSamplesBetweenCursorsOfAClosedGraphAreFoundAgain) {
  // 534 s after the start of a recording.
  WriteTrialFile(input, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 500), 200.0);
    for (int i = 1; i <= 500; ++i) {
      trial.Data(i, 0) += 534.0F;
    }
  });
  Load();
  Look();
  person.PickChannels({1});
  Do("bias.mean");
  Crop(534.5, 534.7);
  EXPECT_EQ(Words()[1].substr(0, 19), "Graph: 2 cursors at");
  const std::string bytes = Bytes("walk-done.vmb");
  Replay("again");
  EXPECT_EQ(ReadFile(directory.Path("again/walk-done.vmb")), bytes);
}

// What a scan found is found anew; a cursor of which the view decided stands where it stood.
TEST_F(HistoryTest, CursorsOfAScanAreThoseOfTheNextTrialAndCursorsOfAViewThoseOfThisOne) {
  const auto write = [this](std::vector<int> peaks) {
    WriteTrialFile(input, [&](Trial& trial) {
      std::vector<float> samples(200, 0.0F);
      for (const int peak : peaks) {
        samples[static_cast<std::size_t>(peak - 1)] = 1.0F;
      }
      SetChannels(trial, {samples}, 100.0);
    });
  };
  const auto samplesIn = [this](const std::string& file) {
    std::vector<std::string> samples;
    std::istringstream lines(ReadFile(directory.Path(file)));
    for (std::string line; std::getline(lines, line);) {
      const std::size_t tab = line.find('\t');
      if (!line.empty() && line[0] >= '0' && line[0] <= '9') {
        samples.push_back(line.substr(tab + 1, line.find('\t', tab + 1) - tab - 1));
      }
    }
    return samples;
  };
  write({20, 60, 130});
  Load();
  person.FillForm({{"channels 1", "true"}});
  Do("graph.single");
  Press("Scan", {{"comType", "Peaks"}});
  Press("Exit");
  Do("trigger.open");
  person.fileAnswers.push_back({directory.Path("found.evt")});
  Do("view.save-events");
  write({35, 90});
  Replay();
  EXPECT_EQ(samplesIn("found.evt"), (Texts{"20", "60", "130"}));
  EXPECT_EQ(samplesIn("again/found.evt"), (Texts{"35", "90"})) << history.Recipe();

  Load();
  person.FillForm({{"channels 1", "true"}});
  Do("graph.multi");
  auto& view = dynamic_cast<TimeView&>(*workbench.view);
  view.PressKey({.name = "2"});
  view.ShowRange(1, 0.5, 0.9, 0, 1);  // with the wheel
  view.PressKey({.name = "R"});
  EXPECT_EQ(workbench.trial.CursorLo, 61);
  EXPECT_EQ(workbench.trial.CursorHi, 81);
  person.boxAnswers = {Button::Yes};
  person.PickChannels({1});
  Do("bias.mean");
  const std::string bytes = Bytes("level.vmb");
  Replay();
  EXPECT_EQ(ReadFile(directory.Path("again/level.vmb")), bytes);
}

// "No" to the question for an interval opens a graph; a key that it does not have is nothing.
TEST_F(HistoryTest, AGraphThatAnotherCommandOpensIsOpenedAgain) {
  Load();
  person.boxAnswers = {Button::No};
  Do("smooth.spline");
  auto& view = OpenSingleView(workbench);
  EXPECT_FALSE(view.PressKey({.name = "K"}));
  view.PressKey({.name = "2"});
  view.MoveCursor(1, 0.5);
  view.MoveCursor(2, 0.7);
  person.FillForm({});
  Do("crop.outside");
  Do("view.exit");
  Scale();
  EXPECT_NE(history.Recipe().find("do: view.exit"), std::string::npos) << history.Recipe();
  const std::vector<std::uint32_t> cropped = Bits(workbench.trial);
  EXPECT_EQ(workbench.trial.NData, 41);
  EXPECT_EQ(Bits(Replay()->State().trial), cropped);
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(history.GoTo(history.Lines().size() - 1), "");
  EXPECT_EQ(Bits(workbench.trial), cropped);
}

// Somebody looks through trials with the graph open, and works on one of them.
TEST_F(HistoryTest, AGraphThatStaysOpenOverALoadIsOpenedForTheNextTrial) {
  const std::string next = directory.Path("next.vmb");
  std::filesystem::copy_file(input, next);
  Load();
  Scale();
  OpenGraphWithCursors();
  workbench.trial.FileName = next;
  Do("file.load");
  OpenSingleView(workbench).MoveCursor(2, 0.6);
  person.FillForm({});
  Do("crop.outside");
  CloseView(workbench);
  EXPECT_EQ(workbench.trial.NData, 21);
  EXPECT_EQ(Words(), (std::vector<std::string>{"Opened next.vmb, 3 channels, 500 samples at 200 Hz",
                                               "Graph: 2 cursors at 0.500 s and 0.600 s",
                                               "Cropped to samples 101 to 121 (0.5000 to 0.6000 s)"}));
  const std::vector<std::uint32_t> cropped = Bits(workbench.trial);
  EXPECT_EQ(Bits(ReplayOn(next, "again", true)->State().trial), cropped);
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_EQ(history.GoTo(history.Lines().size() - 1), "");
  EXPECT_EQ(Bits(workbench.trial), cropped);
}

// Somebody tries a step with the graph open and takes it back: the graph stays, on what the trial is then.
TEST_F(HistoryTest, AGraphStaysOpenOverStepsThatAreTakenBack) {
  Load();
  const std::vector<std::uint32_t> loaded = Bits(workbench.trial);
  Scale();
  OpenGraphWithCursors();
  person.PickChannels({1, 2});
  Do("math.absolute");
  const auto undo = [this] { return history.GoTo(static_cast<std::size_t>(history.Place() - 1)); };
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(undo(), "");
    EXPECT_EQ(undo(), "");
    ASSERT_NE(workbench.view, nullptr);
    EXPECT_EQ(Bits(workbench.trial), loaded);
    EXPECT_EQ(OpenSingleView(workbench).CommonCursors(), (std::vector{0.5, 0.7}));
    EXPECT_EQ(workbench.trial.CursorLo, 101);
    EXPECT_EQ(history.GoTo(2), "");
    ASSERT_NE(workbench.view, nullptr);
    EXPECT_EQ(Words().size(), 3U);
  }
  EXPECT_EQ(undo(), "");
  EXPECT_EQ(undo(), "");
  person.FillForm({});
  Do("crop.outside");
  EXPECT_EQ(Words(), (std::vector<std::string>{"Opened walk.vmb, 3 channels, 500 samples at 200 Hz",
                                               "Graph: 2 cursors at 0.500 s and 0.700 s",
                                               "Cropped to samples 101 to 141 (0.5000 to 0.7000 s)"}));
  const std::vector<std::uint32_t> cropped = Bits(workbench.trial);
  EXPECT_EQ(Bits(ReplayOn(input, "again", true)->State().trial), cropped);
  EXPECT_EQ(history.GoTo(0), "");
  ASSERT_NE(workbench.view, nullptr);
  EXPECT_EQ(Bits(workbench.trial), loaded);
  CloseView(workbench);
  EXPECT_EQ(history.GoTo(history.Lines().size() - 1), "");
  EXPECT_EQ(Bits(workbench.trial), cropped);
}

// What a form fills in by itself is no typing: it follows what is chosen later, again in the recipe.
TEST_F(HistoryTest, WhatAFormFillsInIsRepeatedWithIt) {
  workbench.smoothing = {.WindowWidth = 11, .WindowInSeconds = true};
  WriteTrialFile(input, [](Trial& trial) {
    SetChannels(trial, NoiseChannels(3, 500), 200.0);
    trial.ChanUnits[1] = "mV";
    trial.Data(7, 3) = NAN;  // its integral, which the picker offers, is no number
  });
  Load();
  person.FillForm({{"WindowInSeconds", "false"}, {"channels 1", "true"}});
  Do("smooth.moving-average");
  person.FillForm({}, "Compute");  // refused
  person.FillForm({{"channels 1", "true"}, {"channels 2", "true"}}, "Compute");
  Do("channel.combine");
  EXPECT_EQ(workbench.trial.ChanUnits[4].Text(), "mV");
  person.PickValues({{1, "3"}});
  Do("integrate.trapezoid");
  RecipeRun again({.input = input});
  Variables variables;
  SetInputVariables(variables, input);
  const Outcome outcome = again.Run(ReadRecipe(history.Recipe(), "history", variables));
  EXPECT_FALSE(outcome.failure) << outcome.failure->why << "\n" << history.Recipe();
  EXPECT_EQ(Bits(again.State().trial), Bits(workbench.trial));
  EXPECT_EQ(again.State().trial.ChanUnits[4].Text(), "mV");
}

// Going back starts with what was there at the load: the marks of the picker, and no form that waits behind a
// graph.
TEST_F(HistoryTest, GoingBackForgetsWhatCameSince) {
  Load();
  person.PickValues({{3, "2"}});
  Do("smooth.polynomial");  // without a marked channel it does nothing
  person.PickChannels({1});
  Do("math.absolute");
  Press("Graph Last File");
  Do("ensemble.average");
  ASSERT_TRUE(workbench.AfterView);
  EXPECT_EQ(history.GoTo(0), "");
  EXPECT_FALSE(workbench.AfterView);
  EXPECT_EQ(history.GoTo(2), "");
  EXPECT_TRUE(workbench.AfterView);
  EXPECT_EQ(history.GoTo(1), "");
  EXPECT_EQ(history.GoTo(2), "");
}

}  // namespace
}  // namespace velmora::test
