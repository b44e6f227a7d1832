#include "emg/maximums/normalize_form.hpp"

#include <algorithm>
#include <cmath>

#include "core/results/result_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "emg/maximums/stored_maximums.hpp"

namespace velmora {
namespace {

bool HasNegative(Trial& trial, int channel) {
  const ChannelView x = trial.Channel(channel);
  for (std::int64_t i = 0; i < x.size(); ++i) {
    if (x[i] < 0) {
      return true;
    }
  }
  return false;
}

double LargestOf(Trial& trial, int channel) {
  const ChannelView x = trial.Channel(channel);
  float largest = 0.0F;
  for (std::int64_t i = 0; i < x.size(); ++i) {
    largest = std::max(largest, std::abs(x[i]));  // what is no number is never larger
  }
  return std::isfinite(largest) ? largest : 0.0;
}

}  // namespace

NormalizeForm::NormalizeForm(Workbench& workbench)
    : AnalysisForm(workbench, "frmNormalize", "Normalize Linear Envelopes") {
  AddChoice("optSource", "Maximums f&rom", source_,
            {"&Stored maximums", "Maximums from a &file", "Largest value of each c&hannel", "&Entered"})
      .edited = [this] {
    Fill();
    if (source_ == kStored) {
      NoteFilled("Maximums");
    }
  };
  fields_.push_back({.name = "Maximums",
                     .caption = "Maximum",
                     .target = &maximums_,
                     .prompt = "0 means no action.",
                     .edited = [this] { references_[EditedChannel()] = {.from = "entered"}; }});
  AddChannels("channels", "&Channels", channels_);
  AddButtons("&Normalize");
  buttons_.insert(buttons_.end() - 1, StayButton("&Read file...", [this] {
                    if (ReadFile()) {
                      source_ = kFile;
                    }
                  }));
  Fill();
}

// By label; by number where no label is known at all.
void NormalizeForm::TakeFrom(const std::vector<StoredMaximum>& all, const std::string& where) {
  const Trial& trial = workbench_.trial;
  bool byLabel = false;
  for (int c = 1; c <= trial.NChan; ++c) {
    byLabel = byLabel || FindMaximum(all, LabelOnOneLine(trial, c)) != nullptr;
  }
  for (int c = 1; c <= trial.NChan; ++c) {
    const auto numbered =
        std::find_if(all.begin(), all.end(), [c](const StoredMaximum& one) { return one.Channel == c; });
    const StoredMaximum* one = byLabel                 ? FindMaximum(all, LabelOnOneLine(trial, c))
                               : numbered != all.end() ? &*numbered
                                                       : nullptr;
    maximums_[c] = one != nullptr ? one->Maximum : 0.0;
    references_[c] =
        one != nullptr ? Reference{where + (byLabel ? "" : " by number"), one->Units, byLabel} : Reference{};
  }
}

bool NormalizeForm::ReadFile() {
  const std::vector<std::string> paths =
      workbench_.questions.AskFile({.mode = FileQuestion::Mode::Open,
                                    .title = "Read Maximums (.MAX) file",
                                    .filter = "Velmora2 Maximums (.max)|*.max|All files (*.*)|*.*",
                                    .directory = workbench_.DataDir});
  if (paths.empty() || paths.front().empty()) {
    return false;
  }
  try {
    if (auto all = ReadMaximums(paths.front())) {
      read_ = std::move(all);
      readFrom_ = paths.front();
      TakeFrom(*read_, readFrom_);
      return true;
    }
    ShowRefusal(workbench_, {.title = "Invalid File Format",
                             .text = "File does not appear to be in the correct format.  Operation is "
                                     "cancelled.",
                             .icon = Icon::Exclamation});
  } catch (const FileError& error) {
    ShowRefusal(workbench_, {.title = "Cannot Read File",
                             .text = paths.front() + "\n" + error.what(),
                             .icon = Icon::Exclamation});
  }
  return false;
}

void NormalizeForm::Fill() {
  Trial& trial = workbench_.trial;
  switch (source_) {
    case kStored:
      return TakeFrom(workbench_.emg.Maximums, "stored");
    case kFile:
      return TakeFrom(read_.value_or(std::vector<StoredMaximum>()), readFrom_);  // else the press asks for it
    case kLargest:
      for (int c = 1; c <= trial.NChan; ++c) {
        maximums_[c] = LargestOf(trial, c);
        references_[c] = {.from = "largest value"};
      }
      return;
    default:
      return;  // what stands there is edited
  }
}

ChannelList NormalizeForm::Ready() {
  Trial& trial = workbench_.trial;
  ChannelList ready;
  for (const int c : WithoutMissing(workbench_, SelectedChannels(trial, channels_), {1, trial.NData})) {
    if (!(maximums_[c] > 0)) {
      ShowRefusal(workbench_, {.title = "No Maximum",
                               .text = "There is no maximum for channel " + ChannelNumber(c) + ".",
                               .icon = Icon::Exclamation});
      LeftOut(workbench_, c, "no maximum");
      continue;
    }
    const bool goesOn = !HasNegative(trial, c) ||
                        ShowRefusal(workbench_, {.title = "Not an Envelope",
                                                 .text = "Channel " + ChannelNumber(c) +
                                                         " has negative values.  Normalize it all the same?",
                                                 .icon = Icon::Question,
                                                 .buttons = {Button::Yes, Button::No}}) == Button::Yes;
    if (goesOn) {
      ready.push_back(c);
    } else {
      LeftOut(workbench_, c, "negative values");
    }
  }
  return ready;
}

void NormalizeForm::TellDoubts(const ChannelList& channels) {
  const Trial& trial = workbench_.trial;
  std::string unlike;
  ChannelList byLabel;
  for (const int c : channels) {
    const Reference& reference = references_[c];
    const std::string units = OneLine(Trim(trial.ChanUnits[c].Text()));
    if (!units.empty() && !reference.units.empty() && units != reference.units) {
      unlike += (unlike.empty() ? "" : ", ") + ChannelNumber(c) + " (\"" + units + "\", its maximum \"" +
                reference.units + "\")";
    }
    if (reference.byLabel) {
      byLabel.push_back(c);
    }
  }
  if (!unlike.empty()) {
    ShowRefusal(workbench_, {.title = "Units Differ",
                             .text = "Channels in other units than their maximums: " + unlike +
                                     ".  Percentages of unlike units mean nothing.",
                             .icon = Icon::Exclamation});
  }
  TellSharedMaximums(workbench_, byLabel);
}

bool NormalizeForm::Compute() {
  if (SelectedChannels(workbench_.trial, channels_).empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (source_ == kFile && !read_ && !ReadFile()) {
    return false;
  }
  const ChannelList ready = Ready();
  if (ready.empty()) {
    return false;
  }
  TellDoubts(ready);
  Normalize(ready);
  return true;
}

void NormalizeForm::Normalize(const ChannelList& channels) {
  Trial& trial = workbench_.trial;
  ResultTable table{.name = "frmNormalize",
                    .title = "Normalized to maximums",
                    .columns = {"Channel", "Label", "Maximum", "From", "Peak (%)", "Samples above 100 %"},
                    .formats = {nullptr, nullptr, ThroughPattern(workbench_.patterns.ValuePattern), nullptr,
                                ThroughPattern("0.0"), ThroughPattern("0")}};
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    double peak = 0.0;
    std::int64_t above = 0;
    for (std::int64_t i = 0; i < x.size(); ++i) {
      x[i] = static_cast<float>(double{x[i]} * 100.0 / maximums_[c]);
      peak = std::max(peak, std::abs(double{x[i]}));
      above += std::abs(x[i]) > 100 ? 1 : 0;
    }
    trial.ChanUnits[c] = "%";
    table.rows.push_back({ChannelNumber(c), LabelOnOneLine(trial, c), maximums_[c], references_[c].from, peak,
                          static_cast<double>(above)});
  }
  MarkChanged(workbench_, true);
  DidEach(workbench_, channels, [this](int c) {
    return "Normalized to " + FormatNumber(maximums_[c], workbench_.patterns.ValuePattern) + " = 100 %";
  });
  results_ = {.name = "frmNormalize",
              .title = "Percent of maximum",
              .file = {.what = "Normalization", .extension = ".tab"},
              .head = {.range = SampleRange{1, trial.NData}, .parameters = ParametersOf(trial, *this)},
              .tables = {std::move(table)}};
}

void NormalizeEnvelopes(Workbench& workbench) {
  NormalizeForm form(workbench);
  if (form.Ask()) {
    ShowResults(workbench, form.TakeResults());
  }
}

}  // namespace velmora
