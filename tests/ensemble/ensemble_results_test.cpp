// What an average leads to: graphs, files, and what a full disk does to them.
#include "ensemble/ensemble_steps.hpp"
#include "support/full_disk.hpp"
#include "support/signals.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

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
  Press(kRemove);  // and taken back: it lasted 1 s, whatever the graph's abscissa counted
  questions.boxAnswers = {Button::Yes};
  Press(kAdd);
  Press(kCalculate, {{"chkUseTime", "true"}});
  Press("Graph Results");
  Run("view.exit");
  ASSERT_NE(workbench.view, nullptr);
  EXPECT_FALSE(trial.PairedGraphs);
  EXPECT_EQ(Channel(trial, 1), std::vector<float>(11, 3.0F)) << "half of b.vmb was cropped away";
  EXPECT_EQ(trial.Duration, 1.0);
  EXPECT_EQ(Remarks(), (Texts{"a.vmb|", "b.vmb|"}));
  EndUnsaved();  // the command brings the form back, too
  EXPECT_EQ(workbench.view, nullptr);
  EXPECT_TRUE(questions.formAnswers.empty());
  EXPECT_EQ(files, 2);
}

// Of a file that lacks a channel of the average, what there is is shown, before it is refused.
TEST_F(EnsembleFormTest, AFileThatDoesNotFitIsShownAndLeavesCursorsThatItHas) {
  const std::vector<float> x(51, 2.0F);
  std::vector<float> gap(51, 3.0F);
  gap[5] = std::numeric_limits<float>::quiet_NaN();
  Begin(File("a.vmb", {x, x}), {1, 2});
  Press(kOpen, {{"chkPreview", "true"}});
  questions.fileAnswers.push_back({File("narrow.vmb", {x})});
  Run("ensemble.average");
  ASSERT_EQ(LastBox(), "");
  const Graph& graph = OpenSingleView(workbench).Drawing();
  ASSERT_EQ(graph.Backdrops.size(), 1U);
  EXPECT_EQ(graph.Backdrops[0].Channel, 1);
  Press(kOpen, {{"chkPreview", "false"}});
  questions.fileAnswers.push_back({File("gap.vmb", {gap, x})});
  Press("Exit");
  questions.boxAnswers = {Button::No};
  Run("view.exit");
  EXPECT_HAS(Warnings(), "gap.vmb was not averaged");
  EXPECT_EQ(trial.NData, 11) << "stretched to ten intervals";
  EXPECT_EQ(trial.CursorHi, 11);
}

TEST_F(EnsembleFormTest, ATrialThatWasStretchedAndNotAveragedIsTold) {
  SetChannels(trial, {std::vector<float>(51, 2.0F)});
  Press(kChannels, {{"txtFilename", Out("log.ens")}, {"txtNumber", "10"}});
  Press(kBegin);
  End();
  EXPECT_EQ(trial.NData, 11);
  EXPECT_EQ(WordsOf(workbench.report.deeds), "Resampled to 10 intervals to be averaged");
}

TEST_F(EnsembleFormTest, StridesBetweenCursorsGoStraightIntoAnAverage) {
  // A walk of three strides of 1 s, each a ramp from 0 to 10, 0 to 20 and 0 to 30.
  const std::vector<float> walk = Sampled(300, [](int i) {
    return static_cast<float>((i / 100 + 1) * 10) * static_cast<float>(i % 100) / 99.0F;
  });
  SetChannels(trial, {walk});
  questions.boxAnswers.clear();
  Run("graph.all");
  OpenSingleView(workbench).AddCursors({0.0, 0.99, 1.99, 2.99});
  questions.fileAnswers.push_back({Out("stride.vmb")});
  Run("view.save-intervals");
  ASSERT_EQ(workbench.ensemble.Files.size(), 3U);
  Press(kChannels, {{"txtFilename", Out("log.ens")}, {"txtNumber", "10"}});
  Press(kBegin);
  Average();
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  EXPECT_FLOAT_EQ(trial.Data(11, 1), 20.0F) << "10, 20 and 30 at the ends of the strides";
  EXPECT_TRUE(workbench.ensemble.Files.empty());
}

TEST_F(EnsembleFormTest, SavesInThreeFormatsThatReadBack) {
  workbench.preferences.Spreadsheet = "C:\\QPW.exe";
  Begin(Ramp("a.vmb", 0, 10, 21));
  Open({Ramp("b.vmb", 2, 12, 21)});
  Press(kCalculate);
  Press("View in QPW");
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
  Press("View in QPW");
  End();
  EXPECT_EQ(questions.boxes.front().text, "You must save the file in ASCII first.");
  EXPECT_EQ(LastBox(), "Finished averaging|Ensemble averages are in the file " + Out("mean.vme"));
  EXPECT_EQ(opened, "C:\\QPW.exe " + Out("mean.tab"));
  EXPECT_FALSE(trial.FileChanged);
  const std::vector<float> means = Channel(trial, 1);
  const std::vector<float> deviations = Channel(trial, 2);

  const std::string text = ReadFile(Out("mean.vme"));
  EXPECT_HAS(text, "\r\n* Ensemble averaged data\r\n");
  EXPECT_HAS(text, "\r\n*        0    10\r\n* Channel:        00        01\r\n");
  EXPECT_HAS(text, "\r\n   50.0000    6.0000    1.4142\r\n");

  Press("Read Ensemble");
  questions.fileAnswers.push_back({Out("mean.vme")});
  End();
  EXPECT_EQ(Channel(trial, 1), means);
  EXPECT_NEAR(trial.Data(3, 2), deviations[2], 1e-4);
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
  EndUnsaved();
  full.reset();
  EXPECT_EQ(workbench.report.failures.size(), 2U);
  EXPECT_FALSE(std::filesystem::exists(Out("mean.vme")));
  EXPECT_HAS(workbench.report.failures[0], "Error saving to file: ");
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
  Average();
  EXPECT_EQ(trial.HeaderLines[1], "Number of files in average: 3");
  ASSERT_FALSE(workbench.report.failures.empty());
  EXPECT_HAS(workbench.report.failures.front(), Out("gone/log.ens"));
}

}  // namespace
}  // namespace velmora::test
