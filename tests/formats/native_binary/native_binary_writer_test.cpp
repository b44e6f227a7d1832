#include <sys/wait.h>
#include <unistd.h>

#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "support/full_disk.hpp"
#include "support/native_file.hpp"

namespace velmora::test {
namespace {

using NativeBinaryWriter = NativeFileTest;

TEST_F(NativeBinaryWriter, ASavedFileDiffersFromItsSourceOnlyWhereItMust) {
  std::string expected = FileByHand(3, 75);
  Load(expected);
  const std::string saved = ReadFile(SaveAs("copy.vmb"));
  EXPECT_EQ(questions.files[0].title, "Save data in Velmora2/3 binary (.VMB) file");
  EXPECT_EQ(questions.files[0].defaultName, "trial.vmb");
  EXPECT_EQ(questions.boxes.back().text, "File has been saved as: " + ToUpper(directory.Path("copy.vmb")));
  EXPECT_EQ(questions.statuses.back(), "Saving channel 3");
  Put<double>(expected, 194, 1.5);  // one interval longer than (NData-1)/Rate, which the file had already
  Put<std::int16_t>(expected, 2152 + 2 * 2, 2);
  ASSERT_EQ(saved.size(), expected.size());
  EXPECT_EQ(saved, expected) << "stale entries above NChan and the carried records included";
  trial.TrialName.clear();  // as a directory that is entered leaves it
  workbench.LoadedFile = "/recordings/squat.c3d";
  SaveAs("again.vmb");
  EXPECT_EQ(questions.files.back().defaultName, "squat.vmb");

  MarkChanged(workbench, true);
  trial.ChanLabel[1] = "a label of many characters";
  trial.PairedGraphs = true;
  workbench.time.Base = TimeBase::Percentage;
  const std::string path = SaveAs("other");  // the extension is added
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_EQ(trial.FileName, directory.Path("trial.vmb"));
  workbench.time.Base = TimeBase::Seconds;
  LoadPath(path + ".vmb");
  EXPECT_EQ(trial.ChanLabel[1], "a label of");
  EXPECT_TRUE(trial.PairedGraphs);
  EXPECT_EQ(workbench.time.Base, TimeBase::Percentage);
}

TEST_F(NativeBinaryWriter, RoundTripsAtEveryShape) {
  for (const int channels : {0, 1, 2, 3, 4, 7, 8, 15, 16, 31, 63, 64}) {
    for (const int samples : {1, 15, 16, 17, 4096, 4097}) {
      const auto noise = NoiseChannels(std::max(channels, 1), samples);
      SetChannels(trial, noise);
      if (channels == 0) {
        trial.CutChannels(0);
      }
      const std::string path = SaveAs("shape.vmb");
      trial.DiscardData();
      LoadPath(path);
      ASSERT_EQ(trial.NChan, channels);
      ASSERT_EQ(trial.NData, samples);
      for (int c = 1; c <= channels; ++c) {
        ASSERT_EQ(Channel(trial, c), noise[static_cast<std::size_t>(c - 1)]) << channels << " x " << samples;
      }
      ASSERT_EQ(trial.Data(samples, 0), static_cast<float>((samples - 1) / 100.0));
    }
  }
}

TEST_F(NativeBinaryWriter, ARangeIsSavedFromTimeZero) {
  Load(FileByHand(2, 75));
  SetCursors(11, 30);
  questions.boxAnswers = {Button::Yes};
  const std::string saved = ReadFile(SaveAs("range.vmb"));
  EXPECT_EQ(saved.size(), kSamplesAt + 4 * 20 * 3);
  EXPECT_EQ(Get<std::int32_t>(saved, 182), 20);
  EXPECT_EQ(Get<double>(saved, 194), 20.0 / 50.0);
  EXPECT_EQ(Get<float>(saved, kSamplesAt), 0.0F);
  EXPECT_EQ(Get<float>(saved, kSamplesAt + 4 * 20), 1011.0F);
  EXPECT_EQ(Get<float>(saved, saved.size() - 4), 2030.0F);
}

TEST_F(NativeBinaryWriter, SavingNeverDestroys) {
  Load(FileByHand(2, 75));
  const std::string path = directory.Path("old.vmb");
  const std::string old(20000, 'x');
  WriteFile(path, old);
  SaveAs("old.vmb");
  const std::string saved = ReadFile(path);
  EXPECT_EQ(saved.size(), old.size());
  EXPECT_EQ(saved.substr(kSamplesAt + 4 * 75 * 3), std::string(20000 - kSamplesAt - 4 * 75 * 3, 'x'));

  MarkChanged(workbench, true);
  {
    const FullDisk disk(4500);
    SaveAs("old.vmb");
  }
  EXPECT_EQ(ReadFile(path), saved);
  EXPECT_EQ(
      questions.boxes.back().text,
      "Error saving to file: " + path + "\nFile may be in-use or write-protected.\n\n\"File too large\"");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_TRUE(trial.FileChanged);

  SaveAs("missing/trial.vmb");
  EXPECT_EQ(workbench.report.failures.size(), 2U);
  questions.fileAnswers.push_back({});
  Run("save.vmb");  // no name: nothing happens
  EXPECT_EQ(workbench.report.failures.size(), 2U);
}

// As somebody who is not allowed to: in a process of its own without root's rights.
TEST_F(NativeBinaryWriter, AWriteProtectedFileIsRefused) {
  Load(FileByHand(1, 5));
  const std::string path = directory.Path("protected.vmb");
  WriteFile(path, "old");
  std::filesystem::permissions(path, std::filesystem::perms{0444});
  std::filesystem::permissions(directory.Path(""), std::filesystem::perms{0777});
  const pid_t child = fork();
  if (child == 0) {
    if (getuid() == 0 && setuid(65534) != 0) {
      _exit(2);
    }
    SaveAs("protected.vmb");
    _exit(workbench.report.failures.size() == 1 ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(NativeBinaryWriter, TextsOfAnyBytesComeBack) {
  std::string bytes = FileByHand(64, 2);
  for (std::size_t k = 0; k < 100; ++k) {
    bytes[80 + k] = static_cast<char>(k == 0 ? '7' : 255 - k);  // a number first, or the path replaces it
  }
  for (std::size_t k = 0; k < 650; ++k) {
    bytes[2282 + k] = static_cast<char>(k * 7 + 1);
    bytes[2932 + k] = static_cast<char>(255 - k);
  }
  Load(bytes);
  const std::string saved = ReadFile(SaveAs("texts.vmb"));
  EXPECT_EQ(saved.substr(80, 100), bytes.substr(80, 100));
  EXPECT_EQ(saved.substr(2282, 1300), bytes.substr(2282, 1300));
  EXPECT_EQ(saved.substr(3582), bytes.substr(3582));
}

TEST_F(NativeBinaryWriter, CursorsOutsideTheTrialSaveNothing) {
  Load(FileByHand(2, 75));
  const std::string path = directory.Path("old.vmb");
  WriteFile(path, "old");
  int listed = 0;
  workbench.onShellRequest = [&listed](ShellRequest) { ++listed; };
  const std::vector<std::pair<int, int>> ranges{{10, 76}, {0, 20}, {-5, 20}, {30, 29}, {80, 90}};
  for (const auto& [lo, hi] : ranges) {
    SetCursors(lo, hi);
    questions.boxAnswers = {Button::Yes};
    workbench.report = {};
    SaveAs("old.vmb");
    EXPECT_EQ(workbench.report.failures.size(), 1U) << lo << " to " << hi;
    EXPECT_EQ(ReadFile(path), "old");
  }
  EXPECT_EQ(listed, 5) << "the end of a save is reached all the same";
}

}  // namespace
}  // namespace velmora::test
