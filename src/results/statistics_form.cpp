#include "results/statistics_form.hpp"

#include <cmath>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

struct Table {
  StatisticsForm::Kind kind;
  const char* caption;
  std::string_view id;  // of the command that shows it over samples StatLo to StatHi
};

constexpr Table kTables[] = {
    {StatisticsForm::Kind::Descriptive, "&Mean, min. && max.", "table-stats.mean"},
    {StatisticsForm::Kind::Median, "Me&dian stats.", "table-stats.median"},
    {StatisticsForm::Kind::Emg, "&EMG stats.", "table-stats.emg"},
    {StatisticsForm::Kind::Integration, "&Integration stats.", "table-stats.integral"},
    {StatisticsForm::Kind::Fourier, "&Fourier stats.", "table-stats.fourier"},
};

}  // namespace

StatisticsForm::StatisticsForm(Workbench& workbench, Kind kind, std::string name, std::string title,
                               SampleRange range, Times times)
    : ResultForm(workbench, std::move(name), std::move(title)),
      kind_(kind),
      times_(times),
      firstSample_(range.lo),
      lastSample_(range.hi),
      count_(range.hi - range.lo + 1) {
  Trial& trial = workbench.trial;
  const bool texts = times == Times::Texts;
  startTime_ = texts ? SampleToTime(trial, range.lo) : static_cast<double>(trial.Data(range.lo, 0));
  endTime_ = texts ? SampleToTime(trial, range.hi) : static_cast<double>(trial.Data(range.hi, 0));
  durationTime_ = texts ? endTime_ - startTime_ : (range.hi - range.lo) * workbench.TimeStep;
  const std::string& pattern = workbench.patterns.TimePattern;
  const char* seconds = texts ? " s" : "";
  start_ = FormatNumber(startTime_, pattern) + seconds;
  end_ = FormatNumber(endTime_, pattern) + seconds;
  duration_ = FormatNumber(durationTime_, pattern);
}

void StatisticsForm::AddRangeFields() {
  const auto show = [this](const char* name, const char* caption, FormField::Target target) {
    fields_.push_back({.name = name, .caption = caption, .target = target, .readOnly = true});
  };
  const auto showTime = [&](const char* name, const char* caption, double& time) {
    show(name, caption, &time);
    fields_.back().units = Trim(workbench_.trial.ChanUnits[0].Text());  // seconds, or "%", or frames
    fields_.back().pattern = workbench_.patterns.TimePattern;
  };
  if (times_ == Times::Texts) {
    show("StartTime", "Start time", &start_);
    show("EndTime", "End time", &end_);
  } else {
    showTime("StartTime", "Start time", startTime_);
    showTime("EndTime", "End time", endTime_);
  }
  show("FirstSample", "First sample", &firstSample_);
  show("LastSample", "Last sample", &lastSample_);
  show("N", "Number of data", &count_);
  if (times_ == Times::Texts) {
    show("Duration", "Duration (s)", &duration_);
  } else {
    showTime("Duration", "Duration", durationTime_);
  }
}

void StatisticsForm::AddCommonButtons(const char* saveCaption, const char* clipboardCaption) {
  buttons_.push_back(
      SaveButton(saveCaption, {.what = "statistics", .extension = ".tab"}, {.range = Range()}));
  buttons_.push_back(ClipboardButton(clipboardCaption));
  for (const Table& table : kTables) {
    if (table.kind != kind_) {
      buttons_.push_back(StayButton(table.caption, [this, id = table.id] { ShowOther(id); }));
    }
  }
  buttons_.push_back(StayButton("&Print", [this] { PrintResults(workbench_, *this); }));
  buttons_.push_back(ExitButton("E&xit"));
}

void StatisticsForm::ShowOther(std::string_view id) {
  workbench_.graph.StatLo = firstSample_;
  workbench_.graph.StatHi = lastSample_;
  if (workbench_.RunById != nullptr) {
    workbench_.RunById(workbench_, id);
  }
}

ResultTable::Format SumFormat(const NumberPatterns& patterns, SumBands bands) {
  constexpr double kLarge = 1'000'000;
  constexpr double kMiddle = 10'000;
  return [patterns, bands](double value) {
    const double size = std::fabs(value);
    if (size >= kLarge) {
      return FormatNumber(value, bands.large);
    }
    const bool shorter = bands.shortensMiddle && size >= kMiddle;
    return FormatNumber(value, shorter ? patterns.TimePattern : patterns.ValuePattern);
  };
}

}  // namespace velmora
