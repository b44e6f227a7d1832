#include "export/save_data.hpp"
#include "formats/units_file/units_file_reader.hpp"
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct UnitsFile : FileTest {
  UnitsFile() {
    SetChannels(trial, {{1, 2}, {3, 4}, {5, 6}});
    trial.FileName = "/data/jump.vmb";
    trial.TrialName = "jump";
  }
  void Read(const std::string& bytes) {
    WriteFile(directory.Path("read.vmu"), bytes);
    questions.boxes.clear();
    questions.fileAnswers.push_back({directory.Path("read.vmu")});
    ReadUnitsFile(workbench);
  }
};

const std::string kHead =
    "Velmora2 Labels, units and factors: /data/jump.vmb\n"
    "Number of channels: 03\n"
    "Channels: \tLabels    \tUnits     \tScaling\tLo.cuts\tHi.cuts\tThresholds\n";

TEST_F(UnitsFile, WrittenToTheByteAndReadBack) {
  trial.ChanLabel[1] = "M. gastrocnemius, caput med. µ";  // 30 characters
  trial.ChanUnits[1] = "µV";
  trial.ChanLabel[2] = "Fz";
  trial.ChanUnits[2] = "N";
  workbench.scaling.ScaleMemory[1] = 0.1F;
  workbench.filters.LastHighPassCutoffs[1] = 20.0F;
  workbench.filters.LastLowPassCutoffs[1] = 450.5F;
  workbench.thresholds.ChanThreshold[1] = 0.1;
  workbench.scaling.ScaleMemory[3] = -1e10F;
  questions.fileAnswers.push_back({directory.Path("jump")});
  SaveData(workbench, SaveFormat::UnitsFile);
  EXPECT_EQ(questions.files.back().title, "Save Velmora Units, scaling and labels (.bsu)");
  const std::string blanks(30, ' ');
  EXPECT_EQ(ReadFile(directory.Path("jump.vmu")),
            kHead + "Abscissa:\tTime" + blanks.substr(4) +
                "\ts         \n"
                "00:\tM. gastrocnemius, caput med. \xB5\t\xB5V        \t0.1\t20\t450.5\t0.1\n"
                "01:\tFz" +
                blanks.substr(2) +
                "\tN         \t0\t0\t0\t0\n"
                "02:\t" +
                blanks + "\tV         \t-1e+10\t0\t0\t0\n");

  const std::string bytes = ReadFile(directory.Path("jump.vmu"));
  Workbench other(questions);
  SetChannels(other.trial, {{1, 2}, {3, 4}, {5, 6}});
  other.trial.ChanLabel[0] = "Count";
  questions.fileAnswers.push_back({directory.Path("jump.vmu")});
  ReadUnitsFile(other);
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_EQ(other.trial.ChanLabel, trial.ChanLabel);
  EXPECT_EQ(other.trial.ChanUnits, trial.ChanUnits);
  EXPECT_EQ(other.scaling.ScaleMemory, workbench.scaling.ScaleMemory);
  EXPECT_EQ(other.filters.LastHighPassCutoffs, workbench.filters.LastHighPassCutoffs);
  EXPECT_EQ(other.filters.LastLowPassCutoffs, workbench.filters.LastLowPassCutoffs);
  EXPECT_EQ(other.thresholds.ChanThreshold, workbench.thresholds.ChanThreshold);
  EXPECT_TRUE(other.thresholds.ThresholdsValid);
  EXPECT_TRUE(other.trial.FileChanged);

  trial.FileName = "/data/two\nlines.vmb";
  trial.ChanLabel[1] = "left\tfoot";
  trial.ChanUnits[2] = "N\rm";
  questions.fileAnswers = {{directory.Path("jump.vmu")}, {directory.Path("jump.vmu")}};
  SaveData(workbench, SaveFormat::UnitsFile);
  ReadUnitsFile(other);
  EXPECT_EQ(other.trial.ChanLabel[1], "left foot");
  EXPECT_EQ(other.trial.ChanUnits[2], "N m");
  EXPECT_EQ(other.scaling.ScaleMemory, workbench.scaling.ScaleMemory);
}

TEST_F(UnitsFile, OlderFilesAndFilesThroughAnEditor) {
  Read(
      "Velmora2 Units of old\r\nNumber of channels: 2\r\nheads\r\none line more\r\n"
      "Abscissa:\tTime\tms\r\n00:\tA\tmV\t2\r\n01:\t B \tkN\t3\t4\t5\t0\t6\t7\r\n");
  EXPECT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(questions.boxes.back().title, "Different Number of Channels");
  EXPECT_EQ(trial.ChanUnits[0], "ms");
  EXPECT_EQ(trial.ChanLabel[1], "A");
  EXPECT_EQ(workbench.scaling.ScaleMemory[1], 2.0F);
  EXPECT_EQ(workbench.filters.LastHighPassCutoffs[1], 0.0F);
  EXPECT_EQ(trial.ChanLabel[2], "B");
  EXPECT_EQ(trial.ChanUnits[2], "kN");
  EXPECT_EQ(workbench.filters.LastHighPassCutoffs[2], 4.0F);
  EXPECT_EQ(workbench.filters.LastLowPassCutoffs[2], 5.0F);
  EXPECT_FALSE(workbench.thresholds.ThresholdsValid);
  EXPECT_EQ(trial.ChanUnits[3], "V") << "not in the file";

  Read(
      "Velmora2 Labels\nNumber of channels: 03\nChannels:  Labels     Units\n"
      "Abscissa: Time       s\n"
      "00:       Heel left  m/s        1.5  20 450\n01:       Toe        N\n02:       Knee       deg\n");
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_EQ(trial.ChanLabel[1], "Heel left");
  EXPECT_EQ(trial.ChanUnits[1], "m/s");
  EXPECT_EQ(workbench.scaling.ScaleMemory[1], 1.5F);
  EXPECT_EQ(workbench.filters.LastLowPassCutoffs[1], 450.0F);
  EXPECT_EQ(trial.ChanUnits[3], "deg");
}

TEST_F(UnitsFile, AFileThatCannotBeReadChangesNothing) {
  trial.ChanLabel[1] = "kept";
  const auto failsWith = [this](const std::string& bytes) {
    Read(bytes);
    EXPECT_EQ(trial.ChanLabel[1], "kept");
    EXPECT_FALSE(trial.FileChanged);
    return questions.boxes.empty() ? "" : questions.boxes.back().title;
  };
  EXPECT_EQ(failsWith(""), "Error Reading File");
  EXPECT_EQ(failsWith("Velmora2 binary file"), "Error Reading File");
  EXPECT_NE(questions.boxes.back().text.find("Operation is cancelled.\nError is: \""), std::string::npos);
  EXPECT_EQ(failsWith("Velmora2 Units\nNumber of channels: none\n"), "Invalid Format or Empty");
  EXPECT_EQ(failsWith("Velmora2 Units\nNumber of channels: -3\n"), "Invalid Format or Empty");
  EXPECT_EQ(failsWith("Velmora2 Units\n03\n"), "Invalid Format or Empty");
  EXPECT_EQ(failsWith(kHead + "Abscissa:\tTime\ts\n00:\tlost\tV\n"), "Error Reading File") << "cut short";
  for (const char* numbers : {"1e39\t0\t0\t0", "1\t0\t-1e39\t0", "1\t0\t0\t1e999"}) {
    const std::string row = std::string("00:\tlost\tV\t") + numbers + "\n";
    EXPECT_EQ(failsWith(kHead + "Abscissa:\tTime\ts\n" + row), "Error Reading File");
    EXPECT_NE(questions.boxes.back().text.find("is too large"), std::string::npos);
  }
  EXPECT_EQ(workbench.report.failures.size(), 9U);

  questions.fileAnswers = {{}, {directory.Path("")}};
  questions.boxes.clear();
  ReadUnitsFile(workbench);
  EXPECT_TRUE(questions.boxes.empty()) << "cancelled";
  ReadUnitsFile(workbench);
  EXPECT_NE(questions.boxes.back().text.find("Is a directory"), std::string::npos);
}

}  // namespace
}  // namespace velmora::test
