#include "spectra/decimal_number.hpp"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

namespace velmora {
namespace {

constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// A decimal of some digits: whole / 10^places, both exact.
struct Decimal {
  double whole;
  int places;
  bool readsBack;  // as the value it was made of

  [[nodiscard]] double Number() const { return whole / kPowers[static_cast<std::size_t>(places)]; }
};

// The decimal of so many places nearest to a value. Nothing when it lies so near to a tie, or to the edge
// between two values, that only exact arithmetic tells.
std::optional<Decimal> NearestDecimal(double value, double halfStep, int places) {
  constexpr double kClose = 1e-6;
  constexpr double kRounding = 6755399441055744.0;  // 1.5 * 2^52: adding it rounds to a whole number
  const double scale = kPowers[static_cast<std::size_t>(places)];
  const double scaled = value * scale;
  const double whole = (scaled + kRounding) - kRounding;
  const double away = std::abs(scaled - whole);
  const double room = halfStep * scale;
  if (std::abs(away - 0.5) < kClose || std::abs(away - room) < kClose * room) {
    return std::nullopt;
  }
  return Decimal{whole, places, away < room};
}

// Six digits always come back from 32 bits, so that the fewest that do are the six, or seven to nine.
std::optional<double> ShortDecimal(double value, double halfStep, int placesOfSix) {
  const auto eight = NearestDecimal(value, halfStep, placesOfSix + 2);
  if (!eight) {
    return std::nullopt;
  }
  if (!eight->readsBack) {
    const auto nine = NearestDecimal(value, halfStep, placesOfSix + 3);
    return nine ? std::optional(nine->Number()) : std::nullopt;
  }
  const auto seven = NearestDecimal(value, halfStep, placesOfSix + 1);
  if (!seven || !seven->readsBack) {
    return seven ? std::optional(eight->Number()) : std::nullopt;
  }
  const auto six = NearestDecimal(value, halfStep, placesOfSix);
  return six ? std::optional(six->readsBack ? six->Number() : seven->Number()) : std::nullopt;
}

}  // namespace

double DecimalNumberPlainly(float value) {
  std::array<char, 32> text{};
  const char* end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  double number = value;
  std::from_chars(text.data(), end, number);
  return number;
}

double DecimalNumber(float value) {
  constexpr float kLeast = 1e-9F;
  constexpr float kMost = 1e5F;
  const float size = std::abs(value);
  const auto bits = std::bit_cast<std::uint32_t>(size);
  const bool onEdge = (bits & 0x7FFFFFU) == 0;  // a power of two has a nearer neighbour below
  if (!(size >= kLeast && size < kMost) || onEdge) {
    return value == 0.0F ? static_cast<double>(value) : DecimalNumberPlainly(value);
  }
  int digitsInFront = 0;  // of the point; below 1 for what is less than 0.1
  while (size >= kPowers[static_cast<std::size_t>(digitsInFront)]) {
    ++digitsInFront;
  }
  while (digitsInFront <= 0 && size * kPowers[static_cast<std::size_t>(1 - digitsInFront)] < 1.0) {
    --digitsInFront;
  }
  const double step =
      std::bit_cast<float>(std::bit_cast<std::uint32_t>(size) + 1) - static_cast<double>(size);
  const auto found = ShortDecimal(size, step / 2, 6 - digitsInFront);
  return found ? std::copysign(*found, static_cast<double>(value)) : DecimalNumberPlainly(value);
}

}  // namespace velmora
