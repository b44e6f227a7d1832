#include "core/results/result_form.hpp"

#include <array>
#include <cmath>
#include <filesystem>
#include <limits>

#include "core/questions/analysis_form.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"
#include "run/report/json_text.hpp"
#include "support/command_test.hpp"
#include "support/full_disk.hpp"
#include "support/no_permission.hpp"

namespace velmora::test {
namespace {

/// A dialogue with one field of each kind that files tell, over which a small table is made.
class SampleAnalysis : public AnalysisForm {
 public:
  explicit SampleAnalysis(Workbench& workbench) : AnalysisForm(workbench, "frmSample", "Sample") {
    AddChannel("comY", "&Y", y_);
    AddChannels("channels", "&Channels", channels_);
    AddNumber("txtCutoff", "&Cut-off (Hz)", cutoff_, {.lowest = 0, .highest = 50, .openBelow = true});
    AddCount("txtOrder", "&Order", order_, {1, 20});
    AddChoice("optNorm", "", norm_, {"Over the &whole range", "Over the &overlap"});
    AddFlag("chkShift", "&Shift", shift_);
    AddText("txtLabel", "&Label", label_);
    AddButtons();
  }

 private:
  bool Compute() override {
    const bool any = y_ > 0;
    if (!any) {
      RefuseTooFewChannels(workbench_, 1);
    }
    return any;
  }

  std::int32_t y_ = 0;
  ChannelFlags channels_{};
  double cutoff_ = 6.0;
  std::int32_t order_ = 2;
  std::int32_t norm_ = 1;
  bool shift_ = false;
  std::string label_ = "a\tb";
};

struct ResultFormTest : FileTest {
  void SetUp() override {
    SetChannels(trial, {{1, 2, 3, 4}, {5, 6, 7, 8}}, 1000);
    trial.FileName = "walk.vmb";
    trial.TrialName = "walk";
    trial.TrialIndex = 3;
    trial.ChanLabel[1] = "EMG";
    trial.ChanLabel[2] = "Fz";
  }

  Results Sample(bool graph) {
    ResultTable peaks{.name = "frmPeaks", .title = "Peaks", .columns = {"Channel", "Peak", "p"}};
    peaks.rows = {{"00", 1.0 / 3.0, 0.00001}, {"01", 2.5e-7, CellOf(NAN)}};
    peaks.formats = {nullptr, ThroughPattern("0.0000"), AsProbability()};
    ResultTable fit{.name = "frmFit", .title = "Fit", .columns = {"Quantity", "Value"}};
    fit.rows = {{"CV", 0.125}};
    fit.formats = {nullptr, AsPercentage()};
    return {.name = "frmPeaks",
            .title = "Peaks of walk.vmb",
            .file = {.what = "peaks", .extension = ".pks"},
            .head = {.range = SampleRange{2, 4}, .parameters = {{"txtCutoff", "6", "Cut-off (Hz)"}}},
            .tables = {peaks, fit},
            .graph = graph ? std::optional(FormGraph{.title = "Peaks"}) : std::nullopt,
            .words = "Two peaks"};
  }
  void Press(Texts captions, bool graph = false) {
    for (const std::string& caption : captions) {
      questions.formAnswers.emplace_back([this, caption](Form& form) {
        shown_.push_back(std::string(form.Tables().front().hidden ? "" : "tables") +
                         (!form.Graph() || form.Graph()->hidden ? "" : "graph"));
        return caption;
      });
    }
    ShowResults(workbench, Sample(graph));
  }

  Texts shown_;
};

TEST_F(ResultFormTest, AFileHasAllDigitsAndAClipboardWhatIsSeen) {
  questions.fileAnswers = {{directory.Path("a")}};
  Press({"Save", "Send results to Clipboard", "Exit"});
  EXPECT_EQ(questions.files.front().defaultName, "walk.pks");
  EXPECT_EQ(questions.files.front().filter,
            "Velmora2 peaks (.pks)|*.pks|Text file (.txt)|*.txt|All files (*.*)|*.*");
  EXPECT_EQ(ReadFile(directory.Path("a.pks")),
            "Filename:\twalk.vmb\r\nTrial code:\twalk\tTrial:\t3\r\nDuration (s):\t0.003\r\n"
            "Sampling rate (Hz):\t1000.00\r\nRange:\t2\t4\r\ntxtCutoff:\t6\tCut-off (Hz)\r\n\r\n"
            "Channel\tPeak\tp\r\n00\t0.3333333333333333\t1e-05\r\n01\t2.5e-07\t\r\n\r\n"
            "Quantity\tValue\r\nCV\t0.125\r\n");
  EXPECT_EQ(workbench.results.Clipboard,
            "Peaks of walk.vmb\nChannel\tPeak\tp\n00\t0.3333\t<0.0001\n01\t0.0000\t\n\n"
            "Quantity\tValue\nCV\t12.5%\n");
  ASSERT_EQ(workbench.results.ResultTables.size(), 2U);
  const Json cells = JsonTable(workbench.results.ResultTables.front());
  EXPECT_TRUE(cells["rows"][1][2].is_null());
  EXPECT_EQ(cells["rows"][0][1], 1.0 / 3.0);
  EXPECT_EQ(cells["shown"][1][2], "");
}

TEST_F(ResultFormTest, ThePictureIsShownWithTheTablesAndAloneWhenAskedFor) {
  Press({"Graph", "Graph", "Exit"}, true);
  EXPECT_EQ(shown_, (Texts{"tablesgraph", "graph", "tablesgraph"}));
  EXPECT_FALSE(trial.FileChanged);
}

TEST_F(ResultFormTest, AFailedSaveLeavesTheFileAsItWas) {
  WriteFile(directory.Path("old.pks"), "old");
  std::filesystem::create_directory(directory.Path("d.pks"));
  questions.fileAnswers = {{directory.Path("d.pks")}, {directory.Path("none/x.pks")}, {}};
  Press({"Save", "Save", "Save", "Exit"});
  EXPECT_EQ(workbench.report.failures.size(), 2U);
  const auto says = [this](const std::string& why) {
    questions.fileAnswers = {{directory.Path("old.pks")}};
    Press({"Save", "Exit"});
    return LastBox().find("old.pks\nFile may be in-use or write-protected.\n\n\"" + why + "\"") !=
           std::string::npos;
  };
  {
    const FullDisk disk(100);
    EXPECT_TRUE(says("File too large")) << LastBox();
  }
  EXPECT_TRUE(WithoutPermission(directory.Path(""), [&] { return says("Permission denied"); }));
  EXPECT_EQ(ReadFile(directory.Path("old.pks")), "old");
}

TEST_F(ResultFormTest, ADialogueStaysWhileItIsRefusedAndFilesTellWhatWasEntered) {
  SampleAnalysis form(workbench);
  AnswerForm({{"txtCutoff", "0"}});
  AnswerForm({{"txtCutoff", "50"}, {"txtOrder", "21"}});
  AnswerForm({{"txtOrder", "20"}});
  AnswerForm({{"comY", "01: Fz"}, {"channels 1", "yes"}, {"channels 2", "yes"}});
  EXPECT_TRUE(form.Ask());
  EXPECT_EQ(workbench.report.warnings,
            (Texts{"Invalid Entry: Cut-off (Hz) must be from 0 to 50.",
                   "Invalid Entry: Order must be from 1 to 20.",
                   "Too Few Channels Selected: You must choose at least 1 channel."}));
  Texts told;
  for (const ResultParameter& of : ParametersOf(trial, form)) {
    told.push_back(of.name + "=" + of.value);
  }
  EXPECT_EQ(told, (Texts{"comY=01: Fz", "channels=00 EMG; 01 Fz", "txtCutoff=50", "txtOrder=20",
                         "optNorm=Over the overlap", "chkShift=no", "txtLabel=a b"}));
  SampleAnalysis left(workbench);
  AnswerForm({}, "Cancel");
  EXPECT_FALSE(left.Ask());
}

TEST_F(ResultFormTest, PresetsGoByLabel) {
  EXPECT_EQ(ChannelByLabel(trial, {"Fx", "fz"}), 2);
  EXPECT_EQ(ChannelByLabel(trial, {"em"}), 1);
  EXPECT_EQ(ChannelByLabel(trial, {"Force"}), 0);
}

TEST_F(ResultFormTest, ChannelsAreAppendedWhileThereArePlaces) {
  ASSERT_TRUE(HasFreeChannels(workbench, 62));
  workbench.FirstChanShown = 2;
  const NewChannel made[] = {{"A label of more than thirty characters", "m/s^2 and on"}, {"Second", "N"}};
  EXPECT_EQ(AppendChannels(workbench, made), 3);
  EXPECT_EQ(Labels(), (Texts{"EMG", "Fz", "A label of more than thirty ch", "Second"}));
  EXPECT_EQ(UnitsOfChannels()[2], "m/s^2 and");
  EXPECT_EQ(trial.ChanNumber[4], 4);
  EXPECT_EQ(trial.ChanColour[4], 5);
  EXPECT_EQ(trial.ChanAutozero[4], 0);
  EXPECT_EQ(trial.ChanRate[4], 1000);
  EXPECT_EQ(Channel(trial, 2), (Samples{5, 6, 7, 8}));
  EXPECT_EQ(Channel(trial, 4), Samples(4, 0.0F));
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(workbench.FirstChanShown, 1);
  EXPECT_EQ(workbench.LastChanShown, 4);
  EXPECT_FALSE(HasFreeChannels(workbench, 61));
  EXPECT_EQ(LastBox(),
            "No Free Channels|There are no more free channels.  This needs 61 and there are 60.  Erase "
            "channels with the Channel menu.");
}

TEST_F(ResultFormTest, SamplesThatAreNoNumbersAreToldChannelByChannel) {
  trial.Data(2, 1) = std::numeric_limits<float>::quiet_NaN();
  trial.Data(4, 1) = std::numeric_limits<float>::infinity();
  EXPECT_EQ(WithoutMissing(workbench, {1, 2}, {1, 4}), std::vector<int>{2});
  EXPECT_EQ(LastBox(), "Missing Data|Channel 00 has 2 samples that are no numbers between samples 1 and 4.");
  EXPECT_EQ(MissingSamples(trial, 1, {3, 4}), 1);
  EXPECT_EQ(workbench.report.deeds.back().refused.front().why, "2 samples that are no numbers");
}

TEST_F(ResultFormTest, SecondsNeedARateAndABaseOfSeconds) {
  EXPECT_TRUE(HasTimeBase(workbench));
  workbench.time.Base = TimeBase::Percentage;
  EXPECT_FALSE(HasTimeBase(workbench));
  workbench.time.Base = TimeBase::Seconds;
  trial.Rate = 0;
  EXPECT_FALSE(HasTimeBase(workbench));
  EXPECT_EQ(LastBox(), "Invalid Sampling Rate or Timebase|Data not time based.  Processing cannot continue.");
}

}  // namespace
}  // namespace velmora::test
