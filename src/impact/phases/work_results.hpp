#pragma once

#include <string>
#include <vector>

#include "core/results/result_form.hpp"
#include "impact/phases/work_phases.hpp"

namespace velmora {

/// How phases of work are told.
struct WorkRule {
  double smallest = 0.0;  // phases of a smaller integral are not listed; in the units of the table
  double mass = 0.0;      // kg that everything is divided by; 0: it is not
};

/// What was found of one channel, as it is told: divided by the mass where there is one.
struct ChannelWork {
  int channel = 1;
  std::string signalUnits;
  std::string units;           // of the integrals
  std::vector<double> signal;  // over the range
  std::vector<WorkPhase> phases{};
  std::vector<WorkPhase> listed{};  // those that are large enough
};

ChannelWork FindWork(const Trial& trial, int channel, SampleRange range, const WorkRule& rule);

/// Shows the phases and their totals ("frmWork", "frmWorkTotals"), with a picture a channel. `results` brings
/// name, title and head, and may bring words.
void ShowWork(Workbench& workbench, Results results, const std::vector<ChannelWork>& all);

}  // namespace velmora
