#pragma once

#include <cstdint>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"
#include "formats/text_source.hpp"

namespace velmora {

/// Which column of a line goes where in a frame: the time column to 0, the others that
/// are not left out to 1, 2, ... in order.
ScanPlan PlanScan(const ParseSettings& settings);

/// Reads the records behind the lines skipped into the trial's frames, at most as many as it has
/// samples; returns how many were read, fewer when the file ends or Cancel is pressed.
/// Throws FileError.
std::int64_t ReadRecords(Trial& trial, ProgressPanel& panel, TextSource& source,
                         const ParseSettings& settings, ScanFaults& faults);

}  // namespace velmora
