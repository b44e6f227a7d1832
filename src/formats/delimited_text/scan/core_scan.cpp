#include "formats/delimited_text/scan/core_scan.hpp"

#include <algorithm>
#include <vector>

#include "core/cores.hpp"
#include "formats/delimited_text/scan/fast_scan.hpp"
#include "formats/delimited_text/scan/full_lines.hpp"
#include "formats/line_blocks.hpp"

namespace velmora {
namespace {

// A smaller piece is read sooner than a thread starts.
constexpr std::size_t kLeastPiece = std::size_t{64} << 10;

struct Piece {
  std::string_view text;
  std::int64_t rows = 0;
  std::int64_t lines = 0;
  std::int64_t rowsBefore = 0;
  std::int64_t linesBefore = 0;
  ScanProgress scanned;
  ScanFaults faults;
};

// About equal pieces of whole lines.
std::vector<Piece> Cut(std::string_view text, std::size_t parts) {
  const std::size_t size = std::max(text.size() / parts + 1, kLeastPiece);
  std::vector<Piece> pieces;
  while (!text.empty()) {
    std::string_view rest = text.substr(std::min(size, text.size()));
    TakeLine(rest);
    pieces.push_back({.text = text.substr(0, text.size() - rest.size())});
    text = rest;
  }
  return pieces;
}

void CountRows(Piece& piece) {
  for (std::string_view rest = piece.text; !rest.empty();) {
    const FullLines full = FullLinesAhead(rest);
    piece.rows += full.lines;
    piece.lines += full.lines;
    rest.remove_prefix(full.bytes);
    constexpr int kAtOnce = 64;  // a blank line is somewhere ahead
    for (int k = 0; full.lines == 0 && k < kAtOnce && !rest.empty(); ++k) {
      piece.rows += IsBlankLine(TakeLine(rest)) ? 0 : 1;
      ++piece.lines;
    }
  }
}

}  // namespace

ScanProgress ScanOnCores(std::string_view text, const ScanPlan& plan, FrameRoom room, std::int64_t firstLine,
                         ScanFaults& faults, ScanMeans means) {
  std::vector<Piece> pieces = Cut(text, PartsForCores(means.cores));
  if (pieces.size() < 2) {
    return FastScanRows(text, plan, room, firstLine, faults, means.level);
  }
  OnCores(pieces.size(), [&](std::size_t k) { CountRows(pieces[k]); });
  for (std::size_t k = 1; k < pieces.size(); ++k) {
    pieces[k].rowsBefore = pieces[k - 1].rowsBefore + pieces[k - 1].rows;
    pieces[k].linesBefore = pieces[k - 1].linesBefore + pieces[k - 1].lines;
  }
  OnCores(pieces.size(), [&](std::size_t k) {
    Piece& piece = pieces[k];
    const FrameRoom own = {room.first + piece.rowsBefore * plan.stride,
                           std::max<std::int64_t>(room.rows - piece.rowsBefore, 0)};
    piece.scanned =
        FastScanRows(piece.text, plan, own, firstLine + piece.linesBefore, piece.faults, means.level);
  });
  ScanProgress progress;
  for (const Piece& piece : pieces) {
    progress.bytes += piece.scanned.bytes;
    progress.rows += piece.scanned.rows;
    progress.lines += piece.scanned.lines;
    faults.Add(piece.faults);
  }
  return progress;
}

}  // namespace velmora
