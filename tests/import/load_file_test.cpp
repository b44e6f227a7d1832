#include <sys/stat.h>
#include <unistd.h>

#include "core/files/settings.hpp"
#include "core/questions/progress.hpp"
#include "import/detect_text_format.hpp"
#include "support/environment_variable.hpp"
#include "support/instrument_files/c3d_file.hpp"
#include "support/instrument_files/edf_file.hpp"
#include "support/instrument_files/motion_analysis_file.hpp"
#include "support/instrument_files/plate_files.hpp"
#include "support/instrument_files/wav_file.hpp"
#include "support/text_load.hpp"

namespace velmora::test {
namespace {

using LoadFileTest = TextLoadTest;

constexpr const char* kNumbers = "a b\n1 2\n3 4\n5 6\n";

TEST_F(LoadFileTest, AReadErrorIsToldInTheWordsOfTheSystem) {
  trial.FileName = "/sys/class/net/lo/speed";  // opens, and every read fails: a loop has no speed
  trial.FileExt = "TXT";
  ProgressPanel panel(workbench);
  DetectTextFormat(workbench, panel);
  EXPECT_EQ(LastBox(), "|Error reading file: " + trial.FileName + "\n\"Invalid argument\"");
}

TEST_F(LoadFileTest, FormatsThatNobodyPublishedSayWhatToDoInstead) {
  struct Case {
    const char* name;
    std::string bytes;
    const char* format;
    const char* wayRound;
  };
  const std::string binary("\x01\0\x02\0", 4);
  for (const Case& c : {
           Case{"a.ana", "~" + binary, "APAS analog", "Export the trial as ASCII from APAS"},
           Case{"a.ANA", kNumbers, "Motion Analysis compressed ASCII analog", ".ANC or C3D"},
           Case{"a.bin", "Velmora" + binary, "Velmora1 binary analog", "(.VMA)"},
           Case{"a.bin", "velmora" + binary, "Rodex1 binary analog", "(.VMA)"},
           Case{"a.chx", kNumbers, "Kin-Com", "from the Kin-Com program"},
           Case{"a.rf2", kNumbers, "Reduced Forces ASCII", "reduce its forces here"},
           Case{"setup", binary, "Rodex1 binary analog", "(.VMA)"},
           Case{"a.stm", binary, "Stimo", "(.TXT)"},
           Case{"a.vad", binary, "Vicon analog", "export C3D"},
           Case{"a.txt", std::string("BIOBENCH\n") + kNumbers, "BioBench ASCII", "from BioBench"},
           Case{"a.txt", std::string("First data point\n") + kNumbers, "Mega ASCII", "(.TXT)"},
           Case{"a.txt", std::string("  \nfrom a KIN-COM\n") + kNumbers, "Kin-Com", "Kin-Com program"},
           Case{"a.pdt", std::string("Scan Rate: unknown\n") + kNumbers, "PDT ASCII", "with their rate"},
       }) {
    questions.boxAnswers = {Button::No};
    Load(c.name, c.bytes);
    const std::string box = LastBox();
    EXPECT_TRUE(box.starts_with(std::string("Format Not Read|") + c.format + " files cannot be read.\n"))
        << c.name << ": " << box;
    EXPECT_NE(box.find(c.wayRound), std::string::npos) << box;
    EXPECT_EQ(trial.NData, 0);
    const bool text = c.bytes.find('\0') == std::string::npos;
    EXPECT_EQ(box.find("do you want to try parsing the file?") != std::string::npos, text) << box;
    EXPECT_EQ(workbench.report.failures.size(), text ? 1U : 2U) << c.name;
    if (text) {
      questions.boxAnswers = {Button::Yes};
      LoadWithDefaults(c.name, c.bytes);
      EXPECT_EQ(trial.NData, 3) << c.name;
      EXPECT_EQ(trial.FileTypeCode, 15) << "nothing is claimed of a format that was guessed";
    }
  }
}

TEST_F(LoadFileTest, FilesThatNoReaderTakesAreAskedAbout) {
  const std::string tail = "\n\nIf the file is a text or ASCII file do you want to try parsing the file?";
  struct Case {
    const char* name;
    std::string box;
  };
  for (const Case& c : {
           Case{"a.frc", "Filetype Unrecognized|File extension, 'FRC', was unrecognized." + tail},
           Case{"noextension", "Filetype Unrecognized|File extension, '', was unrecognized." + tail},
           Case{"a.dat", "Unknown File Format|File contents not recognized.  Filename was: 'a.DAT'." + tail},
           Case{"a.bb",
                "Unsupported File Format|BioBench (.BB) file format is not implemented in Velmora2.\n\nUse "
                "BioBench to read and convert the file to text format (use extension .BBT)." +
                    tail},
       }) {
    questions.boxAnswers = {Button::No};
    Load(c.name, kNumbers);
    EXPECT_EQ(LastBox(), c.box);
    EXPECT_EQ(trial.NData, 0);
    EXPECT_EQ(trial.FileTypeCode, std::string(c.name) == "a.bb" ? 17 : kUnknownFileType);
    questions.boxAnswers = {Button::Yes};
    LoadWithDefaults(c.name, kNumbers);
    EXPECT_EQ(trial.NData, 3) << c.name;
    EXPECT_EQ(trial.FileTypeCode, 15) << c.name;
  }
  // Only the unknown extension is looked at for a dialect.
  questions.boxAnswers = {Button::Yes};
  LoadWithDefaults("a.xyz", "// Start Time\nx\n1\t2\n2\t4\n3\t6\n");
  EXPECT_EQ(trial.FileTypeCode, 71);
}

TEST_F(LoadFileTest, BytesTellTheFormatWhereTheExtensionDoesNot) {
  for (const auto& [bytes, code] :
       std::vector<std::pair<std::string, int>>{{C3dFile{}.Bytes(), 19},
                                                {std::string(64, '\0') + C3dFile{}.Bytes(), 19},
                                                {EdfFile{}.Bytes(), 22},
                                                {UsualWavFile().Bytes(), 24},
                                                {MotionAnalysisFile{}.Binary(), 41},
                                                {BsfFileBytes{}.Bytes(), 301},
                                                {DelsysEmgBytes(3), 60}}) {
    Load("a.xyz", bytes);
    EXPECT_GT(trial.NData, 0) << code << LastBox();
    EXPECT_EQ(trial.FileTypeCode, code);
  }
  for (const char* text : {"AP and others, of 24 letters\n", "i", "0      1 2\n", "DEMG is text"}) {
    questions.boxAnswers = {Button::No};
    Load("a.xyz", text);
    EXPECT_EQ(questions.boxes.front().title, "Filetype Unrecognized") << text;
  }
}

TEST_F(LoadFileTest, FormatsThatAreRefused) {
  using namespace std::string_literals;
  const EnvironmentVariable settings("XDG_CONFIG_HOME", directory.Path("settings"));
  questions.boxAnswers = {Button::Cancel, Button::OK};
  Load("cancelled.daf", "x");
  EXPECT_EQ(SettingsStore().Get("Velmora", "Startup", "LastFile", "none"), "none");
  Load("a.daf", "x");
  EXPECT_EQ(SettingsStore().Get("Velmora", "Startup", "LastFile", ""), directory.Path("a.daf"));
  EXPECT_EQ(SettingsStore().Get("Velmora", "Startup", "Datadir", ""), workbench.DataDir);
  EXPECT_TRUE(
      LastBox().starts_with("Filetype Not Implemented|DAFF file format is not implemented in Velmora2.\n"));
  Load("a.dat", "\x20\x03\0\x06OPTOTRAK 3020\0\0ab\xFF   gait, left  \0"s);
  EXPECT_EQ(LastBox(), "File Format Not Supported|Optotrak file formats are not supported.");
  EXPECT_EQ(trial.HeaderLines[1], "OPTOTRAK 3020");
  EXPECT_EQ(trial.HeaderLines[2], "gait, left");
  EXPECT_EQ(trial.HeaderLines[3], "");
  EXPECT_EQ(workbench.records.EXPTINFO.substr(61, 12), "gait, left  ");
  EXPECT_EQ(workbench.records.EXPTINFO.size(), 248U);
  questions.boxAnswers = {Button::Yes};
  LoadWithDefaults("text.dat", std::string("Exported from OPTOTRAK 3020\r\n") + kNumbers);
  EXPECT_EQ(trial.NData, 3) << "a text is no recording";
  Load("a.emt", "x");
  EXPECT_EQ(LastBox(), "Cannot read this filetype|Cannot read Delsys .EMT file format.");
  Load("a.txt", "");
  EXPECT_EQ(LastBox(), "|File is empty.");
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(LoadFileTest, EveryLoadLeavesTheTrialInOneState) {
  SetChannels(trial, {{1, 2, 3}, {4, 5, 6}}, 50.0);
  trial.ChanLabel[1] = "before";
  trial.ChanUnits[2] = "kN";
  trial.SavedLabels[3] = "of an earlier one";
  trial.NPlates = 2;
  trial.LastSample = 99;  // of a native text file
  trial.ForcesReduced = trial.PairedGraphs = true;
  trial.HeaderLines[75] = "old";
  workbench.CancelRequested = true;
  LoadWithDefaults("A b.TxT", kNumbers);
  EXPECT_EQ(trial.FileExt, "TXT");
  EXPECT_EQ(trial.TrialName, "A b");
  EXPECT_EQ(trial.SavedLabels[1], "before");
  EXPECT_EQ(trial.SavedUnits[2], "kN");
  EXPECT_EQ(trial.SavedLabels[3], "of an earlier one") << "which had more channels";
  EXPECT_EQ(trial.PreviousRate, 50.0);
  EXPECT_EQ(trial.NPlates, 0);
  EXPECT_EQ(trial.LastSample, 0);
  EXPECT_FALSE(trial.ForcesReduced || trial.PairedGraphs || trial.FileChanged);
  EXPECT_EQ(trial.HeaderLines[75], "");
  EXPECT_EQ(trial.TrialIndex, -1);
  EXPECT_EQ(trial.CursorLo, 1);
  EXPECT_EQ(trial.CursorHi, 3);
  EXPECT_EQ(workbench.FirstChanShown, 1);
  EXPECT_EQ(workbench.LastChanShown, 2);
  EXPECT_EQ(trial.TrialTitle, trial.FileName) << "a title that starts with no number gives way";
  EXPECT_EQ(trial.Duration, 0.02);
  EXPECT_EQ(trial.OriginalDuration, static_cast<double>(0.02F));
  // No rate at all: one sample a second, and the duration is the number of samples.
  questions.inputAnswers = {"none"};
  AnswerForm();
  Load("b.txt", kNumbers);
  EXPECT_EQ(trial.Rate, 1.0);
  EXPECT_EQ(trial.Duration, 3.0);
  // A load that fails leaves no trial, and the labels of the last one are remembered.
  AnswerForm({}, "Cancel");
  Load("c.txt", kNumbers);
  EXPECT_EQ(trial.NData, 0);
  EXPECT_THROW((void)trial.Data(1, 1), std::out_of_range);
  EXPECT_EQ(trial.SavedLabels[1], "Chan. 01");
  WriteTrialFile(directory.Path("no-rate.vmb"), [](Trial& made) { SetChannels(made, {{1, 2}}, 0.0); });
  LoadPath(directory.Path("no-rate.vmb"));
  EXPECT_EQ(trial.Rate, 1.0);
  EXPECT_EQ(trial.Duration, 2.0);
  EXPECT_TRUE(Tells("tells no sampling rate"));
}

TEST_F(LoadFileTest, WhatCannotBeOpenedIsAMessage) {
  const std::string missing = directory.Path("missing.txt");
  LoadPath(missing);
  EXPECT_EQ(LastBox(), "|Error reading file: " + missing + "\n\"No such file or directory\"");
  const std::string folder = directory.Path("folder.csv");
  mkdir(folder.c_str(), 0777);
  LoadPath(folder);
  EXPECT_EQ(LastBox(), "|Error reading file: " + folder + "\n\"Is a directory\"");
  const std::string pipe = directory.Path("pipe.txt");
  mkfifo(pipe.c_str(), 0666);
  LoadPath(pipe);  // must not wait for a writer
  EXPECT_TRUE(LastBox().starts_with("|Error reading file: " + pipe));
  const std::string secret = directory.Path("secret.txt");
  WriteFile(secret, kNumbers);
  chmod(secret.c_str(), 0);
  chmod(directory.Path("").c_str(), 0755);
  const bool root = geteuid() == 0;
  constexpr uid_t kNobody = 65534;
  ASSERT_TRUE(!root || seteuid(kNobody) == 0);
  LoadPath(secret);
  ASSERT_TRUE(!root || seteuid(0) == 0);
  EXPECT_EQ(LastBox(), "|Error reading file: " + secret + "\n\"Permission denied\"");
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(LoadFileTest, IncompleteLineEndsAreRepairedOnRequest) {
  const std::string damaged = "a b\r\r\n1 2\r\r\n3 4\r\r\n5 6";
  const std::string repaired = "a b\r\n1 2\r\n3 4\r\n5 6";
  questions.boxAnswers = {Button::Cancel};
  Load("a.txt", damaged);
  EXPECT_EQ(
      LastBox(),
      "Fix File?|File has incomplete line termination (CR/LF).  Press OK to add correct line termination.");
  EXPECT_EQ(trial.NData, 0);
  questions.boxAnswers = {Button::OK, Button::Cancel};
  Load("a.txt", damaged);
  EXPECT_EQ(questions.boxes.back().title, "Keep Original?");
  EXPECT_EQ(ReadFile(directory.Path("a.txt")), damaged);
  EXPECT_FALSE(std::filesystem::exists(directory.Path("a.fixed.txt")));

  questions.boxAnswers = {Button::OK, Button::Yes};
  LoadWithDefaults("a.txt", damaged);
  EXPECT_EQ(LastBox(),
            "Original Filename Changed|Original file is now called, " + directory.Path("a.nocrlf.txt"));
  EXPECT_EQ(ReadFile(directory.Path("a.nocrlf.txt")), damaged);
  EXPECT_EQ(ReadFile(directory.Path("a.txt")), repaired);
  EXPECT_EQ(Rows(), (Frames{{1, 2}, {3, 4}, {5, 6}}));

  for (const char* odd : {"a b\v1 2\v3 4\v5 6", "a b\n\r1 2\n\r3 4\n\r5 6"}) {
    questions.boxAnswers = {Button::OK, Button::No};
    LoadWithDefaults("b.txt", odd);
    EXPECT_EQ(ReadFile(directory.Path("b.txt")), repaired);
    EXPECT_EQ(trial.NData, 3);
  }
  EXPECT_FALSE(std::filesystem::exists(directory.Path("b.nocrlf.txt")));
}

}  // namespace
}  // namespace velmora::test
