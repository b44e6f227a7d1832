#include "events/event_files.hpp"

#include <algorithm>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

constexpr const char* kNoValue = ".";

std::string LabelOf(const Trial& trial, int channel) {
  return OneLine(Trim(trial.ChanLabel[channel].Text()));
}

// A time beyond a trial that was cropped since has no amplitude.
std::string Amplitude(const Workbench& workbench, int channel, double time) {
  const Trial& trial = workbench.trial;
  const std::int64_t sample = std::max<std::int64_t>(RoundHalfEven(trial.Rate * time), 1);
  if (time == EventTimes::kNone || sample > trial.NData) {
    return kNoValue;
  }
  return FormatNumber(trial.Data(sample, channel), workbench.patterns.ValuePattern);
}

std::string Time(const Workbench& workbench, double time) {
  return time == EventTimes::kNone ? kNoValue : FormatNumber(time, workbench.patterns.TimePattern);
}

// The times of all channels, and the amplitudes.
std::string Rows(const Workbench& workbench, std::int32_t event, double EventTimes::*end, const char* head) {
  const EventRecord& record = workbench.events.ChannelEvents[static_cast<std::size_t>(event - 1)];
  const std::string number = " " + std::to_string(event) + "\t";
  std::string times = number + head;
  std::string amplitudes = number + "    amp.";
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    times += "\t" + Time(workbench, record[c].*end);
    amplitudes += "\t" + Amplitude(workbench, c, record[c].*end);
  }
  return times + "\r\n" + (workbench.events.EventAmplitudes ? amplitudes + "\r\n" : "");
}

// Reports a failure. Returns whether the file is there.
bool WriteText(Workbench& workbench, const std::string& text, const char* did) {
  try {
    OutputFile file(workbench.OutputFileName);
    file.Write(text);
    CommitSave(workbench, file);
    DidSave(workbench, did);
    return true;
  } catch (const FileError& error) {
    ShowSaveFailure(workbench, error.what());
    return false;
  }
}

}  // namespace

std::string ChannelEventsText(const Workbench& workbench) {
  const Trial& trial = workbench.trial;
  std::string text = "Filename:\t" + TrialFile(workbench) + "\r\n";
  text +=
      "Trial code:\t" + OneLine(trial.TrialName) + "\tTrial:\t" + std::to_string(trial.TrialIndex) + "\r\n";
  text += "Duration=\t" + FormatNumber(trial.Duration, workbench.patterns.TimePattern) + "\ts\r\n";
  text += "Rate=\t" + FormatNumber(trial.Rate, workbench.patterns.RatePattern) + "\tHz\r\n\r\n";
  text += " N\tEvents  ";
  for (int c = 1; c <= trial.NChan; ++c) {
    text += "\t" + LabelOf(trial, c);
  }
  text += "\r\n";
  for (std::int32_t event = 1; event <= workbench.events.NEvents(); ++event) {
    text += Rows(workbench, event, &EventTimes::on, "On  time");
    text += Rows(workbench, event, &EventTimes::off, "Off time");
  }
  return text;
}

void SaveChannelEvents(Workbench& workbench) {
  if (!workbench.events.EventsUnsaved) {
    ShowRefusal(workbench,
                {.title = "No Events Recorded",
                 .text = "No events/onsets-offsets have been recorded.  Right-click to save all events.",
                 .icon = Icon::Exclamation});
    return;
  }
  if (AskSaveName(workbench, {.title = "Save channel events in .VMV file",
                              .defaultName = workbench.trial.TrialName + ".vmv",
                              .extension = ".vmv",
                              .filter = "Velmora2 Channel Events (.vmv)|*.vmv|All files (*.*)|*.*"}) &&
      WriteText(workbench, ChannelEventsText(workbench), "Saved events as")) {
    workbench.events.EventsUnsaved = false;
  }
}

std::string CursorEventsText(const Workbench& workbench, const std::vector<double>& cursors) {
  const Trial& trial = workbench.trial;
  std::string text = "File:\t" + TrialFile(workbench) + "\nRate:\t" + PlainNumber(trial.Rate) +
                     "\tTrial#:\t" + std::to_string(trial.TrialIndex) + "\n";
  std::string labels = "Event\tSample";
  std::string units = "#\tn";
  for (int c = 0; c <= trial.NChan; ++c) {
    labels += "\t" + LabelOf(trial, c);
    units += "\t" + OneLine(Trim(trial.ChanUnits[c].Text()));
  }
  text += labels + "\n" + units + "\n";
  int number = 0;
  for (const double x : cursors) {
    const std::int32_t sample = SampleOf(trial, x);
    text += std::to_string(++number) + "\t" + std::to_string(sample) + "\t" +
            FormatNumber(trial.Data(sample, 0), "0.00000");
    for (int c = 1; c <= trial.NChan; ++c) {
      text += "\t" + FormatNumber(trial.Data(sample, c), "0.0000 ");
    }
    text += "\n";
  }
  return text;
}

void SaveCursorEvents(Workbench& workbench, const std::vector<double>& cursors) {
  if (AskSaveName(workbench, {.title = "Save as .EVT file",
                              .defaultName = workbench.trial.TrialName + ".evt",
                              .extension = ".evt",
                              .filter = "Velmora2 events (.evt)|*.evt|Text file (*.txt)|*.txt|"
                                        "All files (*.*)|*.*"})) {
    WriteText(workbench, CursorEventsText(workbench, cursors), "Saved events as");
  }
}

}  // namespace velmora
