#include "export/save_list.hpp"

#include "support/command_test.hpp"
#include "support/full_disk.hpp"

namespace velmora::test {
namespace {

struct SaveList : FileTest {
  int listed = 0;  // how often the lists of files were asked for

  SaveList() {
    SetChannels(trial, {{1, 2, 3}});
    workbench.onShellRequest = [this](ShellRequest request) { listed += request == ShellRequest::ShowFiles; };
  }

  std::string BoxOf(const char* id) {
    questions.boxes.clear();
    Run(id);
    return questions.boxes.size() == 1 ? questions.boxes[0].text : "not one box";
  }
};

TEST_F(SaveList, RefusalsComeBeforeFormatsThatNobodyPublished) {
  EXPECT_EQ(BoxOf("save.dat"), "Input file is NOT a BioWare .DAT file.");
  trial.FileTypeCode = 6;
  trial.ForcesReduced = true;
  EXPECT_EQ(BoxOf("save.dat"), "Cannot save if data have been converted to forces.");
  EXPECT_EQ(BoxOf("save.rf"), "This file does not appear to have force platform data.");
  trial.NPlates = 1;
  trial.ForcesReduced = false;
  EXPECT_EQ(BoxOf("save.rf"), "Forces must be reduced before saving.");
  EXPECT_EQ(workbench.report.warnings.size(), 4U);
  EXPECT_TRUE(workbench.report.failures.empty());

  trial.ForcesReduced = true;
  for (const auto& [id, name] : {std::pair("save.rf", "Reduced Forces Format (.RF)"),
                                 std::pair("save.vad", "Save Vicon AD file (.VAD)"),
                                 std::pair("save.bin", "Velmora1 Binary (.BIN)")}) {
    EXPECT_EQ(BoxOf(id),
              "\"" + std::string(name) +
                  "\" files cannot be written.\nTheir layout is not published by its maker: what came of "
                  "it would be guessed.\nSave the trial as Velmora2 Binary (.VMB), tab-delimited text "
                  "(.TAB) or C3D (.C3D) instead.");
  }
  EXPECT_EQ(workbench.report.failures.size(), 3U);
  EXPECT_TRUE(questions.files.empty());

  SetChannels(trial, std::vector<std::vector<float>>(17, {1, 2}));
  questions.boxAnswers = {Button::Cancel};
  EXPECT_EQ(BoxOf("save.bin").substr(0, 45), "Warning.  This format can only hold 16 channe");

  questions.boxes.clear();
  SaveData(workbench, static_cast<SaveFormat>(99));
  EXPECT_EQ(questions.boxes.at(0).text, " This filetype is not supported.");
}

TEST_F(SaveList, NothingIsAskedWithoutData) {
  trial.DiscardData();
  for (const SaveEntry& entry : kSaveList) {
    SaveData(workbench, entry.format);
  }
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_TRUE(questions.panels.empty());
}

TEST_F(SaveList, ASaveFromTheMenuIsAttended) {
  workbench.SaveQuietly = true;
  questions.boxAnswers = {Button::Cancel};
  BoxOf("save.csv");
  EXPECT_EQ(questions.boxes.size(), 1U);
  EXPECT_EQ(questions.panels.back().status, "Saving data (n= 3)");
  questions.fileAnswers = {{directory.Path("saved.vmu")}};
  BoxOf("save.vmu");
  EXPECT_TRUE(std::filesystem::exists(directory.Path("saved.vmu")));
  EXPECT_EQ(listed, 2) << "cancelled and saved";
}

TEST_F(SaveList, AFailedSaveLeavesTheOldFileAndTheMark) {
  WriteFile(directory.Path("old.csv"), "the old contents");
  MarkChanged(workbench, true);
  const auto failsWith = [this](SaveFormat format, const std::string& path) {
    questions.boxes.clear();
    questions.fileAnswers = {{path}};
    workbench.SaveQuietly = true;
    listed = 0;
    SaveData(workbench, format);
    EXPECT_EQ(listed, 1);
    EXPECT_TRUE(trial.FileChanged);
    return questions.boxes.empty() ? "" : questions.boxes.back().text;
  };
  EXPECT_EQ(failsWith(SaveFormat::CommaSeparated, directory.Path("missing/x.csv")),
            "Error saving to file: " + directory.Path("missing/x.csv") +
                "\nFile may be in-use or write-protected.\n\n\"No such file or directory\"");
  std::filesystem::create_directory(directory.Path("folder.vma"));
  EXPECT_NE(failsWith(SaveFormat::NativeAscii, directory.Path("folder.vma")).find("\"Is a directory\""),
            std::string::npos);

  SetChannels(trial, {std::vector<float>(20000, 0.123456F)});
  for (const auto format :
       {SaveFormat::CommaSeparated, SaveFormat::SpaceDelimited, SaveFormat::NativeAscii}) {
    const FullDisk disk(4096);
    EXPECT_NE(failsWith(format, directory.Path("old.csv")).find("\"File too large\""), std::string::npos);
  }
  EXPECT_EQ(ReadFile(directory.Path("old.csv")), "the old contents");
  EXPECT_EQ(workbench.report.failures.size(), 5U);
}

}  // namespace
}  // namespace velmora::test
