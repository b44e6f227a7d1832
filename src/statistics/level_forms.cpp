#include "statistics/level_forms.hpp"

#include <utility>

#include "core/files/paths.hpp"
#include "core/questions/long_work.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "results/statistics_form.hpp"
#include "statistics/descriptive.hpp"
#include "statistics/order_statistics.hpp"
#include "statistics/statistics_pickers.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kLongSort = 2'000'000;   // samples
constexpr std::int64_t kLongSums = 40'000'000;  // samples of all channels

/// A table with a row a channel, and the way to its sisters.
class LevelForm : public StatisticsForm {
 public:
  LevelForm(Workbench& workbench, Kind kind, const std::string& name, const std::string& title,
            SampleRange range, ResultTable table)
      : StatisticsForm(workbench, kind, name, title, range, Times::Numbers) {
    AddRangeFields();
    SetTables({std::move(table)});
    AddCommonButtons("&Save", "Send results to &Clipboard");
  }
};

std::vector<ResultTable::Cell> ChannelCells(const Trial& trial, int channel, std::int64_t count) {
  return {ChannelNumber(channel), Trim(trial.ChanLabel[channel].Text()),
          Trim(trial.ChanUnits[channel].Text()), static_cast<double>(count)};
}

void Append(std::vector<ResultTable::Cell>& row, std::initializer_list<ResultTable::Cell> cells) {
  row.insert(row.end(), cells);
}

ResultTable MeansTable(const Workbench& workbench, const std::string& title, const ChannelList& channels,
                       const std::vector<Descriptive>& all) {
  const Trial& trial = workbench.trial;
  ResultTable table{
      .name = "frmMeans",
      .title = title,
      .columns = {"Channel", "Label", "Units", "n", "Mean", "Std.Dev.", "Minimum", "Time of min.", "Maximum",
                  "Time of max.", "Range", "RMS", "Std.Err.", "Coeff. var'n"}};
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const Descriptive& of = all[k];
    auto& row = table.rows.emplace_back(ChannelCells(trial, channels[k], of.count));
    if (of.count > 0) {
      Append(row, {of.mean, CellOf(of.deviation), of.minimum, CellOf(trial.Data(of.minimumAt, 0)), of.maximum,
                   CellOf(trial.Data(of.maximumAt, 0)), of.Range(), of.rms, CellOf(of.StandardError()),
                   CellOf(of.Variation())});
    }
  }
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = [&workbench](double x) {
    return AbscissaText(workbench, x, workbench.patterns.TimePattern);
  };
  table.formats = {nullptr, nullptr, nullptr, ThroughPattern("0"), value, value, value, time, value, time,
                   value,   value,   value,   AsPercentage()};
  return table;
}

ResultTable MediansTable(const Workbench& workbench, const std::string& title, const ChannelList& channels,
                         const std::vector<OrderStatistics>& all, const std::vector<Moments>& moments) {
  ResultTable table{
      .name = "frmMedians",
      .title = title,
      .columns = {"Channel", "Label", "Units", "n", "Median", "25th %ile", "75th %ile", "Interquartile",
                  "5th %ile", "95th %ile", "Median abs.dev.", "Skewness", "Kurtosis"}};
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const OrderStatistics& of = all[k];
    auto& row = table.rows.emplace_back(ChannelCells(workbench.trial, channels[k], of.count));
    if (of.count > 0) {
      Append(row, {of.median, of.p25, of.p75, of.Interquartile(), of.p5, of.p95, of.medianDeviation,
                   CellOf(moments[k].Skewness()), CellOf(moments[k].Kurtosis())});
    }
  }
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  table.formats.assign(table.columns.size(), value);
  table.formats[0] = table.formats[1] = table.formats[2] = nullptr;
  table.formats[3] = ThroughPattern("0");
  return table;
}

std::int64_t FramesOf(SampleRange range) {
  return std::int64_t{range.hi} - range.lo + 1;
}

void TellTable(Workbench& workbench, const char* what, SampleRange range, const ChannelList& channels) {
  Did(workbench,
      std::string(what) + " over samples " + std::to_string(range.lo) + " to " + std::to_string(range.hi),
      channels);
}

}  // namespace

void ShowMeans(Workbench& workbench, SampleRange range) {
  const ChannelList channels = PickForTable(workbench, "Choose channel(s) for statistics.");
  if (channels.empty()) {
    return;
  }
  std::vector<Descriptive> all;
  {
    LongWork work(workbench, "Computing stats", FramesOf(range) * workbench.trial.NChan > kLongSums);
    all = DescribeChannels(workbench.trial, channels, range, work.Turns());
  }
  if (all.empty()) {
    return;
  }
  const std::string title =
      "Means and extremes of " + FileNamePart(workbench.trial.FileName) + " (standard deviations with n-1)";
  TellTable(workbench, "Mean, minimum and maximum", range, channels);
  LevelForm(workbench, StatisticsForm::Kind::Descriptive, "frmMeans", title, range,
            MeansTable(workbench, title, channels, all))
      .Show(workbench);
}

void ShowMedians(Workbench& workbench, SampleRange range) {
  const ChannelList channels = PickForTable(workbench, "Choose channel(s) for statistics.");
  if (channels.empty()) {
    return;
  }
  std::vector<OrderStatistics> all;
  std::vector<Moments> moments;
  {
    const auto samples = FramesOf(range) * static_cast<std::int64_t>(channels.size());
    LongWork work(workbench, "Computing stats", samples > kLongSort);
    all = OrderChannels(workbench.trial, channels, range, work.Turns());
    if (!work.Cancelled()) {
      moments = MomentsOf(workbench.trial, channels, range, work.Turns());
    }
  }
  if (all.empty() || moments.empty()) {
    return;
  }
  const std::string title = "Medians and percentiles of " + FileNamePart(workbench.trial.FileName) +
                            " (linear between order statistics)";
  TellTable(workbench, "Median and percentiles", range, channels);
  LevelForm(workbench, StatisticsForm::Kind::Median, "frmMedians", title, range,
            MediansTable(workbench, title, channels, all, moments))
      .Show(workbench);
}

}  // namespace velmora
