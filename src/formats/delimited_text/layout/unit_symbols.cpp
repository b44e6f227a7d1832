#include "formats/delimited_text/layout/unit_symbols.hpp"

#include <algorithm>
#include <array>

namespace velmora {
namespace {

using namespace std::string_view_literals;

// Units that take a prefix of powers of ten.
constexpr std::array kWithPrefix = {"m"sv,   "s"sv,      "g"sv,      "N"sv, "Nm"sv, "V"sv,   "Hz"sv,
                                    "Pa"sv,  "W"sv,      "J"sv,      "A"sv, "l"sv,  "rad"sv, "bar"sv,
                                    "Ohm"sv, "\u03A9"sv, "\u2126"sv, "S"sv, "T"sv};
constexpr std::array kPrefixes = {""sv,  "k"sv, "M"sv, "G"sv,      "c"sv,     "d"sv,
                                  "m"sv, "u"sv, "n"sv, "\u00B5"sv, "\u03BC"sv};
constexpr std::array kAlone = {
    "deg"sv,  "\u00B0"sv, "%"sv,      "min"sv,   "h"sv,     "sec"sv,     "secs"sv, "rpm"sv,
    "bpm"sv,  "mmHg"sv,   "lb"sv,     "lbs"sv,   "in"sv,    "ft"sv,      "dB"sv,   "\u00B0C"sv,
    "degC"sv, "kp"sv,     "kgf"sv,    "a.u."sv,  "au"sv,    "counts"sv,  "bits"sv, "raw"sv,
    "BW"sv,   "cycles"sv, "frames"sv, "steps"sv, "volts"sv, "newtons"sv,
};
// One letter that marks a channel as often as it names a unit: no unit on its own.
constexpr std::array kLetters = {"A"sv, "S"sv, "T"sv, "l"sv};

template <typename Range>
bool Holds(const Range& range, std::string_view text) {
  return std::find(range.begin(), range.end(), text) != range.end();
}

bool IsKnown(std::string_view symbol) {
  return Holds(kAlone, symbol) || std::any_of(kPrefixes.begin(), kPrefixes.end(), [symbol](auto prefix) {
           return symbol.starts_with(prefix) && Holds(kWithPrefix, symbol.substr(prefix.size()));
         });
}

// "s", "s2", "s^2", "s-1" as they stand behind a sign that joins units.
bool IsPower(std::string_view factor) {
  const std::size_t end = factor.find_last_not_of("0123456789\u00B2") + 1;
  std::string_view symbol = factor.substr(0, end);
  while (end < factor.size() && (symbol.ends_with('^') || symbol.ends_with('-'))) {
    symbol.remove_suffix(1);
  }
  return IsKnown(symbol);
}

}  // namespace

bool IsUnitSymbol(std::string_view text) {
  if (Holds(kAlone, text)) {
    return true;
  }
  if (text.empty() || Holds(kLetters, text)) {
    return false;
  }
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(".*/ "), text.size());
    if (!IsPower(text.substr(0, end))) {
      return false;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return true;
}

}  // namespace velmora
