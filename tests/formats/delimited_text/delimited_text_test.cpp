#include <limits>

#include "export/save_data.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct DelimitedText : FileTest {
  std::string Save(const char* id, Button labels, Button times) {
    questions.boxAnswers = {labels, times};
    SaveAs("saved", id);
    EXPECT_TRUE(questions.boxAnswers.empty());
    return ReadFile(workbench.OutputFileName);
  }
  void SetJump() {
    SetChannels(trial, {{0.1F, -2.5F, 1e-7F}, {100000.0F, 16777216.0F, -0.0F}}, 1500.0);
    trial.TrialName = "jump";
    trial.TrialTitle = "  A jump ";
    trial.Duration = 2.0 / 1500.0;
    trial.ChanLabel[1] = "Force, left";
    trial.ChanLabel[2] = " M. soleus";
    trial.ChanUnits[1] = "°/s";
  }
};

TEST_F(DelimitedText, WrittenToTheByte) {
  SetJump();
  MarkChanged(workbench, true);
  EXPECT_EQ(Save("save.csv", Button::Yes, Button::Yes),
            "A jump\n"
            "Rate= 1500.00, Duration=    0.001\n"
            "Time, Force, left, M. soleus\n"
            "s, °/s, V\n"
            "0, 0.1, 1e+05\n"
            "0.00066666666, -2.5, 16777216\n"
            "0.0013333333, 1e-07, -0\n");
  EXPECT_EQ(workbench.OutputFileName, directory.Path("saved.csv"));
  EXPECT_EQ(questions.files.back().title, "Save data as");
  EXPECT_EQ(questions.files.back().defaultName, "jump.csv");
  EXPECT_EQ(questions.files.back().filterIndex, 3);
  EXPECT_FALSE(trial.FileChanged);

  EXPECT_EQ(Save("save.tab", Button::Yes, Button::No),
            "A jump\n"
            "Rate= 1500.00\tDuration=    0.001\n"
            "Force, left\tM. soleus\n"
            "°/s\tV\n"
            "0.1\t1e+05\n-2.5\t16777216\n1e-07\t-0\n");
  EXPECT_EQ(Save("save.prn", Button::No, Button::Yes),
            "0.00000  0.10000  100000.00000\n"
            "0.00067  -2.50000  16777216.00000\n"
            "0.00133  0.00000  -0.00000\n");
  EXPECT_EQ(workbench.OutputFileName, directory.Path("saved.prn"));

  SetChannels(trial, {{1, 2}});
  EXPECT_EQ(Save("save.csv", Button::No, Button::No), "1\n2\n");
  trial.TrialTitle = "A jump\nand a fall";
  trial.ChanLabel[1] = "left\tfoot\n";
  const std::string head = Save("save.tab", Button::Yes, Button::No);
  EXPECT_TRUE(head.starts_with("A jump and a fall\nRate="));
  EXPECT_TRUE(head.ends_with("\nleft foot\nV\n1\n2\n"));
}

TEST_F(DelimitedText, AQuietSaveHasNamesAndTimes) {
  SetJump();
  workbench.SaveQuietly = true;
  questions.fileAnswers = {{}, {directory.Path("quiet.tab")}};
  MarkChanged(workbench, true);
  SaveData(workbench, SaveFormat::TabDelimited);
  EXPECT_TRUE(trial.FileChanged) << "no name, no save";
  SaveData(workbench, SaveFormat::TabDelimited);
  EXPECT_EQ(ReadFile(directory.Path("quiet.tab")).substr(0, 6), "A jump");
  EXPECT_NE(ReadFile(directory.Path("quiet.tab")).find("Time\tForce"), std::string::npos);
}

TEST_F(DelimitedText, LinesLongerThanAnyOrdinaryOne) {
  // 64 values of the greatest width, over many pieces of the file.
  SetChannels(trial, std::vector<std::vector<float>>(
                         64, std::vector<float>(700, std::numeric_limits<float>::lowest())));
  const std::string text = Save("save.prn", Button::No, Button::No);
  const std::string number = "-340282346638528859811704183484516925440.00000";
  EXPECT_EQ(text.size(), 700 * (64 * number.size() + 63 * 2 + 1));
  EXPECT_EQ(text.substr(text.size() - number.size() - 1), number + "\n");
}

}  // namespace
}  // namespace velmora::test
