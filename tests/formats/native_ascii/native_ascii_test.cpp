#include <algorithm>
#include <cstring>

#include "core/text/text.hpp"
#include "formats/native_ascii/native_ascii_reader.hpp"
#include "support/command_test.hpp"
#include "support/native_file.hpp"

namespace velmora::test {
namespace {

// Three channels, four samples; the time fields are wrong on purpose, since nobody reads them.
const std::string kByHand =
    "* C:\\DATA\\SQUAT.VMA\r\n"
    "* C:\\DATA\\SQUAT.DAT\r\n"
    "* 42 squat jumps\r\n"
    "*  250.000     0.0120\r\n"
    "*        0         3\r\n"
    "* Channel:        00        07        12\r\n"
    "* Time    Fx        Kraft \xB5   Tibialis a\r\n"
    "*  250.000   250.000   250.000   250.000\r\n"
    "    9.0000    1.5000   -2.0000    0.1250\r\n"
    "    9.0000    2.5000-1234.5678    0.1250\r\n"
    "    9.0000    3.5000\r\n"
    "    9.0000    4.5000       abc    1e-3  \r\n";

struct NativeAscii : FileTest {
  void Load(const std::string& bytes, const std::string& name = "trial.vma") { FileTest::Load(name, bytes); }
  std::string Save(const std::string& name) { return ReadFile(SaveAs(name, "save.vma")); }
};

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

TEST_F(NativeAscii, EveryFieldIsFoundInItsColumns) {
  trial.HeaderLines[9] = "of the trial before";
  Load(kByHand);
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_EQ(trial.FileTypeCode, 0);
  EXPECT_EQ(trial.NChan, 3);
  EXPECT_EQ(trial.NData, 4);
  EXPECT_EQ(trial.Rate, 250.0);
  EXPECT_EQ(trial.Duration, 0.012);
  EXPECT_EQ(trial.FirstSample, 0);
  EXPECT_EQ(trial.LastSample, 3);
  EXPECT_EQ(trial.TrialTitle, "42 squat jumps");
  EXPECT_EQ(trial.HeaderLineCount, 8);
  EXPECT_EQ(trial.HeaderLines[6], "* Channel:        00        07        12");
  EXPECT_EQ(trial.HeaderLines[7], "* Time    Fx        Kraft µ   Tibialis a");
  EXPECT_EQ(trial.HeaderLines[9], "");
  EXPECT_EQ(workbench.time.Base, TimeBase::Seconds);
  EXPECT_EQ(trial.ChanLabel[0], "Time");
  EXPECT_EQ(Labels(), (Texts{"Fx", "Kraft µ", "Tibialis a"}));
  EXPECT_EQ(UnitsOfChannels(), Texts(3, "V"));
  EXPECT_EQ(trial.ChanNumber[1], 0);
  EXPECT_EQ(trial.ChanNumber[2], 7);
  EXPECT_EQ(trial.ChanNumber[3], 12);
  EXPECT_EQ(trial.ChanRate[3], 250.0);
  EXPECT_EQ(Channel(trial, 0), (Samples{0, 0.004F, 0.008F, 0.012F})) << "rebuilt from the rate";
  EXPECT_EQ(Channel(trial, 1), (Samples{1.5F, 2.5F, 3.5F, 4.5F}));
  EXPECT_EQ(Channel(trial, 2), (Samples{-2.0F, -1234.5678F, 0, 0})) << "what is no number is 0";
  EXPECT_EQ(Channel(trial, 3), (Samples{0.125F, 0.125F, 0, 0.001F}));

  std::string unixLines = kByHand;
  unixLines.erase(std::remove(unixLines.begin(), unixLines.end(), '\r'), unixLines.end());
  Load(unixLines, "ensemble.VmE");
  EXPECT_EQ(workbench.time.Base, TimeBase::Percentage);
  EXPECT_EQ(trial.ChanLabel[0], "Percentage");
  EXPECT_EQ(trial.ChanUnits[0], "%");
  EXPECT_EQ(Channel(trial, 1), (Samples{1.5F, 2.5F, 3.5F, 4.5F}));

  std::string looked = FileByHand(2, 75);
  Put<std::int16_t>(looked, 3582 + 224, 4);  // paired graphs, percentage
  Load(looked, "looked.vmb");
  EXPECT_EQ(workbench.time.Base, TimeBase::Percentage);
  Load(kByHand);
  EXPECT_EQ(workbench.time.Base, TimeBase::Seconds) << "the flags are of the other file";
  EXPECT_FALSE(trial.PairedGraphs);
}

TEST_F(NativeAscii, TheHeaderAndTheEndOfTheFileLimitTheSamples) {
  Load(Replaced(kByHand, "0         3\r\n", "5         6\r\n"));
  EXPECT_EQ(Channel(trial, 1), (Samples{1.5F, 2.5F})) << "samples 5 and 6";
  Load(Replaced(kByHand, "0         3\r\n", "0      9999\r\n"));
  EXPECT_EQ(trial.NData, 4);
  EXPECT_EQ(trial.Channel(1).size(), 4);
  EXPECT_EQ(trial.Notices, (Texts{"1 field without a number read as 0; the first is sample 4 of channel 01.",
                                  "The file ends after 4 of 10,000 samples."}));
  EXPECT_EQ(workbench.report.warnings, trial.Notices);
  Load(Replaced(kByHand.substr(0, kByHand.size() - 25), "0         3\r\n", "0      9999\r\n"));
  EXPECT_EQ(trial.Notices, (Texts{"The file ends after 4 of 10,000 samples, and within the last one."}));
  Load(Replaced(kByHand, "0         3\r\n", "0    3000000\r\n"));
  EXPECT_EQ(trial.LastSample, 3000000) << "a number too wide for its field";
  EXPECT_EQ(trial.NData, 4);

  std::string shortLines = Replaced(kByHand, "         3\r\n", "      4999\r\n");
  for (int i = 4; i < 5000; ++i) {
    shortLines += "\n";
  }
  Load(shortLines);
  EXPECT_EQ(trial.NData, 5000) << "more lines than their length lets expect";
  EXPECT_EQ(trial.Data(4, 1), 4.5F);
}

TEST_F(NativeAscii, CancelKeepsWhatWasRead) {
  std::string bytes = Replaced(kByHand, "         3\r\n", "       999\r\n");
  for (int i = 4; i < 1000; ++i) {
    bytes += "    0.0000    7.0000\r\n";
  }
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Value() == 200) {
      panel.PressCancel();
    }
  };
  Load(bytes);
  EXPECT_EQ(trial.NData, 200);
  EXPECT_EQ(trial.Data(200, 1), 7.0F);
  EXPECT_THROW(trial.Data(201, 1), std::out_of_range);
}

TEST_F(NativeAscii, WhatIsNoTrialIsSaidAndNothingIsLoaded) {
  const auto refused = [this](const std::string& bytes) {
    Load(bytes);
    EXPECT_EQ(trial.NData, 0);
    return questions.boxes.empty() ? "" : questions.boxes.back().title;
  };
  const std::string headers = kByHand.substr(0, kByHand.find("    9.0000"));
  EXPECT_EQ(refused(headers), "File Empty");
  EXPECT_EQ(refused("* \r\n"), "File Empty");
  EXPECT_EQ(refused(Replaced(kByHand, "0         3\r\n", "3         1\r\n")), "File Empty");
  EXPECT_EQ(refused(Replaced(kByHand, "* Channel:        00        07        12", "* Channel:")),
            "File Empty");

  refused(Replaced(kByHand, "00        07", std::string(700, '1')));
  EXPECT_NE(questions.boxes.back().text.find("a trial holds at most 64"), std::string::npos);
  EXPECT_GE(workbench.report.failures.size(), 1U);

  for (const char* number : {"    1e39", "-3.5e+38", "   1e999"}) {
    refused(Replaced(kByHand, "  3.5000", number));
    EXPECT_TRUE(questions.boxes.back().text.ends_with("\n\"the number " + Trim(number) + " is too large\""));
  }
  refused(Replaced(kByHand, "  250.000     0.0120", "    1e999     0.0120"));
  EXPECT_TRUE(questions.boxes.back().text.starts_with("Error reading file: "));
  Load(Replaced(kByHand, "2.5000-1234.5678", "2.50003.40282e38"));
  EXPECT_EQ(trial.Data(2, 2), 3.40282e38F) << "what fits is read";

  questions.boxAnswers = {Button::Cancel, Button::OK};
  EXPECT_EQ(refused(""), "Invalid File Format");
  EXPECT_EQ(trial.FileTypeCode, 238);
  refused("1.0 2.0\n3.0 4.0\n");
  EXPECT_TRUE(questions.boxAnswers.empty());
  questions.boxAnswers = {Button::No};
  EXPECT_EQ(refused("File_Type: something else"), "Format Not Read");
  LoadPath(directory.Path("missing.vma"));
  EXPECT_EQ(questions.boxes.back().text,
            "Error reading file: " + directory.Path("missing.vma") + "\n\"No such file or directory\"");
}

TEST_F(NativeAscii, WrittenToTheByte) {
  SetChannels(trial, {{1.5F, -0.00001F, 100000.0F}, {0.03125F, 0.09375F, -99999.5F}}, 1000.0);
  trial.FileName = "/data/walk.c3d";
  trial.TrialName = "walk";
  trial.TrialTitle = "42 walks";
  trial.ChanLabel[1] = "Vastus medialis";
  trial.ChanLabel[2] = "µV";
  trial.ChanNumber[1] = 5;
  MarkChanged(workbench, true);
  const std::string bytes = Save("walk.vma");
  EXPECT_EQ(bytes, "* " + directory.Path("walk.vma") +
                       "\r\n"
                       "* /data/walk.c3d\r\n"
                       "* 42 walks\r\n"
                       "* 1000.000    0.0020\r\n"
                       "*        0    2\r\n"
                       "* Channel:        00        01\r\n"
                       "* Time    Vastus med\xB5V        \r\n"
                       "* 1000.000  1000.000  1000.000\r\n"
                       "    0.0000    1.5000    0.0312\r\n"
                       "    0.0010   -0.0000    0.0938\r\n"
                       "    0.0020100000.0000-99999.5000\r\n");
  EXPECT_EQ(questions.files.back().title, "Save data from samples 1 to 3 in a .VMA file");
  EXPECT_EQ(questions.files.back().defaultName, "walk.vma");
  EXPECT_FALSE(trial.FileChanged);

  trial.TrialTitle = "* marked";
  EXPECT_NE(Save("walk.vma").find("\r\n* marked\r\n"), std::string::npos);
  trial.TrialTitle = "42\r\nwalks";
  trial.ChanLabel[1] = "a\nb\tc";
  EXPECT_NE(Save("walk.vma").find("\r\n* 42  walks\r\n"), std::string::npos);
  LoadPath(directory.Path("walk.vma"));
  EXPECT_EQ(trial.ChanLabel[1], "a b c");
  EXPECT_EQ(Channel(trial, 1), (Samples{1.5F, 0, 100000.0F}));
}

TEST_F(NativeAscii, RatesOfEveryWidth) {
  const auto rateLine = [this](double rate) {
    SetChannels(trial, {{1, 2}}, rate);
    std::string bytes = Save("rate.vma");
    for (int line = 1; line < 4; ++line) {
      bytes.erase(0, bytes.find('\n') + 1);
    }
    LoadPath(directory.Path("rate.vma"));
    return bytes.substr(0, bytes.find('\r'));
  };
  EXPECT_EQ(rateLine(0.5), "*    0.500    2.0000");
  EXPECT_EQ(trial.Rate, 0.5);
  EXPECT_EQ(rateLine(9999.5), "* 9999.500    0.0001");
  EXPECT_EQ(rateLine(12345.678), "*12345.678    0.0001") << "nine columns take the blank";
  EXPECT_EQ(trial.Rate, 12345.678);
  EXPECT_TRUE(trial.Notices.empty());
  EXPECT_EQ(rateLine(123456.75), "* 3456.750    0.0000") << "ten columns lose their head";
  SetChannels(trial, {{1, 2}}, 123456.75);
  Save("rate.vma");
  EXPECT_TRUE(Tells("The rate in the saved file is 3456.75 Hz, that of the trial 123456.75 Hz."));
  SetChannels(trial, {{1, 2}}, 1.0 / 3);
  Save("rate.vma");
  EXPECT_TRUE(Tells("The rate in the saved file is 0.333 Hz"));
}

TEST_F(NativeAscii, ValuesAndTimesThatItsColumnsDoNotKeepAreTold) {
  SetChannels(trial, {{0.5F, -0.0099F}, {0, 0}, {-0.00994F, 0.0004F}, {3e-5F, 0}}, 100);
  trial.ChanLabel[3] = "Vastus";
  Save("small.vma");
  EXPECT_EQ(trial.Notices,
            Texts{"4 decimals leave fewer than 3 digits of the values of Vastus, channel 03 in the "
                  "saved file. A .VMB file keeps them."});
  SetChannels(trial, {{1, 2, 3}, {0, NAN, -INFINITY}}, 100);
  trial.Notices.clear();
  Save("missing.vma");
  EXPECT_TRUE(Tells("2 samples without a number, which the saved file does not give back."));
  LoadPath(directory.Path("missing.vma"));
  EXPECT_EQ(Channel(trial, 2), (Samples{0, 0, 0}));
  EXPECT_EQ(trial.Notices,
            Texts{"2 fields without a number read as 0; the first is sample 2 of channel 01."});
  SetChannels(trial, {{1, 2, 3, 4}}, 100);
  trial.Notices.clear();
  trial.Data(4, 0) = 0.034F;
  Save("even.vma");
  EXPECT_TRUE(trial.Notices.empty()) << "less than a sample";
  trial.Data(3, 0) = 0.25F;
  Save("uneven.vma");
  EXPECT_EQ(trial.Notices,
            Texts{"The saved file counts its times at the rate; those of the trial differ from that "
                  "by up to 0.23 s. .VMB, .CSV and .TAB files keep them."});
}

TEST_F(NativeAscii, ARangeAndTheNumberOfSamplesInTheHeader) {
  SetChannels(trial, {{1, 2, 3, 4, 5, 6}}, 10.0);
  SetCursors(3, 5);
  const std::string all = Save("range.vma");
  EXPECT_NE(all.find("\r\n*   10.000    0.5000\r\n*        0    5\r\n"), std::string::npos)
      << "the cursors choose the lines but not the count";
  EXPECT_NE(all.find("\r\n    0.0000    3.0000\r\n    0.1000    4.0000\r\n    0.2000    5.0000\r\n"),
            std::string::npos);
  workbench.SaveRangeSet = true;
  const std::string range = Save("range.vma");
  EXPECT_NE(range.find("\r\n*   10.000    0.2000\r\n*        0    2\r\n"), std::string::npos);

  LoadPath(directory.Path("range.vma"));
  EXPECT_EQ(Channel(trial, 1), (Samples{3, 4, 5}));
  EXPECT_EQ(Channel(trial, 0), (Samples{0, 0.1F, 0.2F}));

  SetChannels(trial, {{7}}, 10.0);
  EXPECT_EQ(trial.CursorLo, 0);
  EXPECT_NE(Save("single.vma").find("\r\n    0.0000    7.0000\r\n"), std::string::npos);
  EXPECT_TRUE(trial.Notices.empty());
  SetChannels(trial, {{12345.5F, -12345.5F, 1e6F}}, 10.0);
  Save("wide.vma");
  EXPECT_TRUE(Tells("2 values took more than the 10 columns")) << "they run into their neighbours";
}

TEST_F(NativeAscii, MoreThan16Channels) {
  SetChannels(trial, NoiseChannels(20, 50));
  const Samples sixteenth = Channel(trial, 16);
  questions.boxAnswers = {Button::Cancel};
  Run("save.vma");
  EXPECT_EQ(questions.boxes.back().title, "Too Many Channels");
  EXPECT_TRUE(questions.files.empty());

  questions.boxAnswers = {Button::OK, Button::OK};
  SaveAs("missing/wide.vma", "save.vma");
  EXPECT_EQ(trial.NChan, 20) << "a save that fails costs no channels";
  trial.FilePlates = {{.base = 0, .channels = 6}, {.base = 12, .channels = 6}};
  Save("wide.vma");
  EXPECT_EQ(trial.NChan, 16);
  EXPECT_EQ(Channel(trial, 16), sixteenth);
  EXPECT_EQ(trial.FilePlates.size(), 1U);
  EXPECT_EQ(trial.NPlates, 1);
  EXPECT_EQ(trial.Notices.back(),
            "Force plates of the file that are still known: 1. The channels of the others are not among the "
            "first 16.");
  LoadPath(directory.Path("wide.vma"));
  EXPECT_EQ(trial.NChan, 16);
}

}  // namespace
}  // namespace velmora::test
