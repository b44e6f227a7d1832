// Filters by design and the EMG analyses as steps: every command from a recipe with its tables, and what a
// person did repeated from the history.
#include "support/recipe_test.hpp"
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

struct DesignedSteps : RecipeTest {
  void MakeTrial(Trial& trial) override {
    SetChannels(trial, Bursting(), 1000);
    trial.ChanLabel[1] = "Biceps";
    trial.ChanLabel[2] = "Triceps";
    trial.ChanUnits[1] = trial.ChanUnits[2] = "mV";
  }
};

TEST_F(DesignedSteps, EveryCommandRunsAndItsTablesAreInTheInfo) {
  Run(R"(
  - do: filter.residuals
    answers:
      - form: {txtLineFrom: 200, channels: {1: true}, press: Compute}
      - form: {press: Exit}
  - do: filter.design
    answers:
      - form: {optFamily: Notch, txtCutoff: 50, channels: {1: true, 2: true}, press: Filter}
  - do: emg.onsets
    answers:
      - form: {channels: {1: true}, press: Compute}
      - form: {press: Graph}
      - form: {press: Exit}
  - do: emg.linear-envelope
    answers:
      - pick: {values: {1: 6, 2: 6}}
  - do: emg.maximums
    answers:
      - form: {channels: {1: true, 2: true}, press: Compute}
      - form: {press: Exit}
  - do: emg.co-contraction
    answers:
      - form: {press: Compute}
      - form: {press: Exit}
  - do: emg.integrate-epoch
    answers:
      - form: {WindowWidth: 0.5, WindowInSeconds: true, channels: {1: true}}
      - form: {press: Exit}
  - do: emg.normalize
    answers:
      - form: {channels: {1: true, 2: true}, press: Normalize}
      - form: {press: Exit}
  - do: emg.integrate-reset
    answers:
      - form: {optReset: At a level, txtLevel: 5, channels: {1: true}, press: Integrate}
      - form: {press: Exit}
  - do: graph.multi
    answers:
      - form: {channels: [2]}
  - view: {key: "2"}
  - do: values.maximums
    answers:
      - form: {txtWindow: 0.1, press: Compute}
      - form: {press: Exit}
  - info: "${out}/all.json"
)");
  ASSERT_FALSE(outcome_.failure) << Why();
  const std::string info = ReadFile(directory_.Path("all.json"));
  for (const char* table :
       {"frmResiduals", "frmResidualCurve", "frmOnsets", "frmOnsetsSummary", "frmMaximums",
        "frmCoContraction", "frmEpoch", "frmNormalize", "frmIntegrateReset"}) {
    EXPECT_NE(info.find("\"" + std::string(table) + "\""), std::string::npos) << table;
  }
}

using DesignedHistory = RecordedPerson;

// What a person does is heard, written as a recipe, and repeated in a fresh program.
TEST_F(DesignedHistory, IsRepeatedWithItsFiles) {
  WriteTrialFile(input, [](Trial& trial) { SetChannels(trial, Bursting(), 1000); });
  Load();
  person.FillForm({{"optFamily", "4"}, {"txtTaps", "51"}, {"txtCutoff", "80"}, {"channels 1", "yes"}},
                  "Filter");
  Do("filter.design");
  person.PickValues({{1, "6"}, {2, "6"}});
  Do("emg.linear-envelope");
  person.FillForm({{"optMethod", "3"}, {"channels 1", "yes"}, {"channels 2", "yes"}}, "Compute");
  person.FillForm({}, "Save");
  person.fileAnswers.push_back({directory.Path("day.max")});
  person.FillForm({}, "Exit");
  Do("emg.maximums");
  person.fileAnswers.push_back({directory.Path("day.max")});
  person.FillForm({{"optSource", "1"}, {"channels 1", "yes"}, {"channels 2", "yes"}}, "Normalize");
  person.FillForm({}, "Exit");
  Do("emg.normalize");
  EXPECT_EQ(workbench.trial.ChanUnits[1].Text(), "%");
  const std::vector<std::uint32_t> done = Bits(workbench.trial);

  EXPECT_EQ(Bits(Replay()->State().trial), done) << history.Recipe();
}

}  // namespace
}  // namespace velmora::test
