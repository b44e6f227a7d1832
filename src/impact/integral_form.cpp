#include "impact/integral_form.hpp"

#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_picking.hpp"
#include "impact/integrals.hpp"

namespace velmora {
IntegralForm::IntegralForm(Workbench& workbench, const ChannelList& channels)
    : StatisticsForm(workbench, Kind::Integration, "frmIntegral", "Integration Statistics",
                     {workbench.graph.StatLo, workbench.graph.StatHi}, Times::Numbers) {
  AddRangeFields();
  SetTables({Table(channels)});
  AddCommonButtons("Sa&ve", "&Send results to Clipboard");
}

ResultTable IntegralForm::Table(const ChannelList& channels) const {
  Trial& trial = workbench_.trial;
  ResultTable table{.name = "frmIntegral",
                    .title = "Integration Statistics",
                    .columns = {"Channel", "Label", "Mean", "Std.Dev.", "Path Integ'l", "Time Integ'l",
                                "Abs. Integ'l", "Coeff. var'n", "Sum", "Abs. sum"}};
  const auto all = IntegrateChannels(trial, channels, Range(), workbench_.TimeStep);
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const IntegralStatistics& of = all[k];
    table.rows.push_back({ChannelNumber(channels[k]), Trim(trial.ChanLabel[channels[k]].Text()), of.mean,
                          of.deviation, of.path, of.timeIntegral, of.absoluteIntegral, of.Variation(), of.sum,
                          of.absoluteSum});
  }
  const ResultTable::Format value = ThroughPattern(workbench_.patterns.ValuePattern);
  const ResultTable::Format sum = SumFormat(workbench_.patterns, {.shortensMiddle = false});
  table.formats = {nullptr, nullptr, value, value, sum, sum, sum, AsPercentage(), sum, sum};
  return table;
}

std::string IntegralForm::ClipboardText() const {
  return "Filename:\t" + workbench_.trial.FileName + "\nTrial:\t" + workbench_.trial.TrialTitle +
         "\nRange:\t" + StartText() + "\t" + EndText() + "\n" + TableText(tables_.front());
}

void ShowIntegrationStatistics(Workbench& workbench, const std::function<SampleRange()>& askRange) {
  Trial& trial = workbench.trial;
  const bool changed = trial.FileChanged;
  const ChannelList channels =
      trial.NChan == 1 ? ChannelList{1} : PickChannels(workbench, "Select channel(s).");
  MarkChanged(workbench, changed);
  if (channels.empty()) {
    return;
  }
  const SampleRange range = askRange();
  workbench.graph.StatLo = range.lo;
  workbench.graph.StatHi = range.hi;
  workbench.TimeStep = 1.0 / trial.Rate;
  IntegralForm form(workbench, channels);
  Did(workbench,
      "Integration statistics over samples " + std::to_string(workbench.graph.StatLo) + " to " +
          std::to_string(workbench.graph.StatHi),
      channels);
  form.Show(workbench);
}

}  // namespace velmora
