#include "statistics/correlation_table.hpp"

#include <algorithm>
#include <utility>

#include "core/files/paths.hpp"
#include "core/questions/long_work.hpp"
#include "core/results/result_form.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/refusals.hpp"
#include "statistics/correlation.hpp"
#include "statistics/statistics_pickers.hpp"

namespace velmora {
namespace {

std::string LabelOf(const Trial& trial, int channel) {
  return Trim(trial.ChanLabel[channel].Text());
}

std::vector<ResultTable::Cell> RowOf(const Trial& trial, int x, int y, const Correlation& of) {
  std::vector<ResultTable::Cell> row = {ChannelNumber(x), LabelOf(trial, x), ChannelNumber(y),
                                        LabelOf(trial, y)};
  if (!of.r) {
    row.resize(13, std::monostate());
  } else {
    const auto n = static_cast<double>(of.count);
    const double r = *of.r;
    const double effective = EffectiveCount(of);
    const std::optional<Interval> interval = ConfidenceOf(r, n);
    const auto end = [&](double Interval::*which) {
      return CellOf(interval ? std::optional(*interval.*which) : std::nullopt);
    };
    row.insert(row.end(), {r, end(&Interval::low), end(&Interval::high), r * r, CellOf(StudentOf(r, n)),
                           CellOf(ProbabilityOf(r, n)), effective, CellOf(ProbabilityOf(r, effective)),
                           CellOf(of.spearman)});
  }
  row.emplace_back(static_cast<double>(of.count));
  return row;
}

ResultTable PairTable(const Workbench& workbench, const ChannelList& channels,
                      const std::vector<Correlation>& all) {
  ResultTable table{.name = "frmCorrelation",
                    .title =
                        "Pairs (p (autocorr.): heeding that neighbouring samples are alike, n eff. of them "
                        "count)",
                    .columns = {"X", "X label", "Y", "Y label", "r", "95% low", "95% high", "r squared", "t",
                                "p", "n eff.", "p (autocorr.)", "Spearman", "n"}};
  std::size_t k = 0;
  for (std::size_t x = 0; x < channels.size(); ++x) {
    for (std::size_t y = x + 1; y < channels.size(); ++y) {
      table.rows.push_back(RowOf(workbench.trial, channels[x], channels[y], all[k++]));
    }
  }
  const ResultTable::Format value = ThroughPattern("0.0000");
  table.formats = {nullptr,
                   nullptr,
                   nullptr,
                   nullptr,
                   value,
                   value,
                   value,
                   value,
                   value,
                   AsProbability(),
                   ThroughPattern("0.0"),
                   AsProbability(),
                   value,
                   ThroughPattern("0")};
  return table;
}

ResultTable MatrixTable(const Workbench& workbench, const ChannelList& channels,
                        const std::vector<Correlation>& all) {
  const std::size_t m = channels.size();
  ResultTable table{
      .name = "frmCorrelationMatrix", .title = "Correlations (Pearson's r)", .columns = {"Label"}};
  table.rows.assign(m, std::vector<ResultTable::Cell>(m + 1, std::monostate()));
  std::size_t k = 0;
  for (std::size_t x = 0; x < m; ++x) {
    const std::string label = LabelOf(workbench.trial, channels[x]);
    table.columns.push_back(label.empty() ? ChannelNumber(channels[x]) : label);
    table.rows[x][0] = table.columns.back();
    for (std::size_t y = x + 1; y < m; ++y) {
      table.rows[x][y + 1] = table.rows[y][x + 1] = CellOf(all[k++].r);
    }
  }
  for (std::size_t x = 0; x < m; ++x) {
    // A channel that varies nowhere has no correlation with itself, either.
    const bool any =
        m < 2 || std::any_of(table.rows[x].begin() + 1, table.rows[x].end(),
                             [](const auto& cell) { return std::holds_alternative<double>(cell); });
    if (any) {
      table.rows[x][x + 1] = 1.0;
    }
  }
  table.formats.assign(m + 1, ThroughPattern("0.0000"));
  return table;
}

}  // namespace

void ShowCorrelations(Workbench& workbench, SampleRange range) {
  constexpr double kLong = 3e8;  // products
  const ChannelList channels = PickSeveral(workbench, "Choose two or more channels to correlate.");
  if (channels.empty()) {
    return;
  }
  if (range.hi - range.lo < 1) {
    RefuseTooFewData(workbench);
    return;
  }
  std::vector<Correlation> all;
  {
    const double products =
        (static_cast<double>(range.hi) - range.lo) * static_cast<double>(channels.size() * channels.size());
    LongWork work(workbench, "Correlating", products > kLong);
    all = CorrelatePairs(workbench.trial, channels, range, work.Turns());
  }
  if (all.empty()) {
    return;
  }
  Did(workbench, "Correlation over samples " + std::to_string(range.lo) + " to " + std::to_string(range.hi),
      channels);
  ShowResults(workbench,
              {.name = "frmCorrelation",
               .title = "Correlations of " + FileNamePart(workbench.trial.FileName),
               .file = {.what = "statistics", .extension = ".tab"},
               .head = {.range = range},
               .tables = {PairTable(workbench, channels, all), MatrixTable(workbench, channels, all)}});
}

}  // namespace velmora
