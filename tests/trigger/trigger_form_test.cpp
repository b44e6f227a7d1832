// The trigger form as commands, recipes and the window use it.
#include "trigger/trigger_form.hpp"

#include "support/command_test.hpp"
#include "support/signals.hpp"
#include "support/texts.hpp"

namespace velmora::test {
namespace {

constexpr const char* kNotScanned = "Data Not Scanned|Data need to be scanned first. Press the Scan button.";

/// 13 samples at 10 Hz; channel 2 rises through 20 at samples 2, 7 and 11.
struct TriggerFormTest : FileTest {
  std::string shown;     // by the last table
  std::size_t rows = 0;  // of it

  void SetUp() override {
    SetChannels(trial, {Samples(13, 1.0F), {0, 30, 30, 0, -5, 0, 40, 40, 10, 0, 50, 50, 0}}, 10.0);
    trial.ChanLabel[1] = "A&B";
    trial.ChanLabel[2] = "Fz  ";
    trial.ChanUnits[2] = "N";
    trial.FileName = "walk.vmb";
    trial.TrialName = "walk";
    workbench.DataDir = "/data/";
    workbench.preferences.TriggerChannel = 2;
    Run("graph.all");
  }
  SingleView& View() { return OpenSingleView(workbench); }
  void Press(const char* button, const Edits& edits = {}) {
    questions.formAnswers.emplace_back([edits, button](Form& form) {
      Type(form, edits);
      return std::string(button);
    });
  }
  /// The last press, and what the form shows then.
  void Exit(const std::function<void(Form&)>& look = {}) {
    questions.formAnswers.emplace_back([this, look](Form& form) {
      const ResultTable table = form.Tables().empty() ? ResultTable{} : form.Tables().front();
      shown = TableText(table);
      rows = table.rows.size();
      if (look) {
        look(form);
      }
      return std::string("Exit");
    });
    Run("trigger.open");
  }
  static std::string TextOf(Form& form, const char* field) { return Form::TextOf(*form.FindField(field)); }
  [[nodiscard]] std::vector<double> Cursors() { return View().CommonCursors(); }
};

TEST_F(TriggerFormTest, AScanSetsCursorsAndTellsOfThem) {
  Press("Scan", {{"comType", "0"}, {"txtTrigLevel1", "20"}});
  Press("Save");
  questions.fileAnswers.push_back({directory.Path("walk.trg")});
  Press("Clipboard");
  Exit([](Form& form) {
    EXPECT_EQ(TextOf(form, "txtFound"), "3");
    EXPECT_EQ(TextOf(form, "txtUnits"), "N");
    EXPECT_EQ(TextOf(form, "txtTime"), "1.200 s");
    EXPECT_EQ(form.FindField("comChannels")->choices, (Texts{"00: A&&B", "01: Fz"}));
  });
  EXPECT_EQ(Cursors(), (std::vector<double>{0.1, 0.6, 1.0}));
  EXPECT_EQ(View().Drawing().Cursors[0].Color, kYellow);
  EXPECT_EQ(View().Drawing().Cursors[2].Color, kRed);
  EXPECT_HAS(shown,
             "\n2\t0.1000 \t30.0000 \t30.0000 \t0.10 \t300.0000 \t\t\t\n"
             "7\t0.6000 \t40.0000 \t10.0000 \t0.50 \t20.0000 \t120.0\t2.00\t5.5000\n"
             "11\t1.0000 \t50.0000 \t10.0000 \t0.40 \t25.0000 \t150.0\t2.50\t9.0000\n");
  EXPECT_EQ(rows, 3U);
  EXPECT_EQ(ReadFile(directory.Path("walk.trg")),
            "File:\t/data/walk.vmb\tTrial=\t-1\n"
            "Channel:\t01\tFz\tTriggering:\tAbove (+ve slope)\n"
            "Sample\tTime\tValues\tChange\tdeltaT\tDerivative\tRate\tFrequency\tIntegral\n"
            "number\ts\tN\tN\ts\tN/s\t/min\tHz\tN.s\n"
            "2\t0.10000\t30.0000\t30.0000\t0.10000\t300.0000 \n"
            "7\t0.60000\t40.0000\t10.0000\t0.50000\t20.0000\t120.0\t2.00\t5.5000\n"
            "11\t1.00000\t50.0000\t10.0000\t0.40000\t25.0000\t150.0\t2.50\t9.0000\n");
  EXPECT_EQ(questions.files.back().extension, ".evt");
  EXPECT_TRUE(
      workbench.results.Clipboard.starts_with("Filename:\twalk.vmb\nTrial:\twalk\nChannel:\tFz\tTriggering:"
                                              "\tAbove (+ve slope)\nRange:\t0.000\t1.200\n"
                                              "Times:\nSample (#)\tTime (s)\t"))
      << workbench.results.Clipboard;
  EXPECT_EQ(workbench.preferences.TriggerType, 0);
  EXPECT_EQ(workbench.preferences.TriggerHigh, 20);
  EXPECT_EQ(workbench.preferences.TriggerLow, -1);
  EXPECT_FALSE(trial.FileChanged);
  // Behind those that are there, in a colour of its own, on an abscissa that starts later.
  for (std::int64_t i = 1; i <= 13; ++i) {
    trial.Data(i, 0) += 5.0F;
  }
  Press("Scan", {{"comColours", "4"}, {"txtMax", "1"}});
  Exit();
  ASSERT_EQ(Cursors().size(), 4U);
  EXPECT_DOUBLE_EQ(Cursors()[3], 5.1);
  EXPECT_EQ(View().Drawing().Cursors[3].Color, ColourTable[4]);
}

TEST_F(TriggerFormTest, BoxesTakeTheLevelsInOrder) {
  Press("Scan", {{"comType", "Outside values"}, {"txtTrigLevel1", "-3"}, {"txtTrigLevel2", "45"}});
  Press("Scan");
  Exit([](Form& form) {
    EXPECT_EQ(TextOf(form, "txtTrigLevel1"), "45");
    EXPECT_EQ(TextOf(form, "txtTrigLevel2"), "-3");
  });
  EXPECT_EQ(rows, 2U);  // 5 below, 11 above
  // With one level the second box shows what was kept, then keeps the first.
  Press("Scan", {{"comType", "1"}, {"txtTrigLevel1", "20.1"}, {"txtTrigLevel2", "7"}});
  Press("Scan");
  Exit([](Form& form) {
    EXPECT_EQ(TextOf(form, "txtTrigLevel1"), "20.1");
    EXPECT_EQ(TextOf(form, "txtTrigLevel2"), "20.1");
    EXPECT_TRUE(form.FindField("txtTrigLevel2")->hidden);
  });
  EXPECT_EQ(workbench.preferences.TriggerLow, 20.1);
  Exit([](Form& form) { EXPECT_EQ(TextOf(form, "comType"), "1"); });
  // No type, no numbers, levels beyond 32 bits.
  workbench.preferences.TriggerType = -1;
  Press("Scan");
  Press("Scan", {{"comType", "2"}, {"txtTrigLevel1", "high"}, {"txtTrigLevel2", "1e300"}});
  Exit();
  EXPECT_EQ(questions.boxes.front().text, "Select a type of trigger first.");
  EXPECT_EQ(LastBox(),
            "|No values met threshold conditions.  Select other triggering options or another channel.");
}

TEST_F(TriggerFormTest, WithoutTriggersTheMenuRestsAndTheKeyWorks) {
  for (const char* button : {"View", "Save", "Clipboard", "Print", "Notepad", "Excel", "Quattro Pro"}) {
    Press(button);
  }
  Press("Scan", {{"comType", "0"}, {"txtTrigLevel1", "1000"}});
  Press("View");
  Exit([](Form& form) { EXPECT_EQ(TextOf(form, "txtFound"), "0"); });
  ASSERT_EQ(questions.boxes.size(), 9U);
  EXPECT_EQ(LastBox(), kNotScanned);
  EXPECT_TRUE(Cursors().empty());
  EXPECT_EQ(trial.CursorHi, 13);
  Run("trigger.open");  // greyed: nothing is asked
  EXPECT_EQ(workbench.report.warnings.size(), 10U);
  Press("Scan", {{"txtTrigLevel1", "20"}});
  Press("Exit");
  EXPECT_TRUE(View().PressKey({.name = "3"}));
  EXPECT_EQ(Cursors().size(), 3U);
  EXPECT_EQ(FindCommand("trigger.open")->whyNot(workbench), nullptr);
  trial.Rate = 0;
  Run("trigger.open");
  EXPECT_EQ(questions.boxes.back().title, "Invalid Sampling Rate");
}

TEST_F(TriggerFormTest, CursorsAreKeptAndRemoved) {
  Press("Scan", {{"comType", "0"}, {"txtTrigLevel1", "20"}, {"chkNumbers", "true"}});
  Press("Keep First & Last");
  Exit([this](Form& form) {
    EXPECT_EQ(Cursors(), (std::vector<double>{0.1, 1.0}));
    EXPECT_EQ(View().Drawing().Cursors[1].Name, "2");
    EXPECT_EQ(TextOf(form, "txtTime"), "0.900 s");
  });
  EXPECT_EQ(trial.CursorLo, 2);
  EXPECT_EQ(trial.CursorHi, 11);
  // In the window of two cursors, whose ends are no triggers: samples 3 to 10.
  Press("Scan", {{"optWindow", "1"}});
  Press("Keep First 2 cursors", {{"chkNumbers", "false"}});
  Exit();
  EXPECT_HAS(shown, "\n7\t0.6000 \t40.0000 \t40.0000 \t0.60 \t66.6667 \t\t\t\n");
  EXPECT_EQ(rows, 1U);
  EXPECT_EQ(Cursors(), (std::vector<double>{0.1, 1.0}));
  EXPECT_FALSE(View().Drawing().Cursors[1].NameVisible);
  Press("Remove");
  Exit([](Form& form) { EXPECT_TRUE(form.Tables().empty()); });
  EXPECT_TRUE(Cursors().empty());
  EXPECT_EQ(trial.CursorLo, 1);
  EXPECT_EQ(trial.CursorHi, 13);
  EXPECT_TRUE(workbench.results.ResultTables.empty());
  Run("cursor.one");
  View().MoveCursor(1, 0.5);
  Press("Scan", {{"optWindow", "Window"}});
  Exit([](Form& form) { EXPECT_EQ(TextOf(form, "txtTime"), "0.700 s"); });
  EXPECT_EQ(Cursors(), (std::vector<double>{0.5, 0.6, 1.0}));
}

TEST_F(TriggerFormTest, FiltersAreEnteredInTheMenu) {
  const auto found = [this](const char* button, const char* entered) {
    if (entered != nullptr) {
      questions.inputAnswers.emplace_back(entered);
    }
    std::string number;
    Press(button, {{"comType", "Peaks & valleys"}});
    Press("Scan");
    Exit([&number](Form& form) { number = TextOf(form, "txtFound") + " " + TextOf(form, "txtFilter"); });
    return number;
  };
  // 2 5 7 10 11 with sums 60 -5+0 90 0 ... of the samples up to each.
  EXPECT_EQ(found("Both +ve & -ve integrals", nullptr), "5 none");
  EXPECT_EQ(found("Only Positive integrals", nullptr), "3 integrals not above 0");
  EXPECT_EQ(found("Only Negative integrals", nullptr), "2 integrals not below 0");
  EXPECT_EQ(found("Enter Minimum integral", "-6"), "3 integrals below 6 in size");
  EXPECT_EQ(found("Enter Minimum integral", ""), "5 none");
  EXPECT_EQ(found("Enter Refractory period", "0.2"), "4 within 0.2 s of the one before");
  EXPECT_EQ(found("Enter Refractory period", "-3"), "3 within 0.3 s of the one before");
  EXPECT_EQ(found("Enter Refractory period", ""), "5 none");
  Press("Scan", {{"txtThreshold", "-6"}});
  Exit([](Form& form) { EXPECT_EQ(TextOf(form, "txtThreshold"), "6"); });
}

TEST_F(TriggerFormTest, AThousandIsTheMost) {
  const Samples saw = Sampled(4001, [](int i) { return i % 2; });
  SetChannels(trial, {saw}, 1000.0);
  workbench.view.reset();
  Run("graph.all");
  Press("Scan", {{"comType", "0"}, {"txtTrigLevel1", "0.5"}, {"txtMax", "0"}});
  Press("Remove");
  Exit();
  EXPECT_TRUE(questions.boxes.empty());
  Press("Scan", {{"txtMax", "1500"}});
  Exit([](Form& form) { EXPECT_EQ(TextOf(form, "txtFound"), "1000"); });
  EXPECT_EQ(LastBox(), "|Too many triggers.  Will show first.");
  EXPECT_EQ(rows, 1000U);
  EXPECT_EQ(Cursors().size(), 1000U);
}

TEST_F(TriggerFormTest, SomebodyWhoWatchesSeesWhatAScanWouldFind) {
  Exit([](Form& form) { EXPECT_TRUE(form.FindField("txtPreview")->hidden); });
  int drawn = 0;
  int shownAnew = 0;
  View().onRedraw = [&drawn](SingleView::Redraw /*what*/) { ++drawn; };
  Press("Scan", {{"comType", "Outside values"}, {"txtTrigLevel1", "45"}, {"txtTrigLevel2", "-3"}});
  Exit([&](Form& form) {
    form.onChanged = [&shownAnew] { ++shownAnew; };
    View().Drawing().Ordinate.SetMinMax(-10, 60);
    View().onLevel(1, 35.0123);
    const GraphPreview& preview = *View().Drawing().Preview;
    ASSERT_EQ(preview.Levels.size(), 2U);
    EXPECT_EQ(preview.Levels[0].y, 35.01);  // a hundredth is half a pixel or so
    EXPECT_EQ(preview.Levels[1].y, -3);
    EXPECT_EQ(preview.Hits, (std::vector<double>{0.4, 0.6, 1.0}));
    EXPECT_EQ(TextOf(form, "txtPreview"), "3 triggers");
    EXPECT_EQ(TextOf(form, "txtTrigLevel1"), "35.01");
    EXPECT_EQ(form.Edits().size(), 1U);  // a recipe of what was done has it
    View().onLevel(2, -1000);
    EXPECT_EQ(TextOf(form, "txtTrigLevel2"), "-10");
    View().onLevel(2, std::nan(""));
    EXPECT_EQ(TextOf(form, "txtTrigLevel2"), "-10");
    Type(form, {{"comType", "Peaks"}});
    EXPECT_TRUE(View().Drawing().Preview->Levels.empty());
  });
  EXPECT_GT(drawn, 5);
  EXPECT_EQ(shownAnew, 2);
  EXPECT_FALSE(View().Drawing().Preview);
  EXPECT_EQ(Cursors().size(), 2U);
}

}  // namespace
}  // namespace velmora::test
