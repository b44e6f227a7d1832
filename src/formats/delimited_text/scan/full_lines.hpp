#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/simd.hpp"

namespace velmora {

/// Lines at the start of a text that are whole and not blank.
struct FullLines {
  std::int64_t lines = 0;
  std::size_t bytes = 0;  // with their ends, but for an LF behind the text
};

/// Counts them 64 bytes at a time. All or nothing: no lines when one of the text's lines might be
/// blank, that is, ends behind a blank, a tab or another line's end.
FullLines CountFullLines(std::string_view text, SimdLevel level = MachineSimdLevel());

/// Those of the first 16 KiB, an LF behind them that is half of a pair included.
FullLines FullLinesAhead(std::string_view text);

}  // namespace velmora
