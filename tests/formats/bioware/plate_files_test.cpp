#include "support/instrument_files/plate_files.hpp"

#include "support/command_test.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

using PlateFilesTest = FileTest;

TEST_F(PlateFilesTest, BioWare2IsReadInVoltsAndReducedByItsHeader) {
  for (const bool padded : {true, false}) {
    BioWare2FileBytes file;
    file.padded = padded;
    Load(padded ? "a.dat" : "a.d20", file.Bytes());
    ASSERT_EQ(trial.NData, 5) << LastBox();
    EXPECT_EQ(trial.FileTypeCode, 6);
    EXPECT_EQ(trial.TrialTitle, "3 hops on the left");
    EXPECT_EQ(trial.ChanLabel[10], "Fx34#2");
    EXPECT_EQ(trial.ChanLabel[17], "Aux 2");
    EXPECT_EQ(trial.Data(3, 9), static_cast<float>(82 * 10.0 / 2048));
    EXPECT_EQ(trial.Data(3, 17), static_cast<float>(162 * (10.0 / 2048 * 2)));
    EXPECT_EQ(trial.NPlates, 2);
    const ForcePlate& plate = workbench.plates.PlateTable[1];
    EXPECT_EQ(plate.a, 120);
    EXPECT_EQ(plate.Length, 600);
    EXPECT_EQ(plate.az0, -50);
    EXPECT_EQ(plate.ZRange, 10000);
    EXPECT_EQ(plate.XSens, static_cast<double>(-7.9F));
    EXPECT_TRUE(trial.Notices.empty());
  }
  const double volts = 10.0 / 2048;
  questions.boxAnswers = {Button::Yes, Button::No, Button::No};
  questions.inputAnswers = {"25"};
  Run("plates.reduce");
  ASSERT_TRUE(trial.ForcesReduced) << LastBox();
  // Sample 3 of plate 1: counts 2, 12, ..., 72.
  EXPECT_NEAR(trial.Data(3, 1), 14 * volts * 5000 / 7.8, 1e-3);
  EXPECT_NEAR(trial.Data(3, 3), (42 + 52 + 62 + 72) * volts * 10000 / 3.8, 1e-2);
  questions.boxAnswers = {Button::Yes};
  AnswerForm({});
  Run("plates.combine");
  EXPECT_TRUE(trial.PlatesCombined);
  // Both plates: 228 and 548 counts of Fz.
  EXPECT_NEAR(trial.Data(3, 3), volts * 10000 * (228 / 3.8 + 548 / 3.9), 0.1);
}

// Sample 3 of the plates' vertical forces is 2 + 10 c summed over their last four channels.
TEST_F(PlateFilesTest, PlatesAreReducedWhereTheirChannelsWentAndOnlyOnce) {
  const double volts = 10.0 / 2048;
  const auto reduce = [this] {
    questions.boxAnswers = {Button::Yes, Button::No, Button::No};
    questions.inputAnswers = {"25"};
    Run("plates.reduce");
  };
  const auto expectForces = [&](int base) {
    EXPECT_NEAR(trial.Data(3, base + 3), 228 * volts * 10000 / 3.8, 1e-2);
    EXPECT_NEAR(trial.Data(3, base + 11), 548 * volts * 10000 / 3.9, 1e-2);
    EXPECT_EQ(trial.ChanLabel[base + 16], "CF#2");
  };
  const std::string file = BioWare2FileBytes{}.Bytes();
  // The auxiliary channel goes before them.
  Load("a.dat", file);
  RunTyping("channel.move", {{17, "0.5"}});
  workbench.plates.PlateTable[0].PlateType = 5;  // no type makes six channels of the file's eight
  reduce();
  expectForces(1);
  EXPECT_EQ(trial.Data(3, 1), static_cast<float>(162 * (10.0 / 2048 * 2)));
  questions.boxAnswers = {Button::Yes};
  AnswerForm({});
  Run("plates.combine");
  EXPECT_NEAR(trial.Data(3, 4), volts * 10000 * (228 / 3.8 + 548 / 3.9), 0.1);
  EXPECT_EQ(trial.ChanLabel[1], "Aux 2");
  // What is reduced is nothing to reduce again, also when nobody knows where it went.
  questions.boxAnswers = {Button::Yes};
  RunPicking("channel.erase", {1});
  const float Fz = trial.Data(3, 3);
  reduce();
  EXPECT_EQ(trial.Data(3, 3), Fz);
  // A channel that is missing.
  Load("a.dat", file);
  questions.boxAnswers = {Button::Yes};
  RunPicking("channel.erase", {3});
  reduce();
  EXPECT_FALSE(trial.ForcesReduced);
  EXPECT_EQ(trial.Data(3, 1), static_cast<float>(2 * volts));
  // Channels set aside come first, with their plates when the next file has none.
  SetChannels(trial, {Samples(5, 7.0F), Samples(5, 8.0F)});
  AnswerForm({}, "Save");
  Run("file.merge");
  AnswerForm({}, "Merge");
  Load("a.dat", file);
  ASSERT_EQ(trial.NChan, 19);
  EXPECT_EQ(workbench.plates.FirstChannel, 2);
  reduce();
  expectForces(2);
  EXPECT_EQ(Channel(trial, 2), Samples(5, 8.0F));
  Load("a.bsf", BsfFileBytes{}.Bytes());
  AnswerForm({}, "Save");
  Run("file.merge");
  WriteTrialFile(directory.Path("next.vmb"), [](Trial& made) { SetChannels(made, {Samples(4, 1.0F)}, 500); });
  AnswerForm({}, "Merge");
  LoadPath(directory.Path("next.vmb"));
  EXPECT_EQ(trial.NChan, 7);
  EXPECT_EQ(trial.NPlates, 1);
  EXPECT_EQ(trial.FilePlates.size(), 1U);
}

TEST_F(PlateFilesTest, CombinedAndReducedTooEarlyOrTwiceIsTold) {
  Load("a.dat", BioWare2FileBytes{}.Bytes());
  questions.boxAnswers = {Button::Yes};
  AnswerForm({});
  Run("plates.combine");
  EXPECT_TRUE(Tells("combined before their forces were reduced"));
  questions.boxAnswers = {Button::Yes, Button::No, Button::No};
  questions.inputAnswers = {"25"};
  Run("plates.reduce");
  EXPECT_TRUE(Tells("The channels of plate 1 had the labels of reduced forces"));
  EXPECT_FALSE(Tells("The channels of plate 2 had"));
}

TEST_F(PlateFilesTest, BioWare2ThatContradictsItselfIsRefused) {
  const std::string good = BioWare2FileBytes{}.Bytes();
  BioWare2FileBytes shorter;
  shorter.seconds = 10.0F;
  Load("a.dat", shorter.Bytes());
  EXPECT_EQ(LastBox(),
            "Fewer Samples Than Promised|The file promised 1,000 samples per channel; 5 were found.");
  const auto with = [&good](std::size_t at, auto value) {
    return ByteBuilder().AddBytes(good).Put(at, value).Bytes();
  };
  const std::string why = "contradict each other";
  ExpectRefused("a.dat", good.substr(0, 500), why);
  ExpectRefused("a.dat", good.substr(0, 806), why);
  ExpectRefused("a.dat", good + "xxx", why);
  ExpectRefused("a.dat", with(280, std::int16_t{0}), why);
  ExpectRefused("a.dat", with(280, std::int16_t{-1}), why);
  ExpectRefused("a.dat", with(282, std::int16_t{3}), why);
  ExpectRefused("a.dat", with(272, std::uint32_t{0x7FC00000}), why);
  ExpectRefused("a.dat", with(324, std::uint32_t{0x7F800000}), "what is no number");
}

TEST_F(PlateFilesTest, LaterBioWareIsReadOnlyWhenEverythingAgrees) {
  Load("a.dat", BioWareArchiveBytes(2, 6, 6));
  ASSERT_EQ(trial.NData, 6) << LastBox();
  EXPECT_EQ(trial.FileTypeCode, 302);
  EXPECT_EQ(trial.NChan, 16);
  EXPECT_EQ(trial.Data(4, 12), 113.0F);
  EXPECT_EQ(trial.NPlates, 2);
  EXPECT_EQ(workbench.plates.PlateTable[0].b, 275);
  const std::string why = "of a layout that is not known; export the trial as text in BioWare";
  ExpectRefused("a.dat", BioWareArchiveBytes(2, 6, 7), why);
  ExpectRefused("a.dat", BioWareArchiveBytes(1, 6, 6) + "x", why);
  const std::string good = BioWareArchiveBytes(1, 6, 6);
  ExpectRefused("a.dat", good.substr(0, good.size() - 1), why);
  ExpectRefused("a.dat", good.substr(0, 200), why);
  if (!Recording("vendor")) {
    GTEST_SKIP() << "needs VELMORA_RECORDINGS";
  }
  // As published with a toolkit's tests, their sign turned back.
  LoadPath(*Recording("vendor/Kistler_DLL1.dat"));
  ASSERT_EQ(trial.NData, 500);
  for (const auto& [i, c, value] : std::vector<std::tuple<int, int, float>>{{1, 1, .203036F},
                                                                            {3, 1, .203036F},
                                                                            {4, 1, .357869F},
                                                                            {497, 8, 68.238548F},
                                                                            {500, 8, 68.582993F}}) {
    EXPECT_NEAR(trial.Data(i, c), value, 1e-6 * 70);
  }
  AnswerForm({});
  questions.inputAnswers = {"5"};
  questions.boxAnswers = {Button::No};
  const float Fz = trial.Data(500, 5) + trial.Data(500, 6) + trial.Data(500, 7) + trial.Data(500, 8);
  Run("plates.reduce");
  EXPECT_NEAR(trial.Data(500, 3), Fz, 1e-4);
  LoadPath(*Recording("kistler_dat/Truncated.dat"));
  EXPECT_NE(LastBox().find(why), std::string::npos) << LastBox();
}

TEST_F(PlateFilesTest, AmtiFilesAreNewtonsInBothVersions) {
  for (const int version : {100, 105}) {
    BsfFileBytes file;
    file.version = version;
    file.plates = 2;
    Load("a.bsf", file.Bytes());
    ASSERT_EQ(trial.NData, 4) << LastBox();
    EXPECT_EQ(trial.FileTypeCode, 301);
    EXPECT_EQ(trial.Rate, 500.0);
    const double scale = version == 105 ? 1.0 : 1e6 / (2.0 * 4000 * 10 * 204.8F);
    EXPECT_FLOAT_EQ(trial.Data(3, 2), static_cast<float>(12 * scale * 4.4482216152605));
    EXPECT_FLOAT_EQ(trial.Data(3, 12), static_cast<float>(112 * scale * 0.1129848290276167));
    EXPECT_EQ(trial.ChanLabel[8], "Fy#2");
    EXPECT_EQ(trial.ChanUnits[12], "N.m");
    EXPECT_EQ(trial.NPlates, 2);
    EXPECT_NEAR(workbench.plates.PlateTable[1].Length, 609.6, 1e-9);
  }
  BsfFileBytes file;
  file.version = 100;
  file.sensitivity = 0.0F;
  Load("a.bsf", file.Bytes());
  EXPECT_EQ(trial.Data(2, 3), 21.0F);
  EXPECT_TRUE(Tells("The sensitivity of channel 3 is 0"));
  const std::string good = BsfFileBytes{}.Bytes();
  const auto with = [&good](std::size_t at, std::int32_t value) {
    return ByteBuilder().AddBytes(good).Put(at, value).Bytes();
  };
  Load("a.bsf", good.substr(0, good.size() - 5));
  EXPECT_EQ(trial.NData, 3);
  ExpectRefused("a.bsf", "i", "the file ends inside its header");
  ExpectRefused("a.bsf", with(0, 101), "its version 101 is not known");
  ExpectRefused("a.bsf", with(4, -100), "the header of instrument 1 is damaged");
  ExpectRefused("a.bsf", with(4, INT32_MAX), "the file ends inside its header");
  ExpectRefused("a.bsf", with(8, 0), "counts no instruments");
  ExpectRefused("a.bsf", with(8, INT32_MAX), "counts no instruments");
  ExpectRefused("a.bsf", with(972 + 32, 65535), "the header of instrument 1 is damaged");
  ExpectRefused("a.bsf", with(972, 0), "the header of instrument 1 is damaged");
  if (Recording("bsf")) {
    // Means by a script of a few lines.
    LoadPath(*Recording("bsf/AMTIdata.bsf"));
    ASSERT_EQ(trial.NData, 1000);
    const double means[] = {25.3885046, -11.1393538, 211.847716, -2.36943383, 2.80951711, -.202897693};
    for (int c = 1; c <= 6; ++c) {
      EXPECT_NEAR(Sum(c) / 1000, means[c - 1], 1e-6);
    }
    EXPECT_NEAR(trial.Data(1, 3), 3.60485839, 1e-7);
  }
}

TEST_F(PlateFilesTest, DelsysFilesAreScaledByTheirGains) {
  for (const int version : {3, 4}) {
    Load("a.emg", DelsysEmgBytes(version));
    ASSERT_EQ(trial.NData, 4) << LastBox();
    EXPECT_EQ(trial.FileTypeCode, 60);
    EXPECT_EQ(trial.Rate, 2000.0);
    EXPECT_EQ(Labels(), (Texts{"EMG 1", "EMG 2"}));
    EXPECT_EQ(trial.ChanUnits[1], "mV");
    EXPECT_FLOAT_EQ(trial.Data(3, 2), static_cast<float>((-12 * 0.5 - 3) / 1000));
    EXPECT_EQ(Tells("EMG 2 has a rate of 148 Hz"), version == 4);
  }
  Load("a.emg", DelsysEmgBytes(3, 4, 0.0));
  EXPECT_EQ(trial.Data(3, 2), -12.0F);
  EXPECT_TRUE(Tells("The gain of EMG 1 says nothing"));
  Load("a.emg", DelsysEmgBytes(3, 1000));
  EXPECT_EQ(questions.boxes.back().title, "Fewer Samples Than Promised");
  ExpectRefused("a.emg", DelsysEmgBytes(2), "version 2 of the format is not known for certain");
  ExpectRefused("a.emg", DelsysEmgBytes(9), "its version 9 is not known");
  ExpectRefused("a.emg", DelsysEmgBytes(3, 0), "counts no samples");
  ExpectRefused("a.emg", DelsysEmgBytes(3, 4, 1, 1), "does not end where the data start");
  ExpectRefused("a.emg", DelsysEmgBytes(3).substr(0, 400), "the file ends inside its header");
  ExpectRefused("a.emg", "x", "the file ends inside its header");
  if (Recording("delsys_emg")) {
    LoadPath(*Recording("delsys_emg/Set1_Rep2_first5000_DERIVED.emg"));
    ASSERT_EQ(trial.NData, 5000);
    EXPECT_EQ(trial.Data(1, 1), 1.63269043e-5F);
    EXPECT_EQ(trial.Data(1, 3), 3.49426270e-5F);
    EXPECT_EQ(trial.Data(5000, 8), 4.7760009765625e-5F);
    double sum = 0;
    for (int c = 1; c <= 8; ++c) {
      sum += Sum(c);
    }
    EXPECT_NEAR(sum, 1.12107452, 1e-8);
  }
}

}  // namespace
}  // namespace velmora::test
