#include "edit/edit_commands.hpp"

#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct Edit : FileTest {
  Edit() { SetChannels(trial, {{1, 2, 3, 4, 5}, {6, 7, 8, 9, 10}}, 100.0); }
};

TEST_F(Edit, LabelsAndUnitsThroughThePicker) {
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    EXPECT_EQ(picker.ClosingCaption(), "&Save");
    picker.SetName(2, "A label of more than thirty characters");
    return std::string("Save");
  });
  Run("edit.labels");
  EXPECT_EQ(trial.ChanLabel[1], "");
  EXPECT_EQ(trial.ChanLabel[2], "A label of more than thirty ch");
  EXPECT_TRUE(trial.FileChanged);

  MarkChanged(workbench, false);
  questions.pickAnswers.emplace_back([](ChannelPicker& picker) {
    EXPECT_EQ(picker.ValueText(1), "V");
    picker.SetName(1, "N");
    return std::string("Cancel");
  });
  Run("edit.units");
  EXPECT_EQ(trial.ChanUnits[1], "V");
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(Edit, LabelsOfTheTrialBeforeComeBack) {
  trial.SavedLabels = {};
  Run("edit.recall-labels");
  EXPECT_EQ(workbench.report.warnings.size(), 1U);

  trial.ChanLabel[1] = "Heel";
  trial.ChanUnits[1] = "m/s";
  const std::string path = SaveAs("one.vmb");
  SetChannels(trial, {{1, 2}, {3, 4}, {5, 6}});
  trial.ChanLabel[1] = "Toe";
  trial.ChanLabel[3] = "Knee";
  const std::string other = SaveAs("three.vmb");
  LoadPath(path);
  Run("timebase.percentage");
  LoadPath(other);
  Run("edit.recall-labels");
  EXPECT_EQ(trial.ChanUnits[0], "s") << "which is what it counts";
  EXPECT_EQ(trial.ChanLabel[1], "Heel");
  EXPECT_EQ(trial.ChanUnits[1], "m/s");
  EXPECT_TRUE(trial.FileChanged);
}

TEST_F(Edit, ACorrectedRateKeepsTheSamples) {
  questions.inputAnswers = {"", "abc", "-5", "1e300", " 50 Hz"};
  for (int i = 0; i < 4; ++i) {
    Run("edit.sampling-rate");
  }
  EXPECT_EQ(questions.inputs.back().defaultText, "100");
  EXPECT_EQ(questions.boxes.size(), 3U);
  EXPECT_EQ(trial.Rate, 100.0);
  EXPECT_FALSE(trial.FileChanged);
  Run("edit.sampling-rate");
  EXPECT_EQ(trial.Rate, 50.0);
  EXPECT_EQ(trial.ChanRate[2], 50.0);
  EXPECT_EQ(trial.Duration, 0.08);
  EXPECT_EQ(trial.OriginalDuration, 0.08);
  EXPECT_EQ(Channel(trial, 0), (Samples{0, 0.02F, 0.04F, 0.06F, 0.08F}));
  EXPECT_EQ(Channel(trial, 1), (Samples{1, 2, 3, 4, 5}));
  EXPECT_TRUE(trial.FileChanged);

  workbench.time.Base = TimeBase::Percentage;
  Run("edit.sampling-rate");
  EXPECT_EQ(trial.Rate, 50.0);
}

TEST_F(Edit, TheTitle) {
  trial.TrialTitle = "1 before";
  questions.inputAnswers = {"", "2 after"};
  Run("edit.title");
  EXPECT_EQ(trial.TrialTitle, "1 before");
  EXPECT_FALSE(trial.FileChanged);
  Run("edit.title");
  EXPECT_EQ(trial.TrialTitle, "2 after");
  EXPECT_TRUE(trial.FileChanged);
}

TEST_F(Edit, ExperimentInformationStaysInTheNativeBinaryFile) {
  workbench.records.FILMINFO[122] = 'r';  // what nobody interprets
  AnswerForm({{"txtProject", "Gait"},
              {"txtSurname", "Müller"},
              {"txtSex", "f"},
              {"txtAge", "34"},
              {"txtMass", "61.5"},
              {"txtDate", "2026-01-31"},
              {"txtLine4", "barefoot"}});
  Run("edit.experiment-information");
  EXPECT_EQ(trial.HeaderLines[4], "barefoot");
  EXPECT_TRUE(trial.FileChanged);
  const std::string path = SaveAs("info.vmb");
  const std::string bytes = ReadFile(path);
  EXPECT_EQ(bytes.substr(3582, 8), "Gait    ");
  EXPECT_EQ(bytes.substr(3582 + 61, 26), "M\xFCller" + std::string(20, ' '));
  EXPECT_EQ(bytes.substr(3582 + 103, 11), "f34        ");
  EXPECT_EQ(bytes.substr(3582 + 114, 4), std::string("\x00\x00\x76\x42", 4)) << "61.5 as a 32-bit float";
  EXPECT_EQ(bytes[3582 + 122], 'r');
  EXPECT_EQ(bytes.substr(3582 + 184, 11), "2026-01-31 ");
  EXPECT_EQ(bytes.substr(4138 + 3 * 61, 9), "barefoot ");

  workbench.records = NativeRecords();
  LoadPath(path);
  questions.formAnswers.emplace_back([](Form& form) {
    EXPECT_EQ(*std::get<std::string*>(form.FindField("txtSurname")->target), "Müller");
    EXPECT_EQ(*std::get<double*>(form.FindField("txtMass")->target), 61.5);
    form.Edit(*form.FindField("txtSurname"), "nobody");
    return std::string("Cancel");
  });
  Run("edit.experiment-information");
  AnswerForm({{"txtSex", "female"}});
  AnswerForm({{"txtSex", "F"}});
  Run("edit.experiment-information");
  EXPECT_EQ(questions.boxes.back().text, "Sex is longer than 1 characters.");
  EXPECT_EQ(workbench.records.FILMINFO.substr(61, 7), "M\xFCller ");
  EXPECT_EQ(workbench.records.FILMINFO[103], 'F');
  EXPECT_TRUE(trial.FileChanged);
}

// A command that is left before its picker comes up does not lend the next one its kind of picker.
TEST_F(Edit, APickerIsOfTheCommandThatAsks) {
  SetChannels(trial, NoiseChannels(2, 20));
  questions.inputAnswers = {""};
  Run("bias.autozero-left");
  std::string mode;
  questions.pickAnswers.emplace_back([&mode](ChannelPicker& picker) {
    mode = picker.Mode();
    return std::string("Cancel");
  });
  Run("edit.units");
  EXPECT_EQ(mode, "names");
}

}  // namespace
}  // namespace velmora::test
