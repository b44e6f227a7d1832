// Steps that other people counted, by recipe.
#include <algorithm>

#include "support/recipe_test.hpp"
#include "support/recordings.hpp"

namespace velmora::test {
namespace {

class TriggerRecordings : public RecipeTest {
 protected:
  void MakeTrial(Trial& /*trial*/) override {}

  struct Steps {
    std::size_t count = 0;
    double slowest = 0;  // Hz
    double median = 0;
    double fastest = 0;
  };
  /// Loads a recording, answers the form so and scans.
  Steps Scan(const std::string& file, const std::string& parser, const std::string& answers) {
    Run("  - do: file.load\n    file: \"" + file + "\"\n    answers: [form: {" + parser +
        ", press: Read}]\n  - do: graph.all\n  - do: trigger.open\n    answers:\n" + answers +
        "      - form: {press: Scan}\n      - form: {press: Exit}\n  - info: \"${out}/i.json\"\n");
    EXPECT_EQ(Why(), "all ran");
    const nlohmann::json rows = Info("i.json")["flxCoeff"]["rows"];
    std::vector<double> frequencies;
    for (std::size_t k = 1; k < rows.size(); ++k) {
      frequencies.push_back(rows[k][7]);
    }
    std::sort(frequencies.begin(), frequencies.end());
    const std::size_t n = frequencies.size();
    return {rows.size(), frequencies.front(), (frequencies[(n - 1) / 2] + frequencies[n / 2]) / 2,
            frequencies.back()};
  }
};

TEST_F(TriggerRecordings, WalkingOnATreadmill) {
  const std::optional<std::string> file = Recording("text/csuhmc_example_vertical_grf.csv");
  if (!file) {
    GTEST_SKIP() << "no recordings";
  }
  const std::string parser = "NChan: 2, ParseHasTime: true, ParseTimeColumn: 1";
  const Steps strikes = Scan(
      *file, parser, "      - form: {comType: 0, txtTrigLevel1: 100, press: Both +ve & -ve integrals}\n");
  EXPECT_EQ(strikes.count, 46U);
  EXPECT_NEAR(strikes.slowest, 0.813, 5e-4);
  EXPECT_NEAR(strikes.median, 0.833, 5e-4);
  EXPECT_NEAR(strikes.fastest, 0.870, 5e-4);
  const std::string low = "      - form: {comType: 0, txtTrigLevel1: 20, press: Enter Refractory period}\n";
  const Steps withNoise = Scan(*file, parser, low + "      - input: \"0\"\n");
  EXPECT_EQ(withNoise.count, 49U);
  EXPECT_NEAR(withNoise.fastest, 6.67, 0.01);
  EXPECT_EQ(Scan(*file, parser, low + "      - input: \"0.5\"\n").count, 46U);
}

}  // namespace
}  // namespace velmora::test
