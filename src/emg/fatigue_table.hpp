#pragma once

#include "core/questions/result_table.hpp"
#include "core/workbench.hpp"
#include "emg/fatigue.hpp"

namespace velmora {

/// The table of a channel's intervals, "frmFatigueTable", without rows.
ResultTable EmptyFatigueTable(const Workbench& workbench, int channel);

void AddFatigueRow(ResultTable& table, const FatigueRow& row);

}  // namespace velmora
