#include <cmath>
#include <limits>

#include "graph/crop.hpp"
#include "support/command_test.hpp"
#include "support/instrument_files/c3d_file.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

struct C3dTest : FileTest {
  void LoadC3d(const C3dFile& file) { Load("a.c3d", file.Bytes()); }
};

TEST_F(C3dTest, EveryProcessorWritesTheSameTrial) {
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big, ByteOrder::Vax}) {
    for (const bool floats : {false, true}) {
      C3dFile file = FullC3dFile();
      file.order = order;
      file.floats = floats;
      file.firstFrame = 11;
      AddUsualParameters(file);
      LoadC3d(file);
      ASSERT_EQ(trial.NData, 20) << LastBox();
      EXPECT_EQ(trial.FileTypeCode, 19);
      EXPECT_EQ(trial.Rate, 200.0);
      const double scale[] = {1, -2, 0.25, 1, 1, 1, 3};
      const double offset[] = {0, 100, -8, 0, 0, 0, 1};
      for (int c = 0; c < 7; ++c) {
        for (int i = 0; i < 20; ++i) {
          ASSERT_EQ(trial.Data(i + 1, c + 1),
                    static_cast<float>((1000 * c + i - offset[c]) * scale[c] * 0.5));
        }
      }
      EXPECT_EQ(trial.Data(20, 0), 0.095F);
      EXPECT_EQ(Labels(), (Texts{"Fx", "Fy", "Fz", "Mx", "My", "Mz", "EMG"}));
      EXPECT_EQ(trial.ChanUnits[7], "\xC2\xB5V");
      EXPECT_EQ(trial.ChanGain[2], -1.0);
      EXPECT_EQ(trial.ChanOffset[3], 8.0);
      // Frame 11 of 50 Hz is 0.2 s behind frame 1, from which events count.
      EXPECT_EQ(trial.HeaderLines[1], "The recording starts at 0.200 s, frame 11");
      EXPECT_EQ(trial.HeaderLines[3], "Event -0.180 s Foot Strike Right");
      EXPECT_EQ(trial.HeaderLines[4], "Event 60.300 s Foot Off Left");
      EXPECT_EQ(trial.HeaderLines[5], "Force plate 1: type 2, 400 x 600 mm, channels 1 2 3 4 5 6");
      EXPECT_EQ(trial.NPlates, 1);
      EXPECT_EQ(workbench.plates.PlateTable[0].Length, 600);
      EXPECT_EQ(workbench.plates.PlateTable[0].az0, 40);
      // Moments in N.m about a point below the middle, -(1, -2) mm from the origin since z was turned: Mx - y
      // Fz.
      EXPECT_DOUBLE_EQ(trial.FilePlates.at(0).loads->at(6 * 3 + 2), -0.002);
      EXPECT_DOUBLE_EQ(trial.FilePlates.at(0).loads->at(6 * 3 + 3), 0.001);
      EXPECT_TRUE(trial.Notices.empty()) << trial.Notices.front();
    }
  }
}

TEST_F(C3dTest, ScalesAndOffsetsAreReadAsTheyWereMeant) {
  const auto second = [this](const std::function<void(C3dFile&)>& change) {
    C3dFile file;
    file.AddGroup(1, "ANALOG");
    change(file);
    LoadC3d(file);
    return trial.NData > 0 ? trial.Data(1, 2) : -1.0F;  // a raw 1000
  };
  EXPECT_EQ(second([](C3dFile&) {}), 1000.0F) << "no scale, no offset";
  EXPECT_EQ(second([](C3dFile& f) { f.AddReals(1, "SCALE", {1}, {9}); }), 1000.0F) << "a list that is short";
  EXPECT_EQ(second([](C3dFile& f) { f.AddReals(1, "GEN_SCALE", {}, {0}); }), 1000.0F);
  EXPECT_TRUE(Tells("general scale"));
  EXPECT_EQ(second([](C3dFile& f) { f.AddReals(1, "GEN_SCALE", {}, {-1}); }), -1000.0F);
  EXPECT_EQ(second([](C3dFile& f) { f.AddReals(1, "OFFSETS", {3}, {1, 2.5F, 3}); }), 997.5F);
  EXPECT_EQ(second([](C3dFile& f) { f.AddWords(1, "OFFSET", {3}, {0, -32768, 0}); }), 1000.0F - 32768.0F);
  EXPECT_EQ(second([](C3dFile& f) {
              f.AddWords(1, "OFFSET", {3}, {0, -32768, 0});
              f.AddTexts(1, "FORMAT", 8, {"UNSIGNED"});
            }),
            1000.0F - 32768.0F);
  EXPECT_EQ(second([](C3dFile& f) {
              f.AddWords(1, "OFFSET", {3}, {0, -10, 0});
              f.AddTexts(1, "FORMAT", 8, {"UNSIGNED"});
              f.floats = true;
            }),
            1000.0F - 65526.0F);
  for (const float wrong : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
    second([wrong](C3dFile& f) { f.AddReals(1, "SCALE", {3}, {1, wrong, 1}); });
    EXPECT_NE(LastBox().find("the scale of channel 2 is no number"), std::string::npos) << LastBox();
    EXPECT_EQ(trial.NData, 0);
  }
}

TEST_F(C3dTest, FramesAreCountedWhereverTheCountStands) {
  C3dFile file;
  file.AddGroup(1, "POINT");
  file.AddWords(7, "ACTUAL_START_FIELD", {2}, {3, 0});  // of a group without an entry
  file.AddWords(7, "ACTUAL_END_FIELD", {2}, {6, 0});
  LoadC3d(file);
  EXPECT_EQ(trial.NData, 16);
  file.parameters.clear();
  file.AddGroup(1, "POINT");
  file.AddReals(1, "LONG_FRAMES", {}, {70000.0F});
  file.points = 0;
  file.frames = 70000;
  file.firstFrame = -4464;  // so that the last one is the largest word, as the header cannot say more
  file.samplesPerFrame = 1;
  std::string bytes = file.Bytes();
  bytes[6] = 1;
  bytes[7] = 0;
  Load("a.c3d", bytes);
  EXPECT_EQ(trial.NData, 70000);
  EXPECT_EQ(trial.Rate, 50.0) << "the frame rate times the samples in a frame";
}

TEST_F(C3dTest, TheFilesPointersAreFollowed) {
  C3dFile file;
  file.parameterBlock = 7;
  file.dataBlock = 20;
  AddUsualParameters(file);
  LoadC3d(file);
  EXPECT_EQ(trial.NData, 20);
  EXPECT_TRUE(Tells("The header counts 3 analog channels, the parameters 7"));
  Load("a.c3d", std::string(1000, '\0') + C3dFile{}.Bytes());
  EXPECT_EQ(trial.NData, 20) << "zeros before the header";
  // A maker that counts channels where the count of all analog values belongs.
  C3dFile counting;
  counting.AddGroup(1, "ANALOG");
  counting.AddWords(1, "USED", {}, {3});
  std::string bytes = counting.Bytes();
  bytes[4] = 3;
  Load("a.c3d", bytes);
  EXPECT_EQ(trial.NChan, 3);
  EXPECT_EQ(trial.Data(20, 3), 2019.0F);
  // Labels and units that go on in a second list; units of which there are too few.
  C3dFile wide;
  wide.channels = 4;
  wide.AddGroup(1, "ANALOG");
  wide.AddTexts(1, "LABELS", 2, {"a", "b", ""});
  wide.AddTexts(1, "LABELS2", 2, {"d"});
  wide.AddTexts(1, "UNITS", 2, {"V"});
  LoadC3d(wide);
  EXPECT_EQ(Labels(), (Texts{"a", "b", "Chan. 03", "d"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"V", "", "", ""}));
}

TEST_F(C3dTest, EventsOfTheHeaderCountWhenThereAreNoOthers) {
  C3dFile file;
  ByteBuilder bytes;
  bytes.AddBytes(file.Bytes());
  bytes.Put(298, std::uint16_t{12345}).Put(300, std::uint16_t{2}).Put(304, 5.4F).Put(308, 2.72F);
  bytes.PutText(396, "RHS RIC ");
  Load("a.c3d", bytes.Bytes());
  EXPECT_EQ(trial.HeaderLines[2], "Event 2.720 s RIC");
  EXPECT_EQ(trial.HeaderLines[3], "Event 5.400 s RHS");
}

TEST_F(C3dTest, WithoutAnalogChannelsThePointsAreRead) {
  for (const bool floats : {false, true}) {
    C3dFile file;
    file.channels = 0;
    file.floats = floats;
    LoadC3d(file);
    ASSERT_EQ(trial.NData, 5) << LastBox();
    EXPECT_EQ(trial.NChan, 6);
    EXPECT_EQ(trial.Rate, 50.0);
    EXPECT_EQ(trial.ChanLabel[5], "Point 2 Y");
    const float scale = floats ? 1.0F : 0.5F;
    EXPECT_EQ(Channel(trial, 2), (Samples{10 * scale, 0, 12 * scale, 0, 14 * scale}));
    EXPECT_EQ(Channel(trial, 6), (Samples{0, 121 * scale, 0, 123 * scale, 0}));
    EXPECT_TRUE(Tells("15 coordinates are of points that were not seen"));
  }
}

TEST_F(C3dTest, PlatesAreTakenOrListed) {
  C3dFile file;
  file.channels = 16;
  file.AddGroup(1, "POINT");
  file.AddTexts(1, "UNITS", 1, {"m"});
  file.AddGroup(2, "FORCE_PLATFORM");
  file.AddWords(2, "USED", {}, {4});
  file.AddWords(2, "TYPE", {4}, {3, 1, 4, 2});
  file.AddWords(2, "CHANNEL", {8, 4}, {9, 10, 11, 12, 13, 14, 15, 16, 1, 2, 3, 4,  5,  6,  0, 0,
                                       2, 3,  4,  5,  6,  7,  0,  0,  1, 2, 3, 14, 15, 17, 0, 0});
  file.AddReals(2, "ORIGIN", {3, 4}, {0.12F, 0.2F, -0.04F, 0, 0, 0, 0, 0, -0.05F, 0, 0, 0});
  std::vector<float> matrices(36 * 3);
  for (std::size_t k = 0; k < 36; ++k) {
    matrices[72 + k] = static_cast<float>(k);
  }
  file.AddReals(2, "CAL_MATRIX", {6, 6, 3}, matrices);
  LoadC3d(file);
  EXPECT_EQ(trial.NPlates, 2);
  EXPECT_TRUE(Tells("not in the plate table: 2, 4"));
  EXPECT_FLOAT_EQ(static_cast<float>(workbench.plates.PlateTable[0].a), 120.0F);
  EXPECT_FLOAT_EQ(static_cast<float>(workbench.plates.PlateTable[0].az0), -40.0F);
  EXPECT_EQ(trial.FilePlates.at(0).base, 8);
  EXPECT_EQ(trial.FilePlates.at(1).base, 1);
  // Output i of input j is at i + 6 j in the file; the unit of length makes moments N.m.
  EXPECT_EQ(trial.FilePlates.at(1).loads->at(6 * 2 + 4), 26.0);
  EXPECT_EQ(trial.FilePlates.at(1).loads->at(6 * 5 + 3), 23.0);
  EXPECT_NE(trial.HeaderLines[5].find("which the file has not got"), std::string::npos)
      << trial.HeaderLines[5];

  // A C3D file takes the plates along; another tells what it lacks.
  const std::vector<FilePlate> before = trial.FilePlates;
  SaveAs("again.c3d", "save.c3d");
  EXPECT_FALSE(Tells("calibration matrices"));
  SaveAs("again.vmb");
  EXPECT_TRUE(Tells("The saved file lacks the calibration matrices"));
  LoadPath(directory.Path("again.c3d"));
  ASSERT_EQ(trial.FilePlates.size(), 2U);
  for (const std::size_t k : {0U, 1U}) {
    EXPECT_EQ(trial.FilePlates[k].base, before[k].base);
    EXPECT_EQ(trial.FilePlates[k].channels, before[k].channels);
    EXPECT_EQ(trial.FilePlates[k].loads, before[k].loads);
    EXPECT_EQ(trial.FilePlates[k].record->corners, before[k].record->corners);
    EXPECT_EQ(trial.FilePlates[k].record->origin, before[k].record->origin);
  }
}

// The strike is at 0.02 s, sample 5 of 20 at 200 Hz; the other event is behind the end.
TEST_F(C3dTest, EventsGoWithTheirSamples) {
  C3dFile file = FullC3dFile();
  AddUsualParameters(file);
  const auto eventsIn = [this] {
    Texts events;
    std::copy_if(trial.HeaderLines.begin(), trial.HeaderLines.end(), std::back_inserter(events),
                 [](const std::string& line) { return line.starts_with("Event"); });
    return events;
  };
  const auto eventsAfter = [&](const std::function<void()>& crop) {
    LoadC3d(file);
    crop();
    SaveAs("again.c3d", "save.c3d");
    LoadPath(directory.Path("again.c3d"));
    return eventsIn();
  };
  const std::string strike = " s Foot Strike Right";
  EXPECT_EQ(eventsAfter([] {}), (Texts{"Event 0.020" + strike, "Event 60.500 s Foot Off Left"}));
  for (const CropTimes times : {CropTimes::Move, CropTimes::Reset}) {
    EXPECT_EQ(eventsAfter([&] { CropSamples(trial, 3, 12, times); }), (Texts{"Event 0.010" + strike}));
    EXPECT_EQ(eventsAfter([&] { CutSamples(trial, 2, 2, times); }), (Texts{"Event 0.015" + strike}));
    EXPECT_EQ(eventsAfter([&] { CutSamples(trial, 4, 7, times); }), Texts());
  }
  EXPECT_EQ(eventsAfter([&] { Run("time.reverse"); }).back(), "Event 0.075" + strike) << "of 0.095 s";
  questions.inputAnswers = {"1000"};
  EXPECT_EQ(eventsAfter([&] { Run("edit.sampling-rate"); }).front(), "Event 0.004" + strike);
  LoadC3d(file);
  for (std::int64_t i = 1; i <= 20; ++i) {
    trial.Data(i, 0) += 500;  // a recording that starts at 500 s
  }
  trial.HeaderLines[1] = "Event 500.020" + strike;
  CropSamples(trial, 3, 12, CropTimes::Reset);
  EXPECT_EQ(eventsIn(), (Texts{"Event 500.010" + strike}));
}

TEST_F(C3dTest, WhatIsDamagedIsReadAsFarAsItGoesOrRefused) {
  const std::string good = [] {
    C3dFile file = FullC3dFile();
    AddUsualParameters(file);
    return file.Bytes();
  }();
  Load("a.c3d", good.substr(0, good.size() - 100));
  EXPECT_EQ(LastBox(),
            "Fewer Samples Than Promised|The file promised 20 samples per channel; 12 were found.");
  EXPECT_EQ(trial.NData, 12);
  std::string past = good;
  past.replace(512 + 4 + 2 + 5, 2, "\xFF\x7F");  // the first entry points outside: the header alone counts
  Load("a.c3d", past);
  EXPECT_EQ(trial.NData, 20);
  EXPECT_TRUE(Tells("damaged"));
  std::string toItself = good;
  toItself.replace(512 + 4 + 2 + 5, 2, std::string("\1\0", 2));
  Load("a.c3d", toItself);
  EXPECT_EQ(trial.NData, 20);
  const auto with = [&good](std::size_t at, std::uint16_t word) {
    return ByteBuilder().AddBytes(good).Put(at, word).Bytes();
  };
  for (const auto& [bytes, why] : std::vector<std::pair<std::string, std::string>>{
           {"", "File is empty."},
           {"\2", "this is no C3D file"},
           {std::string(5000, '\0'), "this is no C3D file"},
           {good.substr(0, 511), "the file ends inside its header"},
           {good.substr(0, 512), "the file holds no samples"},
           {with(16, 0xFFFF), "the file holds no samples"},
           {with(16, 0), "the header does not say where the data start"},
           {with(8, 0), "the header counts no frames"},
           {with(4, 0xFFFF), "the file holds no samples"}}) {
    questions.formAnswers.clear();
    AnswerForm({});
    ExpectRefused("a.c3d", bytes, why);
    EXPECT_FALSE(workbench.report.failures.empty());
  }
  Load("\xC3\xA4 \xE6\xAD\xA9.C3D", good);
  EXPECT_EQ(trial.NData, 20) << "blanks and letters of other languages in the name";
}

/// What other programs read of public recordings: the first three values, the last, and the sum of all.
/// ezc3d, or where it fails a script of a few lines.
struct Published {
  const char* file;
  int channels;
  int samples;
  double first[3];
  double last;
  double sum;
};

TEST_F(C3dTest, PublicRecordingsHoldWhatOthersReadOfThem) {
  if (!Recording("c3d")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  constexpr double any = 1e30;
  for (const Published& p : std::vector<Published>{
           {"Eb015pi.c3d", 16, 1800, {-26.66, 0, -20.832}, -24, -2553555.9},
           {"Eb015vi.c3d", 16, 1800, {-26.66, 0, -20.832}, -24, -2553555.9},
           {"Eb015sr.c3d", 16, 1800, {-26.66, 0, -20.832}, -24, -2553555.9},
           {"TESTAPI.c3d", 16, 1800, {-26.66, 0, -20.832}, -24, -2553555.9},
           {"TESTBPI.c3d", 16, 1800, {-26.66, 0, -20.832}, -24, -2553555.9},
           {"s02_pc_int.c3d", 16, 356, {-7.74, 9.282, 7.44}, -11.5, -11131051},
           {"s02_pc_real.c3d", 16, 356, {-7.74, 9.282, 7.44}, -11.5, -11131051},
           {"s02_Dec_real.c3d", 16, 356, {-7.74, 9.282, 7.44}, -11.5, -11131051},
           {"s02_sgi_int.c3d", 16, 356, {-7.74, 9.282, 7.44}, -11.5, -11131051},
           {"TYPE-2.C3D", 6, 3980, {any, any, any}, any, 4942284.3},
           {"TYPE-4.C3D", 6, 3980, {any, any, any}, any, -23841.442},
           {"type-2a.c3d", 20, 5760, {-1.4936, 3.1977, 6.4224}, any, 39887544},
           {"btk_Res16bits.c3d", 81, 1000, {.01693726, .0567627, .01846313}, any, -2318.199},
           {"parameterOverflow.c3d", 36, 101, {1.443725, 3.164221, -2.994552}, -32768, 1.2874545e8},
           {"walking2.c3d", 12, 9992, {.88972, -2.27511, 14.20643}, 741.5098, 1.6456871e8},
           {"s28_type1.C3D", 6, 296, {any, any, any}, any, -19752.514},
           {"s28_dynamic.C3D", 6, 296, {any, any, any}, any, -19752.514},
           {"MotionMonitorC3D.c3d", 16, 5880, {-.005371094, .004882813, -.007324219}, -10, -410014.98},
           {"561xxa01_anonym.C3D", 18, 361, {any, any, any}, any, 330297.49},
           {"many_analogs.c3d", 922, 710, {-.004560553, -.003369708, -.001719113}, any, 37729432},
           {"Dance.c3d", 8, 499, {.36823633, .98153633, .30607012}, .36356699, 2004.4953},
           {"shd01.c3d", 6, 948, {-11.349525, -9.346735, 697.371540}, -6702.6599, -23199350},
           {"Analysis.c3d", 16, 101, {0, 0, 0}, 0, 0}}) {
    SCOPED_TRACE(p.file);
    const auto near = [](double value, double expected, double relative) {
      EXPECT_NEAR(value, expected, expected == 1e30 ? 1e31 : std::abs(expected) * relative + 1e-12);
    };
    double sum = 0;
    for (int from = 1; from <= p.channels; from += kMaxChannels) {
      questions.formAnswers.clear();
      AnswerForm({{"ChannelsToRead", std::to_string(from) + "-" +
                                         std::to_string(std::min(from + kMaxChannels - 1, p.channels))}});
      LoadPath(*Recording(std::string("c3d/") + p.file));
      ASSERT_EQ(trial.NData, p.samples) << LastBox();
      for (int c = 1; c <= trial.NChan; ++c) {
        near(c <= 3 && from == 1 ? trial.Data(1, c) : 1e30, c <= 3 && from == 1 ? p.first[c - 1] : 1e30,
             1e-6);
        for (int i = 1; i <= trial.NData; ++i) {
          sum += trial.Data(i, c);
        }
      }
    }
    near(trial.Data(trial.NData, trial.NChan), p.last, 1e-6);
    near(sum, p.sum, 2e-7);
  }
}

}  // namespace
}  // namespace velmora::test
