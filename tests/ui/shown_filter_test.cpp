// The filters that the dialogues draw: what is drawn has to be what would run.
#include "ui/dialogs/shown_filter.hpp"

#include <cmath>

#include "support/command_test.hpp"

namespace velmora::ui {
namespace {

struct ShownFilters : test::CommandTest {
  void SetUp() override { test::SetChannels(trial, test::NoiseChannels(1, 500), 1000.0); }

  /// The filter of a dialogue that is filled in so, with its gain at each edge.
  std::vector<double> GainsAtEdges(const char* id, const test::Edits& edits, ShownFilter& shown) {
    std::vector<double> gains;
    questions.formAnswers.emplace_back([&](Form& form) {
      EXPECT_TRUE(ShowsFilter(form));
      test::Type(form, edits);
      shown = FilterOf(form, 1, trial.Rate);
      for (const FrequencyPoint& point : FrequencyResponse(shown.filter, shown.edges)) {
        gains.push_back(point.gain);
      }
      return std::string("Cancel");
    });
    Run(id);
    return gains;
  }
};

TEST_F(ShownFilters, HaveTheGainAtTheirEdgesThatTheirDesignPromises) {
  const double halfPower = std::sqrt(0.5);
  const double ripple = std::pow(10.0, -0.5 / 20);
  struct Case {
    const char* id;
    test::Edits edits;
    double gain;
    std::size_t edges;
  };
  const char* const passes = "smooth.butterworth";
  const char* const designs = "smooth.digital";
  for (const Case& c : {
           Case{passes, {{"FilterCutoffs 1", "6"}}, halfPower, 1},
           Case{passes, {{"optFilter", "2"}, {"ZeroLag 1", "false"}, {"FilterCutoffs 1", "9"}}, halfPower, 1},
           Case{designs, {{"FilterCutoffs 1", "20"}, {"Orders 1", "5"}}, halfPower, 1},
           Case{designs, {{"optFilter", "1"}, {"FilterCutoffs 1", "4"}, {"Orders 1", "3"}}, halfPower, 1},
           Case{designs,
                {{"optPassType", "2"},
                 {"optFilter", "3"},
                 {"FilterCutoffs 1", "20"},
                 {"SecondCutoffs 1", "90"}},
                ripple,
                2},
       }) {
    ShownFilter shown;
    const std::vector<double> gains = GainsAtEdges(c.id, c.edits, shown);
    EXPECT_TRUE(shown.Runs()) << shown.refusal;
    ASSERT_EQ(gains.size(), c.edges) << c.id;
    for (const double gain : gains) {
      EXPECT_NEAR(gain, c.gain, 1e-3) << c.id << ", " << c.edits.front().second;
    }
  }
}

TEST_F(ShownFilters, TellWhyThereIsNone) {
  ShownFilter shown;
  for (const char* cutoff : {"0", "700"}) {
    GainsAtEdges("smooth.digital", {{"FilterCutoffs 1", cutoff}}, shown);
    EXPECT_FALSE(shown.Runs()) << cutoff;
    EXPECT_EQ(shown.refusal.empty(), cutoff[0] == '0') << "nothing is to be filtered";
  }
}

}  // namespace
}  // namespace velmora::ui
