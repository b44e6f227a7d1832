#include <utility>

#include "support/text_load.hpp"

namespace velmora::test {
namespace {

/// Loads texts with what the dialogue has found, as the window and `found: true` take it.
struct FoundLayoutTest : TextLoadTest {
  Texts taken;  // "field=text" of all that was found

  void LoadFound(const std::string& name, std::string_view text, const Edits& edits = {}) {
    questions.inputAnswers = {"100"};
    questions.formAnswers = {[this, edits](Form& form) {
      taken.clear();
      form.TakeFound();
      for (const Form::FoundValue& found : form.Found()) {
        taken.push_back(found.field->name + "=" + found.text);
      }
      Type(form, edits);
      return std::string("Read");
    }};
    Load(name, text);
  }

  [[nodiscard]] bool AskedForRate() const { return questions.inputAnswers.empty(); }
};

TEST_F(FoundLayoutTest, AnExportOfDevicesWithFurtherLinesReadsWithOnePress) {
  const char* text =
      "Devices,,,\n2000,,,\n,,Plate 1,\n,,left,\nFrame,Sub Frame,Fx,EMG "
      "1\n,,N,V\n1,0,5,6\n1,1,7,8\n2,0,9,1\n";
  LoadFound("a.csv", text);
  EXPECT_EQ(taken, (Texts{"Rate=2000", "ParseLeaveOut=1, 2", "ParseLabelsLine=5", "ParseUnitsLine=6"}));
  EXPECT_EQ(Labels(), (Texts{"Fx", "EMG 1"}));
  EXPECT_EQ(UnitsOfChannels(), (Texts{"N", "V"}));
  EXPECT_EQ(Rows(), (Frames{{5, 6}, {7, 8}, {9, 1}}));
  EXPECT_EQ(trial.Rate, 2000.0);
  EXPECT_EQ(trial.FormatName, "Text, comma separated");
  EXPECT_FALSE(AskedForRate());
  EXPECT_TRUE(questions.boxes.empty());
  // Nobody takes it unasked.
  LoadWithDefaults("a.csv", text);
  EXPECT_EQ(Labels(), (Texts{"Chan. 01", "Chan. 02", "Chan. 03", "Chan. 04"}));
  EXPECT_EQ(trial.Rate, 100.0);
}

TEST_F(FoundLayoutTest, LinesThatNameTheColumns) {
  struct Case {
    const char* text;
    Texts labels;
    Texts units;
  };
  for (const Case& c : {
           Case{"# Units:= m/s^2\n# Labels:= acc_x\tacc y\n1.5\t2\n3\t4\n",
                {"acc_x", "acc y"},
                {"m/s^2", "m/s^2"}},
           Case{"# Labels:= left EMG\n15\n16\n17\n", {"left EMG"}, {""}},
           Case{"m1_X (m),v(mm/s),Force (left)\n1,2,3\n4,5,6\n",
                {"m1_X", "v", "Force (left)"},
                {"m", "mm/s", ""}},
           Case{"Fx[N]\tMat[1][2]\n1\t2\n3\t4\n", {"Fx", "Mat[1][2]"}, {"N", ""}},
           Case{"Raw\t\tNoisy\n----------\n\n1\t2\n3\t4\n", {"Raw", "Noisy"}, {"", ""}},
           Case{"a\t\tc\nF[N]\t[g]\t(V)\n1\t2\t3\n4\t5\t6\n", {"a", "Chan. 02", "c"}, {"N", "g", "V"}},
           // Nothing that names the columns: a sentence, a line of other fields.
           Case{"Two words\n1\t2\n3\t4\n", {"Chan. 01", "Chan. 02"}, {"", ""}},
           Case{"a,b,c\n1,2\n3,4\n", {"Chan. 01", "Chan. 02"}, {"", ""}},
       }) {
    LoadFound("a.txt", c.text);
    EXPECT_EQ(Labels(), c.labels) << c.text;
    EXPECT_EQ(UnitsOfChannels(), c.units) << c.text;
  }
}

TEST_F(FoundLayoutTest, TimesAndCounters) {
  LoadFound("a.csv", "t(s),x\n0.01,5\n0.02,6\n0.03,7\n");
  EXPECT_EQ(Rows(), (Frames{{5}, {6}, {7}}));
  EXPECT_EQ(trial.Rate, 100.0);
  LoadFound("b.csv", "Seq,Time,Fz,\n0,0,8,\n1,0.25,9,\n2,0.5,7,\n");
  EXPECT_EQ(Labels(), (Texts{"Fz"}));
  EXPECT_EQ(trial.Rate, 4.0);
  // Not what they are called: no even steps, milliseconds, another rate than stated, a counter.
  for (const char* text : {"Time,x\n0.1,5\n0.2,6\n0.9,7\n", "Time (ms),x\n10,5\n20,6\n30,7\n",
                           "Sample rate 50 Hz\nTime,x\n0.1,5\n0.2,6\n0.3,7\n", "Time,x\n1,5\n2,6\n3,7\n"}) {
    LoadFound("c.csv", text);
    EXPECT_EQ(trial.NChan, 2) << text;
  }
  LoadFound("d.csv", "Time [s],x\n1,5\n2,6\n3,7\n");
  EXPECT_EQ(trial.Rate, 1.0) << "seconds by its own word";
  EXPECT_TRUE(trial.Notices.empty());
  // The dialect takes a packet counter for times; the header knows the rate.
  LoadFound("e.txt",
            "// Start Time: x\n// Update Rate: 40.0Hz\nPacketCounter\tacc\n7\t1\n8\t2\n10\t3\n11\t4\n");
  EXPECT_EQ(trial.Rate, 40.0);
  EXPECT_EQ(Rows(), (Frames{{1}, {2}, {3}, {4}}));
  EXPECT_TRUE(questions.boxes.empty());
}

TEST_F(FoundLayoutTest, ColumnsLeftOut) {
  const std::string text = "h\n1,x,3,4\n5,,7,8\n";
  LoadWithDefaults("a.csv", text,
                   {{"ParseLeaveOut", "1-2"}, {"ParseHasTime", "no"}, {"ParseSkip", "1"}, {"NChan", "4"}});
  EXPECT_EQ(Rows(), (Frames{{3, 4}, {7, 8}}));
  EXPECT_TRUE(questions.boxes.empty()) << "what is left out is not looked at";
  for (const char* wrong : {"0", "3-1", "x", "65", "1;2"}) {
    AnswerForm({{"ParseLeaveOut", wrong}});
    AnswerForm({}, "Cancel");
    Load("b.csv", "h\n1,2\n3,4\n");
    EXPECT_EQ(questions.boxes.back().title, "Columns Left Out") << wrong;
  }
  AnswerForm({{"ParseLeaveOut", "1, 2"}});
  AnswerForm({}, "Cancel");
  Load("b.csv", "h\n1,2\n3,4\n");
  EXPECT_EQ(questions.boxes.back().title, "Number of Channels Unknown");
}

TEST_F(FoundLayoutTest, WhatAPersonChangedIsFoundInTheNextFileOfTheFolder) {
  const auto text = [](int value) {
    return "h\nFrame,a,b\n1,2,3\n2,2,3\n3,2," + std::to_string(value) + "\n";
  };
  LoadFound("a.csv", text(3), {{"Rate", "250"}});
  LoadFound("b.csv", text(4));
  EXPECT_EQ(trial.Rate, 100.0) << "a run remembers nothing";
  workbench.texts.Remembers = true;
  LoadFound("a.csv", text(3), {{"Rate", "250"}, {"ParseLeaveOut", ""}});
  LoadFound("b.csv", text(4));
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(trial.NChan, 3);
  LoadFound("c.csv", "h\nFrame,a,c\n1,2,3\n2,2,3\n3,2,3\n");
  EXPECT_EQ(trial.Rate, 100.0) << "other columns";
  LoadFound("d.csv", text(5), {{"Rate", "0"}, {"ParseLeaveOut", "1"}});
  EXPECT_TRUE(workbench.texts.Layouts.empty()) << "all as it was found";
}

TEST_F(FoundLayoutTest, NamesOfADialectStandWhereTheyStand) {
  // The first record lacks its last cell, so that there are as many names as columns.
  LoadWithDefaults("a.txt", "V3D\nITEM\tX\tY\tZ\n0\t1\t2\t\n0.5\t4\t5\t6\n1\t7\t8\t9\n");
  EXPECT_EQ(Labels(), (Texts{"X", "Y"}));
  LoadWithDefaults("a.txt", "V3D\nITEM\tX\tY\nFP\tF1\tF2\n0\t1\t2\n1\t4\t5\n2\t4\t5\n",
                   {{"ParseHasTime", "no"}});
  EXPECT_EQ(Labels(), (Texts{"ITEM FP", "X F1", "Y F2"}));
  // A counter taken for times.
  LoadWithDefaults("b.txt", "V3D\nITEM\tX\n1\t5\n2\t6\n3\t7\n");
  EXPECT_EQ(Offered("lblMessage"), "Column 1 rises evenly by 1: a counter?");
  EXPECT_EQ(
      trial.Notices,
      (std::vector<std::string>{"Column 1 rises evenly by 1: a counter? Taken for times it gives 1 Hz."}));
  EXPECT_EQ(trial.FormatName, "Visual3D ASCII data");
  // Commas where the dialect has tabs.
  LoadWithDefaults("c.csv", "Labels,Fx [N],Fy [N]\n1,2\n3,4\n5,6\n");
  EXPECT_EQ(Labels(), (Texts{"Fx", "Fy"}));
  EXPECT_TRUE(questions.boxes.empty());
  LoadWithDefaults("c.csv", "Labels were lost in the winter\n1,2\n3,4\n5,6\n");
  EXPECT_EQ(LastBox(), "Check the Data|Line 1, the labels line, names no channel.");
  LoadWithDefaults("c.csv", "Fx,Fy\n1,2,3\n4,5,6\n", {{"ParseLabelsLine", "1"}});
  EXPECT_EQ(LastBox(), "Check the Data|Line 1, the labels line, names 2 of 3 channels.");
}

}  // namespace
}  // namespace velmora::test
