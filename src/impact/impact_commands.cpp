#include "impact/impact_commands.hpp"

#include <array>
#include <cmath>
#include <string>

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
  for (const int c : channels) {
    HeadImpactForm form(workbench, c, c == channels.back());
    form.Show(workbench);
    Did(workbench, form.Words(), std::array{c});
    form.NoteDoubts();
  }
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
