#include "emg/fatigue_table.hpp"

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

ResultTable EmptyFatigueTable(const Workbench& workbench, int channel) {
  const NumberPatterns& patterns = workbench.patterns;
  const ResultTable::Format time = ThroughPattern(patterns.TimePattern);
  const ResultTable::Format frequency = ThroughPattern("0.00");
  const ResultTable::Format value = ThroughPattern(patterns.ValuePattern);
  return {.name = "frmFatigueTable",
          .title = ChannelNumber(channel) + " " + Trim(workbench.trial.ChanLabel[channel].Text()),
          .columns = {"From", "To", "Median freq.", "Mean freq.", "%1st Median", "%1st Mean", "Abs. Mean",
                      "RMS", "Abs. Integ'l"},
          .formats = {time, time, frequency, frequency, frequency, frequency, value, value, value}};
}

void AddFatigueRow(ResultTable& table, const FatigueRow& row) {
  table.rows.push_back({row.from, row.to, row.median, row.mean, row.percentMedian, row.percentMean,
                        row.absoluteMean, row.rms, row.absoluteIntegral});
}

}  // namespace velmora
