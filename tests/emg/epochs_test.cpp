// Integrals by epoch, and the resetting integrator.
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct Epochs : CommandTest {
  [[nodiscard]] std::vector<double> Column(std::size_t column) const {
    std::vector<double> values;
    for (const auto& row : workbench.results.ResultTables.back().rows) {
      values.push_back(std::get<double>(row.at(column)));
    }
    return values;
  }
};

TEST_F(Epochs, IntegralsByHandAndInPlaceOfTheSamples) {
  SetChannels(trial, {{1, -1, 2, 2, 7}}, 2);
  questions.FillForm({{"WindowWidth", "2"}});
  questions.FillForm({}, "Replace");
  questions.FillForm({{"optValue", "4"}}, "Replace");
  questions.FillForm({}, "Exit");
  Run("integrate.epoch");
  ASSERT_EQ(workbench.results.ResultTables.back().name, "frmEpoch");
  EXPECT_EQ(Column(5), (std::vector<double>{0, 2})) << "integral";
  EXPECT_EQ(Column(6), (std::vector<double>{1, 2})) << "absolute integral";
  EXPECT_EQ(Column(7), (std::vector<double>{0, 2})) << "mean";
  EXPECT_EQ(Column(9), (std::vector<double>{1, 2})) << "RMS";
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 1, 2, 2, 0})) << "the RMS of each epoch, 0 behind the last";
  // The dialogue stays, with its width, until there is something to integrate.
  SetChannels(trial, {{1, -1, 2, 2, 7}, {1, 1, 1, 1, 1}}, 2);
  questions.FillForm({{"WindowWidth", "4"}});
  questions.FillForm({{"channels 2", "yes"}});
  questions.FillForm({}, "Exit");
  Run("integrate.epoch");
  EXPECT_EQ(questions.boxes.front().title, "Too Few Channels Selected");
  EXPECT_EQ(Column(5), (std::vector<double>{2}));
  SetChannels(trial, {Samples(500'001, 1.0F)}, 2);
  questions.FillForm({{"WindowWidth", "1"}});
  questions.FillForm({}, "Cancel");
  Run("integrate.epoch");
  EXPECT_EQ(LastBox(),
            "Too Many Epochs|That makes 500,001 epochs of all channels, at most 500,000 are listed.  "
            "Choose wider epochs.");
  SetChannels(trial, {{1, 1, 1, 1}}, 2);
  Run("emg.integrate-epoch");
  Run("integrate.epoch");
  EXPECT_EQ(LastBox(), "Too Few Data|Too few data points to integrate.");
}

TEST_F(Epochs, TheIntegratorGoesBackToZero) {
  const auto integrate = [this](const Edits& edits) {
    SetChannels(trial, {{1, -1, 1, 1}}, 2);
    trial.ChanUnits[1] = "microvolt";
    questions.FillForm(edits, "Integrate");
    questions.FillForm({}, "Exit");
    Run("emg.integrate-reset");
    return Channel(trial, 1);
  };
  EXPECT_EQ(integrate({{"WindowWidth", "2"}}), (Samples{0.5, 1, 0.5, 1}));
  EXPECT_EQ(Column(3), (std::vector<double>{2, 4}));
  EXPECT_EQ(trial.ChanUnits[1].Text(), "microvolt.") << "cut to ten";
  EXPECT_EQ(integrate({{"WindowWidth", "2"}, {"chkRectify", "no"}}), (Samples{0.5, 0, 0.5, 1}));
  EXPECT_EQ(integrate({{"optReset", "1"}, {"txtLevel", "1.25"}}), (Samples{0.5, 1, 1.5, 0.5}));
  EXPECT_EQ(Column(5), (std::vector<double>{1.5}));
  EXPECT_EQ(Column(6), (std::vector<double>{1.5})) << "seconds";
  EXPECT_EQ(Column(7), (std::vector<double>{1 / 1.5})) << "Hz";

  SetChannels(trial, {{1, -1, 1, 1}}, 2);
  questions.FillForm({{"optReset", "1"}, {"txtLevel", "0"}}, "Integrate");
  questions.FillForm({}, "Cancel");
  Run("emg.integrate-reset");
  EXPECT_EQ(LastBox(), "Invalid Level|The level must be above zero.");
  EXPECT_EQ(Channel(trial, 1), (Samples{1, -1, 1, 1}));
}

}  // namespace
}  // namespace velmora::test
