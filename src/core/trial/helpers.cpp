#include "core/trial/helpers.hpp"

#include <algorithm>
#include <utility>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

std::string ReportLine(const Box& box) {
  std::string line = box.title.empty() ? box.text : box.title + ": " + box.text;
  std::replace(line.begin(), line.end(), '\n', ' ');
  return line;
}

}  // namespace

std::string ChannelInWords(const Trial& trial, int channel) {
  const std::string label = Trim(trial.ChanLabel[channel].Text());
  return label.empty() ? "channel " + ChannelNumber(channel) : label;
}

double SampleToTime(const Trial& trial, std::int32_t i) {
  return trial.Rate > 0 ? (static_cast<double>(i) - 1) / trial.Rate : 0.0;
}

std::int32_t TimeToSample(const Trial& trial, double t) {
  return trial.Rate > 0 ? RoundHalfEven32(trial.Rate * t + 1) : 0;
}

bool IsTimeBased(const Workbench& workbench) {
  return workbench.time.Base == TimeBase::Seconds || workbench.time.Base == TimeBase::HhMmSs;
}

std::string AbscissaText(const Workbench& workbench, double x, std::string_view pattern) {
  if (workbench.time.Base != TimeBase::HhMmSs) {
    return FormatNumber(x, pattern);
  }
  const std::size_t point = pattern.find('.');
  const std::size_t decimals = point == std::string_view::npos ? 0 : pattern.size() - point - 1;
  return FormatClock(x, static_cast<int>(decimals));
}

std::string AbscissaUnits(const Workbench& workbench) {
  return workbench.time.Base == TimeBase::HhMmSs ? "hh:mm:ss" : workbench.trial.ChanUnits[0].Text();
}

std::vector<double> SamplesOf(const Trial& trial, int channel, SampleRange range) {
  std::vector<double> samples;
  samples.reserve(static_cast<std::size_t>(std::int64_t{range.hi} - range.lo + 1));
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    samples.push_back(trial.Data(i, channel));
  }
  return samples;
}

SampleRange AskCursorRange(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  const SampleRange all{1, trial.NData};
  const bool unset = trial.CursorLo == 0 && trial.CursorHi == 0;
  if (unset || (trial.CursorLo < 2 && trial.CursorHi >= trial.NData)) {
    return all;
  }
  const Box box{.title = "Data between Cursors?",
                .text = "Press Yes to save/use data between the cursors ( " +
                        FormatNumber(trial.CursorLo, "0 to ") + FormatNumber(trial.CursorHi, "0 )") +
                        "\nor No to save/use ALL the data.",
                .icon = Icon::Question,
                .buttons = {Button::Yes, Button::No}};
  const bool between = workbench.questions.AskBox(box) == Button::Yes;
  return between ? SampleRange{trial.CursorLo, trial.CursorHi} : all;
}

void ShowChannel(const Workbench& workbench, int channel) {
  if (workbench.onShowChannel) {
    workbench.onShowChannel(channel);
  }
}

void MarkChanged(Workbench& workbench, bool changed) {
  workbench.trial.FileChanged = changed;
}

void Request(const Workbench& workbench, ShellRequest request) {
  if (workbench.onShellRequest) {
    workbench.onShellRequest(request);
  }
}

void CloseView(Workbench& workbench) {
  if (workbench.view != nullptr) {
    workbench.view->Leave();
    workbench.view.reset();
  }
}

void LeaveView(Workbench& workbench) {
  if (workbench.view != nullptr && workbench.view->MayLeave()) {
    CloseView(workbench);
    if (const auto comesBack = std::exchange(workbench.AfterView, nullptr)) {
      Request(workbench, ShellRequest::HideGraph);
      comesBack();
    }
  }
}

void NextChannelPage(Workbench& workbench) {
  const int channels = workbench.trial.NChan;
  if (channels <= kPageChannels) {
    return;
  }
  int first = workbench.FirstChanShown + kPageChannels;
  if (first > channels) {
    first = 1;
  }
  workbench.FirstChanShown = static_cast<std::int16_t>(first);
  workbench.LastChanShown = static_cast<std::int16_t>(std::min(first + kPageChannels - 1, channels));
}

void ShowFirstChannelPage(Workbench& workbench) {
  workbench.FirstChanShown = 1;
  workbench.LastChanShown = std::min<std::int16_t>(workbench.trial.NChan, kPageChannels);
}

void NormaliseCursors(Trial& trial) {
  trial.CursorLo = std::min(std::max(trial.CursorLo, 1), trial.NData - 1);
  trial.CursorHi = std::min(trial.CursorHi, trial.NData);
  if (trial.CursorHi <= trial.CursorLo) {
    trial.CursorHi = trial.NData;
  }
}

std::string TrialFile(const Workbench& workbench) {
  const std::string& name = workbench.trial.FileName;
  return OneLine(FileNamePart(name) == name ? workbench.DataDir + name : name);
}

bool AskSaveName(Workbench& workbench, FileQuestion question) {
  question.mode = FileQuestion::Mode::Save;
  question.directory = workbench.DataDir;
  if (question.defaultName.starts_with('.')) {  // to enter a directory clears the trial's name
    question.defaultName.insert(0, BaseName(workbench.LoadedFile));
  }
  const std::vector<std::string> answer = workbench.questions.AskFile(question);
  workbench.OutputFileName = answer.empty() ? std::string() : answer.front();
  if (workbench.OutputFileName.empty()) {
    return false;
  }
  if (FileExtension(workbench.OutputFileName).empty()) {
    workbench.OutputFileName += question.extension;
  }
  return true;
}

Button ShowRefusal(Workbench& workbench, const Box& box) {
  workbench.report.warnings.push_back(ReportLine(box));
  return workbench.questions.AskBox(box);
}

Button ShowFailure(Workbench& workbench, const Box& box) {
  workbench.report.failures.push_back(ReportLine(box));
  return workbench.questions.AskBox(box);
}

void Did(Workbench& workbench, std::string what, std::span<const int> channels) {
  std::vector<Deed>& deeds = workbench.report.deeds;
  if (deeds.empty() || !deeds.back().what.empty()) {
    deeds.emplace_back();
  }
  Deed& deed = deeds.back();
  deed.what = std::move(what);
  deed.allChannels = static_cast<int>(channels.size()) == workbench.trial.NChan;
  for (const int c : channels) {
    deed.channels.push_back(ChannelInWords(workbench.trial, c));
  }
}

void DidEach(Workbench& workbench, std::span<const int> channels,
             const std::function<std::string(int channel)>& what) {
  std::vector<std::pair<std::string, std::vector<int>>> byWording;
  for (const int c : channels) {
    const std::string words = what(c);
    auto found = std::find_if(byWording.begin(), byWording.end(),
                              [&words](const auto& group) { return group.first == words; });
    if (found == byWording.end()) {
      found = byWording.insert(found, {words, {}});
    }
    found->second.push_back(c);
  }
  for (const auto& [words, having] : byWording) {
    Did(workbench, words, having);
  }
}

void DidSave(Workbench& workbench, std::string_view what) {
  Did(workbench, std::string(what) + " " + FileNamePart(workbench.OutputFileName));
}

void LeftOut(Workbench& workbench, int channel, std::string why) {
  std::vector<Deed>& deeds = workbench.report.deeds;
  if (deeds.empty()) {
    deeds.emplace_back();
  }
  deeds.back().refused.push_back({ChannelInWords(workbench.trial, channel), std::move(why)});
}

void AddNotice(Workbench& workbench, std::string text) {
  workbench.report.warnings.push_back(text);
  std::vector<std::string>& notices = workbench.trial.Notices;
  if (std::find(notices.begin(), notices.end(), text) == notices.end()) {
    notices.push_back(std::move(text));
  }
}

void CommitSave(Workbench& workbench, OutputFile& file) {
  file.Commit();
  if (!file.NotKept().empty()) {
    AddNotice(workbench,
              FileNamePart(file.Target()) + " was saved, but its " + file.NotKept() + " could not be kept.");
  }
}

void ShowSaveFailure(Workbench& workbench, std::string_view reason) {
  std::string text = "Error saving to file: " + workbench.OutputFileName;
  text.append("\nFile may be in-use or write-protected.\n\n\"").append(reason).append("\"");
  ShowFailure(workbench, {.text = text, .icon = Icon::Exclamation});
}

}  // namespace velmora
