#include "import/read_recording.hpp"

#include <cmath>
#include <limits>

#include "formats/bytes/byte_builder.hpp"
#include "formats/recording/interleaved.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

/// A file in a format of the test's own: its header is what the test says, its samples are interleaved.
struct MadeUpFile : RecordingFile {
  static inline velmora::Recording header;
  static inline InterleavedLayout layout;
  static inline std::vector<Scaling> scalings;
  static inline std::function<void()> beforeReading;

  explicit MadeUpFile(const std::string& path) : file(path) { found_ = header; }
  std::int64_t ReadSamples(const SampleTarget& target) override {
    if (beforeReading) {
      beforeReading();
    }
    return ReadInterleaved(file, layout, scalings, target);
  }
  static std::unique_ptr<RecordingFile> Open(const std::string& path) {
    return std::make_unique<MadeUpFile>(path);
  }

  InputFile file;
};

struct ReadRecordingTest : FileTest {
  void SetUp() override {
    MadeUpFile::header = {};
    MadeUpFile::layout = {};
    MadeUpFile::scalings.clear();
    MadeUpFile::beforeReading = {};
  }
  // Channels of 16-bit counts: sample i (from 0) of channel c (from 0) is 100 c + i.
  void SetCounts(int channels, int samples) {
    MadeUpFile::layout = {.channels = channels};
    for (int i = 0; i < samples; ++i) {
      for (int c = 0; c < channels; ++c) {
        bytes.Add(static_cast<std::int16_t>(100 * c + i));
      }
    }
    for (int c = 0; c < channels; ++c) {
      MadeUpFile::header.channels.push_back(
          {.label = "c" + std::to_string(c), .units = "V", .rate = 100.0, .samples = samples});
    }
  }
  void Read() {
    WriteFile(directory.Path("a.xyz"), bytes.Bytes());
    trial.FileName = directory.Path("a.xyz");
    trial.Notices.clear();
    workbench.report = {};
    questions.boxes.clear();
    ProgressPanel panel(workbench);
    ReadRecording(workbench, panel, "made up", MadeUpFile::Open);
  }
  std::vector<float> Row(int i) {
    std::vector<float> row;
    for (int c = 1; c <= trial.NChan; ++c) {
      row.push_back(trial.Data(i, c));
    }
    return row;
  }

  ByteBuilder bytes;
};

template <typename T>
void ExpectTypeRead(ReadRecordingTest& test, SampleType type, ByteOrder order) {
  test.SetUp();
  test.bytes = ByteBuilder(order);
  test.bytes.AddText("head", 6);
  const std::vector<T> words = {T(7), T(1000), T(40000), T(3), T(0), T(12345)};
  for (std::size_t block = 0; block < 3; ++block) {
    test.bytes.AddText("skipped", 7);
    for (std::size_t k = 0; k < 12; ++k) {
      test.bytes.Add(words[(k + block) % words.size()]);
    }
  }
  MadeUpFile::layout = {.offset = 6,
                        .skipped = 7,
                        .samplesPerBlock = 4,
                        .channels = 3,
                        .type = type,
                        .order = order,
                        .general = -7};
  MadeUpFile::scalings = {{}, {.offset = -3, .gain = 0.1}, {.offset = 0.5, .gain = 3}};
  MadeUpFile::header.channels.assign(3, {.rate = 50.0, .samples = 12});
  EXPECT_EQ(MadeUpFile::layout.SamplesIn(static_cast<std::int64_t>(test.bytes.Size())), 12);
  test.Read();
  ASSERT_EQ(test.trial.NData, 12);
  for (int i = 0; i < 12; ++i) {
    const auto at = [&](int c) {
      return static_cast<double>(words[static_cast<std::size_t>((i % 4) * 3 + c + i / 4) % words.size()]);
    };
    EXPECT_EQ(test.Row(i + 1),
              (std::vector<float>{static_cast<float>(at(0) * -7), static_cast<float>((at(1) - 3) * 0.1 * -7),
                                  static_cast<float>((at(2) + 0.5) * 3 * -7)}));
    EXPECT_EQ(test.trial.Data(i + 1, 0), static_cast<float>(i / 50.0));
  }
}

TEST_F(ReadRecordingTest, SamplesOfEveryTypeAndOrderBecomeValues) {
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
    ExpectTypeRead<std::int16_t>(*this, SampleType::Int16, order);
    ExpectTypeRead<std::uint16_t>(*this, SampleType::UInt16, order);
    ExpectTypeRead<float>(*this, SampleType::Float32, order);
    ExpectTypeRead<double>(*this, SampleType::Float64, order);
  }
  // Plain floats are copied, a zero keeps its sign.
  SetUp();
  MadeUpFile::layout = {.channels = 2, .type = SampleType::Float32};
  MadeUpFile::header.channels.assign(2, {.rate = 1.0, .samples = 1});
  bytes = ByteBuilder().Add(-0.0F).Add(1e-40F);
  Read();
  EXPECT_TRUE(SameBits(Row(1), {-0.0F, 1e-40F}));
  for (const float wrong : {std::numeric_limits<float>::infinity(), std::nanf("")}) {
    bytes = ByteBuilder().Add(1.0F).Add(wrong);
    Read();
    EXPECT_EQ(trial.NData, 0);
    EXPECT_NE(LastBox().find("sample 1 of channel 2"), std::string::npos) << LastBox();
  }
}

TEST_F(ReadRecordingTest, NoLayoutCountsMoreThanTheFileHolds) {
  constexpr std::int64_t huge = INT64_MAX / 4;
  EXPECT_EQ((InterleavedLayout{.channels = huge}.SamplesIn(1000)), 0);
  EXPECT_EQ((InterleavedLayout{.samplesPerBlock = huge, .channels = huge}.SamplesIn(1000)), 0);
  EXPECT_EQ((InterleavedLayout{.channels = 0}.SamplesIn(1000)), 0);
  EXPECT_EQ((InterleavedLayout{.offset = 1001, .channels = 1}.SamplesIn(1000)), 0);
  EXPECT_EQ((InterleavedLayout{.skipped = -1, .channels = 1}.SamplesIn(1000)), 0);
  EXPECT_EQ(
      (InterleavedLayout{.offset = 900, .skipped = 10, .samplesPerBlock = 5, .channels = 2}.SamplesIn(1000)),
      15);
}

TEST_F(ReadRecordingTest, MoreThan64ChannelsAreChosenFrom) {
  SetCounts(100, 3);
  AnswerForm({{"ChannelsToRead", "99-101"}});  // refused: there is no 101; then 65 are
  AnswerForm({{"ChannelsToRead", "1-65"}});
  AnswerForm({{"ChannelsToRead", "100, 3-4 90"}});
  Read();
  EXPECT_EQ(questions.boxes.size(), 2U);
  EXPECT_EQ(Labels(), (Texts{"c2", "c3", "c89", "c99"}));
  EXPECT_EQ(Row(2), (std::vector<float>{201, 301, 8901, 9901}));
  EXPECT_EQ(trial.Notices, (Texts{"4 of 100 channels were read."}));
  AnswerForm({});
  Read();
  EXPECT_EQ(trial.NChan, 64);
  EXPECT_EQ(trial.Data(3, 64), 6302.0F);
  AnswerForm({}, "Cancel");
  Read();
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(ReadRecordingTest, OneRateIsMadeOfSeveral) {
  SetCounts(3, 6);
  MadeUpFile::header.channels[1].rate = 40.0;  // its samples lie at 0, 2.5, 5 of the others'
  MadeUpFile::header.channels[1].samples = 3;
  questions.boxAnswers = {Button::Yes};
  Read();
  EXPECT_EQ(trial.Rate, 100.0);
  EXPECT_EQ(trial.ChanRate[2], 40.0);
  // 100, 101, 102 at 0, 25, 50 ms; by hand at 0, 10, ..., 50 ms.
  EXPECT_EQ(Channel(trial, 2), (std::vector<float>{100.0F, 100.4F, 100.8F, 101.2F, 101.6F, 102.0F}));
  EXPECT_EQ(trial.Notices, (Texts{"Interpolated to 100 Hz: c1 (40 Hz)."}));
  MadeUpFile::header.channels[1].samples = 2;
  questions.boxAnswers = {Button::Yes};
  Read();
  EXPECT_EQ(trial.Data(6, 2), 101.0F) << "behind its end a channel keeps its last value";
  questions.boxAnswers = {Button::No};
  Read();
  EXPECT_EQ(Labels(), (Texts{"c0", "c2"}));
  EXPECT_EQ(trial.Data(6, 2), 205.0F);
  questions.boxAnswers = {Button::Cancel};
  Read();
  EXPECT_EQ(trial.NData, 0);
  for (RecordedChannel& channel : MadeUpFile::header.channels) {
    channel.rate = 0.0;
  }
  questions.inputAnswers = {"250", ""};
  Read();
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(trial.Data(2, 0), 0.004F);
  Read();
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(ReadRecordingTest, ARateThatGivesNoTimesIsRefused) {
  SetCounts(1, 3);
  MadeUpFile::header.channels[0].rate = 1e-40;
  Read();
  EXPECT_EQ(trial.NData, 0);
  EXPECT_NE(LastBox().find("gives no times"), std::string::npos) << LastBox();
}

TEST_F(ReadRecordingTest, WhatTheFileTellsIsKept) {
  SetCounts(14, 2);
  velmora::Recording& header = MadeUpFile::header;
  header.title = "12 steps";
  header.lines = {"Date 1", "Device\t2"};
  header.channels[0] = {.rate = 100.0, .samples = 2, .gain = 0.5, .offset = -3, .number = 7};
  header.remarks = {"A remark."};
  for (int k = 90; k > 0; --k) {
    header.events.push_back({k * 0.5, "RIC"});
  }
  for (const int first : {8, 1, 0}) {
    RecordedPlate plate{.words = "Plate of " + std::to_string(first), .reducible = true};
    for (int c = first; c < first + 6; ++c) {
      plate.channels.push_back(c);
    }
    plate.definition.Width = 100 + first;
    if (first == 0) {
      std::swap(plate.channels[0], plate.channels[1]);
    }
    header.plates.push_back(plate);
  }
  Read();
  EXPECT_EQ(trial.TrialTitle, "12 steps");
  EXPECT_EQ(trial.ChanLabel[1], "Chan. 01");
  EXPECT_EQ(trial.ChanUnits[1], "");
  EXPECT_EQ(trial.ChanGain[1], 0.5);
  EXPECT_EQ(trial.ChanOffset[1], -3.0);
  EXPECT_EQ(trial.ChanNumber[1], 7);
  EXPECT_EQ(trial.HeaderLines[2], "Device 2");
  EXPECT_EQ(trial.HeaderLines[3], "Event 0.500 s RIC");
  EXPECT_EQ(trial.HeaderLines[71], "Event 34.500 s RIC");
  EXPECT_EQ(trial.HeaderLines[72], "... and 21 more events");
  EXPECT_EQ(trial.HeaderLines[73], "Plate of 8");
  EXPECT_EQ(trial.HeaderLineCount, 75);
  EXPECT_EQ(trial.NPlates, 2);
  EXPECT_EQ(workbench.plates.FirstChannel, 8);
  EXPECT_EQ(workbench.plates.PlateTable[1].Width, 101);
  EXPECT_EQ(trial.FilePlates.at(1).base, 1);
  EXPECT_EQ(trial.Notices.front(),
            "Force plates of the file that are not in the plate table: 3. The header lines tell "
            "what is known of them.");
  EXPECT_EQ(trial.Notices.back(), "A remark.");
}

TEST_F(ReadRecordingTest, AReadThatEndsEarlyLeavesASmallerTrial) {
  SetCounts(2, 5);
  MadeUpFile::header.promised = 1000;
  Read();
  EXPECT_EQ(trial.NData, 5);
  EXPECT_EQ(LastBox(),
            "Fewer Samples Than Promised|The file promised 1,000 samples per channel; 5 were found.");
  EXPECT_EQ(workbench.report.warnings.size(), 1U);
  MadeUpFile::beforeReading = [this] { WriteFile(directory.Path("a.xyz"), bytes.Bytes().substr(0, 11)); };
  Read();
  EXPECT_EQ(trial.NData, 2) << "the file shrank";
  EXPECT_EQ(Row(2), (std::vector<float>{1, 101}));
  MadeUpFile::beforeReading = [this] { WriteFile(directory.Path("a.xyz"), ""); };
  Read();
  EXPECT_EQ(trial.NData, 0);

  SetUp();
  bytes = ByteBuilder();
  SetCounts(2, 5'000'000);
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Value() > 0) {
      panel.PressCancel();
    }
  };
  Read();
  EXPECT_GT(trial.NData, 0);
  EXPECT_LT(trial.NData, 5'000'000);
  EXPECT_EQ(trial.Data(trial.NData, 2), static_cast<float>(static_cast<std::int16_t>(99 + trial.NData)));
  EXPECT_NE(LastBox().find("|Reading cancelled only"), std::string::npos) << LastBox();
}

}  // namespace
}  // namespace velmora::test
