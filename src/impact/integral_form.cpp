#include "impact/integral_form.hpp"

#include <cmath>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_picking.hpp"
#include "impact/integrals.hpp"
#include "results/result_presses.hpp"

namespace velmora {
namespace {

constexpr double kLarge = 1'000'000;

// Sums grow with the length of the trial, and then decimals say nothing.
std::string SumText(double value, const std::string& pattern) {
  return FormatNumber(value, std::fabs(value) >= kLarge ? "#." : pattern);
}

}  // namespace

IntegralForm::IntegralForm(Workbench& workbench, const ChannelList& channels)
    : Form("frmIntegral", "Integration Statistics"),
      workbench_(workbench),
      startTime_(workbench.trial.Data(workbench.graph.StatLo, 0)),
      endTime_(workbench.trial.Data(workbench.graph.StatHi, 0)),
      firstSample_(workbench.graph.StatLo),
      lastSample_(workbench.graph.StatHi),
      count_(lastSample_ - firstSample_ + 1),
      duration_((lastSample_ - firstSample_) * workbench.TimeStep) {
  const auto shown = [](const char* name, const char* caption, FormField::Target target,
                        const char* units = "") {
    return FormField{.name = name, .caption = caption, .target = target, .units = units, .readOnly = true};
  };
  fields_ = {
      shown("StartTime", "Start time", &startTime_, "s"),
      shown("EndTime", "End time", &endTime_, "s"),
      shown("FirstSample", "First sample", &firstSample_),
      shown("LastSample", "Last sample", &lastSample_),
      shown("N", "Number of data", &count_),
      shown("Duration", "Duration", &duration_, "s"),
  };
  tables_ = {Table(channels)};
  buttons_ = {{.caption = "&Send results to Clipboard",
               .press =
                   [this] {
                     SendToClipboard(workbench_, ClipboardText());
                     return false;
                   }},
              {.caption = "&Print",
               .press =
                   [this] {
                     PrintResults(workbench_, *this);
                     return false;
                   }},
              {"E&xit", FormButton::Role::Accept, [] { return true; }}};
}

ResultTable IntegralForm::Table(const ChannelList& channels) const {
  Trial& trial = workbench_.trial;
  ResultTable table{.name = "frmIntegral",
                    .title = "Integration Statistics",
                    .columns = {"Channel", "Label", "Mean", "Std.Dev.", "Path Integ'l", "Time Integ'l",
                                "Abs. Integ'l", "Coeff. var'n", "Sum", "Abs. sum"}};
  const auto all = IntegrateChannels(trial, channels, {firstSample_, lastSample_}, workbench_.TimeStep);
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const IntegralStatistics& of = all[k];
    table.rows.push_back({ChannelNumber(channels[k]), Trim(trial.ChanLabel[channels[k]].Text()), of.mean,
                          of.deviation, of.path, of.timeIntegral, of.absoluteIntegral, of.Variation(), of.sum,
                          of.absoluteSum});
  }
  const std::string pattern = workbench_.patterns.ValuePattern;
  const ResultTable::Format value = ThroughPattern(pattern);
  const ResultTable::Format sum = [pattern](double x) { return SumText(x, pattern); };
  const ResultTable::Format percent = [](double x) { return FormatNumber(x * 100, "0.0") + "%"; };
  table.formats = {nullptr, nullptr, value, value, sum, sum, sum, percent, sum, sum};
  return table;
}

std::string IntegralForm::ClipboardText() const {
  const std::string& time = workbench_.patterns.TimePattern;
  return "Filename:\t" + workbench_.trial.FileName + "\nTrial:\t" + workbench_.trial.TrialTitle +
         "\nRange:\t" + FormatNumber(startTime_, time) + "\t" + FormatNumber(endTime_, time) + "\n" +
         TableText(tables_.front());
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
  KeepTable(workbench.results.ResultTables, form.Tables().front());
  Did(workbench,
      "Integration statistics over samples " + std::to_string(workbench.graph.StatLo) + " to " +
          std::to_string(workbench.graph.StatHi),
      channels);
  form.Show(workbench);
}

}  // namespace velmora
