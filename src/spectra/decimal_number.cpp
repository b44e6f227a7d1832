#include "spectra/decimal_number.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace velmora {
namespace {

constexpr long kBlock = 64;
constexpr double kClose = 1e-6;
constexpr double kRounding = 6755399441055744.0;  // 1.5 * 2^52: adding it rounds to a whole number

using DecimalTaker = void (*)(const double* values, const double* scales, const double* rooms,
                              double* numbers, double* unsure);

#define SIMD_KERNEL "spectra/decimal_lanes.inc"
#include "core/simd_widths.inc"

DecimalTaker TakerOf(SimdLevel level) {
  return AtLevel<DecimalTaker>(level, sse2::DecimalBlock, avx2::DecimalBlock, avx512::DecimalBlock);
}

/// What values of one binary exponent share. A power of ten may lie among them.
struct Octave {
  double tenth = 0.0;                                       // that power; 0: all of them are above
  double below = std::numeric_limits<double>::quiet_NaN();  // scale of six digits; no number: out of range
  double above = std::numeric_limits<double>::quiet_NaN();
  double room = 0.0;  // half the distance of neighbours
};

// Values of 1e-9 to 1e5: there every scale is an exact power of ten, and so is every decimal's whole number.
std::array<Octave, 256> MakeOctaves() {
  constexpr int kLeast = -9;
  constexpr int kMost = 5;
  std::array<Octave, 256> octaves;
  for (std::size_t exponent = 1; exponent < 255; ++exponent) {
    const int binary = static_cast<int>(exponent) - 127;
    const double least = std::ldexp(1.0, binary);
    Octave& octave = octaves[exponent];
    octave.room = std::ldexp(1.0, binary - 24);
    for (int power = kLeast; power <= kMost; ++power) {
      const double ten = power < 0 ? 1.0 / std::pow(10.0, -power) : std::pow(10.0, power);
      const double scale =
          power < kMost ? std::pow(10.0, 5 - power) : std::numeric_limits<double>::quiet_NaN();
      if (ten <= least) {
        octave.above = scale;
      } else if (ten < 2 * least) {
        octave.tenth = ten;
        octave.below = std::exchange(octave.above, scale);
      }
    }
  }
  return octaves;
}

const std::array<Octave, 256>& Octaves() {
  static const std::array<Octave, 256> octaves = MakeOctaves();
  return octaves;
}

}  // namespace

double DecimalNumberPlainly(float value) {
  std::array<char, 32> text{};
  const char* end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  double number = value;
  std::from_chars(text.data(), end, number);
  return number;
}

void DecimalNumbers(std::span<const float> values, std::span<double> numbers, SimdLevel level) {
  constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
  const DecimalTaker take = TakerOf(level);
  const std::array<Octave, 256>& octaves = Octaves();
  using Block = std::array<double, kBlock>;
  Block doubles{};
  Block scales{};
  Block rooms{};
  Block found;
  Block unsure;
  for (std::size_t first = 0; first < values.size(); first += kBlock) {
    const std::size_t count = std::min<std::size_t>(kBlock, values.size() - first);
    const float* at = values.data() + first;
    for (std::size_t k = 0; k < count; ++k) {
      const auto bits = std::bit_cast<std::uint32_t>(at[k]);
      const Octave& octave = octaves[bits >> 23U & 0xFFU];
      const double scale = std::fabs(at[k]) >= octave.tenth ? octave.above : octave.below;
      doubles[k] = at[k];
      scales[k] = (bits & 0x7FFFFFU) != 0 ? scale : kNone;  // a power of two has a nearer neighbour below
      rooms[k] = octave.room;
    }
    take(doubles.data(), scales.data(), rooms.data(), found.data(), unsure.data());
    double* to = numbers.data() + first;
    for (std::size_t k = 0; k < count; ++k) {
      to[k] = found[k];
    }
    for (std::size_t k = 0; k < count; ++k) {
      if (unsure[k] != 0.0) {
        to[k] = at[k] == 0.0F ? static_cast<double>(at[k]) : DecimalNumberPlainly(at[k]);
      }
    }
  }
}

}  // namespace velmora
