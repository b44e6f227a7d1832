#include "core/text/numbers.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::string_view kPlaceholders = "0#";

// The parts of a number pattern around its one run of placeholders.
struct Pattern {
  std::string_view before;
  std::string_view whole;
  std::string_view decimals;
  std::string_view exponent;  // "E+00" or empty
  std::string_view behind;
  bool hasPoint = false;
};

std::string_view TakePlaceholders(std::string_view& rest) {
  const std::string_view run = rest.substr(0, rest.find_first_not_of(kPlaceholders));
  rest.remove_prefix(run.size());
  return run;
}

std::string_view TakeExponent(std::string_view& rest) {
  if (rest.size() < 3 || rest[0] != 'E' || (rest[1] != '+' && rest[1] != '-') || rest[2] != '0') {
    return {};
  }
  const std::string_view run = rest.substr(0, rest.find_first_not_of('0', 2));
  rest.remove_prefix(run.size());
  return run;
}

Pattern Split(std::string_view text) {
  Pattern pattern;
  pattern.before = text.substr(0, text.find_first_of("0#."));
  text.remove_prefix(pattern.before.size());
  pattern.whole = TakePlaceholders(text);
  if (!text.empty() && text[0] == '.') {
    pattern.hasPoint = true;
    text.remove_prefix(1);
    pattern.decimals = TakePlaceholders(text);
  }
  pattern.exponent = TakeExponent(text);
  pattern.behind = text;
  return pattern;
}

template <typename Number, typename... Format>
std::string Chars(Number value, Format... format) {
  std::array<char, 512> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format...);
  return {buffer.data(), result.ptr};
}

// Trailing zeros go where the pattern has '#'; leading zeros come where it has '0'.
std::string Fill(const std::string& digits, const Pattern& pattern) {
  const std::size_t point = std::min(digits.find('.'), digits.size());
  std::string whole = digits.substr(0, point);
  std::string decimals = point < digits.size() ? digits.substr(point + 1) : std::string();
  const auto zeros = static_cast<std::size_t>(std::count(pattern.whole.begin(), pattern.whole.end(), '0'));
  if (whole == "0" && zeros == 0) {
    whole.clear();
  }
  whole.insert(0, zeros - std::min(zeros, whole.size()), '0');
  while (!decimals.empty() && decimals.back() == '0' && pattern.decimals[decimals.size() - 1] == '#') {
    decimals.pop_back();
  }
  return whole + (pattern.hasPoint ? "." : "") + decimals;
}

std::string Scientific(double magnitude, const Pattern& pattern) {
  std::string text =
      Chars(magnitude, std::chars_format::scientific, static_cast<int>(pattern.decimals.size()));
  const std::size_t e = text.find('e');
  const bool negative = text[e + 1] == '-';
  std::string power = text.substr(text.find_first_not_of("+-0", e + 1) == std::string::npos
                                      ? text.size()
                                      : text.find_first_not_of("+-0", e + 1));
  const std::size_t width = pattern.exponent.size() - 2;
  power.insert(0, width - std::min(width, power.size()), '0');
  const bool showPlus = pattern.exponent[1] == '+';
  return Fill(text.substr(0, e), pattern) + "E" + (negative ? "-" : showPlus ? "+" : "") + power;
}

// Whether a decimal text outside the range of double is too small (and not too large).
bool IsTiny(std::string_view number) {
  const std::size_t e = number.find_first_of("eE");
  if (e != std::string_view::npos) {
    return number.substr(e + 1, 1) == "-";
  }
  return number.substr(number.find_first_not_of('-'), 1).find_first_of("0.") == 0;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

// What Val takes of the front of a text.
struct NumberRead {
  double value = 0.0;
  std::string_view rest;  // behind the number; all of the text where there is none
};

NumberRead ReadNumber(std::string_view text) {
  std::string_view digits = text;
  digits.remove_prefix(std::min(digits.find_first_not_of(" \t"), digits.size()));
  const bool plus = !digits.empty() && digits[0] == '+';
  digits.remove_prefix(plus ? 1 : 0);
  const std::size_t first = !digits.empty() && digits[0] == '-' && !plus ? 1 : 0;
  const bool number =
      first < digits.size() && (digits[first] == '.' || (digits[first] >= '0' && digits[first] <= '9'));
  if (!number) {
    return {0.0, text};  // also keeps "inf" and "nan" out, which from_chars would take
  }
  double value = 0.0;
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, value);
  const std::string_view rest(result.ptr, static_cast<std::size_t>(end - result.ptr));
  if (result.ec == std::errc::result_out_of_range) {
    const bool tiny = IsTiny(digits.substr(0, digits.size() - rest.size()));
    const double magnitude = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    return {first == 1 ? -magnitude : magnitude, rest};
  }
  return result.ec == std::errc() ? NumberRead{value, rest} : NumberRead{0.0, text};
}

}  // namespace

std::int64_t RoundHalfEven(double value) {
  if (std::isnan(value)) {
    return 0;
  }
  const double rounded = std::nearbyint(value);  // the default rounding mode is half to even
  if (rounded >= 0x1p63) {
    return std::numeric_limits<std::int64_t>::max();
  }
  if (rounded < -0x1p63) {
    return std::numeric_limits<std::int64_t>::min();
  }
  return static_cast<std::int64_t>(rounded);
}

std::int32_t RoundHalfEven32(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(RoundHalfEven(value), Limits::min(), Limits::max()));
}

double Val(std::string_view text) {
  return ReadNumber(text).value;
}

bool IsNumber(std::string_view text) {
  const std::string_view rest = ReadNumber(text).rest;
  return rest.size() < text.size() && std::all_of(rest.begin(), rest.end(), IsBlank);
}

std::string FormatNumber(double value, std::string_view patternText) {
  const Pattern pattern = Split(patternText);
  std::string number;
  if (!std::isfinite(value)) {
    number = std::isnan(value) ? "nan" : "inf";
  } else if (!pattern.exponent.empty()) {
    number = Scientific(std::abs(value), pattern);
  } else {
    number = Fill(Chars(std::abs(value), std::chars_format::fixed, static_cast<int>(pattern.decimals.size())),
                  pattern);
  }
  const bool minus = std::signbit(value) && !std::isnan(value);
  return std::string(pattern.before) + (minus ? "-" : "") + number + std::string(pattern.behind);
}

// Rounded before it is taken apart, so that no part shows 60.
std::string FormatClock(double seconds, int decimals) {
  constexpr double minute = 60;
  constexpr double longest = 1e12;  // more seconds leave no digits for decimals
  const std::string point = (decimals > 0 ? "." : "") + std::string(static_cast<std::size_t>(decimals), '0');
  if (!(std::abs(seconds) < longest)) {
    return FormatNumber(seconds, "0" + point);
  }
  const double rounded = Val(FormatNumber(std::abs(seconds), "0" + point));
  const double minutes = std::floor(rounded / minute);
  const double hours = std::floor(minutes / minute);
  return (std::signbit(seconds) ? "-" : "") + FormatNumber(hours, "00:") +
         FormatNumber(minutes - hours * minute, "00:") +
         FormatNumber(rounded - minutes * minute, "00" + point);
}

std::string FormatText(std::string_view text, std::string_view pattern) {
  return PadLeft(text, static_cast<std::size_t>(std::count(pattern.begin(), pattern.end(), '@')));
}

std::string PlainNumber(double value) {
  return Chars(value);
}
std::string PlainNumber(float value) {
  return Chars(value);
}

std::string FormatField10(double value) {
  return PadLeft(FormatNumber(value, "0.0000"), 10);
}
std::string FormatField10Short(double value) {
  return PadLeft(FormatNumber(value, "0.000"), 10);
}

std::string FormatCount(std::int64_t count) {
  std::string text = std::to_string(count);
  const std::ptrdiff_t sign = count < 0 ? 1 : 0;
  for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > sign; at -= 3) {
    text.insert(static_cast<std::size_t>(at), 1, ',');
  }
  return text;
}

std::string CountOf(std::int64_t count, std::string_view thing) {
  return std::to_string(count) + " " + std::string(thing) + (count == 1 ? "" : "s");
}

std::string ChannelNumber(int channel) {
  return FormatNumber(channel - 1, "00");
}

}  // namespace velmora
