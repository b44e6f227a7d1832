#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/questions/result_table.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "trigger/trigger_filters.hpp"

namespace velmora {

/// What a scan found, with what it looked for.
struct TriggerResults {
  int channel = 1;
  std::string_view kind;  // "Above (+ve slope)"
  SampleRange range;
  std::vector<Trigger> triggers;
};

/// The triggers as rows: where, what, and how they stand to the one before. Times count from the first
/// sample. The first one has no rate, frequency and integral; its change and duration count from zero.
ResultTable TriggerTable(const Workbench& workbench, const TriggerResults& results);

/// The text of a .TRG file.
std::string TriggerFileText(const Workbench& workbench, const TriggerResults& results);

/// The table with what it is of above it, for the clipboard.
std::string TriggerClipboardText(const Workbench& workbench, const TriggerResults& results);

}  // namespace velmora
