#include "support/command_test.hpp"
#include "support/instrument_files/wav_file.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

struct WavTest : FileTest {
  void LoadWav(const WavFileBytes& file) { Load("a.wav", file.Bytes()); }

  // One channel of these words, which must become these values.
  template <typename Word>
  void ExpectValues(WavFileBytes file, const std::vector<Word>& words, const Samples& values,
                    std::size_t bytes = sizeof(Word)) {
    for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
      file.order = order;
      file.channels = 1;
      file.samples.clear();
      for (const Word word : words) {
        const std::string whole = file.Builder().Add(word).Bytes();
        // The highest bytes of the word: those of a left-justified one.
        file.samples += order == ByteOrder::Big ? whole.substr(0, bytes) : whole.substr(sizeof(Word) - bytes);
      }
      LoadWav(file);
      ASSERT_EQ(trial.NData, static_cast<std::int32_t>(words.size())) << LastBox();
      EXPECT_EQ(Channel(trial, 1), values) << file.bits;
    }
  }
};

TEST_F(WavTest, EveryWidthIsAPartOfFullScale) {
  WavFileBytes file;
  file.bits = 16;
  ExpectValues<std::int16_t>(file, {-32768, 1, 32767}, {-1, 1 / 32768.0F, 32767 / 32768.0F});
  file.bits = 24;
  ExpectValues<std::int32_t>(file, {INT32_MIN, 256, -256}, {-1, 0x1p-23F, -0x1p-23F}, 3);
  file.bits = 32;
  ExpectValues<std::int32_t>(file, {INT32_MIN, 1, 9538171},
                             {-1, 0x1p-31F, static_cast<float>(9538171.0 / 2147483648.0)});
  file.bits = 12;
  file.validBits = 12;
  file.bits = 16;
  ExpectValues<std::int16_t>(file, {-32768, 16, 32752}, {-1, 16 / 32768.0F, 32752 / 32768.0F});
  file.validBits = 0;
  file.bits = 64;
  ExpectValues<std::int64_t>(file, {INT64_MIN, 1, INT64_MAX}, {-1, 0x1p-63F, 1});
  file.bits = 40;
  ExpectValues<std::int64_t>(file, {INT64_MIN, std::int64_t{1} << 24, -(std::int64_t{1} << 24)},
                             {-1, 0x1p-39F, -0x1p-39F}, 5);
  file.tag = 3;
  file.bits = 32;
  ExpectValues<float>(file, {1.5F, -1e-20F, 300.0F}, {1.5F, -1e-20F, 300.0F});
  file.bits = 64;
  ExpectValues<double>(file, {0.1, -7.0}, {0.1F, -7.0F});
  file.tag = 1;
  file.bits = 8;
  ExpectValues<std::uint8_t>(file, {0, 128, 255}, {-1, 0, 127 / 128.0F});
}

TEST_F(WavTest, TheFileIsDescribed) {
  WavFileBytes file = UsualWavFile();
  file.texts = "Scale-1: 8";
  LoadWav(file);
  EXPECT_EQ(trial.FileTypeCode, 24);
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.NData, 3);
  EXPECT_EQ(trial.Rate, 1000.0);
  EXPECT_EQ(trial.Data(3, 0), 0.002F);
  EXPECT_EQ(trial.Data(3, 2), -100 / 32768.0F);
  EXPECT_EQ(Labels(), (Texts{"Chan. 01", "Chan. 02"}));
  EXPECT_EQ(trial.ChanUnits[1], "");
  EXPECT_EQ(trial.HeaderLines[1], "Coding: 16-bit integers");
  EXPECT_EQ(trial.HeaderLines[2], "ICMT: Scale-1: 8");
  file.isLong = true;
  LoadWav(file);
  EXPECT_EQ(trial.NData, 3);
  file.isLong = false;
  file.dataBytes = 4'000'000;
  LoadWav(file);
  EXPECT_EQ(trial.NData, 3);
  EXPECT_EQ(LastBox(),
            "Fewer Samples Than Promised|The file promised 1,000,000 samples per channel; 3 were found.");
  file.dataBytes = 0;
  file.tag = 7;
  file.bits = 8;
  file.samples = std::string("\xFF\x00\x80\xFF", 4);  // silence, the lowest, the highest
  LoadWav(file);
  EXPECT_EQ(trial.Data(1, 2), -32124 / 32768.0F) << "ITU-T G.711";
  EXPECT_EQ(trial.Data(2, 1), 32124 / 32768.0F);
}

TEST_F(WavTest, WhatIsNotReadIsRefused) {
  const auto with = [](const std::function<void(WavFileBytes&)>& change) {
    WavFileBytes file = UsualWavFile();
    change(file);
    return file.Bytes();
  };
  const std::string good = UsualWavFile().Bytes();
  for (const auto& [bytes, why] : std::vector<std::pair<std::string, std::string>>{
           {"", "File is empty."},
           {"R", "the file ends inside its header"},
           {"FFIR" + good.substr(4), "this is no WAV file"},
           {"fLaC" + good.substr(4), "this is no WAV file"},
           {good.substr(0, 30), "the file ends inside its header"},
           {good.substr(0, 44), "the file holds no samples"},
           {with([](WavFileBytes& f) { f.rate = 0; }), "a sampling rate of 0 Hz"},
           {with([](WavFileBytes& f) { f.channels = 0; }), "counts no channels"},
           {with([](WavFileBytes& f) { f.channels = 65535; }), "the file holds no samples"},
           {with([](WavFileBytes& f) { f.tag = 2; }), "Microsoft ADPCM"},
           {with([](WavFileBytes& f) { f.tag = 85; }), "MP3"},
           {with([](WavFileBytes& f) { f.bits = 0; }), "samples of 0 bits"},
           {with([](WavFileBytes& f) {
              f.tag = 3;
              f.bits = 32;
              f.samples = std::string("\0\0\xC0\x7F\0\0\0\0", 8);
            }),
            "sample 1 of channel 1 is no number"}}) {
    ExpectRefused("a.wav", bytes, why);
  }
}

// First values by scipy, times full scale.
TEST_F(WavTest, PublicRecordingsHoldWhatOthersReadOfThem) {
  if (!Recording("wav")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  struct Published {
    const char* file;
    int channels;
    int samples;
    double first;
  };
  for (const Published& p :
       std::vector<Published>{{"ax3test", 4, 32640, 2943 / 32768.0},
                              {"test-44100Hz-le-1ch-4bytes", 1, 4410, 9538171 / 2147483648.0},
                              {"test-44100Hz-be-1ch-4bytes", 1, 4410, 9538171 / 2147483648.0},
                              {"test-44100Hz-le-1ch-4bytes-rf64", 1, 4410, 9538171 / 2147483648.0},
                              {"test-44100Hz-2ch-32bit-float-le", 2, 441, 0},
                              {"test-8000Hz-le-1ch-1byte-ulaw", 1, 9, 0},
                              {"test-8000Hz-le-2ch-1byteu", 2, 800, 8 / 128.0},
                              {"test-8000Hz-le-3ch-5S-24bit", 3, 5, -1},
                              {"test-8000Hz-le-3ch-5S-24bit-inconsistent", 3, 5, -1},
                              {"test-8000Hz-le-3ch-5S-53bit", 3, 5, -1},
                              {"test-8000Hz-le-3ch-5S-64bit", 3, 5, -1},
                              {"test-8000Hz-le-4ch-9S-12bit", 4, 9, 0}}) {
    SCOPED_TRACE(p.file);
    LoadPath(*Recording(std::string("wav/") + p.file + ".wav"));
    ASSERT_EQ(trial.NData, p.samples) << LastBox();
    EXPECT_EQ(trial.NChan, p.channels);
    EXPECT_EQ(trial.Data(1, 1), static_cast<float>(p.first));
  }
  LoadPath(*Recording("wav/test-8000Hz-le-3ch-5S-53bit.wav"));
  EXPECT_EQ(trial.Data(1, 3), static_cast<float>(-4096 / 9223372036854775808.0));
}

}  // namespace
}  // namespace velmora::test
