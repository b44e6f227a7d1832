// Cancel while an analysis is at work: nothing of it stays.
#include <cmath>

#include "core/text/text.hpp"
#include "support/command_test.hpp"
#include "support/signals.hpp"

namespace velmora::test {
namespace {

struct CancelMidway : CommandTest {
  // One signal that every analysis finds something in, under the labels that they look for.
  CancelMidway() {
    const Samples wave = Sampled(4000, [](double i) { return 700 + 690 * std::sin(i * 0.01); });
    SetChannels(trial, {wave, wave, wave}, 1000);
    const char* labels[] = {"Fz", "ax", "ay"};
    const char* units[] = {"N", "N", "N"};
    for (int c = 1; c <= trial.NChan; ++c) {
      trial.ChanLabel[c] = labels[c - 1];
      trial.ChanUnits[c] = units[c - 1];
    }
    trial.FileChanged = false;
  }
};

TEST_F(CancelMidway, LeavesTheTrialAsItWas) {
  const struct {
    const char* command;
    Edits edits;
  } analyses[] = {
      {"plates.gravity", {{"comFz", "1"}, {"txtQuiet", "0.5"}}},
      {"plates.sway", {{"comML", "2"}, {"comAP", "3"}}},
      {"plates.contacts", {{"channels 1", "true"}}},
      {"impact.accelerometry", {{"comX", "1"}, {"comY", "2"}, {"comZ", "3"}, {"optUnits", "g"}}},
      {"impact.analysis", {{"channels 1", "true"}}},
      {"integrate.work", {{"channels 1", "true"}, {"chkIntegral", "true"}}},
      {"emg.onsets", {{"channels 1", "true"}}},
      {"emg.maximums", {{"channels 1", "true"}}},
      {"emg.integrate-reset", {{"channels 1", "true"}}},
      {"filter.design", {{"channels 1", "true"}, {"txtCutoff", "10"}}},
      {"filter.residuals", {{"channels 1", "true"}}},
  };
  const std::vector<std::uint32_t> before = Bits(trial);
  for (const auto& analysis : analyses) {
    SCOPED_TRACE(analysis.command);
    bool worked = false;
    questions.onProgress = [&worked](ProgressPanel& panel) {
      worked = true;
      panel.PressCancel();
    };
    questions.formAnswers.emplace_back([&](Form& form) {
      Type(form, analysis.edits);
      for (const FormButton& button : form.Buttons()) {
        if (button.role == FormButton::Role::Accept) {
          return WithoutMnemonic(button.caption);
        }
      }
      return std::string("Cancel");
    });
    AnswerForm({}, "Cancel");
    Run(analysis.command);
    EXPECT_TRUE(worked) << LastBox();
    EXPECT_EQ(questions.formAnswers.size(), 0U) << "the dialogue is there again";
    EXPECT_EQ(Bits(trial), before);
    EXPECT_FALSE(trial.FileChanged);
    EXPECT_TRUE(workbench.results.ResultTables.empty());
    EXPECT_TRUE(workbench.report.failures.empty());
    questions.formAnswers.clear();
    workbench.report = {};
  }
}

}  // namespace
}  // namespace velmora::test
