#include <bit>
#include <random>

#include "support/command_test.hpp"
#include "support/temporary_directory.hpp"

namespace velmora {
namespace {

using test::Samples;

/// What a trial keeps on the way through each format and back.
struct RoundTrip : test::CommandTest {
  test::TemporaryDirectory directory;
  std::vector<Samples> channels = test::NoiseChannels(5, 2000);

  RoundTrip() {
    std::mt19937 random(3);
    for (float& value : channels[1]) {
      do {
        value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
      } while (!std::isfinite(value));
    }
    test::SetChannels(trial, channels, 1000.0);
    for (std::size_t c = 1; c <= 5; ++c) {
      trial.ChanLabel[c] = "Muscle " + std::to_string(c);
      trial.ChanUnits[c] = "mV";
    }
  }

  void SaveAndLoad(const char* id, const std::string& name) {
    questions.boxes.clear();
    questions.boxAnswers = {Button::Yes, Button::Yes};
    questions.fileAnswers = {{directory.Path(name)}};
    questions.formAnswers.emplace_back([](Form& form) {
      form.Edit(*form.FindField("ParseHasTime"), "true");
      form.Edit(*form.FindField("ParseLabelsLine"), "3");
      form.Edit(*form.FindField("ParseUnitsLine"), "4");
      return std::string("OK");
    });
    Run(id);
    trial = Trial();
    trial.FileName = directory.Path(name);
    Run("file.load");
    EXPECT_TRUE(workbench.report.failures.empty());
  }
  void ExpectEveryBit() {
    ASSERT_EQ(trial.NChan, 5);
    ASSERT_EQ(trial.NData, 2000);
    for (int c = 1; c <= 5; ++c) {
      const Samples read = test::Channel(trial, c);
      const Samples& written = channels[static_cast<std::size_t>(c - 1)];
      for (std::size_t i = 0; i < 2000; ++i) {
        ASSERT_EQ(std::bit_cast<std::uint32_t>(read[i]), std::bit_cast<std::uint32_t>(written[i]))
            << "channel " << c << " sample " << i;
      }
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

TEST_F(RoundTrip, NativeBinaryKeepsEveryBitAndTheNames) {
  SaveAndLoad("save.vmb", "trial.vmb");
  ExpectEveryBit();
  ExpectNames();
}

TEST_F(RoundTrip, DelimitedTextKeepsEveryBitAndTheNames) {
  SaveAndLoad("save.csv", "trial.csv");
  ExpectEveryBit();
  ExpectNames();
  test::SetChannels(trial, channels, 1000.0);
  SaveAndLoad("save.tab", "trial.tab");
  ExpectEveryBit();
}

TEST_F(RoundTrip, PrinterTextKeepsFiveDecimals) {
  channels[1] = channels[0];
  test::SetChannels(trial, channels, 1000.0);
  SaveAndLoad("save.prn", "trial.prn");
  ASSERT_EQ(trial.NData, 2000);
  for (std::size_t i = 0; i < 2000; ++i) {
    ASSERT_NEAR(test::Channel(trial, 5)[i], channels[4][i], 0.0000051);
  }
}

}  // namespace
}  // namespace velmora
