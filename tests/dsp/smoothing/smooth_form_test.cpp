#include "dsp/smoothing/smooth_form.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "dsp/filters/filter_design.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct DigitalFilters : CommandTest {
  std::vector<Samples> noise = NoiseChannels(3, 300);

  void SetUp() override {
    SetChannels(trial, noise, 500.0);
    trial.FileChanged = false;
  }
  Samples Designed(int channel, const DesignRequest& request) {
    Trial alone;
    SetChannels(alone, noise, request.rate);
    RunBiquads(DesignFilter(request), alone.Channel(channel));
    return Channel(alone, channel);
  }
};

TEST_F(DigitalFilters, EveryDesignAndBandOnItsChannels) {
  const std::vector<std::pair<std::string, Approximation>> designs = {
      {"Butterworth", Approximation::Butterworth},
      {"Chebyshev", Approximation::Chebyshev},
      {"Elliptic", Approximation::Elliptic},
      {"Inverse Chebyshev", Approximation::InverseChebyshev}};
  const std::vector<std::pair<std::string, Band>> bands = {{"Low-pass", Band::LowPass},
                                                           {"High-pass", Band::HighPass},
                                                           {"Band-pass", Band::BandPass},
                                                           {"Band-stop (reject)", Band::BandStop}};
  for (const auto& [design, approximation] : designs) {
    for (const auto& [pass, band] : bands) {
      SetUp();
      AnswerForm({{"optPassType", pass},
                  {"optFilter", design},
                  {"FilterCutoffs 1", "40"},
                  {"SecondCutoffs 1", "90"},
                  {"FilterCutoffs 3", "30.5"},
                  {"SecondCutoffs 3", "60"},
                  {"Orders 3", "5"}});
      Run("smooth.digital");
      EXPECT_EQ(Channel(trial, 1), Designed(1, {approximation, band, 2, 500.0, 40, 90})) << design << pass;
      EXPECT_EQ(Channel(trial, 2), noise[1]);
      EXPECT_EQ(Channel(trial, 3), Designed(3, {approximation, band, 5, 500.0, 30.5, 60})) << design << pass;
      EXPECT_TRUE(trial.FileChanged);
    }
  }
  EXPECT_TRUE(questions.boxes.empty());
}

// The forward recursion worked out here by its own formulas, from the textbook's section.
Samples ForwardByHand(Samples x, bool low, bool bessel, double cutoff, double rate, int passes) {
  const double C = bessel ? std::sqrt(3.0) * std::sqrt(std::sqrt(std::pow(2.0, 1.0 / passes) - 0.75) - 0.5)
                          : std::sqrt(std::pow(2.0, 1.0 / (passes * 2)) - 1);
  const auto f = static_cast<float>(low ? cutoff / C : 0.5 - cutoff * C / rate);
  const double wc = std::tan(low ? f * Pi / rate : f * Pi);
  const double K1 = bessel ? 3 * wc : wc + wc;
  const double K2 = bessel ? wc * wc * 3 : wc * wc;
  const double a0 = K2 / (1 + K1 + K2);
  const double b1 = (a0 + a0) / K2 + a0 * -2.0;
  const double b2 = 1 - (a0 * 4 + b1);
  for (int pass = 0; pass < passes; ++pass) {
    const Samples in = x;
    for (std::size_t i = 2; i < x.size(); ++i) {
      const double x0 = in[i];
      const double x1 = in[i - 1];
      const double x2 = in[i - 2];
      const double sum = low ? x1 + x0 + x1 + x2 : x2 + x0 - 2 * x1;
      x[i] = static_cast<float>(a0 * sum + (low ? b1 : -b1) * x[i - 1] + b2 * x[i - 2]);
    }
  }
  return x;
}

TEST_F(DigitalFilters, CriticallyDampedAndBesselRunForwardByPasses) {
  for (const bool low : {true, false}) {
    for (const bool bessel : {false, true}) {
      SetUp();
      AnswerForm({{"optPassType", low ? "0" : "1"},
                  {"optFilter", bessel ? "Bessel" : "Critically-damped"},
                  {"FilterCutoffs 1", "20"},
                  {"Orders 1", "1"},
                  {"FilterCutoffs 2", "35.7"},
                  {"Orders 2", "3"}});
      Run("smooth.digital");
      EXPECT_EQ(Channel(trial, 1), ForwardByHand(noise[0], low, bessel, 20, 500, 1));
      EXPECT_EQ(Channel(trial, 2), ForwardByHand(noise[1], low, bessel, 35.7F, 500, 3));
      EXPECT_EQ(Channel(trial, 3), noise[2]);
    }
  }
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(DigitalFilters, RefusalsAndWhatComesAfterThem) {
  // A low-pass cut-off that is too high stops the run and the dialogue stays; the channel before is done.
  AnswerForm(
      {{"optFilter", "1"}, {"FilterCutoffs 1", "20"}, {"FilterCutoffs 2", "200"}, {"FilterCutoffs 3", "20"}});
  AnswerForm({}, "Cancel");
  Run("smooth.digital");
  EXPECT_EQ(LastBox(),
            "Invalid Cutoff Frequency|Adjusted cutoff frequency 459.79 Hz is too high (> sampling "
            "rate/2).\nMaximum is 108.74 Hz.\n\n"
            "Filtering is cancelled for channel 2.");
  EXPECT_NE(Channel(trial, 1), noise[0]);
  EXPECT_EQ(Channel(trial, 2), noise[1]);
  EXPECT_EQ(Channel(trial, 3), noise[2]);

  // Passes below 1 and designs that cannot be built leave out their channel alone.
  SetUp();
  AnswerForm({{"optFilter", "5"}, {"FilterCutoffs 1", "20"}, {"FilterCutoffs 3", "20"}, {"Orders 1", "0"}});
  Run("smooth.digital");
  EXPECT_EQ(questions.boxes.back().text,
            "Number of passes 0 is too low.\nMinimum is 1.\n\nFiltering is cancelled for channel 1.");
  EXPECT_EQ(Channel(trial, 1), noise[0]);
  EXPECT_NE(Channel(trial, 3), noise[2]);
  SetUp();
  AnswerForm({{"optPassType", "2"},
              {"FilterCutoffs 1", "20"},
              {"SecondCutoffs 1", "20"},
              {"FilterCutoffs 3", "20"},
              {"SecondCutoffs 3", "30"}});
  Run("smooth.digital");
  EXPECT_EQ(questions.boxes.back().text,
            "The lower cutoff must lie below the higher cutoff.\n\nFiltering is cancelled for channel 1.");
  EXPECT_EQ(Channel(trial, 1), noise[0]);
  EXPECT_NE(Channel(trial, 3), noise[2]);
  EXPECT_TRUE(trial.FileChanged);

  // What there is not: the notch closes the dialogue, a wrong combination keeps it open.
  SetUp();
  AnswerForm({{"optPassType", "Notch"}, {"FilterCutoffs 1", "20"}});
  Run("smooth.digital");
  EXPECT_EQ(LastBox(),
            "Not Implemented|Notch filters have not been implemented.\nUse a Band-stop filter instead.");
  EXPECT_EQ(questions.boxes.back().icon, Icon::Information);
  EXPECT_FALSE(trial.FileChanged);
  AnswerForm({{"optFilter", "Bessel"}, {"optPassType", "Band-stop (reject)"}, {"FilterCutoffs 1", "20"}});
  AnswerForm({{"optFilter", "6"}, {"optPassType", "0"}});
  AnswerForm({}, "Cancel");
  const std::size_t boxes = questions.boxes.size();
  Run("smooth.digital");
  ASSERT_EQ(questions.boxes.size(), boxes + 2);
  EXPECT_EQ(questions.boxes.back().text, "Invalid filter selection or not implemented.");
  EXPECT_EQ(Channel(trial, 1), noise[0]);
}

TEST_F(DigitalFilters, TheFormFollowsItsChoices) {
  workbench.filters.LastHighPassCutoffs[1] = 20.0F;
  workbench.filters.LastLowPassCutoffs[1] = 90.0F;
  workbench.filters.FilterCutoffs[2] = 7.0F;
  SmoothForm form(workbench);
  const auto shown = [&form](const char* field, std::size_t channel) {
    return (*std::get<ChannelNumbers*>(form.FindField(field)->target)).at(channel);
  };
  EXPECT_EQ(shown("FilterCutoffs", 1), 20);
  EXPECT_EQ(shown("FilterCutoffs", 2), 0);
  EXPECT_TRUE(form.FindField("SecondCutoffs")->hidden);
  Type(form, {{"optFilter", "1"}, {"FilterCutoffs 1", "33"}});
  EXPECT_EQ(form.FindField("optPassType")->disabledChoices, (std::vector<std::int32_t>{2, 3}));
  Type(form, {{"optFilter", "2"}});
  EXPECT_TRUE(form.FindField("optPassType")->disabledChoices.empty());
  EXPECT_EQ(shown("FilterCutoffs", 1), 33);
  Type(form, {{"optPassType", "Band-pass"}});
  EXPECT_EQ(shown("FilterCutoffs", 1), 20) << "a band takes the last cut-offs";
  EXPECT_EQ(shown("SecondCutoffs", 1), 90);
  EXPECT_FALSE(form.FindField("SecondCutoffs")->hidden);
  // Clicks ask; an empty reply changes nothing.
  questions.inputAnswers = {"12.5", "", "3.5"};
  form.ClickSecondCutoff(2);
  EXPECT_EQ(workbench.filters.SecondCutoffs[2], 12.5F);
  form.ClickCutoff(1);
  EXPECT_EQ(workbench.filters.FilterCutoffs[1], 20.0F);
  form.ClickOrder(3);
  EXPECT_EQ(shown("Orders", 3), 4);
  EXPECT_TRUE(form.FindButton("Cancel")->press());
  EXPECT_EQ(workbench.filters.FilterCutoffs[2], 7.0F);
}

TEST_F(DigitalFilters, ZeroLagIsTheOtherDialogue) {
  AnswerForm({{"FilterCutoffs 1", "20"}}, "Zero-lag");
  AnswerForm({}, "Cancel");
  Run("smooth.digital");
  EXPECT_EQ(questions.formNames, (std::vector<std::string>{"frmSmooth", "frmButterworth"}));
  EXPECT_EQ(Channel(trial, 1), noise[0]);
}

}  // namespace
}  // namespace velmora::test
