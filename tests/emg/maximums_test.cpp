// Reference contractions: the largest window, kept over trials and in files; channels in percent of them.
#include <cmath>

#include "emg/maximums/stored_maximums.hpp"
#include "emg/maximums/window_maximum.hpp"
#include "support/command_test.hpp"
#include "support/full_disk.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

TEST(WindowMaximum, ManyWindowsAtOnceHaveTheBitsOfThePlainLoop) {
  Trial trial;
  SetChannels(trial, NoiseChannels(3, 9000, 5), 1000);
  for (const auto method : {MaximumMethod::LargestAbsolute, MaximumMethod::MeanAbsolute, MaximumMethod::Rms,
                            MaximumMethod::Mean}) {
    for (const std::int32_t width : {1, 7, 500, 8900}) {
      const WindowMaximum plain = FindWindowMaximumPlain(trial, 2, {51, 8990}, {width, method});
      for (const SimdLevel level : MachineSimdLevels()) {
        const WindowMaximum fast = FindWindowMaximum(trial, 2, {51, 8990}, {width, method}, level);
        EXPECT_EQ(fast.value, plain.value);
        EXPECT_EQ(fast.first, plain.first);
      }
    }
  }
}

struct Maximums : FileTest {
  void SetUp() override { Begin({{0, -3, 1, 2, 2, 2}, {4, 4, 0, 0, 0, 5}}, {"Biceps", "Triceps"}); }

  void Begin(const std::vector<Samples>& channels, const std::vector<std::string>& labels) {
    SetChannels(trial, channels, 1000);
    trial.TrialName = "mvc";
    trial.FileName = "mvc.vmb";
    for (std::size_t c = 0; c < labels.size(); ++c) {
      trial.ChanLabel[c + 1] = labels[c];
      trial.ChanUnits[c + 1] = "mV";
    }
  }
  // Of all channels, over windows of two samples unless told otherwise.
  void Determine(Edits edits = {}, const std::string& press = "Exit") {
    Edits all = {{"txtWindow", "0.002"}, {"channels 1", "true"}};
    if (trial.NChan > 1) {
      all.emplace_back("channels 2", "true");
    }
    all.insert(all.end(), edits.begin(), edits.end());
    questions.FillForm(all, "Compute");
    questions.FillForm({}, press);
    if (press != "Exit") {
      questions.FillForm({}, "Exit");
    }
    Run("emg.maximums");
  }
  [[nodiscard]] double Stored(const char* label) const {
    const StoredMaximum* found = FindMaximum(workbench.emg.Maximums, label);
    return found != nullptr ? found->Maximum : -1;
  }
};

TEST_F(Maximums, EachMethodByHand) {
  Determine({{"optMethod", "0"}});
  EXPECT_EQ(Stored("Biceps"), 3);
  EXPECT_EQ(Stored("TRICEPS "), 5);
  Determine({{"optMethod", "1"}, {"chkKeep", "no"}});
  EXPECT_EQ(Stored("Biceps"), 2) << "the first of the windows {-3 1} and {2 2}";
  EXPECT_NEAR(FindMaximum(workbench.emg.Maximums, "Biceps")->Time, 0.0015, 1e-9)
      << "the middle of samples 2 and 3";
  EXPECT_EQ(Stored("Triceps"), 4);
  Determine({{"optMethod", "2"}, {"chkKeep", "no"}});
  EXPECT_EQ(Stored("Biceps"), std::sqrt(5.0));
  Determine({{"optMethod", "3"}, {"chkKeep", "no"}});
  EXPECT_EQ(Stored("Biceps"), 2);
  EXPECT_EQ(FindMaximum(workbench.emg.Maximums, "Biceps")->Units, "mV");
}

TEST_F(Maximums, AreKeptOverTrialsAndGatheredInAFile) {
  const std::string path = directory.Path("day.max");
  questions.fileAnswers.push_back({path});
  Determine({}, "Save");
  Begin({{1, 1, 1}, {9, 9, 9}}, {"biceps", "Deltoid"});
  Determine();
  EXPECT_EQ(Stored("Biceps"), 2) << "the larger one stays";
  EXPECT_EQ(Stored("Deltoid"), 9);
  EXPECT_EQ(workbench.emg.Maximums.size(), 3U);
  EXPECT_EQ(workbench.emg.Maximums[0].Label, "Biceps") << "this trial's first";
  EXPECT_EQ(workbench.emg.Maximums[1].Label, "Deltoid");

  // Another session of one muscle, saved over the file.
  workbench.emg.Maximums = {{.Channel = 7, .Label = "TRICEPS", .Maximum = 40}};
  Begin({{1, 1, 1}}, {"Biceps"});
  questions.fileAnswers.push_back({path});
  Determine({{"chkKeep", "no"}}, "Save");
  const auto gathered = ReadMaximums(path);
  ASSERT_TRUE(gathered);
  EXPECT_EQ(FindMaximum(*gathered, "Biceps")->Maximum, 2);
  EXPECT_EQ(FindMaximum(*gathered, "Triceps")->Maximum, 40);
  const std::string text = ReadFile(path);
  EXPECT_EQ(text.substr(0, 19), "Velmora2 Maximums\r\n");
  EXPECT_HAS(text, "\r\nChannel\tLabel\tUnits\tMaximum\tTime\tMethod\tWindow (s)\tFile\r\n");
}

TEST_F(Maximums, AFileThatIsNoneIsNeitherReadNorOverwritten) {
  const std::string path = directory.Path("notes.max");
  WriteFile(path, "my notes\n");
  questions.fileAnswers.push_back({path});
  Determine({}, "Save");
  EXPECT_EQ(ReadFile(path), "my notes\n");
  EXPECT_EQ(questions.boxes.back().title, "Invalid File Format");
  const std::string whole = directory.Path("whole.max");
  questions.fileAnswers.push_back({whole});
  Determine({}, "Save");
  const std::string text = ReadFile(whole);
  for (const std::size_t length : {std::size_t{0}, std::size_t{10}, text.size() / 2, text.size() - 1}) {
    WriteFile(path, text.substr(0, length));
    EXPECT_FALSE(ReadMaximums(path)) << "cut to " << length;
  }
  EXPECT_TRUE(ReadMaximums(whole));
}

TEST_F(Maximums, AFailedSaveLeavesTheFileAsItWas) {
  const std::string path = directory.Path("day.max");
  questions.fileAnswers.push_back({path});
  Determine({}, "Save");
  const std::string before = ReadFile(path);
  {
    const FullDisk disk(100);
    questions.fileAnswers = {{path}};
    Determine({{"chkKeep", "no"}}, "Save");
  }
  EXPECT_HAS(LastBox(), "File too large");
  EXPECT_EQ(ReadFile(path), before);
}

// --- Percent of maximum

struct Normalize : Maximums {
  void With(const Edits& edits) {
    AnswerForm(edits);
    AnswerForm({});
    Run("emg.normalize");
  }
};

TEST_F(Normalize, StoredMaximumsByLabel) {
  workbench.emg.Maximums = {{.Channel = 1, .Label = "triceps", .Maximum = 8},
                            {.Channel = 2, .Label = "BICEPS", .Maximum = 4}};
  Begin({{1, 2, 4.5}, {8, 2, 1}}, {"Biceps", "Triceps"});
  With({{"channels 1", "yes"}, {"channels 2", "yes"}});
  EXPECT_EQ(Channel(trial, 1), (Samples{25, 50, 112.5}));
  EXPECT_EQ(Channel(trial, 2), (Samples{100, 25, 12.5}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"%", "%"}));
  const ResultTable& table = workbench.results.ResultTables.back();
  EXPECT_EQ(std::get<double>(table.rows[0][4]), 112.5);
  EXPECT_EQ(std::get<double>(table.rows[0][5]), 1) << "samples above 100 %";
}

TEST_F(Normalize, AFileByNumberWhereNoLabelIsKnown) {
  Determine();
  const std::string path = directory.Path("a.max");
  questions.fileAnswers.push_back({path});
  SaveMaximums(workbench, workbench.emg.Maximums);
  workbench.emg.Maximums.clear();
  Begin({{1, 2, 4}, {8, 2, 1}}, {"left", "right"});
  questions.fileAnswers.push_back({path});
  With({{"optSource", "1"}, {"channels 1", "yes"}, {"channels 2", "yes"}});
  EXPECT_EQ(Channel(trial, 1), (Samples{50, 100, 200}));
  EXPECT_EQ(Channel(trial, 2), (Samples{200, 50, 25}));
  // Another source in between does not leave its maximums to the file's.
  Begin({{1, 2, 4}}, {"left"});
  workbench.emg.Maximums = {{.Label = "left", .Maximum = 4}};
  questions.fileAnswers.push_back({path});
  questions.FillForm({}, "Read file...");
  With({{"optSource", "0"}, {"optSource", "1"}, {"channels 1", "yes"}});
  EXPECT_EQ(Channel(trial, 1), (Samples{50, 100, 200}));
}

// Two channels whose labels a file cut alike, of which the second is normalized already.
TEST_F(Normalize, UnlikeUnitsAndSharedLabelsAreTold) {
  Begin({{1, 1, 1}, {8, 8, 8}}, {"Vastus lat", "vastus lat "});
  Determine();
  EXPECT_EQ(LastBox(),
            "Same Label|Channels 00, 01 are all labelled \"Vastus lat\".  Maximums are kept by label, so "
            "these share one, the largest.");
  questions.boxes.clear();
  trial.ChanUnits[2] = "%";
  With({{"channels 1", "yes"}, {"channels 2", "yes"}});
  EXPECT_EQ(Channel(trial, 1), Samples(3, 12.5F));
  ASSERT_EQ(questions.boxes.size(), 2U);
  EXPECT_EQ(questions.boxes[0].title + "|" + questions.boxes[0].text,
            "Units Differ|Channels in other units than their maximums: 01 (\"%\", its maximum \"mV\").  "
            "Percentages of unlike units mean nothing.");
  EXPECT_EQ(questions.boxes[1].title, "Same Label");
}

TEST_F(Normalize, TellsWhatItLeaves) {
  Begin({{1, 2, 4}, {-1, 2, 1}, {1, NAN, 1}}, {"a", "b", "c"});
  const auto before = Bits(trial);
  // No maximum for the first; the second has negative values and is declined; the third has no number.
  questions.boxAnswers = {Button::No};
  questions.FillForm({{"Maximums 2", "2"},
                      {"Maximums 3", "2"},
                      {"channels 1", "yes"},
                      {"channels 2", "yes"},
                      {"channels 3", "yes"}},
                     "Normalize");
  questions.FillForm({}, "Cancel");
  Run("emg.normalize");
  EXPECT_EQ(Bits(trial), before);
  Texts titles;
  for (const Box& box : questions.boxes) {
    titles.push_back(box.title);
  }
  EXPECT_EQ(titles, (Texts{"Missing Data", "No Maximum", "Not an Envelope"}));
  trial.Rate = 239;
  Run("emg.normalize");
  EXPECT_EQ(questions.boxes.back().title, "Invalid Sampling Rate or Timebase");
}

}  // namespace
}  // namespace velmora::test
