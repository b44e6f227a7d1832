// Filters by design and the EMG analyses as steps: what a person did, repeated from the history with its
// files and tables.
#include "run/report/info.hpp"
#include "support/recorded_person.hpp"

namespace velmora::test {
namespace {

// 3 s at 1000 Hz: noise that is loud in the second second.
std::vector<Samples> Bursting() {
  auto channels = NoiseChannels(2, 3000, 11);
  for (auto& channel : channels) {
    for (std::size_t i = 0; i < channel.size(); ++i) {
      channel[i] *= i >= 1000 && i < 2000 ? 1.0F : 0.05F;
    }
  }
  return channels;
}

using DesignedHistory = RecordedPerson;

// What a person does is heard, written as a recipe, and repeated in a fresh program.
TEST_F(DesignedHistory, IsRepeatedWithItsFiles) {
  WriteTrialFile(input, [](Trial& trial) {
    SetChannels(trial, Bursting(), 1000);
    trial.ChanLabel[1] = "Biceps";
    trial.ChanLabel[2] = "Triceps";
  });
  // Of earlier trials, which a program just started does not know: what an edit fills in from there.
  workbench.filters.FilterCutoffs[2] = 70;
  workbench.filters.LastHighPassCutoffs[1] = 5;
  workbench.filters.LastLowPassCutoffs[1] = 300;
  workbench.emg.Maximums = {{.Label = "Biceps", .Maximum = 0.25}};
  Load();
  person.FillForm({{"channels 2", "yes"}}, "Filter");
  Do("filter.design");
  EXPECT_EQ(history.Lines().back().words,
            "Low-pass Butterworth, order 2, zero-lag, 70 Hz over both passes: Triceps");
  person.FillForm({{"optFilter", "Chebyshev"}, {"optPassType", "Band-pass"}, {"Orders 1", "2"}}, "Filter");
  Do("smooth.butterworth");
  person.FillForm({{"optFamily", "4"}, {"txtTaps", "51"}, {"txtCutoff", "80"}, {"channels 1", "yes"}},
                  "Filter");
  Do("filter.design");
  person.PickValues({{1, "6"}, {2, "6"}});
  Do("emg.linear-envelope");
  Press("Normalize", {{"optSource", "2"}, {"optSource", "0"}, {"channels 1", "yes"}});
  Press("Exit");
  Do("emg.normalize");
  EXPECT_EQ(workbench.trial.ChanUnits[1].Text(), "%");
  workbench.emg.Maximums.clear();
  person.FillForm({{"optMethod", "3"}, {"channels 1", "yes"}, {"channels 2", "yes"}}, "Compute");
  Press("Save", {}, "day.max");
  Press("Exit");
  Do("emg.maximums");
  Press("Normalize", {{"optSource", "1"}, {"channels 1", "yes"}, {"channels 2", "yes"}}, "day.max");
  Press("Exit");
  Do("emg.normalize");
  EXPECT_EQ(workbench.trial.ChanUnits[1].Text(), "%");
  const auto analyse = [this](const char* command, const Edits& edits, const char* press = "Compute") {
    Press(press, edits);
    Press("Exit");
    Do(command);
  };
  analyse("filter.residuals", {{"txtLineFrom", "200"}, {"channels 2", "yes"}});
  analyse("emg.onsets", {{"channels 1", "yes"}});
  analyse("emg.co-contraction", {});
  analyse("emg.integrate-epoch", {{"WindowWidth", "0.5"}, {"WindowInSeconds", "yes"}, {"channels 1", "yes"}},
          "OK");
  analyse("emg.integrate-reset", {{"optReset", "1"}, {"txtLevel", "5"}, {"channels 1", "yes"}}, "Integrate");
  EXPECT_TRUE(person.formAnswers.empty());
  const std::vector<std::uint32_t> done = Bits(workbench.trial);

  const auto again = Replay();
  EXPECT_EQ(Bits(again->State().trial), done) << history.Recipe();
  const std::string info = InfoText(again->State());
  for (const char* table : {"frmMaximums", "frmNormalize", "frmResiduals", "frmResidualCurve", "frmOnsets",
                            "frmOnsetsSummary", "frmCoContraction", "frmEpoch", "frmIntegrateReset"}) {
    EXPECT_NE(info.find("\"" + std::string(table) + "\""), std::string::npos) << table;
  }
}

}  // namespace
}  // namespace velmora::test
