#pragma once

#include <cstdint>
#include <string_view>

#include "core/simd.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"

namespace velmora {

/// ScanRows, several times faster and the same to the bit. Separators are found 64 bytes at a time;
/// a number of at most 16 characters is taken from the 16 bytes before its separator as the whole
/// number m of its digits, and becomes m / 10^k in 64 bits, rounded once to 32. Both steps round
/// correctly, and together they do unless the quotient lies exactly half-way between two 32-bit
/// numbers (Clinger 1990 has the exact cases of the first step). Rows with such a number are read number by
/// number, and rows of any other shape take the plain way.
///
/// `text` must lie in a buffer with LineBlocks::kPadding readable bytes before and behind it.
ScanProgress FastScanRows(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                          ScanFaults& faults, SimdLevel level = MachineSimdLevel());

}  // namespace velmora
