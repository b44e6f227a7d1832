#include "import/text_parser/full_lines.hpp"

#include "import/text_parser/fast_scan_stages.hpp"

namespace velmora {

FullLines CountFullLines(std::string_view text, SimdLevel level) {
  return ScanStagesOf(level).countFullLines(text.data(), text.size());
}

}  // namespace velmora
