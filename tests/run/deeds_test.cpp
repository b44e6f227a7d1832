#include "run/recipe/recipe_run.hpp"
#include "support/command_test.hpp"
#include "support/recipe_test.hpp"

namespace velmora::test {
namespace {

/// Says yes to everything: boxes by their first button, pickers and forms with all channels and values that
/// change them.
class Yes : public Questions {
 public:
  explicit Yes(std::string saved) : saved_(std::move(saved)) {}
  int forms = 0;

  Button AskBox(const Box& box) override { return box.buttons.front(); }
  std::string AskInput(const InputQuestion& /*question*/) override { return "7"; }
  std::vector<std::string> AskFile(const FileQuestion& question) override {
    return {saved_ + question.extension};
  }
  std::string AskPick(ChannelPicker& picker) override {
    for (int c = 1; c <= picker.Channels(); ++c) {
      if (picker.HasNames()) {
        picker.SetName(c, "New " + std::to_string(c));
      } else if (picker.HasValues()) {
        picker.SetValue(c, std::to_string(c + 1));
      } else if (!picker.SelectsOne()) {
        picker.Select(c, c <= most_);
      } else {
        picker.Choose(1);
      }
    }
    return "OK";
  }
  std::string AskForm(Form& form) override {
    ++forms;
    if (const FormField* field = form.FindField("channels")) {
      form.Edit(*field, 1, "true");
      form.Edit(*field, 2, "true");
    }
    for (const auto& [name, value] : Edits{{"FilterCutoffs", "9"}, {"CursorLo", "20"}, {"CursorHi", "300"}}) {
      if (const FormField* field = form.FindField(name); field != nullptr && !field->readOnly) {
        form.Edit(*field, name == "FilterCutoffs" ? 1 : 0, value);
      }
    }
    if (const FormField* field = form.FindField("txtProject")) {
      form.Edit(*field, 0, "Stairs");
    }
    return forms < 3 ? "OK" : "Cancel";
  }
  void ShowProgress(ProgressPanel& /*panel*/) override {}
  void EndProgress(ProgressPanel& /*panel*/) override {}
  void SelectAtMost(int channels) { most_ = channels; }

 private:
  std::string saved_;
  int most_ = kMaxChannels;
};

/// All that a recipe could write of a trial.
std::string TrialText(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  std::string text = trial.TrialTitle + "|" + std::to_string(trial.Rate) + "|" + workbench.records.FILMINFO;
  for (int c = 0; c <= trial.NChan; ++c) {
    text += trial.ChanLabel[c].Text() + "|" + trial.ChanUnits[c].Text() + "|" +
            std::to_string(trial.ChanRate[c]) + "|";
  }
  return text;
}

class DeedsTest : public testing::Test {
 protected:
  TemporaryDirectory directory_;
  Yes yes_{directory_.Path("saved")};
  Workbench workbench_{yes_};

  /// A trial with cursors, one loaded before it, and a graph with two cursors for what needs one.
  void Prepare(const Command& command) {
    SetChannels(workbench_.trial, NoiseChannels(3, 500), 200.0);
    workbench_.trial.FileName = directory_.Path("noise.vmb");
    workbench_.trial.SavedLabels[2] = "Before";
    workbench_.trial.SavedUnits[2] = "mV";
    workbench_.chooser.ChanSelected[1] = true;
    workbench_.DataDir = directory_.Path("");
    workbench_.trial.CursorLo = 50;
    workbench_.trial.CursorHi = 400;
    if (command.needs == Needs::View) {
      RunCommand(workbench_, *FindCommand("graph.all"));
      RunCommand(workbench_, *FindCommand("cursor.two"));
    }
    yes_.SelectAtMost(command.id == "math.rms-residuals" ? 2 : kMaxChannels);
    yes_.forms = 0;
    workbench_.report = {};
  }
};

TEST_F(DeedsTest, EveryCommandThatChangesTheTrialOrWritesAFileSaysSo) {
  // Files for the commands that read one.
  for (const char* id : {"save.vmu", "save.bsv"}) {
    Prepare(*FindCommand(id));
    workbench_.chooser.ChanConst.fill(3.0F);
    RunCommand(workbench_, *FindCommand(id));
  }
  int changing = 0;
  int writing = 0;
  for (const Command& command : AllCommands()) {
    if (command.id.starts_with("file.") && command.id != "file.read-units") {
      continue;  // they leave the trial, or have tests of their own
    }
    Prepare(command);
    const std::vector<std::uint32_t> before = Bits(workbench_.trial);
    const std::string textBefore = TrialText(workbench_);
    RunCommand(workbench_, command);
    const bool changed = Bits(workbench_.trial) != before || TrialText(workbench_) != textBefore;
    const bool saves = command.id.starts_with("save.") && workbench_.report.failures.empty() &&
                       workbench_.report.warnings.empty();
    changing += changed ? 1 : 0;
    writing += saves ? 1 : 0;
    EXPECT_TRUE(!(changed || saves) || DidAnything(workbench_.report.deeds)) << command.id;
    for (const Deed& deed : workbench_.report.deeds) {
      EXPECT_EQ(deed.what.find('\n'), std::string::npos) << command.id;
    }
    CloseView(workbench_);
  }
  EXPECT_GE(changing, 48);
  EXPECT_GE(writing, 7);
}

struct DeedWordsTest : CommandTest {
  void SetUp() override {
    SetChannels(trial, NoiseChannels(3, 500), 500.0);
    trial.ChanLabel[1] = "Vastus lat";
    trial.ChanLabel[2] = "Biceps fem";
    trial.ChanLabel[3] = "Footswitch";
  }
  std::string Told() { return WordsOf(std::exchange(workbench.report, {}).deeds); }
};

TEST_F(DeedWordsTest, SayWithWhatAndToWhichChannelsAndWhatWasRefused) {
  questions.FillForm({{"FilterCutoffs 1", "6"}, {"FilterCutoffs 2", "6"}, {"FilterCutoffs 3", "600"}},
                     "Filter");
  Run("smooth.butterworth");
  // The cut-off of two passes is raised by 1/0.8022: at most 250 * 0.8022 Hz.
  EXPECT_EQ(Told(),
            "Low-pass Butterworth, 2nd order, zero-lag, 6 Hz: Vastus lat, Biceps fem. "
            "Refused: Footswitch (600 Hz, at most 200.56 Hz)");
  questions.FillForm({{"FilterCutoffs 1", "0"}, {"FilterCutoffs 2", "0"}, {"FilterCutoffs 3", "600"}},
                     "Filter");
  Run("smooth.butterworth");
  EXPECT_FALSE(DidAnything(workbench.report.deeds));
  workbench.report = {};
  RunTyping("math.multiply", {{1, "0"}, {2, "1"}, {3, "2.5"}});
  EXPECT_EQ(Told(), "Multiplied by 2.5: Footswitch");
  RunTyping("math.power", {{1, "2"}, {2, "3"}, {3, "-1"}});
  EXPECT_EQ(Told(),
            "Raised to the power 2: Vastus lat. Raised to the power 3: Biceps fem. "
            "Refused: Footswitch (power -1, at least 0)");
  RunPicking("math.absolute", {1, 2, 3});
  EXPECT_EQ(Told(), "Absolute value: all 3 channels");
  RunTyping("math.multiply", {{1, "1"}});
  questions.PickCancel();
  Run("math.absolute");
  EXPECT_EQ(Told(), "");
}

TEST(DeedWords, ManyChannelsAreToldBrieflyOrInFull) {
  Deed deed{.what = "Squared", .channels = {}, .allChannels = false, .refused = {}};
  for (int c = 1; c <= 12; ++c) {
    deed.channels.push_back("E" + std::to_string(c));
    deed.refused.push_back({"F" + std::to_string(c), "too low"});
  }
  EXPECT_EQ(SentenceOf(deed),
            "Squared: E1, E2, E3, E4 and 8 others (12 channels). "
            "Refused: F1, F2, F3, F4 and 8 others (12 channels) (too low)");
  EXPECT_NE(SentenceOf(deed, Telling::InFull).find("E11, E12. Refused: F1, F2"), std::string::npos);
}

class DeedRecipeTest : public RecipeTest {
  void MakeTrial(Trial& trial) override { SetChannels(trial, NoiseChannels(2, 100), 200.0); }
};

TEST_F(DeedRecipeTest, TranscriptInfoAndOutcomeReadTheSameRecord) {
  Run("  - do: analysis.low-pass\n    answers:\n      - pick: {values: {1: 6, 2: 900}}\n"
      "  - do: edit.title\n    answers:\n      - input: Stairs\n"
      "  - do: math.absolute\n    answers:\n      - pick: {press: Cancel}\n"
      "  - info: ${out}/a.json\n");
  ASSERT_FALSE(outcome_.failure) << Why();
  std::vector<nlohmann::json> done;
  for (const std::string& line : done_) {
    done.push_back(nlohmann::json::parse(line));
  }
  ASSERT_EQ(done.size(), 2U);
  ASSERT_EQ(outcome_.done.size(), 2U);
  EXPECT_EQ(done[0].at("step"), 1);
  EXPECT_EQ(done[0].at("channels").size(), 1U);
  EXPECT_EQ(done[0].at("refused")[0].at("why"), "900 Hz, at most 80.22 Hz");
  EXPECT_EQ(done[0].at("text"), outcome_.done[0].what);
  EXPECT_EQ(done[1].at("text"), "Title \"Stairs\"");
  EXPECT_EQ(Info("a.json").at("Done")[0].at("what"), done[0].at("what"));
  EXPECT_EQ(Info("a.json").at("Done").size(), 2U);
}

}  // namespace
}  // namespace velmora::test
