#include "import/read_recording.hpp"

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/event_lines.hpp"
#include "core/trial/helpers.hpp"
#include "formats/read_error.hpp"
#include "formats/recording/slow_channel.hpp"
#include "import/recorded_plates.hpp"
#include "import/recording_questions.hpp"

namespace velmora {
namespace {

/// The channels taken of a recording, and the one rate of the trial.
struct Choice {
  std::vector<int> channels;  // from 0
  double rate = 0.0;
  std::int64_t samples = 0;  // of the fastest

  [[nodiscard]] const RecordedChannel& At(const Recording& recording, int column) const {
    return recording.channels[static_cast<std::size_t>(channels[static_cast<std::size_t>(column - 1)])];
  }
};

// Returns false when a question was cancelled.
bool Choose(Workbench& workbench, const Recording& recording, Choice& choice) {
  choice.channels = ChooseChannels(workbench, recording);
  if (choice.channels.empty() || !SettleRates(workbench, recording, choice.channels)) {
    return false;
  }
  choice.rate = RateOf(workbench, recording, choice.channels);
  if (choice.rate <= 0) {
    return false;
  }
  for (int column = 1; column <= static_cast<int>(choice.channels.size()); ++column) {
    choice.samples = std::max(choice.samples, choice.At(recording, column).samples);
  }
  if (choice.samples < 1) {
    throw FileError("the file holds no samples");
  }
  if (static_cast<double>(choice.samples) / choice.rate >
      static_cast<double>(std::numeric_limits<float>::max())) {
    throw FileError("its sampling rate of " + PlainNumber(choice.rate) + " Hz gives no times");
  }
  if (choice.samples > INT32_MAX) {
    AddNotice(workbench, "The file holds " + FormatCount(choice.samples) +
                             " samples; a trial takes the first " + FormatCount(INT32_MAX) + ".");
    choice.samples = INT32_MAX;
  }
  return true;
}

// What there is of a slow channel when `read` samples of the fastest were read.
std::int64_t OwnSamples(const RecordedChannel& channel, const Choice& choice, std::int64_t read) {
  return std::min(channel.samples, choice.samples) * read / choice.samples;
}

void Interpolate(Workbench& workbench, const Recording& recording, const Choice& choice, std::int64_t read) {
  Trial& trial = workbench.trial;
  std::string names;
  for (int column = 1; column <= trial.NChan; ++column) {
    const RecordedChannel& channel = choice.At(recording, column);
    if (channel.rate > 0 && channel.rate < choice.rate) {
      InterpolateSlowChannel(trial.matrix, column, OwnSamples(channel, choice, read), channel.rate,
                             choice.rate);
      names += (names.empty() ? "" : ", ") + trial.ChanLabel[column].Text() + " (" +
               PlainNumber(channel.rate) + " Hz)";
    }
  }
  if (!names.empty()) {
    AddNotice(workbench, "Interpolated to " + PlainNumber(choice.rate) + " Hz: " + names + ".");
  }
}

void DescribeChannels(Trial& trial, const Recording& recording, const Choice& choice) {
  trial.SetChannelDefaults(0);
  for (int column = 1; column <= trial.NChan; ++column) {
    const RecordedChannel& channel = choice.At(recording, column);
    trial.SetChannelDefaults(column);
    trial.ChanLabel[column] = channel.label.empty() ? "Chan. " + FormatNumber(column, "00") : channel.label;
    trial.ChanUnits[column] = channel.units;
    trial.ChanRate[column] = channel.rate > 0 ? channel.rate : trial.Rate;
    trial.ChanGain[column] = channel.gain;
    trial.ChanOffset[column] = channel.offset;
    if (channel.number >= 0) {
      trial.ChanNumber[column] = channel.number;
    }
  }
}

std::vector<std::string> LinesOf(const Recording& recording) {
  std::vector<std::string> lines = recording.lines;
  std::vector<RecordedEvent> events = recording.events;
  std::stable_sort(events.begin(), events.end(),
                   [](const RecordedEvent& a, const RecordedEvent& b) { return a.time < b.time; });
  // Room is left for the plates, which somebody may need to type in.
  const std::size_t room =
      kMaxHeaderLines - std::min<std::size_t>(kMaxHeaderLines - 1, lines.size() + recording.plates.size());
  const std::size_t told = events.size() <= room ? events.size() : room - 1;
  for (std::size_t k = 0; k < told; ++k) {
    lines.push_back(EventLineText({.time = events[k].time, .words = events[k].words}));
  }
  if (told < events.size()) {
    lines.push_back("... and " + std::to_string(events.size() - told) + " more events");
  }
  for (const RecordedPlate& plate : recording.plates) {
    lines.push_back(plate.words);
  }
  return lines;
}

void DescribeTrial(Trial& trial, const Recording& recording) {
  trial.TrialTitle = recording.title.empty() ? trial.FileName : recording.title;
  const std::vector<std::string> lines = LinesOf(recording);
  const auto count = std::min<std::size_t>(lines.size(), kMaxHeaderLines);
  for (std::size_t k = 0; k < count; ++k) {
    trial.HeaderLines[k + 1] = OneLine(lines[k]);
  }
  trial.HeaderLineCount = static_cast<std::int32_t>(count);
  trial.Duration = (trial.NData - 1) / trial.Rate;
}

// Returns the samples of the fastest channel that were read.
std::int64_t ReadSamples(Workbench& workbench, ProgressPanel& panel, RecordingFile& file,
                         const Choice& choice) {
  Trial& trial = workbench.trial;
  const auto channels = static_cast<int>(choice.channels.size());
  panel.SetLimits(0, 1);
  panel.SetStatus("Reading " + std::to_string(choice.samples) + " x " + std::to_string(channels) + " data");
  trial.AllocateData(channels, choice.samples, SampleMatrix::Fill::None);
  trial.Rate = choice.rate;
  const SampleTarget target{.matrix = trial.matrix,
                            .channels = choice.channels,
                            .rate = choice.rate,
                            .turn = [&panel](double part) {
                              panel.SetValue(part);
                              return panel.GiveTurn();
                            }};
  const std::int64_t read = std::clamp<std::int64_t>(file.ReadSamples(target), 0, choice.samples);
  if (read == 0) {
    trial.DiscardData();
  } else if (read < choice.samples) {
    trial.ResizeData(read);
  }
  return read;
}

void TellShortfall(Workbench& workbench, const Recording& recording, const Choice& choice,
                   std::int64_t read) {
  if (workbench.CancelRequested && read < choice.samples) {
    workbench.questions.AskBox({.text = read == 0
                                            ? std::string("Reading cancelled.")
                                            : "Reading cancelled only " + std::to_string(read) + " of " +
                                                  std::to_string(choice.samples) + " samples were read.",
                                .icon = Icon::Exclamation});
    return;
  }
  const std::int64_t promised = std::max(recording.promised, choice.samples);
  if (read < promised) {
    ShowRefusal(workbench, {.title = "Fewer Samples Than Promised",
                            .text = "The file promised " + FormatCount(promised) + " samples per channel; " +
                                    FormatCount(read) + " were found.",
                            .icon = Icon::Exclamation});
  }
}

void ReadOpened(Workbench& workbench, ProgressPanel& panel, RecordingFile& file) {
  const Recording& recording = file.Found();
  Choice choice;
  if (!Choose(workbench, recording, choice)) {
    return;
  }
  Trial& trial = workbench.trial;
  const std::int64_t read = ReadSamples(workbench, panel, file, choice);
  TellShortfall(workbench, recording, choice, read);
  if (read == 0) {
    return;
  }
  DescribeChannels(trial, recording, choice);
  Interpolate(workbench, recording, choice, read);
  DescribeTrial(trial, recording);
  TakePlates(workbench, recording, choice.channels);
  if (choice.channels.size() < recording.channels.size()) {
    AddNotice(workbench, std::to_string(trial.NChan) + " of " +
                             CountOf(static_cast<std::int64_t>(recording.channels.size()), "channel") +
                             " were read.");
  }
  for (const std::string& remark : recording.remarks) {
    AddNotice(workbench, remark);
  }
  panel.SetStatus(std::to_string(trial.NData) + " samples/channel");
}

}  // namespace

void ReadRecording(Workbench& workbench, ProgressPanel& panel, std::string_view name, OpenRecording open) {
  workbench.trial.DiscardData();
  panel.SetFormat(name);
  std::unique_ptr<RecordingFile> file;
  try {
    if (RefuseEmptyFile(workbench)) {
      return;
    }
    file = open(workbench.trial.FileName);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
    return;
  } catch (const std::bad_alloc&) {
    ReportReadError(workbench, "there is not enough memory for it");
    return;
  }
  ReadRecording(workbench, panel, name, *file);
}

void ReadRecording(Workbench& workbench, ProgressPanel& panel, std::string_view name, RecordingFile& file) {
  workbench.trial.DiscardData();
  panel.SetFormat(name);
  try {
    ReadOpened(workbench, panel, file);
  } catch (const FileError& error) {
    ReportReadError(workbench, error.what());
  } catch (const std::bad_alloc&) {
    ReportReadError(workbench, "there is not enough memory for it");
  }
}

}  // namespace velmora
