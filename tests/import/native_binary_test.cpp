#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <limits>

#include "core/transpose.hpp"
#include "export/save_data.hpp"
#include "import/load_file.hpp"
#include "support/scripted_questions.hpp"
#include "support/temporary_directory.hpp"
#include "support/trials.hpp"

namespace velmora {
namespace {

using test::Channel;
using test::NoiseChannels;
using test::ReadFile;
using test::ScriptedQuestions;
using test::SetChannels;
using test::TemporaryDirectory;
using test::WriteFile;

constexpr std::size_t kSamplesAt = 4386;

template <typename T>
void Put(std::string& bytes, std::size_t offset, T value) {
  bytes.replace(offset, sizeof value, reinterpret_cast<const char*>(&value), sizeof value);
}
void PutText(std::string& bytes, std::size_t offset, std::string_view text) {
  bytes.replace(offset, text.size(), text);
}
template <typename T>
T Get(const std::string& bytes, std::size_t offset) {
  T value{};
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// A file laid out by hand: channels x samples of c * 1000 + i, times i / 50.
std::string FileByHand(int channels, int samples) {
  std::string bytes(kSamplesAt, '\0');
  bytes.replace(0, 80, std::string(80, ' '));
  PutText(bytes, 0, "Velmora2 binary file. Version 1.00 (build 001)");
  bytes.replace(80, 100, std::string(100, ' '));
  PutText(bytes, 80, "42 squat jumps");
  Put<std::int16_t>(bytes, 180, static_cast<std::int16_t>(channels));
  Put<std::int32_t>(bytes, 182, samples);
  Put<double>(bytes, 186, 50.0);
  Put<double>(bytes, 194, 1.5);
  for (std::size_t c = 0; c <= 64; ++c) {
    Put<std::int16_t>(bytes, 202 + 2 * c, c % 2 == 0 ? -1 : 0);
    Put<std::int16_t>(bytes, 332 + 2 * c, static_cast<std::int16_t>(c + 3));
    Put<double>(bytes, 462 + 8 * c, 50.0 + static_cast<double>(c));
    Put<double>(bytes, 982 + 8 * c, 2.0 * static_cast<double>(c));
    Put<double>(bytes, 1502 + 8 * c, -0.5 * static_cast<double>(c));
    Put<std::int16_t>(bytes, 2022 + 2 * c, static_cast<std::int16_t>(c));
    Put<std::int16_t>(bytes, 2152 + 2 * c, static_cast<std::int16_t>(c == 2 ? 0 : 7));
    bytes.replace(2282 + 10 * c, 10, "label " + std::to_string(c) + std::string(c < 10 ? 3 : 2, ' '));
    bytes.replace(2932 + 10 * c, 10, "\xB0/s       ");
  }
  for (std::size_t k = 0; k < 228 + 328 + 248; ++k) {
    bytes[3582 + k] = static_cast<char>('a' + k % 26);
  }
  Put<std::int16_t>(bytes, 3582 + 224, 0);
  for (int c = 0; c <= channels; ++c) {
    for (int i = 1; i <= samples; ++i) {
      const float value = c == 0 ? static_cast<float>(i - 1) / 50.0F : static_cast<float>(c * 1000 + i);
      bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
  }
  return bytes;
}

struct NativeBinary : testing::Test {
  TemporaryDirectory directory;
  ScriptedQuestions questions;
  Workbench workbench{questions};
  Trial& trial = workbench.trial;

  void Load(const std::string& bytes) {
    const std::string path = directory.Path("trial.vmb");
    WriteFile(path, bytes);
    LoadPath(path);
  }
  void LoadPath(const std::string& path) {
    trial.FileName = path;
    questions.boxes.clear();
    LoadFile(workbench);
  }
  std::string Save(const std::string& name) {
    questions.fileAnswers.push_back({directory.Path(name)});
    SaveData(workbench, SaveFormat::NativeBinary);
    return directory.Path(name);
  }
  std::vector<std::string> BoxTitles() const {
    std::vector<std::string> titles;
    for (const Box& box : questions.boxes) {
      titles.push_back(box.title);
    }
    return titles;
  }
};

TEST_F(NativeBinary, EveryFieldIsFoundWhereItLies) {
  Load(FileByHand(3, 75));
  EXPECT_TRUE(questions.boxes.empty());
  EXPECT_EQ(trial.NChan, 3);
  EXPECT_EQ(trial.NData, 75);
  EXPECT_EQ(trial.Rate, 50.0);
  EXPECT_EQ(trial.Duration, 1.5);
  EXPECT_EQ(trial.OriginalDuration, 1.5);
  EXPECT_EQ(trial.TrialTitle, "42 squat jumps");
  EXPECT_EQ(trial.FileTypeCode, 253);
  EXPECT_EQ(trial.ChanAutozero[2], -1);
  EXPECT_EQ(trial.ChanNumber[3], 6);
  EXPECT_EQ(trial.ChanRate[1], 51.0);
  EXPECT_EQ(trial.ChanGain[3], 6.0);
  EXPECT_EQ(trial.ChanOffset[3], -1.5);
  EXPECT_EQ(trial.ChanGraphSlot[2], 2);
  EXPECT_EQ(trial.ChanColour[1], 7);
  EXPECT_EQ(trial.ChanColour[2], 2) << "an unset colour becomes the default";
  EXPECT_EQ(trial.ChanLabel[3], "label 3");
  EXPECT_EQ(trial.ChanUnits[1], "°/s");
  EXPECT_EQ(trial.Data(75, 0), 74.0F / 50.0F);
  EXPECT_EQ(trial.Data(1, 1), 1001.0F);
  EXPECT_EQ(trial.Data(75, 3), 3075.0F);
  EXPECT_EQ(trial.HeaderLines[5], "  ndata=    75   sampling rate= 50.00  duration= 1.500");
  EXPECT_EQ(trial.HeaderLines[1].size(), 61U);
  EXPECT_EQ(trial.HeaderLines[4].substr(0, 1), std::string(1, static_cast<char>('a' + (556 + 183) % 26)));
  EXPECT_EQ(trial.CursorLo, 1);
  EXPECT_EQ(trial.CursorHi, 75);
  EXPECT_EQ(questions.panels.back().format, "Velmora2 binary analog (.VMB)");
  EXPECT_EQ(questions.panels.back().status, "75 samples/channel");
}

TEST_F(NativeBinary, ASavedFileDiffersFromItsSourceOnlyWhereItMust) {
  std::string expected = FileByHand(3, 75);
  Load(expected);
  const std::string saved = ReadFile(Save("copy.vmb"));
  EXPECT_EQ(questions.files[0].title, "Save data in Velmora2/3 binary (.VMB) file");
  EXPECT_EQ(questions.files[0].defaultName, "trial.vmb");
  EXPECT_EQ(questions.boxes.back().text, "File has been saved as: " + ToUpper(directory.Path("copy.vmb")));
  Put<double>(expected, 194, 1.5);  // one interval longer than (NData-1)/Rate, which the file had already
  Put<std::int16_t>(expected, 2152 + 2 * 2, 2);
  ASSERT_EQ(saved.size(), expected.size());
  EXPECT_EQ(saved, expected) << "stale entries above NChan and the carried records included";

  MarkChanged(workbench, true);
  trial.ChanLabel[1] = "a label of many characters";
  trial.PairedGraphs = true;
  workbench.timeBase = TimeBase::Percentage;
  const std::string path = Save("other");  // the extension is added
  EXPECT_FALSE(trial.FileChanged);
  EXPECT_EQ(trial.FileName, directory.Path("trial.vmb"));
  workbench.timeBase = TimeBase::Seconds;
  LoadPath(path + ".vmb");
  EXPECT_EQ(trial.ChanLabel[1], "a label of");
  EXPECT_TRUE(trial.PairedGraphs);
  EXPECT_EQ(workbench.timeBase, TimeBase::Percentage);
}

TEST_F(NativeBinary, RoundTripsAtEveryShape) {
  for (const int channels : {0, 1, 2, 3, 4, 7, 8, 15, 16, 31, 63, 64}) {
    for (const int samples : {1, 15, 16, 17, 4096, 4097}) {
      const auto noise = NoiseChannels(std::max(channels, 1), samples);
      SetChannels(trial, noise);
      if (channels == 0) {
        trial.CutChannels(0);
      }
      const std::string path = Save("shape.vmb");
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

TEST_F(NativeBinary, ARangeIsSavedFromTimeZero) {
  Load(FileByHand(2, 75));
  trial.CursorLo = 11;
  trial.CursorHi = 30;
  questions.boxAnswers = {Button::Yes};
  const std::string saved = ReadFile(Save("range.vmb"));
  EXPECT_EQ(saved.size(), kSamplesAt + 4 * 20 * 3);
  EXPECT_EQ(Get<std::int32_t>(saved, 182), 20);
  EXPECT_EQ(Get<double>(saved, 194), 20.0 / 50.0);
  EXPECT_EQ(Get<float>(saved, kSamplesAt), 0.0F);
  EXPECT_EQ(Get<float>(saved, kSamplesAt + 4 * 20), 1011.0F);
  EXPECT_EQ(Get<float>(saved, saved.size() - 4), 2030.0F);
}

TEST_F(NativeBinary, SavingNeverDestroys) {
  Load(FileByHand(2, 75));
  const std::string path = directory.Path("old.vmb");
  const std::string old(20000, 'x');
  WriteFile(path, old);
  Save("old.vmb");
  const std::string saved = ReadFile(path);
  EXPECT_EQ(saved.size(), old.size());
  EXPECT_EQ(saved.substr(kSamplesAt + 4 * 75 * 3), std::string(20000 - kSamplesAt - 4 * 75 * 3, 'x'));

  MarkChanged(workbench, true);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{.rlim_cur = 4500, .rlim_max = before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  Save("old.vmb");
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(ReadFile(path), saved);
  EXPECT_EQ(
      questions.boxes.back().text,
      "Error saving to file: " + path + "\nFile may be in-use or write-protected.\n\n\"File too large\"");
  EXPECT_EQ(workbench.report.failures.size(), 1U);
  EXPECT_TRUE(trial.FileChanged);

  Save("missing/trial.vmb");
  EXPECT_EQ(workbench.report.failures.size(), 2U);
  questions.fileAnswers.push_back({});
  SaveData(workbench, SaveFormat::NativeBinary);  // no name: nothing happens
  EXPECT_EQ(workbench.report.failures.size(), 2U);
}

// As somebody who is not allowed to: in a process of its own without root's rights.
TEST_F(NativeBinary, AWriteProtectedFileIsRefused) {
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
    Save("protected.vmb");
    _exit(workbench.report.failures.size() == 1 ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(ReadFile(path), "old");
}

TEST_F(NativeBinary, WithoutAnIdentificationLineTheHeaderStartsAtOnce) {
  Load(FileByHand(2, 10).substr(80));
  EXPECT_EQ(BoxTitles(), (std::vector<std::string>{"File Type Error"}));
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.Data(10, 2), 2010.0F);
}

TEST_F(NativeBinary, BadFilesEndInTheirMessage) {
  const std::string good = FileByHand(2, 10);
  const auto refused = [this](const std::string& bytes, const std::vector<std::string>& titles) {
    Load(bytes);
    EXPECT_EQ(BoxTitles(), titles);
    EXPECT_EQ(trial.NData, 0);
    EXPECT_THROW(trial.Data(1, 1), std::out_of_range);
    EXPECT_EQ(trial.FileTypeCode, 238);
    EXPECT_EQ(questions.panels.back().format, "Unknown filetype");
  };
  refused("", {"File Type Error", "File read error"});
  refused("Velmora2", {"File read error"});
  refused(good.substr(0, kSamplesAt - 1), {"File read error"});
  refused(std::string(5000, '\xFF'), {"File Type Error", "File read error"});
  for (const std::int16_t channels : {std::int16_t{-1}, std::int16_t{65}, std::int16_t{32767}}) {
    std::string bytes = good;
    Put(bytes, 180, channels);
    refused(bytes, {"File read error"});
  }
  std::string bytes = good;
  Put<std::int32_t>(bytes, 182, -5);
  refused(bytes, {"File read error"});
  bytes = good;
  Put<std::int16_t>(bytes, 180, 64);
  Put<std::int32_t>(bytes, 182, std::numeric_limits<std::int32_t>::max());
  refused(bytes, {"File read error"});

  LoadPath(directory.Path("missing.vmb"));
  EXPECT_EQ(questions.boxes[0].text,
            "Error reading file: " + directory.Path("missing.vmb") + "\n\"No such file or directory\"");
  std::filesystem::create_directory(directory.Path("folder.vmb"));
  LoadPath(directory.Path("folder.vmb"));
  EXPECT_NE(questions.boxes[0].text.find("Is a directory"), std::string::npos);
  EXPECT_EQ(trial.NData, 0);
}

TEST_F(NativeBinary, SamplesThatAreMissingAreZero) {
  const std::string good = FileByHand(2, 5000);
  Load(good.substr(0, kSamplesAt + 4 * (5000 + 4200) + 3));
  ASSERT_EQ(trial.NChan, 2);
  ASSERT_EQ(trial.NData, 5000);
  EXPECT_EQ(trial.Data(4200, 1), 5200.0F);
  EXPECT_EQ(trial.Data(4201, 1), 0.0F);
  EXPECT_EQ(trial.Data(5000, 2), 0.0F);
  EXPECT_TRUE(questions.boxes.empty());
  Load(good.substr(0, kSamplesAt));
  EXPECT_EQ(trial.Data(5000, 0), 0.0F) << "and not what the last trial had there";
}

TEST_F(NativeBinary, OddNumbersAreJustNumbers) {
  std::string bytes = FileByHand(1, 4);
  Put<double>(bytes, 186, std::nan(""));
  Put<double>(bytes, 194, 1e300);
  Put<float>(bytes, kSamplesAt + 16, std::nanf(""));
  Put<float>(bytes, kSamplesAt + 20, std::numeric_limits<float>::infinity());
  for (std::size_t k = 0; k < 100; ++k) {
    bytes[80 + k] = static_cast<char>(k * 3);
  }
  Load(bytes);
  ASSERT_EQ(trial.NData, 4);
  EXPECT_TRUE(std::isnan(trial.Data(1, 1)));
  EXPECT_TRUE(std::isinf(trial.Data(2, 1)));
  EXPECT_EQ(trial.TrialTitle, trial.FileName) << "a title that is no number gives way to the path";
  EXPECT_EQ(SampleToTime(trial, 3), 0.0);
  const std::string saved = ReadFile(Save("odd.vmb"));
  EXPECT_EQ(saved.substr(kSamplesAt), bytes.substr(kSamplesAt));
}

TEST_F(NativeBinary, CancelKeepsTheChannelsReadSoFar) {
  const auto cancelAt = [this](const std::string& status) {
    questions.onProgress = [status](ProgressPanel& panel) {
      if (panel.Status() == status) {
        panel.PressCancel();
      }
    };
  };
  cancelAt("Reading channel 2 of 5.");
  Load(FileByHand(5, 20));
  EXPECT_EQ(questions.boxes.back().text, "Reading cancelled only 2 of 5 channels were read.");
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.Data(20, 2), 2020.0F);
  EXPECT_THROW(trial.Data(1, 3), std::out_of_range);
  EXPECT_EQ(questions.panels.back().format, "Reading cancelled by user");

  cancelAt("Header read.  Reading times.");
  Load(FileByHand(5, 20));
  EXPECT_EQ(questions.boxes.back().text, "Reading cancelled.");
  EXPECT_EQ(trial.NData, 0);
}

// Every shape and alignment against the obvious loop.
TEST(Transpose, EqualsTheObviousLoop) {
  std::vector<float> rows(70 * 100);
  for (std::size_t k = 0; k < rows.size(); ++k) {
    rows[k] = static_cast<float>(k);
  }
  for (int width = 1; width <= 65; width += width < 10 ? 1 : 11) {
    for (const int samples : {1, 3, 16, 33, 50}) {
      for (const int shift : {0, 1, 4}) {
        alignas(64) float frames[66 * 50 + 4] = {};
        RowsToFrames(rows.data(), 100, width, samples, frames + shift, width);
        std::vector<float> back(65 * 64, -1.0F);
        FramesToRows(frames + shift, width, width, samples, back.data(), 64);
        for (int c = 0; c < width; ++c) {
          for (int i = 0; i < samples; ++i) {
            ASSERT_EQ(frames[shift + i * width + c], rows[static_cast<std::size_t>(c * 100 + i)]);
            ASSERT_EQ(back[static_cast<std::size_t>(c * 64 + i)],
                      rows[static_cast<std::size_t>(c * 100 + i)]);
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace velmora
