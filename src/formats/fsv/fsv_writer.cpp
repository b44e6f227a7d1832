#include "formats/fsv/fsv_writer.hpp"

#include <sys/stat.h>

#include <ctime>
#include <string>

#include "core/files/files.hpp"
#include "core/files/output_elsewhere.hpp"
#include "core/text/number_text.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "formats/text_block.hpp"

namespace velmora {
namespace {

constexpr std::string_view kFsvLineEnd = "\r\n";

std::string FsvLine(std::string_view key, const std::string& value) {
  return std::string(key) + "\t" + value + std::string(kFsvLineEnd);
}

template <typename TextOfChannel>
std::string FsvChannelLine(std::string_view key, const Trial& trial, TextOfChannel textOf) {
  std::string line(key);
  for (int c = 1; c <= trial.NChan; ++c) {
    line += "\t" + Trim(OneLine(textOf(c)));
  }
  return line + std::string(kFsvLineEnd);
}

// When the file that the trial was read from was written, in universal time: nearer to the recording than the
// time of the save, and the same when a study is done again. Without a file the time of the save.
std::string FsvTimeStamp(const std::string& loadedFile) {
  struct stat status {};
  const bool known = stat(OutputElsewhere::ToRead(loadedFile).c_str(), &status) == 0;
  const std::time_t when = known ? status.st_mtime : std::time(nullptr);
  std::tm parts{};
  gmtime_r(&when, &parts);
  char text[32];
  const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%d\t%H:%M:%S", &parts);
  return {text, length};
}

std::string FsvHead(const Trial& trial, const std::string& loadedFile) {
  return FsvLine("DESCRIPTION", Trim(OneLine(trial.TrialTitle))) +
         FsvLine("NO_OF_SAMPLES", std::to_string(trial.NData)) +
         FsvLine("TOT_NO_OF_CHAN", std::to_string(trial.NChan)) +
         FsvLine("FREQUENCY", PlainNumber(trial.Rate)) + FsvLine("TIME_STAMP", FsvTimeStamp(loadedFile)) +
         FsvChannelLine("CHANNEL_NAMES", trial, [&trial](int c) { return trial.ChanLabel[c].Text(); }) +
         FsvChannelLine("CHANNEL_UNITS", trial, [&trial](int c) { return trial.ChanUnits[c].Text(); }) +
         FsvChannelLine("CHANNEL_GAIN", trial, [](int /*c*/) { return std::string("1"); });
}

void WriteFsvSamples(const Trial& trial, ProgressPanel& panel, OutputFile& file) {
  TextBlock block(file);
  const std::size_t lineRoom =
      static_cast<std::size_t>(trial.NChan) * (kLongestNumber + 1) + kFsvLineEnd.size();
  for (std::int32_t j = 1; j <= trial.NData; ++j) {
    const float* frame = trial.matrix.Frame(j);
    char* at = block.Begin(lineRoom);
    for (int c = 1; c <= trial.NChan; ++c) {
      at = PutShortest(at, frame[c]);
      // A single digit alone would not be taken for data: a tab behind it makes it a column.
      if (c < trial.NChan || trial.NChan == 1) {
        *at++ = '\t';
      }
    }
    block.End(std::copy(kFsvLineEnd.begin(), kFsvLineEnd.end(), at));
    if (j % kSamplesPerTurn == 0) {
      panel.SetValue(j);
    }
  }
  block.Flush();
}

}  // namespace

void WriteFsv(Workbench& workbench, ProgressPanel& panel) {
  const Trial& trial = workbench.trial;
  if (!AskSaveName(workbench,
                   {.title = "Save data as",
                    .defaultName = trial.TrialName + ".fsv",
                    .extension = ".fsv",
                    .filter = "Visual3D (.fsv)|*.fsv|Visual3D (.tsv)|*.tsv|All files (*.*)|*.*"})) {
    return;
  }
  OutputFile file(workbench.OutputFileName);
  file.Write(FsvHead(trial, workbench.LoadedFile));
  WriteFsvSamples(trial, panel, file);
  CommitSave(workbench, file);
  DidSave(workbench);
  MarkChanged(workbench, false);
}

}  // namespace velmora
