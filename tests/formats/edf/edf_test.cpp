#include "support/command_test.hpp"
#include "support/instrument_files/edf_file.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

struct EdfTest : FileTest {
  void LoadEdf(const EdfFile& file) { Load(file.isBdf ? "a.bdf" : "a.edf", file.Bytes()); }
};

TEST_F(EdfTest, CountsBecomeValuesInBothWidths) {
  for (const bool isBdf : {false, true}) {
    EdfFile file;
    file.isBdf = isBdf;
    file.signals[1] = {
        .label = "Knee", .units = "\xB5V", .physicalMin = "90", .physicalMax = "-10,5"};  // turned
    LoadEdf(file);
    ASSERT_EQ(trial.NData, 12) << LastBox();
    EXPECT_EQ(trial.FileTypeCode, 22);
    EXPECT_EQ(trial.Rate, 8.0);
    EXPECT_EQ(Labels(), (Texts{"EMG", "Knee"}));
    EXPECT_EQ(trial.ChanUnits[2], "\xC2\xB5V");
    for (int r = 0; r < 3; ++r) {
      for (int i = 0; i < 4; ++i) {
        const double count = (10 * r + i) * (i % 2 == 0 ? 1 : -1);
        EXPECT_EQ(trial.Data(4 * r + i + 1, 1), static_cast<float>(count * 0.1));
        EXPECT_FLOAT_EQ(trial.Data(4 * r + i + 1, 2), static_cast<float>(90 - (count + 1000) * 100.5 / 2000));
      }
    }
    EXPECT_FLOAT_EQ(trial.Data(12, 0), 11 / 8.0F);
    EXPECT_DOUBLE_EQ(trial.ChanGain[1], 0.1);
    EXPECT_EQ(trial.HeaderLines[1], "Patient: patient X");
    EXPECT_EQ(trial.HeaderLines[3], "Started: 02.03.04, 05.06.07");
    EXPECT_TRUE(trial.Notices.empty());
  }
}

TEST_F(EdfTest, SignalsOfSeveralRatesBecomeOne) {
  EdfFile file;
  file.signals[1].samples = 1;
  file.seconds = "0.4";
  questions.boxAnswers = {Button::Yes};
  LoadEdf(file);
  ASSERT_EQ(trial.NData, 12);
  EXPECT_EQ(trial.Rate, 10.0);
  EXPECT_EQ(trial.ChanRate[2], 2.5);
  // Counts 0, 10, 20 of the slow one, four samples apart; behind its last it stays.
  EXPECT_EQ(Channel(trial, 2), (Samples{0, 0.25F, 0.5F, 0.75F, 1, 1.25F, 1.5F, 1.75F, 2, 2, 2, 2}));
}

TEST_F(EdfTest, AnnotationsAreEventsFromTheFirstSample) {
  EdfFile file;
  file.reserved = "EDF+D";
  file.signals.push_back({.label = "EDF Annotations", .samples = 20, .annotations = UsualAnnotations()});
  LoadEdf(file);
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.HeaderLines[4], "The recording starts 0.25 s behind its time");
  EXPECT_EQ(trial.HeaderLines[5], "Event 0.050 s go");
  EXPECT_EQ(trial.HeaderLines[6], "Event 1.000 s gap of 1.000 s in the recording");
  EXPECT_EQ(trial.HeaderLines[7], "Event 1.250 s step (0.2 s)");
  EXPECT_EQ(trial.HeaderLines[8], "Event 1.250 s left (0.2 s)");
  EXPECT_TRUE(Tells("interrupted 1 time"));
  file.signals.erase(file.signals.begin(), file.signals.begin() + 2);
  file.seconds = "0";
  LoadEdf(file);
  EXPECT_EQ(trial.NData, 0);
  EXPECT_NE(LastBox().find("no signals but 3 annotations"), std::string::npos) << LastBox();
  file.signals[0].annotations = {"no list\x14", "+1", "\x14\x14"};
  LoadEdf(file);
  EXPECT_NE(LastBox().find("no signals but 0 annotations"), std::string::npos) << LastBox();
}

TEST_F(EdfTest, WhatPeopleWroteIsReadLeniently) {
  EdfFile file;
  file.promised = "-1";
  file.headerBytes = "512";
  file.date = "42.00.0";
  file.signals[0].digitalMin = file.signals[0].digitalMax = "5";
  Load("a.rec", file.Bytes() + "rest");
  EXPECT_EQ(trial.NData, 12);
  EXPECT_EQ(Channel(trial, 1)[4], 10.0F) << "counts, since their limits say nothing";
  for (const char* told : {"The limits of EMG", "512 bytes", "counts -1 records", "ends inside a record"}) {
    EXPECT_TRUE(Tells(told)) << told;
  }
  file = {};
  file.seconds = "0";
  file.signals[0].digitalMax = "12";  // reached by 12 and 20, 22; passed, since nothing is cut off
  LoadEdf(file);
  EXPECT_EQ(trial.Rate, 4.0);
  EXPECT_TRUE(Tells("1 s was taken"));
  EXPECT_TRUE(Tells("25 % of EMG is at the limit"));
}

TEST_F(EdfTest, WhatIsDamagedIsRefused) {
  const auto with = [](const std::function<void(EdfFile&)>& change) {
    EdfFile file;
    change(file);
    return file.Bytes();
  };
  const std::string good = EdfFile{}.Bytes();
  std::string none = good;
  none.replace(252, 4, "0   ");
  std::string many = good;
  many.replace(252, 4, "9999");
  std::string huge = good;
  huge.replace(256 + 2 * 216 + 8, 8, "99999999");
  huge.replace(256, 32, "EDF Annotations EMG             ");
  for (const auto& [bytes, why] : std::vector<std::pair<std::string, std::string>>{
           {"", "File is empty."},
           {"0", "the file ends inside its header"},
           {std::string(300, 'x'), "this is no EDF or BDF file"},
           {good.substr(0, 300), "the file ends inside its header"},
           {good.substr(0, 768), "the file holds no samples"},
           {none, "the header counts no signals"},
           {many, "the file ends inside its header"},
           {with([](EdfFile& f) { f.signals[0].samples = f.signals[1].samples = -1; }),
            "records of the file are empty"},
           {huge, "the file holds no samples"},
           {with([](EdfFile& f) { f.signals[1].physicalMax = "1e300"; }),
            "the values of Knee are too large"}}) {
    questions.boxAnswers = {Button::Yes};
    ExpectRefused("a.edf", bytes, why);
  }
}

// Sums over the samples of single channels by a script of a few lines; short_psg by its page too.
TEST_F(EdfTest, PublicRecordingsHoldWhatOthersReadOfThem) {
  if (!Recording("edf")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  struct Published {
    const char* file;
    int channels;
    int samples;
    double rate;
    int channel;
    double first;
    double sum;  // of the channel
  };
  for (const Published& p : std::vector<Published>{
           {"pyedflib_test_generator.edf", 11, 120000, 200, 4, 84.00091552734375, 5941528.709506704},
           {"pyedflib_test_generator.bdf", 5, 30000, 1000, 1, 31.41063690185547, -0.001287455961573869},
           {"pyedflib_test_subsecond.edf", 1, 89344, 128, 1, 6.247303009033203, -26791.09347641468},
           {"short_psg.edf", 7, 30000, 100, 2, -2.4673993587493896, -10889.67119580321},
           {"eda_slow_signal.edf", 1, 2900, 100, 1, 1.5, 4229.996337778866},
           {"test_uneven_samp.edf", 2, 11000, 100, 1, 0, 26.318359375}}) {
    SCOPED_TRACE(p.file);
    questions.boxAnswers = {Button::Yes};
    LoadPath(*Recording(std::string("edf/") + p.file));
    ASSERT_EQ(trial.NData, p.samples) << LastBox();
    EXPECT_EQ(trial.NChan, p.channels);
    EXPECT_EQ(trial.Rate, p.rate);
    EXPECT_EQ(trial.Data(1, p.channel), static_cast<float>(p.first));
    EXPECT_NEAR(Sum(p.channel), p.sum, 1e-9 * std::abs(p.sum) + 1e-9);
  }
  LoadPath(*Recording("edf/pyedflib_test_subsecond.edf"));
  EXPECT_NE(trial.HeaderLines[5].find("Event 1.951 s XLSpike"), std::string::npos)
      << "2.3457031 s less 0.3945312 s";
}

}  // namespace
}  // namespace velmora::test
