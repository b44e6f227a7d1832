#include <limits>
#include <optional>

#include "core/trial/helpers.hpp"
#include "formats/native_binary/native_samples.hpp"
#include "support/native_file.hpp"

namespace velmora::test {
namespace {

using NativeBinary = NativeFileTest;

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
  EXPECT_EQ(Labels(), (Texts{"label 1", "label 2", "label 3"}));
  EXPECT_EQ(UnitsOfChannels(), Texts(3, "°/s"));
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
  EXPECT_EQ(trial.Notices,
            (Texts{"The file ends after 4,200 of 5,000 samples of channel 00; the rest is 0."}));
  EXPECT_EQ(workbench.report.warnings, trial.Notices) << "a warning of the step";
  Load(good.substr(0, kSamplesAt));
  EXPECT_EQ(trial.Data(5000, 0), 0.0F) << "and not what the last trial had there";
  EXPECT_EQ(trial.Notices, (Texts{"The file ends after 0 of 5,000 samples of the times; the rest is 0."}));
  Load(good);
  EXPECT_TRUE(trial.Notices.empty());
}

TEST_F(NativeBinary, AHeaderThatAnnouncesTheMoonTakesTheMemoryOfItsFile) {
  constexpr std::int32_t kMoon = 30000000;  // x 65 x 4 bytes are 7.8 GB
  std::string bytes = FileByHand(2, 150);   // 450 floats
  Put<std::int16_t>(bytes, 180, 64);
  Put<std::int32_t>(bytes, 182, kMoon);
  Load(bytes);
  EXPECT_EQ(trial.NChan, 64);
  EXPECT_EQ(trial.NData, 450);
  EXPECT_EQ(trial.Duration, 9.0);
  EXPECT_EQ(trial.Data(150, 0), 149.0F / 50.0F);
  EXPECT_EQ(trial.Data(450, 1), 0.0F) << "those floats lie where the file has its times";
  EXPECT_EQ(trial.Notices,
            (Texts{"The file ends after 450 of 30,000,000 samples of the times; no channel has "
                   "a sample, and 450 of each are 0."}));
  Load(bytes.substr(0, kSamplesAt));
  EXPECT_EQ(trial.NData, 0);
  EXPECT_EQ(BoxTitles(), (Texts{"File read error"}));

  // A sparse file: times and one channel and a half are there, 360 MB of them.
  const std::string path = directory.Path("sparse.vmb");
  WriteFile(path, bytes.substr(0, kSamplesAt));
  std::filesystem::resize_file(path, kSamplesAt + std::uintmax_t{4} * kMoon * 5 / 2);
  LoadPath(path);
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.NData, kMoon);
  EXPECT_EQ(trial.Notices,
            (Texts{"The file ends after 15,000,000 of 30,000,000 samples of channel 01; the rest "
                   "of it is 0, and 62 channels without a sample are left out."}));
}

TEST_F(NativeBinary, AFileThatIsCutWhileItIsReadIsTold) {
  questions.onProgress = [this](ProgressPanel& panel) {
    if (panel.Status() == "Reading 5000 x 2 data") {
      std::filesystem::resize_file(directory.Path("trial.vmb"), kSamplesAt + 4 * (5000 + 4200));
    }
  };
  Load(FileByHand(2, 5000));
  EXPECT_EQ(trial.Data(4200, 1), 5200.0F);
  EXPECT_EQ(trial.Data(4201, 1), 0.0F);
  EXPECT_EQ(trial.Notices, (Texts{"5,800 samples could not be read, the first is sample 4,201 of channel 00 "
                                  "(\"the file became shorter\"); they are 0."}));
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
  const std::string saved = ReadFile(SaveAs("odd.vmb"));
  EXPECT_EQ(saved.substr(kSamplesAt), bytes.substr(kSamplesAt));
}

TEST_F(NativeBinary, CancelKeepsTheChannelsReadSoFar) {
  questions.CancelAt("Reading channel 2 of 5.");
  Load(FileByHand(5, 20));
  EXPECT_EQ(questions.boxes.back().text, "Reading cancelled only 2 of 5 channels were read.");
  EXPECT_EQ(trial.NChan, 2);
  EXPECT_EQ(trial.Data(20, 2), 2020.0F);
  EXPECT_THROW(trial.Data(1, 3), std::out_of_range);
  EXPECT_EQ(questions.panels.back().format, "Reading cancelled by user");

  questions.CancelAt("Header read.  Reading times.");
  Load(FileByHand(5, 20));
  EXPECT_EQ(questions.boxes.back().text, "Reading cancelled.");
  EXPECT_EQ(trial.NData, 0);
}

// Bundles of 16 rows, which only a file of gigabytes would have.
struct NativeBundles : NativeBinary {
  static constexpr int kRows = 41;
  static constexpr int kSamples = 5000;

  std::optional<int> CancelledAfter() {
    const std::string path = directory.Path("bundles.vmb");
    WriteFile(path, FileByHand(kRows - 1, kSamples));
    trial.NChan = kRows - 1;
    trial.NData = kSamples;
    const InputFile file(path);
    ProgressPanel panel(workbench);
    return ReadNativeSamples(trial, panel, file, {.offset = kSamplesAt, .samples = kSamples}, 1)
        .cancelledAfter;
  }
  void ExpectRowsTo(int last) {
    for (int c = 1; c <= last; ++c) {
      for (const int i : {1, 4096, 4097, kSamples}) {
        ASSERT_EQ(trial.Data(i, c), static_cast<float>(c * 1000 + i));
      }
    }
  }
};

TEST_F(NativeBundles, MeetInOneMatrix) {
  EXPECT_EQ(CancelledAfter(), std::nullopt);
  ExpectRowsTo(kRows - 1);
}

TEST_F(NativeBundles, CancelCountsAtTheEndOfTheRowInWork) {
  questions.CancelAt("Reading channel 20 of 40.");
  EXPECT_EQ(CancelledAfter(), 20);
  ExpectRowsTo(20);

  // Pressed when row 31 is done, which the last turn for it has passed: row 32 opens a bundle.
  questions.onProgress = [](ProgressPanel& panel) {
    if (panel.Value() == 33) {
      panel.PressCancel();
    }
  };
  EXPECT_EQ(CancelledAfter(), 32);
  ExpectRowsTo(32);
}

}  // namespace
}  // namespace velmora::test
