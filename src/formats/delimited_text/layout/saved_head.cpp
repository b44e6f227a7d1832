#include "formats/delimited_text/layout/saved_head.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr int kTitleLine = 1;
constexpr int kRateLine = 2;
constexpr int kLabelsLine = 3;
constexpr int kUnitsLine = 4;

std::string SeparatorAtEnd(std::string_view text) {
  for (const char* separator : {"\t", ", ", "  "}) {
    if (text.ends_with(separator)) {
      return separator;
    }
  }
  return {};
}

// What row 0 is called in seconds and in the other time bases.
bool NamesAbscissa(std::string_view label) {
  constexpr std::array<std::string_view, 5> kAbscissas = {"Time", "Percentage", "Count", "Frame",
                                                          "Mean time"};
  return std::find(kAbscissas.begin(), kAbscissas.end(), label) != kAbscissas.end();
}

}  // namespace

void ReadSavedHead(TextHeader& header) {
  constexpr std::string_view kRate = "Rate=";
  constexpr std::string_view kDuration = "Duration=";
  const std::string line = header.Line(kRateLine);
  const std::size_t duration = line.find(kDuration);
  if (!line.starts_with(kRate) || duration == std::string::npos) {
    return;
  }
  const std::string_view before = std::string_view(line).substr(0, duration);
  const std::string separator = SeparatorAtEnd(before);
  if (separator.empty()) {
    return;
  }
  header.savedSeparator = separator;
  header.rate = std::max(Val(before.substr(kRate.size())), 0.0);
  header.title = header.Line(kTitleLine);
  header.labelsLine = kLabelsLine;
  header.unitsLine = kUnitsLine;
  header.lastLine = kUnitsLine;
  header.hasTime = NamesAbscissa(NamesInSavedLine(header, kLabelsLine).front());
}

std::vector<std::string> NamesInSavedLine(const TextHeader& header, int line) {
  const std::string text = header.Line(line);
  const std::string_view separator = header.savedSeparator;
  std::vector<std::string> names;
  std::string_view rest = text;
  for (std::size_t end = rest.find(separator); end != std::string_view::npos; end = rest.find(separator)) {
    names.push_back(Trim(rest.substr(0, end)));
    rest.remove_prefix(end + separator.size());
  }
  names.push_back(Trim(rest));
  return names;
}

}  // namespace velmora
