#pragma once

#include <cstddef>
#include <cstdint>

#include "core/simd.hpp"
#include "formats/delimited_text/scan/full_lines.hpp"

namespace velmora {

// The two stages of the fast scan, which come once per vector width.

inline constexpr std::uint32_t kScanPiece = 16384;  // bytes indexed at a time: all stays in the first cache
inline constexpr int kMostCells = 64;               // numbers of a row

/// The characters that a layout gives a meaning; separators are repeated where there are fewer. The
/// blank, CR and LF always end a number as well.
struct ScanCharacters {
  char point;
  char separators[3];
};

/// Where the numbers of a piece of text end.
struct PieceIndex {
  std::uint32_t ends[kScanPiece + 64];   // every separator, blank and line end
  std::uint32_t lines[kScanPiece + 64];  // the line ends among them; the LF of a CR LF is none
  std::uint32_t endCount = 0;
  std::uint32_t lineCount = 0;
};

struct ScanStages {
  /// Indexes `bytes` (at most kScanPiece) bytes; may read 63 bytes more.
  void (*indexPiece)(const char* text, std::uint32_t bytes, const ScanCharacters& characters,
                     PieceIndex& index);

  /// Reads `columns` (1..64) numbers, the first from `start`, each up to the next of `ends`, into
  /// `row`, which has room for 64 and three more. False when one of them is not of the plain sort: at
  /// most 16 characters (narrow: beside its sign), digits with at most one point, and not within a rounding
  /// of half-way between two 32-bit numbers. May read 16 bytes before `text`.
  bool (*readRow)(const char* text, std::uint32_t start, const std::uint32_t* ends, int columns, char point,
                  float* row);

  /// CountFullLines of the first `bytes` bytes, of which a last piece of less than 64 is left out.
  FullLines (*countFullLines)(const char* text, std::size_t bytes);
};

extern const ScanStages kSse2ScanStages;
extern const ScanStages kAvx2ScanStages;
extern const ScanStages kAvx512ScanStages;

const ScanStages& ScanStagesOf(SimdLevel level);

}  // namespace velmora
