#pragma once

#include <cstdint>
#include <string_view>

#include "core/simd.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"

namespace velmora {

/// What a scan works with.
struct ScanMeans {
  unsigned cores = 0;  // 0: all that the machine has
  SimdLevel level = MachineSimdLevel();
};

/// FastScanRows on several cores, the same to the bit and in what it notes: the text is cut into pieces of
/// whole lines, whose rows are counted first, so that each piece knows its place and its line numbers.
/// Text and padding as FastScanRows wants them.
ScanProgress ScanOnCores(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                         ScanFaults& faults, ScanMeans means = {});

}  // namespace velmora
