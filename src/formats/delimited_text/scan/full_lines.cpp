#include "formats/delimited_text/scan/full_lines.hpp"

#include "formats/delimited_text/scan/fast_scan_stages.hpp"

namespace velmora {

FullLines CountFullLines(std::string_view text, SimdLevel level) {
  return ScanStagesOf(level).countFullLines(text.data(), text.size());
}

FullLines FullLinesAhead(std::string_view text) {
  constexpr std::size_t kPiece = 16384;
  FullLines full = CountFullLines(text.substr(0, kPiece));
  const bool halfPair = full.bytes > 0 && text[full.bytes - 1] == '\r' && text.substr(full.bytes, 1) == "\n";
  full.bytes += halfPair ? 1 : 0;
  return full;
}

}  // namespace velmora
