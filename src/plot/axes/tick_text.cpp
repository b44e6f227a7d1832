#include "plot/axes/tick_text.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

struct Prefix {
  int power = 0;
  std::string text;
};

const std::array kPrefixes = {Prefix{-15, " f"}, Prefix{-12, " p"}, Prefix{-9, " n"}, Prefix{-6, " µ"},
                              Prefix{-3, " m"},  Prefix{3, " k"},   Prefix{6, " M"},  Prefix{9, " G"},
                              Prefix{12, " T"},  Prefix{15, " P"}};

constexpr double kLargestPlain = 1e5;
constexpr double kSmallestPlain = 1e-2;
constexpr double kRounding = 1e-9;

std::string TenTo(int power) {
  constexpr std::array kRaised = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
  std::string text = power < 0 ? "10⁻" : "10";
  for (const char digit : std::to_string(std::abs(power))) {
    text += kRaised[static_cast<std::size_t>(digit - '0')];
  }
  return text;
}

// The prefix under which `largest` has one to three digits before the point, or a power of ten where
// none has: digits in rows of twenty cannot be read, and zeros tell no ticks apart.
Prefix PrefixFor(double largest) {
  if (largest == 0 || !std::isfinite(largest) ||
      (largest < kLargestPlain && largest >= kSmallestPlain * (1 - kRounding))) {
    return {};
  }
  const int power = 3 * static_cast<int>(std::floor(std::log10(largest * (1 + kRounding)) / 3));
  if (power < kPrefixes.front().power || power > kPrefixes.back().power) {
    return {power, "·" + TenTo(power)};
  }
  Prefix found = kPrefixes.front();
  for (const Prefix& prefix : kPrefixes) {
    if (std::pow(10.0, prefix.power) <= largest * (1 + kRounding)) {
      found = prefix;
    }
  }
  return found;
}

// As many as the step needs.
int Decimals(double step) {
  constexpr int kMost = 9;
  for (int decimals = 0; decimals < kMost; ++decimals) {
    const double scaled = std::abs(step) * std::pow(10.0, decimals);
    if (scaled >= 1 - kRounding && std::abs(scaled - std::round(scaled)) < 1e-6 * scaled) {
      return decimals;
    }
  }
  return kMost;
}

}  // namespace

std::string TickText(double tick, double step, double largest) {
  if (std::abs(tick) < step * kRounding) {
    return "0";
  }
  const Prefix prefix = PrefixFor(largest);
  const double unit = std::pow(10.0, prefix.power);
  const int decimals = Decimals(step / unit);
  std::string pattern = "0";
  if (decimals > 0) {
    pattern += "." + std::string(static_cast<std::size_t>(decimals), '0');
  }
  return FormatNumber(tick / unit, pattern) + prefix.text;
}

std::string DecadeText(double tick) {
  const auto power = static_cast<int>(std::lround(std::log10(tick)));
  if (power >= 0 && power <= 4) {
    return "1" + std::string(static_cast<std::size_t>(power), '0');
  }
  if (power >= -2 && power < 0) {
    return power == -1 ? "0.1" : "0.01";
  }
  return TenTo(power);
}

std::string ClockTickText(double tick, double step) {
  return FormatClock(std::abs(tick) < step * kRounding ? 0.0 : tick, Decimals(step));
}

}  // namespace velmora
