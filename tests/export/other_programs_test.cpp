#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <map>

#include "support/instrument_files/plate_files.hpp"
#include "support/text_load.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

/// Files for other programs, written through the save list.
struct OtherPrograms : TextLoadTest {
  void SetTrial(int channels, int samples, double rate) {
    std::vector<std::vector<float>> values;
    for (int c = 0; c < channels; ++c) {
      values.emplace_back();
      for (int i = 0; i < samples; ++i) {
        values.back().push_back(static_cast<float>((c + 1) * 0.1 - i * 1e-3));
      }
    }
    SetChannels(trial, values, rate);
    trial.TrialName = "walk";
    trial.TrialTitle = "9 steps";
  }
  std::string Saved(const char* id, const std::string& name) { return ReadFile(SaveAs(name, id)); }
};

template <typename T>
T NumberAt(const std::string& bytes, std::size_t at) {
  T value{};
  if (at + sizeof value <= bytes.size()) {
    std::memcpy(&value, bytes.data() + at, sizeof value);
  }
  return value;
}

/// A parse of the parameters that shares no line with the program: where the data of GROUP:NAME start.
std::size_t ParameterAt(const std::string& bytes, const std::string& group, const std::string& name) {
  int id = 0;
  for (std::size_t at = 512 + 4; at + 2 < bytes.size() && bytes[at] != 0;) {
    const int length = std::abs(static_cast<signed char>(bytes[at]));
    const int owner = static_cast<signed char>(bytes[at + 1]);
    const std::string entry = bytes.substr(at + 2, static_cast<std::size_t>(length));
    const std::size_t link = at + 2 + static_cast<std::size_t>(length);
    if (owner < 0 && entry == group) {
      id = -owner;
    }
    if (owner > 0 && owner == id && entry == name) {
      return link + 2 + 2 + static_cast<unsigned char>(bytes[link + 3]);
    }
    at = link + NumberAt<std::uint16_t>(bytes, link);
  }
  return 0;
}

TEST_F(OtherPrograms, C3dHoldsEverySampleToTheBit) {
  SetTrial(3, 500, 1000.0);
  trial.ChanLabel[2] = "µ-meter of thirty bytes";
  trial.ChanUnits[2] = "µV";
  trial.Data(7, 3) = -0.0F;
  trial.Data(8, 3) = std::bit_cast<float>(1);  // the smallest there is
  trial.HeaderLines[1] = "Event 72.250 s RIC Right";
  trial.HeaderLines[2] = "Event of the year s";
  trial.HeaderLineCount = 2;
  const std::string bytes = Saved("save.c3d", "a.c3d");
  EXPECT_EQ(bytes.size() % 512, 0U);
  EXPECT_EQ(bytes[0], 2);
  EXPECT_EQ(bytes[1], 0x50);
  EXPECT_EQ(bytes[512 + 3], 84);
  EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 2), 0);
  EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 4), 3);
  EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 8), 500);
  EXPECT_LT(NumberAt<float>(bytes, 12), 0.0F);
  EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 18), 1);
  EXPECT_EQ(NumberAt<float>(bytes, 20), 1000.0F);
  const auto start = NumberAt<std::uint16_t>(bytes, 16);
  EXPECT_EQ(start, NumberAt<std::uint16_t>(bytes, ParameterAt(bytes, "POINT", "DATA_START")));
  EXPECT_EQ(start, 2 + bytes[512 + 2]);
  EXPECT_EQ(NumberAt<std::uint16_t>(bytes, ParameterAt(bytes, "ANALOG", "USED")), 3);
  EXPECT_EQ(NumberAt<float>(bytes, ParameterAt(bytes, "ANALOG", "RATE")), 1000.0F);
  EXPECT_EQ(NumberAt<float>(bytes, ParameterAt(bytes, "ANALOG", "SCALE") + 8), 1.0F);
  const std::size_t labels = ParameterAt(bytes, "ANALOG", "LABELS");
  const auto width = static_cast<std::size_t>(bytes[labels - 2]);
  EXPECT_EQ(bytes.substr(labels + width, 8), "µ-meter");
  EXPECT_EQ(NumberAt<std::uint16_t>(bytes, ParameterAt(bytes, "EVENT", "USED")), 1);
  EXPECT_EQ(NumberAt<float>(bytes, ParameterAt(bytes, "EVENT", "TIMES")), 1.0F);
  EXPECT_EQ(NumberAt<float>(bytes, ParameterAt(bytes, "EVENT", "TIMES") + 4), 12.25F);
  for (int i = 1; i <= 500; ++i) {
    for (int c = 1; c <= 3; ++c) {
      const std::size_t at = (start - 1U) * 512 + static_cast<std::size_t>(4 * (3 * (i - 1) + c - 1));
      ASSERT_EQ(NumberAt<std::uint32_t>(bytes, at), std::bit_cast<std::uint32_t>(trial.Data(i, c)));
    }
  }
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_TRUE(trial.Notices.empty());
  // Read back by our own reader.
  const auto bits = Bits(trial);
  LoadPath(directory.Path("a.c3d"));
  EXPECT_EQ(Bits(trial), bits);
  EXPECT_EQ(Labels()[1], "µ-meter of thirty bytes");
  EXPECT_EQ(trial.HeaderLines[2], "Event 72.250 s RIC Right");
}

TEST_F(OtherPrograms, C3dCountsMoreFramesThanAWordHolds) {
  // Frames that a word holds, where the samples can be parted so; else the most that it counts.
  for (const auto& [samples, frames] :
       {std::pair(65535, 65535), {65536, 32768}, {65537, 65535}, {196611, 65535}}) {
    SetTrial(1, samples, 100.0);
    const std::string bytes = Saved("save.c3d", "a.c3d");
    EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 8), frames) << samples;
    EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 4), NumberAt<std::uint16_t>(bytes, 18));
    const std::uint32_t end = NumberAt<std::uint32_t>(bytes, ParameterAt(bytes, "TRIAL", "ACTUAL_END_FIELD"));
    EXPECT_EQ(end * NumberAt<std::uint16_t>(bytes, 18), static_cast<std::uint32_t>(samples));
    EXPECT_EQ(NumberAt<float>(bytes, 20) * NumberAt<std::uint16_t>(bytes, 18), 100.0F);
    const float last = trial.Data(samples, 1);
    LoadPath(directory.Path("a.c3d"));
    ASSERT_EQ(trial.NData, samples);
    EXPECT_EQ(trial.Data(samples, 1), last);
    EXPECT_EQ(trial.Rate, 100.0);
  }
  SetTrial(1, 65537, 1259.259);  // a prime, and a rate that 32 bits do not hold
  for (std::int32_t i = 1; i <= trial.NData; ++i) {
    trial.Data(i, 0) += 0.5F;
  }
  const std::string bytes = Saved("save.c3d", "a.c3d");
  EXPECT_EQ(NumberAt<float>(bytes, ParameterAt(bytes, "POINT", "LONG_FRAMES")), 65537.0F);
  ASSERT_EQ(trial.Notices.size(), 2U);
  EXPECT_EQ(trial.Notices[0], "The times of the C3D file start at 0 s, those of the trial at 0.5 s.");
  EXPECT_TRUE(trial.Notices[1].starts_with("The rate in the C3D file is 1259.2590")) << trial.Notices[1];
}

TEST_F(OtherPrograms, FsvIsReadBackToTheBit) {
  for (const int channels : {1, 3}) {
    SetTrial(channels, 4, 250.5);
    trial.ChanLabel[1] = "left EMG";
    trial.ChanUnits[1] = "mV";
    trial.ChanUnits[channels - 1] = channels > 1 ? "\"" : "s";
    trial.Data(1, 1) = 5;
    trial.Data(2, channels) = 1e-30F;
    const Frames rows = Rows();
    const std::string text = Saved("save.fsv", "a.fsv");
    EXPECT_TRUE(text.starts_with("DESCRIPTION\t9 steps\r\nNO_OF_SAMPLES\t4\r\nTOT_NO_OF_CHAN\t" +
                                 std::to_string(channels) + "\r\nFREQUENCY\t250.5\r\nTIME_STAMP\t"))
        << text;
    questions.formAnswers.clear();
    questions.inputAnswers = {};
    questions.formAnswers.emplace_back([](Form& form) {
      form.TakeFound();
      return std::string("OK");
    });
    LoadPath(directory.Path("a.fsv"));
    EXPECT_EQ(trial.Rate, 250.5) << "offered, and taken";
    EXPECT_EQ(Rows(), rows);
    EXPECT_EQ(Labels()[0], "left EMG");
    EXPECT_EQ(UnitsOfChannels()[0], "mV");
    EXPECT_EQ(UnitsOfChannels()[channels > 1 ? 1 : 0], channels > 1 ? "\"" : "mV") << "inches";
  }
  // The time stamp is that of the file that was read, so that a save done again has the same bytes.
  timespec times[2] = {{.tv_sec = 86400, .tv_nsec = 0}, {.tv_sec = 86400, .tv_nsec = 0}};
  utimensat(AT_FDCWD, directory.Path("a.fsv").c_str(), times, 0);
  EXPECT_HAS(Saved("save.fsv", "b.fsv"), "TIME_STAMP\t1970-01-02\t00:00:00\r\n");
}

TEST_F(OtherPrograms, WorksheetsHoldTheTrialOrSayWhatFits) {
  SetTrial(2, 3, 10.0);
  trial.ChanLabel[1] = "Grüße";
  trial.ChanUnits[2] = "N";
  for (const auto& [name, version] : {std::pair("a.wk1", 0x0406), std::pair("a.WKS", 0x0404)}) {
    const std::string bytes = Saved("save.wks", name);
    EXPECT_EQ(NumberAt<std::uint16_t>(bytes, 4), version);
    std::map<std::pair<int, int>, std::string> labels;  // by row and column
    std::map<std::pair<int, int>, double> numbers;
    int type = 0;
    for (std::size_t at = 0; at + 4 <= bytes.size();) {
      type = NumberAt<std::uint16_t>(bytes, at);
      const std::size_t body = at + 4;
      const std::pair cell(NumberAt<std::uint16_t>(bytes, body + 3),
                           NumberAt<std::uint16_t>(bytes, body + 1));
      if (type == 14) {
        numbers[cell] = NumberAt<double>(bytes, body + 5);
      } else if (type == 15) {
        labels[cell] = bytes.c_str() + body + 5;
      }
      at = body + NumberAt<std::uint16_t>(bytes, at + 2);
    }
    EXPECT_EQ(type, 1) << "the last record ends the file";
    EXPECT_EQ((labels[{0, 0}]), "'9 steps");
    EXPECT_EQ((labels[{1, 1}]), "'Gr??e");
    EXPECT_EQ((labels[{2, 2}]), "'N");
    EXPECT_EQ((labels[{2, 0}]), "'s");
    EXPECT_EQ(numbers.size(), 9U);
    for (int i = 1; i <= 3; ++i) {
      for (int c = 0; c <= 2; ++c) {
        EXPECT_EQ((numbers[{i + 2, c}]), static_cast<double>(trial.Data(i, c)));
      }
    }
  }
  SetTrial(1, 2046, 10.0);
  questions.boxes.clear();
  SaveAs("b.wks", "save.wks");
  EXPECT_NE(LastBox().find("takes 2,045 samples; the trial has 2,046."), std::string::npos) << LastBox();
  EXPECT_FALSE(std::filesystem::exists(directory.Path("b.wks")));
  SetTrial(1, 8190, 10.0);
  const std::size_t asked = questions.files.size();
  Run("save.wks");
  EXPECT_EQ(questions.files.size(), asked) << "refused before a name is asked for";
  EXPECT_NE(LastBox().find("takes 8,189 samples"), std::string::npos) << LastBox();
}

TEST_F(OtherPrograms, BioWareFilesAreWrittenBack) {
  for (const bool padded : {true, false}) {
    const std::size_t dataAt = padded ? 806 : 805;
    const std::string plain =
        BioWare2FileBytes{.plates = 1, .auxiliaries = 2, .frames = 4, .seconds = 0.04F, .padded = padded}
            .Bytes();
    const std::string source = ByteBuilder()
                                   .AddBytes(plain)
                                   .Put(padded ? 369 : 368, std::uint8_t{1})
                                   .Put(padded ? 386 : 385, -4.0F)
                                   .Bytes();
    Load("source.dat", source);  // the third device by 2, the fourth by -4
    ASSERT_EQ(trial.NChan, 10) << LastBox();
    trial.Rate = 250.0;
    trial.RebuildTimeColumn();
    for (int c = 1; c <= 10; ++c) {
      trial.Data(1, c) = static_cast<float>(c * 10.0 / 2048);
      trial.Data(2, c) = 100.0F;
      trial.Data(3, c) = static_cast<float>(-2.5 * 10.0 / 2048);  // half-way, to the even count
    }
    const std::string bytes = Saved("save.dat", "a.dat");
    ASSERT_EQ(bytes.size(), dataAt + 4 * 10 * 2U) << LastBox();
    EXPECT_EQ(bytes.substr(0, 272), source.substr(0, 272));
    EXPECT_EQ(bytes.substr(280, dataAt - 280), source.substr(280, dataAt - 280));
    EXPECT_EQ(NumberAt<float>(bytes, 272), 250.0F);
    EXPECT_EQ(NumberAt<float>(bytes, 276), 0.016F);
    const auto count = [&](std::size_t i, std::size_t c) {
      return NumberAt<std::int16_t>(bytes, dataAt + 2 * (10 * (i - 1) + c - 1));
    };
    EXPECT_EQ(count(1, 1), 1);
    EXPECT_EQ(count(1, 8), 8);
    EXPECT_EQ(count(1, 9), 4) << "9/2 counts, to the even one";
    EXPECT_EQ(count(1, 10), -2) << "10/-4 counts";
    EXPECT_EQ(count(2, 1), 2047);
    EXPECT_EQ(count(2, 10), -2048);
    EXPECT_EQ(count(3, 1), -2);
    EXPECT_EQ(trial.Notices.back(),
              "10 values lay outside the 12 bits of a BioWare 2 file and were clipped in it.");
  }
  RunTyping("channel.move", {{1, "10.5"}});
  Run("save.dat");
  EXPECT_NE(LastBox().find("not in the places that they have in that file"), std::string::npos);
  trial.CutChannels(9);
  Run("save.dat");
  EXPECT_NE(LastBox().find("That has 10 channels, the trial 9."), std::string::npos) << LastBox();
  std::filesystem::remove(directory.Path("source.dat"));
  Run("save.dat");
  EXPECT_NE(LastBox().find("No such file or directory"), std::string::npos) << LastBox();
}

TEST_F(OtherPrograms, AnotherProgramReadsTheWorksheet) {
  if (std::system("ssconvert --version >/dev/null 2>&1") != 0) {  // NOLINT: asks for the program
    GTEST_SKIP() << "needs ssconvert";
  }
  SetTrial(2, 5, 10.0);
  Saved("save.wks", "a.wk1");
  const std::string command =
      "ssconvert '" + directory.Path("a.wk1") + "' '" + directory.Path("a.csv") + "' >/dev/null 2>&1";
  ASSERT_EQ(std::system(command.c_str()), 0);  // NOLINT
  const std::string text = ReadFile(directory.Path("a.csv"));
  EXPECT_TRUE(text.starts_with("\"9 steps\"") || text.starts_with("9 steps")) << text;
  std::vector<float> last;
  const std::string row = text.substr(text.rfind('\n', text.size() - 2) + 1);
  for (const char* at = row.c_str(); *at != '\0' && *at != '\n';) {
    char* end = nullptr;
    last.push_back(std::strtof(at, &end));
    at = *end == ',' ? end + 1 : end;
  }
  EXPECT_EQ(last, (std::vector<float>{trial.Data(5, 0), trial.Data(5, 1), trial.Data(5, 2)}));
}

}  // namespace
}  // namespace velmora::test
