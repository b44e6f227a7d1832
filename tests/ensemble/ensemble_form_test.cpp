#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <set>

#include "graph/single_view.hpp"
#include "support/command_test.hpp"
#include "support/full_disk.hpp"

namespace velmora::test {
namespace {

constexpr const char* kFirst = "4. Select First File";
constexpr const char* kChannels = "5. Channel Selection";
constexpr const char* kBegin = "6. Begin Average";
constexpr const char* kOpen = "7. Open Next File";
constexpr const char* kAdd = "8. Add Last File";
constexpr const char* kRemove = "8. Remove Last File";
constexpr const char* kCalculate = "9. Calculate Means &SDs";

struct EnsembleFormTest : FileTest {
  /// A file of these channels, at `rate` Hz.
  std::string File(const std::string& name, const std::vector<std::vector<float>>& channels,
                   double rate = 100.0) {
    const std::string path = directory.Path(name);
    WriteTrialFile(path, [&](Trial& made) {
      SetChannels(made, channels, rate);
      for (int c = 1; c <= made.NChan; ++c) {
        made.ChanLabel[c] = "Force " + std::to_string(c);
        made.ChanUnits[c] = "N";
      }
    });
    return path;
  }
  /// One channel that runs evenly from a to b in `samples` samples.
  std::string Ramp(const std::string& name, float a, float b, int samples, double rate = 100.0) {
    std::vector<float> x;
    for (int i = 0; i < samples; ++i) {
      x.push_back(a + (b - a) * static_cast<float>(i) / static_cast<float>(samples - 1));
    }
    return File(name, {x}, rate);
  }
  std::string Out(const char* name) const { return directory.Path(name); }

  void Press(const char* button, const Edits& edits = {}) {
    questions.formAnswers.emplace_back([this, edits, button](Form& form) {
      Type(form, edits);
      Look(form);
      return std::string(button);
    });
  }
  void Leave() {
    questions.formAnswers.emplace_back([this](Form& form) {
      Look(form);
      return std::string("Exit");
    });
  }
  void Look(Form& form) {
    list = *std::get<std::string*>(form.FindField("lstFiles")->target);
    files = *std::get<std::int32_t*>(form.FindField("txtNfiles")->target);
    tables = form.Tables();
    possible.clear();
    captions.clear();
    for (const FormButton& button : form.Buttons()) {
      captions.push_back(WithoutMnemonic(button.caption));
      if (button.whyNot.empty()) {
        possible.insert(WithoutMnemonic(button.caption));
      }
    }
  }
  /// Steps 4 to 6 of an average of 10 intervals.
  void Begin(const std::string& first, std::vector<int> channels = {}, Edits edits = {}) {
    edits.insert(edits.begin(), {{"txtFilename", Out("log.ens")}, {"txtNumber", "10"}});
    Press(kFirst, edits);
    questions.fileAnswers.push_back({first});
    Press(kChannels);
    if (!channels.empty()) {
      questions.PickChannels(std::move(channels));
    }
    Press(kBegin);
  }
  void Open(const std::vector<std::string>& paths) {
    Press(kOpen);
    questions.fileAnswers.push_back(paths);
  }
  /// Nothing is saved of what was calculated.
  void LeaveUnsaved() {
    Leave();
    questions.boxAnswers.push_back(Button::No);
  }
  [[nodiscard]] std::string Warnings() const {
    std::string all;
    for (const std::string& warning : workbench.report.warnings) {
      all += warning + "\n";
    }
    return all;
  }
  [[nodiscard]] Texts Remarks() const {
    Texts remarks;
    for (const auto& row : tables.at(0).rows) {
      remarks.push_back(std::get<std::string>(row[0]) + "|" + std::get<std::string>(row[4]));
    }
    return remarks;
  }

  // The form when a button was pressed last.
  std::string list;
  std::int32_t files = 0;
  std::vector<ResultTable> tables;
  std::set<std::string> possible;
  Texts captions;
};

TEST_F(EnsembleFormTest, AveragesFilesOfDifferentLengthsSampleBySample) {
  Begin(Ramp("a.vmb", 0, 10, 21));
  Open({Ramp("b.vmb", 2, 22, 41, 50), Ramp("c.vmb", 4, 4, 11, 200)});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
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
  EXPECT_EQ(list.substr(0, list.find("\nAdded file: " + Out("b.vmb"))),
            "Added file: " + a + "\nTrial: a.\n       from 0.0000 s to 0.2000 s");
  const std::string log = ReadFile(Out("log.ens"));
  EXPECT_TRUE(log.starts_with("Ensemble average by Velmora2, version 1.00 (build 001)\nFirst file: " + a +
                              "\nTrial: a.\n       From 0.0000 s to 0.2000 s\nAdded file: " + a +
                              "\nTrial: a."))
      << log;
  EXPECT_NE(log.find("\nNumber of files in average: 3\nCoeff. of var. for Channel 00, 'Force 1' = "),
            std::string::npos)
      << log;
}

TEST_F(EnsembleFormTest, TheMeanOfEqualFilesIsTheFileAndThatOfShiftedSinesTheMeanPhasor) {
  std::vector<float> file;
  for (int i = 0; i <= 40; ++i) {
    file.push_back(static_cast<float>(i % 7) - 2.5F);
  }
  const std::string same = File("same.vmb", {file});
  Begin(same, {}, {{"txtNumber", "40"}});
  Open({same, same, same});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(Channel(trial, 1), file);
  EXPECT_EQ(Channel(trial, 2), std::vector<float>(41, 0.0F));
  EXPECT_TRUE(list.ends_with("Coeff. of var. for Chan. 00, 'Force 1' =0.0000%")) << list;

  constexpr double kPi = std::numbers::pi;
  const double shifts[] = {-0.4, 0.1, 0.3, 0.75};
  Texts paths;
  double phasor[] = {0, 0};
  for (const double shift : shifts) {
    std::vector<float> sine;
    for (int i = 0; i <= 100; ++i) {
      sine.push_back(static_cast<float>(std::sin(2 * kPi * i / 100 + shift)));
    }
    paths.push_back(File("s" + std::to_string(paths.size()) + ".vmb", {sine}));
    phasor[0] += std::cos(shift) / 4;
    phasor[1] += std::sin(shift) / 4;
  }
  Begin(paths[0], {}, {{"txtNumber", "100"}});
  Open({paths.begin() + 1, paths.end()});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  for (int i = 0; i <= 100; ++i) {
    const double x = 2 * kPi * i / 100;
    const double mean = phasor[0] * std::sin(x) + phasor[1] * std::cos(x);
    EXPECT_NEAR(trial.Data(i + 1, 1), mean, 1e-6);
    double squares = 0;
    for (const double shift : shifts) {
      squares += std::pow(std::sin(x + shift) - mean, 2) / 3;
    }
    EXPECT_NEAR(trial.Data(i + 1, 2), std::sqrt(squares), 2e-4);
  }
}

TEST_F(EnsembleFormTest, StepsComeInTheirOrder) {
  const std::string a = Ramp("a.vmb", 0, 10, 21);
  const auto could = [this](const char* step) { return possible.contains(step); };
  Leave();
  Run("ensemble.average");
  EXPECT_TRUE(could(kFirst) && could("Read Ensemble") && could("Exit"));
  EXPECT_FALSE(could(kChannels) || could(kBegin) || could(kOpen) || could("Graph Last File"));
  Begin(a);
  Press("10. Save to .VMB");  // which cannot be pressed yet
  Leave();
  Run("ensemble.average");
  EXPECT_TRUE(could(kOpen) && could(kCalculate) && could("Graph Last File"));
  EXPECT_FALSE(could(kFirst) || could(kBegin) || could(kAdd) || could(kRemove) || could("Save to ASCII"));
  EXPECT_NE(Warnings().find("\"10. Save to .VMB\" cannot be pressed now."), std::string::npos) << Warnings();
  EXPECT_TRUE(questions.files.size() == 1) << "and asked nothing";
  EXPECT_NE(ReadFile(Out("log.ens")).find("No means were calculated."), std::string::npos);

  Begin(a);
  Press(kCalculate);  // of a single file
  Open({a});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_NE(Warnings().find("Too few files to calculate and average. Calculations cancelled."),
            std::string::npos);
  EXPECT_TRUE(could("10. Save to .VMB") && could("Save to .VME") && could("Graph Results") && could(kFirst));
  EXPECT_FALSE(could(kBegin) || could(kOpen) || could(kCalculate) || could(kRemove));
  EXPECT_EQ(captions[10], "View in Excel");
  EXPECT_EQ(LastBox(),
            "Results Not Saved|Results have not been saved.  Press Yes to save, No to exit without "
            "saving or Cancel.");
  workbench.preferences.Spreadsheet = "C:\\QPW.exe";
  Leave();
  Run("ensemble.average");
  EXPECT_EQ(captions[10], "View in QPW");
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
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
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
  const std::vector<Box>& boxes = questions.boxes;
  const auto few = std::find_if(boxes.begin(), boxes.end(),
                                [](const Box& box) { return box.title == "Incorrect Number of Channels"; });
  ASSERT_NE(few, boxes.end());
  EXPECT_EQ(
      few->text,
      "This file has too few channels to be included in the ensemble average.\nIt has 1 but there needs "
      "to be 2\nThis trial will not be included in the ensemble average.");
  EXPECT_EQ(few->about, Out("narrow.vmb"));
}

TEST_F(EnsembleFormTest, RemovesTheLastFileAndTakesItBack) {
  const std::string a = Ramp("a.vmb", 1, 1, 11);
  const std::string b = Ramp("b.vmb", 5, 5, 101);
  Begin(a, {}, {{"chkUseTime", "true"}});
  Open({Ramp("c.vmb", 3, 3, 21), b});
  Press(kRemove);
  questions.boxAnswers = {Button::Yes};
  Press(kRemove);  // the one before it is not at hand any more
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(Channel(trial, 1), std::vector<float>(11, 2.0F));
  EXPECT_EQ(questions.boxes.front().text, "Remove file: " + b);
  EXPECT_EQ(questions.boxes.front().title, "Remove Last File");
  EXPECT_FLOAT_EQ(static_cast<float>(trial.Duration), 0.15F) << "the mean of 0.1 s and 0.2 s";
  EXPECT_EQ(trial.ChanLabel[0].Text(), "Mean time");
  EXPECT_EQ(trial.HeaderLines[2], "Mean time (s): 0.1500");
  EXPECT_FLOAT_EQ(trial.Data(11, 0), 0.15F);
  EXPECT_NE(
      ReadFile(Out("log.ens")).find("\nRemoved file: " + b + "\nNumber of files in average: 2\nMean time"),
      std::string::npos);

  Begin(a);
  Open({b});
  Press(kRemove);
  questions.boxAnswers = {Button::Yes};
  Press(kAdd);
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
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
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_EQ(trial.Data(1, 1), 2.0F);
  // Later, those that are not in the average yet.
  Begin(Out("walk2.vmb"));
  Open({directory.Path("")});
  Open({Out("r*.vmb"), Out("jump*.vmb")});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 4") << "the mask is remembered";
  EXPECT_NE(Warnings().find("fits the mask jump*.vmb"), std::string::npos);
  // What another command has written is averaged without being looked for.
  workbench.ensemble.Files = {Out("walk3.vmb"), Out("walk1.vmb")};
  Press(kChannels, {{"txtFilename", Out("log.ens")}});
  Press(kBegin);
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
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
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(Remarks(), (Texts{"a.vmb|", "b.vmb|", "far.vmb|far from the others' duration, 1.000",
                              "b.vmb|added more than once", "mv.vmb|channel 00 is in mV, not N"}));
  EXPECT_EQ(ShownCell(tables[0], 2, 1), "3.000");
  EXPECT_EQ(ShownCell(tables[0], 2, 2), "100.00");
  EXPECT_EQ(ShownCell(tables[0], 2, 3), "301");
  EXPECT_NE(Warnings().find("far.vmb: its duration, 3.000, is far from the others', 1.000"),
            std::string::npos);
  EXPECT_NE(Warnings().find("mv.vmb: channel 00 is in mV, not N"), std::string::npos);
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
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(trial.NData, 101) << "9 intervals are not taken";
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 2");
  EXPECT_EQ(trial.ChanLabel[1].Text(), "Force 33");
  ASSERT_GE(questions.boxes.size(), 4U);
  EXPECT_EQ(questions.boxes[0].title + "|" + questions.boxes[0].text,
            "No Channels Selected|You must select at least one channel.  Maximum is 32.");
  EXPECT_EQ(questions.boxes[1].title + "|" + questions.boxes[1].text,
            "Too Many Channels Selected|Too many channels selected.  Maximum is 32.");
  EXPECT_EQ(questions.boxes[3].title, "Include in Average?");
  EXPECT_EQ(questions.boxes[3].text, "Add file: " + a +
                                         "\nDuration: 0.100 seconds\nSamples:  11\nChannels: 33 of "
                                         "33\nCurrent files in average: 1\nPress Yes to include this file in "
                                         "the average.");
}

TEST_F(EnsembleFormTest, CancelBetweenFilesLeavesAnAverageToGoOnWith) {
  Begin(Ramp("a.vmb", 1, 1, 11));
  Open({Ramp("b.vmb", 3, 3, 11), Ramp("c.vmb", 5, 5, 11), Ramp("d.vmb", 7, 7, 11)});
  questions.CancelAt("File 2 of 3");
  Open({Out("d.vmb")});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_FLOAT_EQ(trial.Data(1, 1), 11.0F / 3);
  EXPECT_NE(Warnings().find("Cancelled: 2 files of 3 not added."), std::string::npos) << Warnings();
}

TEST_F(EnsembleFormTest, AGraphGivesWayToTheFormAgain) {
  std::vector<float> x(201, 0.0F);
  std::fill_n(x.begin() + 100, 101, 4.0F);
  Begin(File("a.vmb", {std::vector<float>(101, 2.0F)}));
  Press(kOpen, {{"chkPreview", "true"}});
  questions.fileAnswers.push_back({File("b.vmb", {x})});
  Run("ensemble.average");
  ASSERT_NE(workbench.view, nullptr) << "the preview, before the file is added";
  EXPECT_EQ(files, 1);
  const Graph& graph = OpenSingleView(workbench).Drawing();
  ASSERT_EQ(graph.Backdrops.size(), 1U) << "the mean so far";
  EXPECT_EQ(graph.Backdrops[0].Values, std::vector<float>(11, 2.0F));
  Run("cursor.one");
  workbench.view->MoveCursor(1, 1.0);
  questions.FillForm({});
  Run("crop.left");
  Press(kAdd);
  Press("Graph Last File");
  Run("view.exit");
  ASSERT_NE(workbench.view, nullptr);
  EXPECT_EQ(trial.ChanLabel[0].Text(), "Percentage");
  EXPECT_EQ(trial.Duration, 100.0);
  EXPECT_TRUE(trial.PairedGraphs);
  Press(kCalculate, {{"chkUseTime", "true"}});
  Press("Graph Results");
  Run("view.exit");
  ASSERT_NE(workbench.view, nullptr);
  EXPECT_FALSE(trial.PairedGraphs);
  EXPECT_EQ(Channel(trial, 1), std::vector<float>(11, 3.0F)) << "half of b.vmb was cropped away";
  EXPECT_EQ(trial.Duration, 1.0);
  LeaveUnsaved();
  Run("ensemble.average");  // brings the form back, too
  EXPECT_EQ(workbench.view, nullptr);
  EXPECT_TRUE(questions.formAnswers.empty());
  EXPECT_EQ(files, 2);
}

TEST_F(EnsembleFormTest, StridesBetweenCursorsGoStraightIntoAnAverage) {
  // A walk of three strides of 1 s, each a ramp from 0 to 10, 0 to 20 and 0 to 30.
  std::vector<float> walk;
  for (int i = 0; i < 300; ++i) {
    walk.push_back(static_cast<float>((i / 100 + 1) * 10) * static_cast<float>(i % 100) / 99.0F);
  }
  SetChannels(trial, {walk});
  questions.boxAnswers.clear();
  Run("graph.all");
  OpenSingleView(workbench).AddCursors({0.0, 0.99, 1.99, 2.99});
  questions.fileAnswers.push_back({Out("stride.vmb")});
  Run("view.save-intervals");
  ASSERT_EQ(workbench.ensemble.Files.size(), 3U);
  Press(kChannels, {{"txtFilename", Out("log.ens")}, {"txtNumber", "10"}});
  Press(kBegin);
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_FLOAT_EQ(trial.Data(11, 1), 20.0F) << "10, 20 and 30 at the ends of the strides";
  EXPECT_TRUE(workbench.ensemble.Files.empty());
}

TEST_F(EnsembleFormTest, SavesInThreeFormatsThatReadBack) {
  Begin(Ramp("a.vmb", 0, 10, 21));
  Open({Ramp("b.vmb", 2, 12, 21)});
  Press(kCalculate);
  Press("View in Excel");
  Press("10. Save to .VMB");
  questions.fileAnswers.push_back({Out("mean.vmb")});
  Press("Save to ASCII");
  questions.boxAnswers = {Button::Yes, Button::Yes};
  questions.fileAnswers.push_back({Out("mean.tab")});
  Press("Save to .VME");
  questions.fileAnswers.push_back({Out("mean.vme")});
  std::string opened;
  workbench.desktop.open = [&opened](const std::string& program, const std::string& path) {
    opened = program + " " + path;
    return std::string();
  };
  Press("View in Excel");
  Leave();
  Run("ensemble.average");
  EXPECT_EQ(questions.boxes.front().text, "You must save the file in ASCII first.");
  EXPECT_EQ(LastBox(), "Finished averaging|Ensemble averages are in the file " + Out("mean.vme"));
  EXPECT_EQ(opened, "Excel.exe " + Out("mean.tab"));
  EXPECT_EQ(questions.files.back().defaultName, "log.vme");
  EXPECT_FALSE(trial.FileChanged);
  const std::vector<float> means = Channel(trial, 1);
  const std::vector<float> deviations = Channel(trial, 2);

  const std::string text = ReadFile(Out("mean.vme"));
  EXPECT_NE(text.find("\r\n* Ensemble averaged data\r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\r\n*        0    10\r\n* Channel:        00        01\r\n"), std::string::npos)
      << text;
  EXPECT_NE(text.find("\r\n   50.0000    6.0000    1.4142\r\n"), std::string::npos) << text;

  Press("Read Ensemble");
  questions.fileAnswers.push_back({Out("mean.vme")});
  Leave();
  Run("ensemble.average");
  EXPECT_EQ(Channel(trial, 1), means);
  EXPECT_NEAR(trial.Data(3, 2), deviations[2], 1e-4);
  EXPECT_EQ(questions.files.back().title, "Read Ensemble");
  LoadPath(Out("mean.vmb"));
  EXPECT_EQ(Channel(trial, 1), means);
  EXPECT_EQ(Channel(trial, 2), deviations);
  EXPECT_EQ(workbench.time.Base, TimeBase::Percentage);
}

TEST_F(EnsembleFormTest, AFileThatCannotBeWrittenLosesNothing) {
  const std::string a = Ramp("a.vmb", 0, 10, 21);
  Press(kFirst, {{"txtFilename", directory.Path("no-such-directory/log.ens")}, {"txtNumber", "10"}});
  questions.fileAnswers.push_back({a});
  Press(kChannels);
  Press(kBegin);  // no log, no average
  Press(kBegin, {{"txtFilename", Out("log.ens")}});
  Open({a});
  Press(kCalculate);
  std::optional<FullDisk> full;
  questions.formAnswers.emplace_back([&full](Form&) {
    full.emplace(200);
    return std::string("Save to .VME");
  });
  questions.fileAnswers.push_back({Out("mean.vme")});
  LeaveUnsaved();
  Run("ensemble.average");
  full.reset();
  EXPECT_EQ(workbench.report.failures.size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(Out("mean.vme")));
  EXPECT_NE(workbench.report.failures[0].find("Error saving to file: "), std::string::npos);
  EXPECT_EQ(LastBox().substr(0, 17), "Results Not Saved");
  EXPECT_EQ(Channel(trial, 1)[10], 10.0F);

  // A log that goes away meanwhile is told of once, and the average goes on.
  workbench.report = {};
  Begin(a, {}, {{"txtFilename", Out("gone/log.ens")}});
  std::filesystem::create_directory(Out("gone"));
  questions.formAnswers.emplace_back([this](Form&) {
    std::filesystem::remove_all(Out("gone"));
    return std::string(kOpen);
  });
  questions.fileAnswers.push_back({a, a});
  Press(kCalculate);
  LeaveUnsaved();
  Run("ensemble.average");
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  ASSERT_FALSE(workbench.report.failures.empty());
  EXPECT_NE(workbench.report.failures.front().find(Out("gone/log.ens")), std::string::npos);
}

}  // namespace
}  // namespace velmora::test
