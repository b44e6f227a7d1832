#include "formats/delimited_text/scan/full_lines.hpp"

#include "formats/delimited_text/scan/fast_scan_stages.hpp"

namespace velmora {

FullLines CountFullLines(std::string_view text, SimdLevel level) {
  return ScanStagesOf(level).countFullLines(text.data(), text.size());
}

}  // namespace velmora
