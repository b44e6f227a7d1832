#include "impact/impact_commands.hpp"

#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/math/channel_math.hpp"
#include "impact/accelerometry/accelerometry_form.hpp"
#include "impact/head_impact_form.hpp"
#include "impact/integral_form.hpp"
#include "impact/integrals.hpp"
#include "impact/phases/moment_power_form.hpp"
#include "impact/phases/work_form.hpp"
#include "impact/strikes/strikes_form.hpp"

namespace velmora {
namespace {

/// What is kept of one channel is in the way of the next: all of them are kept as a table of their own, a row
/// each.
class ImpactsOfChannels {
 public:
  void Add(const Trial& trial, int channel, const ResultTable& measures) {
    std::vector<ResultTable::Cell> row = {ChannelNumber(channel), LabelOnOneLine(trial, channel),
                                          std::string()};
    all_.columns = {"Channel", "Label", "Times in"};
    for (const std::vector<ResultTable::Cell>& measure : measures.rows) {
      const std::string units = std::get<std::string>(measure[2]);
      const bool isTime = units == "ms" || units == "s";
      if (isTime) {
        row[2] = units;
      }
      all_.columns.push_back(Trim(std::get<std::string>(measure[0])) +
                             (isTime || units.empty() ? "" : " (" + units + ")"));
      row.push_back(measure[1]);
    }
    all_.formats.assign(all_.columns.size(), measures.formats[1]);
    all_.rows.push_back(std::move(row));
  }
  void Keep(Workbench& workbench) && {
    if (all_.rows.size() > 1) {
      KeepTable(workbench.results.ResultTables, std::move(all_));
    }
  }

 private:
  ResultTable all_{.name = "frmGSIHICChannels", .title = "Head impacts of all channels"};
};

void HeadImpacts(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.NData < 1) {
    return;
  }
  const bool changed = trial.FileChanged;
  const ChannelList channels = PickChannels(workbench, "Select acceleration channel(s) to be processed.");
  MarkChanged(workbench, changed);  // nothing is altered here, whatever the picker marked
  if (channels.empty()) {
    return;
  }
  const Box box{.title = "Acceleration Data Present",
                .text =
                    "Note, GSI and HIC values are only valid if selected channel contains acceleration "
                    "data scaled to metres per second squared OR g's.\n"
                    "Furthermore, the accelerations must be scrictly positive throughout the duration of "
                    "the impact.\n"
                    "Press OK to continue or Cancel to exit and adjust the data appropriately.",
                .icon = Icon::Exclamation,
                .buttons = {Button::OK, Button::Cancel}};
  if (workbench.questions.AskBox(box) != Button::OK) {
    return;
  }
  workbench.TimeStep = 1.0 / trial.Rate;
  ImpactsOfChannels all;
  for (const int c : channels) {
    HeadImpactForm form(workbench, c, c == channels.back());
    form.Show(workbench);
    all.Add(trial, c, form.Tables().front());
    Did(workbench, form.Words(), std::array{c});
    form.NoteDoubts();
  }
  std::move(all).Keep(workbench);
}

// Every integral starts so; returns false when there is nothing to integrate.
bool CanIntegrate(Workbench& workbench) {
  if (!EnoughToIntegrate(workbench, workbench.trial.NData)) {
    return false;
  }
  workbench.TimeStep = 1.0 / workbench.trial.Rate;
  if (!(workbench.TimeStep > 0 && std::isfinite(workbench.TimeStep))) {
    ShowRefusal(workbench, {.title = "Invalid Sampling Rate",
                            .text = "The sampling rate must be above zero for an operation over time.",
                            .icon = Icon::Exclamation});
    return false;
  }
  return true;
}

void ImpactsOfIntegrals(Workbench& workbench) {
  if (CanIntegrate(workbench)) {
    HeadImpacts(workbench);
  }
}

void IndefiniteIntegrals(Workbench& workbench) {
  if (!CanIntegrate(workbench)) {
    return;
  }
  const ChannelList channels = PickChannels(
      workbench,
      "Select channel(s) to create Indefinite Integral(s) over time (Riemann sum).  Note original data will "
      "be replaced.");
  if (!channels.empty()) {
    IntegrateOverTime(workbench.trial, channels, workbench.TimeStep);
    Did(workbench, "Indefinite integral over time (Riemann sum)", channels);
  }
}

// The picker is the display of the values.
template <PerChannel<float> (*rule)(Trial&, double)>
void ShowIntegrals(Workbench& workbench, std::string_view prompt, const char* words) {
  if (!CanIntegrate(workbench)) {
    return;
  }
  const bool changed = workbench.trial.FileChanged;
  BeginPicking(workbench, prompt);
  workbench.chooser.ChanConst = rule(workbench.trial, workbench.TimeStep);
  workbench.chooser.ChooserValuesMode = true;
  workbench.chooser.ChooserExitMode = true;
  ChannelPicker(workbench).Show();
  MarkChanged(workbench, changed);
  Did(workbench, words);
}

void Simpson(Workbench& workbench) {
  ShowIntegrals<SimpsonIntegrals>(workbench, "Integral(s) over time (using Simpson's Rule, parabolic fit).",
                                  "Integrals of all channels over time by Simpson's rule");
}

void Trapezoid(Workbench& workbench) {
  ShowIntegrals<TrapezoidIntegrals>(workbench, "Integral(s) over time (using trapezoidal rule).",
                                    "Integrals of all channels over time by the trapezoidal rule");
}

void Statistics(Workbench& workbench) {
  if (!CanIntegrate(workbench)) {
    return;
  }
  ShowIntegrationStatistics(workbench, [&workbench] { return AskCursorRange(workbench); });
}

constexpr std::string_view kImpacts = "&Analysis/Impacts";
constexpr std::string_view kIntegrals = "&Analysis/&Integration statistics";

constexpr std::array kImpactCommands = {
    Command{"impact.accelerometry", "&3D Accelerometry", kImpacts, Needs::Data, MeasureThreeAxes},
    Command{"impact.analysis", "&Impact analysis", kImpacts, Needs::Data, AnalyseImpacts},
    Command{"impact.gsi-hic", "&GSI && HIC etc.", kImpacts, Needs::Data, HeadImpacts},
    Command{"integrate.gsi-hic", "&GSI && HIC (Impacts)", kIntegrals, Needs::Data, ImpactsOfIntegrals},
    Command{"integrate.indefinite", "&Indefinite integrals", kIntegrals, Needs::Data, IndefiniteIntegrals},
    Command{"integrate.simpson", "Simpson's &Rule", kIntegrals, Needs::Data, Simpson},
    Command{"integrate.statistics", "Integral &Statistics", kIntegrals, Needs::Data, Statistics},
    Command{"integrate.trapezoid", "&Trapezoidal integration", kIntegrals, Needs::Data, Trapezoid},
    Command{"integrate.moment-power", "&Moment power analysis", kIntegrals, Needs::Data, AnalyseMomentPower},
    Command{"integrate.work", "&Work or Angular impulse analysis", kIntegrals, Needs::Data, AnalyseWork},
};

}  // namespace

std::span<const Command> ImpactCommands() {
  return kImpactCommands;
}

}  // namespace velmora
