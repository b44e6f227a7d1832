#include "support/recipe_test.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

/// The recording of Duarte and Watanabe (BMC, notebook on electromyography, "emg.csv", 1000 Hz), whose bursts
/// begin, by another detector, at samples 399, 1388 and 2410.
class PublishedOnsets : public RecipeTest {
 protected:
  void MakeTrial(Trial& /*trial*/) override {}
};

TEST_F(PublishedOnsets, AreFoundWithinThirtySamples) {
  const std::optional<std::string> recording = Recording("reference/emg.csv");
  if (!recording) {
    GTEST_SKIP() << "no recordings";
  }
  const std::string burst = "  - view: {key: O}\n  - view: {right-click: 1}\n  - view: {key: Insert}\n";
  const auto around = [&burst](const char* from, const char* to) {
    return std::string("  - view: {move: 1, x: ") + from + "}\n  - view: {move: 2, x: " + to + "}\n" + burst;
  };
  Run("  - do: file.load\n    file: \"" + *recording + "\"\n" + R"(
    answers: [form: {NChan: 2, ParseHasTime: true, ParseTimeColumn: 1, press: Read}]
  - do: math.absolute
    answers: [pick: {channels: [1]}]
  - do: smooth.butterworth
    answers: [form: {optPassType: 0, FilterCutoffs: {1: 20}, ZeroLag: {1: true}, press: Filter}]
  - do: graph.multi
    answers: [form: {channels: all}]
  - view: {key: "2"}
  - view: {move: 1, x: 0}
  - view: {move: 2, x: 0.2}
  - do: threshold.calculate
    answers: [input: "2", pick: {}]
  - view: {key: F9}
    answers: [box: "No"]
)" + around("0.3", "1.1") +
      around("1.3", "2.05") + around("2.34", "3.1") + "  - info: \"${out}/emg.json\"\n");
  ASSERT_EQ(Why(), "all ran");
  const nlohmann::json info = Info("emg.json");
  // Of the mean and deviation of samples 1 to 200, computed by themselves from the filtered samples.
  EXPECT_NEAR(info["channels"][1]["ChanThreshold"].get<double>(), 0.00587558, 1e-7);
  constexpr double kPublished[] = {399, 1388, 2410};
  for (std::size_t k = 0; k < 3; ++k) {
    const double onset = info["ChannelEvents"][k][0][0].get<double>() * 1000 + 1;
    EXPECT_NEAR(onset, kPublished[k], 30) << "burst " << k + 1;
    EXPECT_GT(info["ChannelEvents"][k][0][1].get<double>() * 1000, onset + 400);
  }
}

}  // namespace
}  // namespace velmora::test
