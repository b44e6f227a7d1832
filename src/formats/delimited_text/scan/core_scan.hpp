#pragma once

#include <cstdint>
#include <string_view>

#include "formats/delimited_text/scan/number_scan.hpp"

namespace velmora {

/// FastScanRows on several cores, the same to the bit and in what it notes: the text is cut into pieces of
/// whole lines, whose rows are counted first, so that each piece knows its place and its line numbers.
/// `cores` 0 takes what the machine has. Text and padding as FastScanRows wants them.
ScanProgress ScanOnCores(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                         ScanFaults& faults, unsigned cores = 0);

}  // namespace velmora
