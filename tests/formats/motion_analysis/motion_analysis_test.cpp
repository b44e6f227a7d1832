#include <cmath>

#include "support/command_test.hpp"
#include "support/instrument_files/motion_analysis_file.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

struct MotionAnalysisTest : FileTest {
  std::vector<std::int64_t> Counts() const {
    std::vector<std::int64_t> counts;
    for (int c = 1; c <= trial.NChan; ++c) {
      for (std::int32_t i = 1; i <= trial.NData; ++i) {
        counts.push_back(std::llround(trial.Data(i, c) / trial.ChanGain[c]));
      }
    }
    return counts;
  }
};

TEST_F(MotionAnalysisTest, TextAndBinaryGiveTheSameVolts) {
  for (const bool binary : {false, true}) {
    SCOPED_TRACE(binary);
    const MotionAnalysisFile file;
    Load(binary ? "a.anb" : "a.anc", binary ? file.Binary() : file.Text());
    ASSERT_EQ(trial.NData, 4) << LastBox();
    EXPECT_EQ(trial.FileTypeCode, binary ? 41 : 42);
    EXPECT_EQ(trial.Rate, 200.0);
    EXPECT_EQ(Labels(), (Texts{"L Soleus", "Chan. 02", "Fz"}));
    EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "V", "V"}));
    EXPECT_DOUBLE_EQ(trial.ChanGain[2], 5.0 / 4096);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(trial.Data(i + 1, 1), static_cast<float>(i * 10.0 / 4096));
      EXPECT_EQ(trial.Data(i + 1, 2), static_cast<float>((-100 - i) * 5.0 / 4096));
      EXPECT_EQ(trial.Data(i + 1, 3), static_cast<float>((200 + i) * 2.0 / 4096));
      EXPECT_EQ(trial.Data(i + 1, 0), static_cast<float>(i / 200.0));
    }
    EXPECT_TRUE(Tells("Fz has a rate of 100 Hz by its own line"));
    EXPECT_EQ(trial.TrialTitle, binary ? trial.FileName : "7 jumps");
  }
}

TEST_F(MotionAnalysisTest, WhatTheTextLacksIsToldOrRefused) {
  MotionAnalysisFile file;
  Load("a.txt", file.Text());
  EXPECT_EQ(trial.FileTypeCode, 42) << "by its first line, whatever the extension";
  const std::string whole = file.Text();
  Load("a.anc", whole.substr(0, whole.size() - 12));
  EXPECT_EQ(trial.NData, 3) << "a row that is cut is left out";
  EXPECT_EQ(LastBox(), "Fewer Samples Than Promised|The file promised 4 samples per channel; 3 were found.");
  file.ranges.clear();
  Load("a.anc", file.Text());
  EXPECT_EQ(trial.Data(2, 2), -101.0F);
  EXPECT_EQ(trial.ChanUnits[2], "counts");
  EXPECT_TRUE(Tells("tells no ranges"));
  file.polarity = "Unipolar";
  Load("a.anc", file.Text());
  EXPECT_TRUE(Tells("was not bipolar"));
  file.generation = "1";
  Load("a.anc", file.Text());
  EXPECT_NE(LastBox().find("generation 1 of the format is not known"), std::string::npos) << LastBox();
  EXPECT_EQ(trial.NData, 0);
  for (const auto& [text, why] : std::vector<std::pair<std::string, std::string>>{
           {"File_Type:\t\n", "has no line of names"},
           {whole.substr(0, whole.find("Rate\t")), "the file holds no samples"},
           {whole.substr(0, whole.find("0.0\t") + 200), ""}}) {
    Load("a.anc", text);
    EXPECT_NE(LastBox().find(why), std::string::npos) << LastBox();
  }
}

TEST_F(MotionAnalysisTest, DamagedBinaryFilesAreReadAsFarAsTheyGoOrRefused) {
  MotionAnalysisFile file;
  const std::string whole = file.Binary();
  Load("a.anb", whole.substr(0, whole.size() - 7));
  EXPECT_EQ(trial.NData, 2);
  EXPECT_EQ(questions.boxes.back().title, "Fewer Samples Than Promised");
  for (const auto& [bytes, why] : std::vector<std::pair<std::string, std::string>>{
           {"", "File is empty."},
           {"x", "the file ends inside its header"},
           {std::string(100, 'x'), "this is no Motion Analysis binary analog file"},
           {std::string(100, '\0'), "this is no Motion Analysis binary analog file"},
           {whole.substr(0, 60), "the file ends inside its header"},
           {whole.substr(0, whole.size() - 24), "the file holds no samples"}}) {
    ExpectRefused("a.anb", bytes, why);
  }
}

TEST_F(MotionAnalysisTest, PublicRecordingsAgreeAcrossFormats) {
  if (!Recording("anb")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  LoadPath(*Recording("anb/Gait_first600_DERIVED.anb"));
  ASSERT_EQ(trial.NChan, 28);
  ASSERT_EQ(trial.NData, 600);
  // Counts by a script of a few lines, equal to those of the text file of the same trial.
  const auto count = [this](int i, int c) { return trial.Data(i, c) / trial.ChanGain[c]; };
  EXPECT_EQ(count(1, 1), 30);
  EXPECT_EQ(count(1, 4), -11);
  EXPECT_EQ(count(600, 28), 58);
  const std::vector<float> first = Channel(trial, 1);
  LoadPath(*Recording("vendor/Truncated.anc"));
  ASSERT_EQ(trial.NData, 5);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(Channel(trial, 1)[static_cast<std::size_t>(i)], first[static_cast<std::size_t>(i)]);
  }
  // The C3D of the same trial, whose plates have other scales: the counts are the same.
  for (const char* channels : {"1-41", "42-81"}) {
    AnswerForm({{"ChannelsToRead", channels}});
    LoadPath(*Recording("vendor/Res16bits.anc"));
    ASSERT_EQ(trial.NData, 1000);
    const auto counts = Counts();
    AnswerForm({{"ChannelsToRead", channels}});
    LoadPath(*Recording("c3d/btk_Res16bits.c3d"));
    EXPECT_EQ(Counts(), counts) << channels;
  }
}

}  // namespace
}  // namespace velmora::test
