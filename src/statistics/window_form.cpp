#include "statistics/window_form.hpp"

#include <algorithm>
#include <utility>

#include "core/files/paths.hpp"
#include "core/questions/long_work.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/refusals.hpp"
#include "graph/time_view.hpp"
#include "statistics/window_statistics.hpp"

namespace velmora {
namespace {

constexpr std::size_t kMostRows = 500'000;

std::vector<std::int32_t> CursorSamples(const Workbench& workbench) {
  std::vector<std::int32_t> samples;
  if (const auto* view = FindTimeView(workbench)) {
    for (int k = 1; k <= view->Cursors(); ++k) {
      samples.push_back(view->SampleOf(k));
    }
  }
  return samples;
}

std::vector<ResultTable::Cell> RowOf(const Trial& trial, int channel, std::size_t window, SampleRange at,
                                     const WindowStatistics& of) {
  std::vector<ResultTable::Cell> row = {ChannelNumber(channel),      Trim(trial.ChanLabel[channel].Text()),
                                        static_cast<double>(window), static_cast<double>(at.lo),
                                        static_cast<double>(at.hi),  static_cast<double>(of.count)};
  if (of.count > 0) {
    row.insert(row.end(), {of.mean, CellOf(of.deviation), of.minimum, of.maximum, of.rms, of.meanAbsolute,
                           of.median, CellOf(of.integral), CellOf(of.absoluteIntegral), CellOf(of.slope)});
  }
  return row;
}

std::vector<float> SamplesIn(Trial& trial, int channel, SampleRange range) {
  const ChannelView view = trial.Channel(channel);
  std::vector<float> samples;
  samples.reserve(static_cast<std::size_t>(range.hi - range.lo) + 1);
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    samples.push_back(view[i - 1]);
  }
  return samples;
}

ResultTable EmptyTable(const NumberPatterns& patterns) {
  ResultTable table{
      .name = "frmWindowStats",
      .title = "Window statistics (samples from and to, both inclusive; standard deviations with n-1)",
      .columns = {"Channel", "Label", "Window", "From", "To", "n", "Mean", "Std.Dev.", "Minimum", "Maximum",
                  "RMS", "Mean abs.", "Median", "Integral", "Abs. integral", "Slope"}};
  const ResultTable::Format value = ThroughPattern(patterns.ValuePattern);
  table.formats.assign(table.columns.size(), value);
  std::fill_n(table.formats.begin(), 6, ThroughPattern("0"));
  return table;
}

}  // namespace

WindowForm::WindowForm(Workbench& workbench, SampleRange range, Split split)
    : AnalysisForm(workbench, "frmWindowStats", "Window Statistics"),
      range_(range),
      split_(static_cast<std::int32_t>(split)),
      width_(workbench),
      cursors_(CursorSamples(workbench)) {
  const std::int32_t samples = range.hi - range.lo + 1;
  count_ = std::min(count_, samples);
  FormField& choice = AddChoice(
      "optSplit", "", split_,
      {"&Windows of a width", "&Equal windows", "Between a series of &cursors", "&Onset-offset events"});
  choice.edited = [this] { FollowSplit(); };
  if (cursors_.size() < 2) {
    choice.disabledChoices.push_back(static_cast<std::int32_t>(Split::BetweenCursors));
  }
  if (workbench.events.NEvents() == 0) {
    choice.disabledChoices.push_back(static_cast<std::int32_t>(Split::Events));
  }
  fields_.push_back(
      {.name = "WindowWidth", .caption = "Window wi&dth", .target = &width_.width, .edited = [this] {
         width_.typed = true;
       }});
  fields_.push_back({.name = "WindowInSeconds",
                     .caption = "Width in &seconds",
                     .target = &width_.inSeconds,
                     .edited = [this] {
                       if (width_.UnitEdited(workbench_)) {
                         NoteFilled("WindowWidth");
                       }
                     }});
  AddNumber("txtOverlap", "&Overlap (%)", overlap_, {0, 95});
  AddCount("txtCount", "&Number of windows", count_, {1, static_cast<double>(samples)});
  AddChannels("channels", "&Channels", channels_);
  AddButtons();
  FollowSplit();
}

// What says nothing about the windows chosen is out of the way.
void WindowForm::FollowSplit() {
  const auto split = static_cast<Split>(split_);
  for (FormField& field : fields_) {
    field.hidden = field.name == "txtCount"                               ? split != Split::Equal
                   : field.name == "optSplit" || field.name == "channels" ? false
                                                                          : split != Split::OfWidth;
  }
}

void WindowForm::Refuse(const char* title, const std::string& text) {
  ShowRefusal(workbench_, {.title = title, .text = text, .icon = Icon::Exclamation});
}

std::vector<SampleRange> WindowForm::EventsOf(int channel) const {
  std::vector<SampleRange> windows;
  for (const EventRecord& record : workbench_.events.ChannelEvents) {
    const EventTimes& of = record[channel];
    if (of.on == EventTimes::kNone || of.off == EventTimes::kNone) {
      continue;
    }
    const SampleRange at{TimeToSample(workbench_.trial, of.on), TimeToSample(workbench_.trial, of.off)};
    if (at.lo >= range_.lo && at.hi <= range_.hi && at.lo <= at.hi) {
      windows.push_back(at);
    }
  }
  return windows;
}

bool WindowForm::MakeWindows(const ChannelList& channels, Windows& windows) {
  const auto split = static_cast<Split>(split_);
  if (split == Split::OfWidth && !width_.Accept(workbench_)) {
    return false;
  }
  if (split == Split::BetweenCursors && cursors_.size() < 2) {
    Refuse("No Series of Cursors", "Open a graph and set two or more cursors.");
    return false;
  }
  if (split == Split::Events && workbench_.events.NEvents() == 0) {
    Refuse("No Events", "No events were recorded.");
    return false;
  }
  for (const int c : channels) {
    windows[c] = split == Split::OfWidth ? WindowsOfWidth(range_, workbench_.smoothing.WindowWidth, overlap_)
                 : split == Split::Equal ? EqualWindows(range_, count_)
                 : split == Split::BetweenCursors ? WindowsBetween(cursors_)
                                                  : EventsOf(c);
  }
  return true;
}

bool WindowForm::CanShow(const Windows& windows) {
  std::size_t rows = 0;
  for (const auto& [channel, of] : windows) {
    rows += of.size();
  }
  if (rows == 0) {
    RefuseTooFewData(workbench_);
  } else if (rows > kMostRows) {
    Refuse("Too Many Windows", "That makes " + FormatCount(static_cast<std::int64_t>(rows)) +
                                   " windows of all channels, at most " +
                                   FormatCount(static_cast<std::int64_t>(kMostRows)) +
                                   " are listed.  Choose wider windows.");
  }
  return rows > 0 && rows <= kMostRows;
}

bool WindowForm::FillTable(const Windows& windows) {
  Trial& trial = workbench_.trial;
  ResultTable table = EmptyTable(workbench_.patterns);
  const std::optional<double> step =
      trial.Rate > 0 && IsTimeBased(workbench_) ? std::optional(1.0 / trial.Rate) : std::nullopt;
  const SampleRange whole{1, trial.NData};
  const std::vector<float> times = SamplesIn(trial, 0, whole);
  std::int64_t most = 0;
  for (const auto& [channel, of] : windows) {
    for (const SampleRange& at : of) {
      most += at.hi - at.lo + 1;
    }
  }
  constexpr std::int64_t kLong = 5'000'000;  // samples
  LongWork work(workbench_, "Computing stats", most > kLong);
  const GoesOn goesOn = work.Turns();
  std::int64_t done = 0;
  for (const auto& [channel, of] : windows) {
    const std::vector<float> samples = SamplesIn(trial, channel, whole);
    for (std::size_t k = 0; k < of.size(); ++k) {
      const auto first = static_cast<std::size_t>(of[k].lo - 1);
      const auto count = static_cast<std::size_t>(std::int64_t{of[k].hi} - of[k].lo + 1);
      table.rows.push_back(RowOf(trial, channel, k + 1, of[k],
                                 StatisticsOfWindow(std::span(samples).subspan(first, count),
                                                    std::span(times).subspan(first, count), step)));
      done += static_cast<std::int64_t>(count);
      if (!Goes(goesOn, static_cast<double>(done) / static_cast<double>(most))) {
        return false;
      }
    }
  }
  results_ = {.name = "frmWindowStats",
              .title = "Window statistics of " + FileNamePart(trial.FileName),
              .file = {.what = "statistics", .extension = ".tab"},
              .head = {.range = range_, .parameters = ParametersOf(trial, *this)},
              .tables = {std::move(table)}};
  return true;
}

bool WindowForm::Compute() {
  const ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  Windows windows;
  if (!MakeWindows(channels, windows) || !CanShow(windows) || !FillTable(windows)) {
    return false;
  }
  Did(workbench_,
      "Statistics of " + CountOf(static_cast<std::int64_t>(results_.tables.front().rows.size()), "window"),
      channels);
  return true;
}

void ShowWindowStatistics(Workbench& workbench, SampleRange range, WindowForm::Split split) {
  WindowForm form(workbench, range, split);
  if (form.Ask()) {
    ShowResults(workbench, std::move(form.Found()));
  }
}

}  // namespace velmora
