#include <bit>
#include <random>

#include "formats/fixed_names.hpp"
#include "support/command_test.hpp"
#include "support/temporary_directory.hpp"

namespace velmora::test {
namespace {

/// What a trial keeps on the way through each format and back.
struct RoundTrip : FileTest {
  std::vector<Samples> channels = NoiseChannels(5, 2000);

  RoundTrip() {
    std::mt19937 random(3);
    for (float& value : channels[1]) {
      do {
        value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
      } while (!std::isfinite(value));
    }
    SetChannels(trial, channels, 1000.0);
    NameChannels();
  }

  void NameChannels() {
    for (std::size_t c = 1; c <= 5; ++c) {
      trial.ChanLabel[c] = "Muscle " + std::to_string(c);
      trial.ChanUnits[c] = "mV";
    }
  }

  // Texts are read with what the dialogue offers.
  void SaveAndLoad(const char* id, const std::string& name, Button times = Button::Yes) {
    questions.boxAnswers = {Button::Yes, times};
    AnswerForm({});
    SaveAs(name, id);
    trial = Trial();
    LoadPath(directory.Path(name));
    EXPECT_TRUE(workbench.report.failures.empty());
  }
  void ExpectEveryBit() {
    ASSERT_EQ(trial.NChan, 5);
    for (int c = 1; c <= 5; ++c) {
      ASSERT_TRUE(SameBits(Channel(trial, c), channels[static_cast<std::size_t>(c - 1)])) << c;
    }
  }
  void ExpectNames() {
    EXPECT_EQ(trial.ChanLabel[1], "Muscle 1");
    EXPECT_EQ(trial.ChanLabel[5], "Muscle 5");
    EXPECT_EQ(trial.ChanUnits[3], "mV");
    EXPECT_EQ(trial.ChanLabel[0], "Time");
    EXPECT_EQ(trial.Rate, 1000.0);
  }
};

TEST_F(RoundTrip, WhatASaveLosesOfNamesIsTold) {
  SetChannels(trial, {{1, 2}, {3, 4}}, 1000.0);
  trial.ChanLabel[1] = "Vastus lateralis";
  trial.ChanLabel[2] = "Kąt łokcia";
  trial.ChanUnits[2] = "°/s";
  const std::string cut = "Cut in the saved file: \"Vastus lat\" for \"Vastus lateralis\".";
  const std::string lacking = "Saved as \"?\", since the format lacks them: ą, ł.";
  for (const char* format : {"vmb", "vma", "vmu"}) {
    trial.Notices.clear();
    workbench.report = {};
    const std::string name = std::string("trial.") + format;
    SaveAs(name, (std::string("save.") + format).c_str());
    SaveAs(name, (std::string("save.") + format).c_str());  // the same again is not told twice
    EXPECT_EQ(trial.Notices, name == "trial.vmu" ? Texts{lacking} : (Texts{cut, lacking})) << format;
    EXPECT_GE(workbench.report.warnings.size(), trial.Notices.size());
  }
  LoadPath(directory.Path("trial.vmb"));
  EXPECT_EQ(trial.ChanLabel[1], "Vastus lat");
  EXPECT_EQ(trial.ChanLabel[2], "K?t ?okcia");

  EXPECT_EQ(NameRemark("Knee", Label::kLength), "");
  EXPECT_EQ(NameRemark("Vastus lateralis", Label::kLength),
            ".vmb and .vma files keep 10 characters: \"Vastus lat\"");
  EXPECT_EQ(NameRemark("newton metres", Units::kLength), "There is room for 10 characters: \"newton met\"");
  EXPECT_EQ(NameRemark("Kąt", Label::kLength), ".vmb, .vma and .vmu files lack ą and hold \"?\" instead");
}

TEST_F(RoundTrip, DelimitedTextKeepsEveryBitAndTheNames) {
  for (const char* extension : {"csv", "tab"}) {
    for (const Button times : {Button::Yes, Button::No}) {
      SetChannels(trial, channels, 1000.0);
      NameChannels();
      trial.TrialTitle = "12";  // a title that could pass for a line of data
      trial.ChanLabel[2] = "Fz [N], left";
      trial.ChanLabel[3] = "Counter";
      trial.ChanUnits[4] = "";
      SaveAndLoad((std::string("save.") + extension).c_str(), std::string("trial.") + extension, times);
      if (std::string(extension) == "csv") {
        EXPECT_TRUE(questions.boxes.back().text.ends_with("columns: they were left out."));
        EXPECT_EQ(trial.ChanLabel[1], "Chan. 01");
      } else {
        ExpectNames();
        EXPECT_EQ(trial.ChanLabel[2], "Fz [N], left");
        EXPECT_EQ(trial.ChanUnits[4], "");
      }
      ExpectEveryBit();
      EXPECT_EQ(trial.TrialTitle, "12");
      EXPECT_EQ(trial.Rate, 1000.0);
      EXPECT_EQ(trial.Data(2000, 0), 1.999F);
    }
  }
}

TEST_F(RoundTrip, TimesBesideSixtyFourChannelsAreAColumnTooMany) {
  SetChannels(trial, std::vector<Samples>(kMaxChannels, {1, 2, 3}), 100.0);
  for (const Button times : {Button::No, Button::Yes}) {
    questions.boxAnswers = {Button::Yes, times};
    SaveAs("wide.csv", "save.csv");
    EXPECT_EQ(trial.Notices.size(), times == Button::Yes ? 1U : 0U);
  }
  EXPECT_NE(trial.Notices.front().find("has 65 columns"), std::string::npos);
}

TEST_F(RoundTrip, ATimeBaseOtherThanSecondsComesBack) {
  SetChannels(trial, {channels[0]}, 1000.0);
  Run("timebase.percentage");
  trial.ChanLabel[1] = "Angle";
  SaveAndLoad("save.csv", "trial.csv");
  EXPECT_EQ(trial.NChan, 1);
  EXPECT_EQ(trial.ChanLabel[0], "Percentage");
  EXPECT_EQ(trial.ChanUnits[0], "%");
  EXPECT_EQ(trial.Data(2000, 0), 100.0F);
  EXPECT_EQ(trial.ChanLabel[1], "Angle");
  EXPECT_EQ(trial.Rate, 19.99);

  // A file that does not says so: its rate would be read as Hz.
  for (const auto& [base, save, name, told] : {std::tuple("timebase.percentage", "save.vmb", "a.vmb", false),
                                               {"timebase.percentage", "save.vma", "a.vma", true},
                                               {"timebase.count", "save.vmb", "a.vmb", true},
                                               {"timebase.count", "save.tab", "a.tab", false},
                                               {"timebase.user-units", "save.vmb", "a.vmb", false}}) {
    SetChannels(trial, {channels[0]}, 1000.0);
    workbench.time = {};
    trial.Notices.clear();
    questions.inputAnswers = {"5", "Path", "m"};
    questions.boxAnswers = {Button::Yes, Button::Yes};
    Run(base);
    SaveAs(name, save);
    EXPECT_EQ(trial.Notices.size(), told ? 1U : 0U) << base << " " << save;
  }
  LoadPath(directory.Path("a.vmb"));
  Run("timebase.percentage");
  SaveAs("b.vmb");
  LoadPath(directory.Path("b.vmb"));
  Run("timebase.seconds");
  EXPECT_TRUE(Tells("does not tell its sampling rate in Hz"));
}

TEST_F(RoundTrip, TextsOfFixedDecimalsKeepThem) {
  channels[1] = channels[0];
  for (const auto& [format, steps] : {std::pair("prn", 1e5), {"vma", 1e4}}) {
    SetChannels(trial, channels, 1000.0);
    NameChannels();
    SaveAndLoad((std::string("save.") + format).c_str(), std::string("trial.") + format);
    ASSERT_EQ(trial.NData, 2000);
    EXPECT_EQ(trial.ChanLabel[1], "Muscle 1");
    EXPECT_EQ(UnitsOfChannels(), Texts(5, steps == 1e5 ? "mV" : "V"));
    EXPECT_EQ(trial.Duration, 1.999);
    const Samples read = Channel(trial, 5);
    for (std::size_t i = 0; i < 2000; ++i) {
      ASSERT_EQ(read[i], static_cast<float>(std::nearbyint(double{channels[4][i]} * steps) / steps));
    }
  }
}

}  // namespace
}  // namespace velmora::test
