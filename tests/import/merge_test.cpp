#include "support/instrument_files/c3d_file.hpp"
#include "support/text_load.hpp"

namespace velmora::test {
namespace {

/// Stores a trial of `samples` samples 10, 20, ... at 100 Hz and loads the text as the next file.
struct MergeTest : TextLoadTest {
  void StoreTrial(int samples) {
    std::vector<float> channel;
    for (int i = 1; i <= samples; ++i) {
      channel.push_back(static_cast<float>(10 * i));
    }
    SetChannels(trial, {channel});
    trial.ChanLabel[1] = "stored";
    trial.ChanUnits[1] = "N";
    AnswerForm({}, "Save");
    Run("file.merge");
  }
  void LoadNext(const std::string& text, const std::string& way, const std::string& rate = "100") {
    questions.inputAnswers = {rate};
    AnswerForm();
    AnswerForm({{"option", way}}, "Merge");
    Load("next.txt", text);
  }
};

TEST_F(MergeTest, StoredChannelsComeFirst) {
  trial.Notices = {"of the first file"};
  StoreTrial(4);
  EXPECT_TRUE(workbench.merge.MergePending);
  LoadNext("a b\n1 5\n2 6\n3 7\n4 8\n", "0");
  EXPECT_FALSE(workbench.merge.MergePending);
  EXPECT_EQ(workbench.merge.NFilesMerged, 2);
  EXPECT_EQ(Rows(), (Frames{{10, 1, 5}, {20, 2, 6}, {30, 3, 7}, {40, 4, 8}}));
  EXPECT_EQ(Labels(), (std::vector<std::string>{"stored", "Chan. 01", "Chan. 02"}));
  EXPECT_EQ(UnitsOfChannels()[0], "N");
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(trial.Rate, 100.0);
  EXPECT_EQ(workbench.LastChanShown, 3);
  EXPECT_TRUE(questions.boxes.empty()) << "nothing differs";
  EXPECT_EQ(trial.Notices, (Texts{"of the first file"}));
}

TEST_F(MergeTest, FourWaysToOneLength) {
  const std::string three = "a\n1.5\n2.5\n3.5\n";  // blank separated single column
  struct Case {
    const char* way;
    Frames rows;
  };
  for (const Case& c : {
           Case{"0", {{10, 1.5F}, {20, 2}, {30, 2.5F}, {40, 3}, {50, 3.5F}}},
           Case{"Normalize to current data size to match next file loaded",
                {{10, 1.5F}, {30, 2.5F}, {50, 3.5F}}},
           Case{"2", {{10, 1.5F}, {20, 2.5F}, {30, 3.5F}}},
           Case{"3", {{10, 1.5F}, {20, 2.5F}, {30, 3.5F}, {40, 0}, {50, 0}}},
       }) {
    StoreTrial(5);
    LoadNext(three, c.way);
    ASSERT_EQ(questions.boxes.size(), 1U);
    EXPECT_EQ(questions.boxes[0].title, "File Sizes Different");
    EXPECT_EQ(Rows(), c.rows) << c.way;
    EXPECT_EQ(trial.Rate, 100.0);
    EXPECT_FLOAT_EQ(trial.Data(trial.NData, 0), static_cast<float>(trial.NData - 1) / 100);
    EXPECT_EQ(trial.CursorHi, trial.NData);
  }
}

TEST_F(MergeTest, RatesAreSynchronisedOrTheMergeIsLeft) {
  const std::string next = "a\n1.5\n2.5\n3.5\n4.5\n5.5\n";
  StoreTrial(6);
  questions.boxAnswers = {Button::Yes};
  LoadNext(next, "3", "50");  // 5 samples / 50 Hz * 100 Hz = 10 intervals
  EXPECT_EQ(questions.boxes.at(0).title, "Sampling Rate Differ");
  EXPECT_EQ(trial.Rate, 100.0);
  EXPECT_EQ(Rows()[1], (std::vector<float>{20, 1.9F}));
  EXPECT_EQ(trial.NData, 6);
  StoreTrial(6);
  workbench.merge.changed = false;
  questions.boxAnswers = {Button::No};
  LoadNext(next, "3", "50");
  EXPECT_EQ(trial.NChan, 1);
  EXPECT_EQ(trial.Rate, 50.0);
  EXPECT_FALSE(workbench.merge.MergePending);
  EXPECT_EQ(workbench.merge.NFilesMerged, 2);
  trial.FileChanged = true;
  StoreTrial(6);
  questions.boxes.clear();
  questions.boxAnswers = {Button::No, Button::Cancel, Button::OK};
  questions.inputAnswers = {"50"};
  AnswerForm();
  AnswerForm({}, "Merge");
  AnswerForm({}, "Cancel");
  Load("next.txt", next);
  EXPECT_EQ(questions.boxes.size(), 3U)
      << "stored data that were never saved are not dropped at the first No";
  EXPECT_TRUE(questions.boxes.at(1).text.starts_with("The stored data were modified but not saved."));
  EXPECT_FALSE(workbench.merge.MergePending);
}

TEST_F(MergeTest, WhatCannotBeResampledIsRefusedAndTheDialogueStays) {
  struct Case {
    int stored;
    const char* way;
    const char* rate;
    const char* reason;
    const char* then;  // the button after "Truncate or pad current data"
    int channels;
  };
  for (const Case& c : {Case{1, "0", "100", "A single sample", "Merge", 2},
                        Case{1, "1", "100", "A single sample", "Merge", 2},
                        Case{4, "0", "1000000", "The next file is too short", "Cancel", 1},
                        Case{4, "0", "0.0000001", "The next file would have too many", "Cancel", 1}}) {
    trial.FileChanged = false;
    StoreTrial(c.stored);
    questions.boxes.clear();
    questions.inputAnswers = {c.rate};
    AnswerForm();
    AnswerForm({{"option", c.way}}, "Merge");
    AnswerForm({{"option", "2"}}, c.then);
    Load("next.txt", "a\n1.5\n2.5\n3.5\n");
    ASSERT_FALSE(questions.boxes.empty()) << c.way;
    EXPECT_EQ(questions.boxes[0].title, "Cannot Merge");
    EXPECT_TRUE(questions.boxes[0].text.starts_with(c.reason)) << questions.boxes[0].text;
    EXPECT_EQ(trial.NData, 3);
    EXPECT_EQ(trial.NChan, c.channels);
  }
}

// The file's plate is on channels 1 to 6 of its seven; 20 samples at 200 Hz.
TEST_F(MergeTest, PlatesStayWithTheirChannels) {
  C3dFile file = FullC3dFile();
  AddUsualParameters(file);
  const auto merge = [this](const std::function<void()>& first, const std::function<void()>& next) {
    first();
    AnswerForm({}, "Save");
    Run("file.merge");
    AnswerForm({}, "Merge");
    next();
  };
  const auto loadWalk = [&] { Load("walk.c3d", file.Bytes()); };
  const auto makeEmg = [&] { SetChannels(trial, std::vector<Samples>(2, Samples(20, 7)), 200.0); };

  merge(makeEmg, loadWalk);
  ASSERT_EQ(trial.NChan, 9);
  ASSERT_EQ(trial.FilePlates.size(), 1U);
  EXPECT_EQ(trial.FilePlates[0].base, 2);
  EXPECT_EQ(workbench.plates.FirstChannel, 2);
  questions.fileAnswers = {{directory.Path("joined.c3d")}};
  Run("save.c3d");
  trial.FileName = directory.Path("joined.c3d");
  Run("file.load");
  EXPECT_EQ(trial.FilePlates.at(0).base, 2);
  EXPECT_EQ(Labels()[2], "Fx");

  loadWalk();
  merge(
      [this] {
        trial.ForcesReduced = true;
        trial.PlatesCombined = true;
      },
      [this] { Load("emg.c3d", C3dFile().Bytes()); });
  ASSERT_EQ(trial.NChan, 10);
  EXPECT_EQ(trial.NPlates, 1);
  EXPECT_EQ(trial.FilePlates.at(0).base, 0);
  EXPECT_TRUE(trial.ForcesReduced && trial.PlatesCombined) << "forces are not reduced twice";

  loadWalk();
  merge([] {}, loadWalk);
  ASSERT_EQ(trial.NChan, 14);
  EXPECT_EQ(trial.FilePlates.at(0).base, 0);
  EXPECT_EQ(trial.Notices.back(),
            "The force plates of the next file are no longer known: the stored data have force plates.");
}

TEST_F(MergeTest, AbscissasThatCountDifferentThingsDoNotMeet) {
  const std::string next = "a\n1.5\n2.5\n3.5\n4.5\n5.5\n";
  StoreTrial(5);
  Run("timebase.percentage");
  workbench.merge = {};
  AnswerForm({}, "Save");
  Run("file.merge");
  LoadNext(next, "0");
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.ChanUnits[0].Text(), "s") << "samples are the same in any time base";
  EXPECT_EQ(Rows()[4], (std::vector<float>{50, 5.5F}));
  EXPECT_FLOAT_EQ(trial.Data(5, 0), 0.04F);
  EXPECT_EQ(trial.Rate, 100.0);

  StoreTrial(5);
  workbench.merge.changed = false;
  workbench.merge.time = {.Base = TimeBase::Percentage};  // as an average comes from its file
  questions.inputAnswers = {"100"};
  questions.boxes.clear();
  AnswerForm();
  AnswerForm({}, "Merge");
  AnswerForm({}, "Cancel");
  Load("next.txt", next);
  EXPECT_EQ(questions.boxes.at(0).text,
            "The abscissa of the stored data counts percent, that of the next file seconds.  Give both files "
            "the same "
            "time base before they are merged.");
  EXPECT_EQ(trial.NChan, 1);
}

TEST_F(MergeTest, TooManyChannelsAndNothingStored) {
  SetChannels(trial, std::vector<std::vector<float>>(64, {1, 2, 3}));
  AnswerForm({}, "Save");
  AnswerForm({}, "Cancel");
  Run("file.merge");
  EXPECT_EQ(
      LastBox(),
      "Too Many Channels Used|You must erase some channels using the Channel menu. Press &Cancel to exit.");
  EXPECT_FALSE(workbench.merge.MergePending);
  SetChannels(trial, std::vector<std::vector<float>>(63, {1, 2, 3}));
  AnswerForm({}, "Merge");
  AnswerForm({}, "OK");
  Run("file.merge");
  EXPECT_TRUE(LastBox().starts_with("Nothing to Merge|"));
  questions.inputAnswers = {"100"};
  AnswerForm();
  AnswerForm({}, "OK");
  AnswerForm({}, "Cancel");
  Load("next.txt", "a b\n1 2\n3 4\n5 6\n");
  EXPECT_EQ(questions.boxes.at(0).title, "Too Many Channels Used");
  EXPECT_EQ(trial.NChan, 2) << "the next file stays as it was loaded";
}

}  // namespace
}  // namespace velmora::test
