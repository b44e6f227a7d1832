#include "graph/save_intervals.hpp"

#include <filesystem>

#include "graph/single_view.hpp"
#include "support/command_test.hpp"
#include "support/full_disk.hpp"

namespace velmora::test {
namespace {

struct SaveIntervalsTest : FileTest {
  void SetUp() override {
    SetChannels(trial, {CountingUp(101)});
    trial.TrialName = "walk";
    workbench.DataDir = directory.Path("");
    Run("graph.all");
  }
  SingleView& View() { return OpenSingleView(workbench); }
  void Save(const char* name) {
    questions.fileAnswers.push_back({directory.Path(name)});
    Run("view.save-intervals");
  }
  [[nodiscard]] Texts Files() const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(directory.Path(""))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST_F(SaveIntervalsTest, EveryIntervalIsAFileOfItsOwn) {
  Run("view.save-intervals");
  EXPECT_EQ(questions.boxes.at(0).title, "Save Intervals");
  View().AddCursors({0.5, 0.1, 0.1, 0.9});  // in any order; two at one sample bound nothing
  trial.FileChanged = true;
  Save("stride.vmb");
  EXPECT_EQ(Files(), (Texts{"stride-01.vmb", "stride-02.vmb"}));
  EXPECT_TRUE(trial.FileChanged);  // the trial as it is was not saved
  EXPECT_EQ(workbench.report.deeds.back().what, "Saved 2 intervals between cursors as " +
                                                    directory.Path("stride-01.vmb") + " to " +
                                                    directory.Path("stride-02.vmb"));
  questions.boxAnswers = {Button::No, Button::Yes};
  Save("stride");  // asks, since they are there
  EXPECT_EQ(questions.boxes.back().text.substr(0, 27), "2 files of these names, str");
  View().NoCursors();
  View().AddCursors({0.2, 0.3});
  Save("stride.vmb");
  LoadPath(directory.Path("stride-01.vmb"));
  EXPECT_EQ(trial.NData, 11);
  EXPECT_EQ(trial.Data(1, 1), 21);
  EXPECT_EQ(trial.Data(11, 1), 31);
  EXPECT_EQ(trial.Data(11, 0), 0.1F);
  LoadPath(directory.Path("stride-02.vmb"));
  EXPECT_EQ(trial.NData, 41);
  EXPECT_EQ(trial.Data(1, 1), 51);
}

TEST_F(SaveIntervalsTest, WhatIsWrittenStaysWhenTheRestCannotBe) {
  std::vector<double> places;
  for (int k = 0; k <= 100; ++k) {
    places.push_back(k / 100.0);
  }
  View().AddCursors(places);
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.FileName().ends_with("stride-003.vmb")) {
      panel.PressCancel();
    }
  };
  Save("stride.vmb");
  EXPECT_EQ(Files(), (Texts{"stride-001.vmb", "stride-002.vmb"}));
  EXPECT_EQ(workbench.report.warnings.back(), "2 of 100 intervals were saved.");
  questions.onProgress = nullptr;
  {
    const FullDisk full(2000);
    Save("full.vmb");
  }
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_EQ(Files().size(), 2U);
  Save("nowhere/stride.vmb");
  EXPECT_EQ(workbench.report.failures.size(), 2U);
}

}  // namespace
}  // namespace velmora::test
