#include <gtest/gtest.h>

#include "forceplate/plate_database.hpp"
#include "support/command_test.hpp"
#include "support/signals.hpp"

namespace velmora::test {
namespace {

/// Answers the questions of a reduction.
class PlateCommandsTest : public CommandTest {
 protected:
  /// Channels of a force that rises from 0 to 100 N a sensor, ten samples.
  void SetRamp(int channels) {
    const Samples ramp = Sampled(10, [](int i) { return i * 10; });
    SetChannels(trial, std::vector<Samples>(static_cast<std::size_t>(channels), ramp));
  }
  /// A newton a unit.
  const Edits ranges = {{"XYRange", "1"}, {"ZRange", "1"}, {"XSens", "-1"}, {"YSens", "-1"}, {"ZSens", "-1"}};
  [[nodiscard]] Edits KistlerPlate(const std::string& plates = "1") const {
    Edits edits = {{"NumPlates", plates}, {"a", "12"}, {"b", "20"}, {"az0", "5"}};
    edits.insert(edits.end(), ranges.begin(), ranges.end());
    return edits;
  }
};

TEST_F(PlateCommandsTest, ADefinedKistlerPlateIsReducedAndTheTrialSaysSo) {
  SetRamp(9);
  trial.FileTypeCode = 255;
  AnswerForm(KistlerPlate());
  questions.inputAnswers = {"25"};
  questions.boxAnswers = {Button::No};
  Run("plates.reduce");
  EXPECT_EQ(Labels(), (Texts{"Fx#1", "Fy#1", "Fz#1", "Ax#1", "Ay#1", "Tz#1", "Ff#1", "CF#1", ""}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "N", "N", "cm", "cm", "N.m", "N", "N", "V"}));
  EXPECT_EQ(Channel(trial, 3), (Samples{0, 40, 80, 120, 160, 200, 240, 280, 320, 360}));
  EXPECT_EQ(trial.Data(3, 1), 40);
  EXPECT_TRUE(trial.ForcesReduced);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(trial.FileTypeCode, 8);
  EXPECT_EQ(trial.NPlates, 1);
  EXPECT_EQ(workbench.plates.PlateTable[0].az0, -5);
  EXPECT_EQ(workbench.report.deeds.back().channels.size(), 8U);
  // What a reduced trial cannot do any more.
  Run("plates.reduce");
  EXPECT_EQ(LastBox(), "Invaild Filetype|Data in file cannot be reduced.");
  for (const char* id : {"save.dat", "save.vmu"}) {
    Run(id);
    EXPECT_EQ(LastBox(), "|Cannot save if data have been converted to forces.");
    EXPECT_NE(FindCommand(id)->whyNot(workbench), nullptr);
  }
}

// Walking from the first plate to the second, 60 cm ahead, with both loaded for a while.
TEST_F(PlateCommandsTest, ThePathOfThePressureJumpsFromNoPlateToTheOther) {
  std::vector<Samples> all(16, Samples(100, 0.0F));
  for (std::size_t i = 0; i < 100; ++i) {
    for (const std::size_t base : {std::size_t{0}, std::size_t{8}}) {
      if (base == 0 ? i < 60 : i >= 40) {
        all[base + 2][i] = 500.0F;
        all[base + 4][i] = static_cast<float>(i) / 10.0F - 5.0F;
      }
    }
  }
  SetChannels(trial, all);
  trial.ForcesReduced = true;
  trial.NPlates = 2;
  workbench.plates.PlateOffsetY = 600;
  std::vector<FormGraph::Plot> plots;
  questions.formAnswers.emplace_back([&plots](Form& form) {
    plots = form.Graph()->plots;
    return std::string("Exit");
  });
  Run("plates.pressure");
  std::size_t drawn = 0;
  for (const FormGraph::Plot& plot : plots) {
    for (std::size_t k = 1; k < plot.y.size() && plot.name.find("Plate") == std::string::npos; ++k) {
      EXPECT_FALSE(std::abs(plot.y[k] - plot.y[k - 1]) > 1) << plot.name << ": " << plot.y[k];
      ++drawn;
    }
  }
  EXPECT_GT(drawn, 60U);
  // A plate that was entered and is not there is not drawn.
  SetChannels(trial, std::vector<Samples>(10, Samples(100, 500.0F)));
  AnswerForm({}, "Exit");
  Run("plates.pressure");
  EXPECT_TRUE(questions.boxes.empty()) << LastBox();
}

TEST_F(PlateCommandsTest, AutozeroTakesTheFirstSampleOfEachPlateInItsTurn) {
  SetRamp(16);
  for (int c = 1; c <= 16; ++c) {
    trial.Data(1, c) = static_cast<float>(c);
  }
  AnswerForm(KistlerPlate("2"), "Plate 2");
  AnswerForm(ranges);
  questions.inputAnswers = {"1"};
  questions.boxAnswers = {Button::Yes, Button::No};
  Run("plates.reduce");
  EXPECT_EQ(trial.ChanOffset[5], 5);
  EXPECT_EQ(trial.ChanOffset[13], 0);
  EXPECT_EQ(trial.Data(1, 3), 0);
  EXPECT_EQ(trial.Data(2, 3), 40 - 5 - 6 - 7 - 8);
  EXPECT_EQ(trial.Data(1, 11), 13 + 14 + 15 + 16);
  EXPECT_EQ(trial.ChanLabel[16], "CF#2");
  // Plate 2 has no distances, which nobody else would say.
  ASSERT_EQ(trial.Notices.size(), 1U);
  EXPECT_EQ(trial.Notices[0].substr(0, 40), "Plate 2 was reduced without distances to");
}

TEST_F(PlateCommandsTest, CancelAtTheSecondAutozeroLeavesPlateOneAndAllLabels) {
  SetRamp(16);
  AnswerForm(KistlerPlate("2"), "Plate 2");
  AnswerForm(ranges);
  questions.inputAnswers = {"25"};
  questions.boxAnswers = {Button::No, Button::Cancel};
  Run("plates.reduce");
  EXPECT_EQ(trial.Data(10, 3), 360);
  EXPECT_EQ(Channel(trial, 11), (Samples{0, 10, 20, 30, 40, 50, 60, 70, 80, 90}));
  EXPECT_EQ(trial.ChanLabel[11], "Fz#2");
  EXPECT_FALSE(trial.ForcesReduced);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(trial.FileTypeCode, 0);
}

TEST_F(PlateCommandsTest, AnAmtiPlateStandsBehindItsFirstChannel) {
  SetRamp(13);
  trial.ChanUnits[5] = "N.m";
  trial.ChanUnits[11] = "Nmm";
  AnswerForm({{"NumPlates", "2"}, {"FirstChannel", "1"}, {"optMaker", "AMTI"}}, "Plate 2");
  AnswerForm({{"optType", "AMTI 18.25x20\""}});
  questions.inputAnswers = {"no number"};
  Run("plates.reduce");
  EXPECT_EQ(trial.ChanLabel[1], "");
  EXPECT_EQ(trial.ChanLabel[2], "Fx#1");
  EXPECT_EQ(trial.ChanLabel[13], "Tz#2");
  // At 10 N throughout: Ax = -(10 h + 10) / 10, Ay = (10 h + 10) / 10 metres.
  EXPECT_FLOAT_EQ(trial.Data(2, 5), -104.13F);
  EXPECT_FLOAT_EQ(trial.Data(2, 6), 104.13F);
  EXPECT_EQ(trial.Data(1, 5), 0);
  EXPECT_TRUE(trial.ForcesReduced);
  EXPECT_EQ(trial.Notices,
            (Texts{"The moments of plate 2 are in Nmm and were taken for N.m: its Ax, Ay and Tz are "
                   "wrong."}));
}

TEST_F(PlateCommandsTest, WhatCannotBeReducedIsRefusedWithNothingWritten) {
  const std::string noChannels = "Invaild Filetype|Too few data channels.  Data in file cannot be reduced.";
  const std::string notReducible = "Invaild Filetype|Data in file cannot be reduced.";
  const std::string unknown = "|Filetype not implemented.";
  SetRamp(5);
  for (const auto& [code, box] : std::vector<std::pair<std::int16_t, std::string>>{
           {0, noChannels},
           {255, noChannels},
           {9, "|File contains no force plate data or not enough channels."},
           {5, "Invaild Filetype|Data in file is already reduced."},
           {4, notReducible},
           {14, notReducible},
           {238, unknown}}) {
    trial.FileTypeCode = code;
    Run("plates.reduce");
    EXPECT_EQ(LastBox(), box) << code;
  }
  questions.boxes.clear();
  trial.FileTypeCode = 6;
  Run("plates.reduce");
  EXPECT_TRUE(questions.boxes.empty());
  trial.FileTypeCode = 255;
  // By the definition: the second plate's last channel is missing; plates of two makers; none; three.
  SetRamp(15);
  const auto before = Bits(trial);
  const auto reduce = [this](const Edits& first, const Edits& second) {
    AnswerForm(first, "Plate 2");
    AnswerForm(second, "Plate 1");
    AnswerForm({});
    Run("plates.reduce");
    return LastBox();
  };
  EXPECT_EQ(reduce(KistlerPlate("2"), ranges), noChannels);
  EXPECT_EQ(reduce({}, {{"optMaker", "AMTI"}}), "Unsupported Force Plate|Force plate not supported.");
  EXPECT_EQ(reduce({{"NumPlates", "0"}}, {}), "|File has no force platform data.");
  EXPECT_EQ(reduce({{"NumPlates", "1"}, {"FirstChannel", "2147483647"}}, {}), noChannels);
  EXPECT_TRUE(questions.inputs.empty());
  EXPECT_EQ(Bits(trial), before);
  SetRamp(32);
  AnswerForm({{"NumPlates", "3"}, {"FirstChannel", "0"}}, "Plate 2");
  AnswerForm({{"optMaker", "Kistler"}}, "Plate 3");
  AnswerForm(ranges);
  questions.inputAnswers = {"25"};
  Run("plates.reduce");
  EXPECT_EQ(LastBox(), "|Invalid number of plates.");
  EXPECT_EQ(trial.ChanLabel[1], "");
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_FALSE(trial.ForcesReduced);
  EXPECT_EQ(trial.NPlates, 3);
  EXPECT_EQ(trial.Data(2, 1), 10);
}

TEST_F(PlateCommandsTest, AnEmptyMinimumForceEndsAndASmallOneIsRaised) {
  SetRamp(8);
  AnswerForm(KistlerPlate());
  questions.inputAnswers = {""};
  Run("plates.reduce");
  EXPECT_EQ(trial.ChanLabel[1], "");
  EXPECT_FALSE(trial.FileChanged);
  for (std::int64_t i = 1; i <= 10; ++i) {
    trial.Data(i, 5) = i == 1 ? 0.1F : 0.0999F;
    trial.Data(i, 6) = trial.Data(i, 7) = trial.Data(i, 8) = 0;
  }
  AnswerForm({});
  questions.inputAnswers = {"-3"};
  questions.boxAnswers = {Button::No};
  Run("plates.reduce");
  EXPECT_EQ(trial.Data(1, 3), 0.1F);
  EXPECT_EQ(trial.Data(2, 3), 0);
}

TEST_F(PlateCommandsTest, AFileWithAHeaderIsReducedByItAndItsPlatesAreCombined) {
  SetRamp(16);
  trial.FileTypeCode = 6;
  trial.NPlates = 2;
  for (ForcePlate& plate : workbench.plates.PlateTable) {  // as a reader puts it: millimetres
    plate = {
        .a = 120, .b = 200, .az0 = -50, .XYRange = 1, .ZRange = 1, .XSens = -1, .YSens = -1, .ZSens = -1};
  }
  questions.boxAnswers = {Button::Yes, Button::No, Button::No};
  questions.inputAnswers = {"25"};
  Run("plates.reduce");
  EXPECT_EQ(trial.FileTypeCode, 6);
  // At 40 N all: Ax = 80 (-5) / 160, Ay = (-80 (-5) - 0) / 160, in centimetres.
  EXPECT_EQ(trial.Data(5, 4), -2.5F);
  EXPECT_EQ(trial.Data(5, 13), 2.5F);
  questions.boxAnswers = {Button::Yes};
  AnswerForm({{"PlateAngle", "90"}}, "Cancel");
  Run("plates.combine");
  EXPECT_EQ(trial.ChanLabel[1], "Fx#1");
  questions.boxAnswers = {Button::Yes};
  AnswerForm({});
  Run("plates.combine");
  EXPECT_EQ(trial.ChanLabel[8], "CF comb.");
  EXPECT_EQ(trial.Data(5, 3), 320);
  EXPECT_EQ(trial.Data(5, 5), (2.5F - 30 + 2.5F + 60) / 2);
  EXPECT_TRUE(trial.PlatesCombined);
  Run("plates.combine");
  EXPECT_EQ(LastBox(), "|Plates have already been combined.");
  SetRamp(6);
  trial.PlatesCombined = false;
  trial.NPlates = 1;
  Run("plates.combine");
  EXPECT_EQ(LastBox(), "|The program can only combine data from two plates.");
  trial.FileTypeCode = 255;
  Run("plates.combine");
  EXPECT_EQ(LastBox(), "|Filetype not implemented.");
}

TEST_F(PlateCommandsTest, ChannelsThatAFileDidNotLoadLimitTheReduction) {
  SetRamp(12);
  trial.FileTypeCode = 9;
  trial.NPlates = 2;
  workbench.plates.PlateTable[0].PlateType = workbench.plates.PlateTable[1].PlateType = 5;
  trial.ChanAutozero[9] = 0;
  questions.boxAnswers = {Button::Yes};
  questions.inputAnswers = {""};
  Run("plates.reduce");
  EXPECT_EQ(LastBox(),
            "|Forces cannot be reduced.  Only plate 1 will be reduced.\n"
            "Not all necessary channels are loaded for plate number 2.");
  trial.ChanAutozero[2] = 0;
  questions.boxAnswers = {Button::Yes};
  Run("plates.reduce");
  EXPECT_EQ(LastBox(),
            "|Forces cannot be reduced.  Try reloading the file.\n"
            "Not all necessary channels are loaded for plate number 1.");
  EXPECT_EQ(trial.ChanLabel[1], "");
}

}  // namespace
}  // namespace velmora::test
