#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/portable_sine.hpp"
#include "core/text/numbers.hpp"

namespace velmora {

/// A window that samples are multiplied by before their spectrum is taken.
struct SpectralWindow {
  std::string_view id;                   // of the command that chooses it
  std::string_view caption;              // of the menu
  std::string_view name;                 // WindowName
  std::string_view shortName;            // WindowName of the harmonic regression
  double (*weight)(double i, double n);  // of sample i = 0..n-1; nullptr: none
};

/// cos(order 2 pi i / n).
inline double WindowCosine(int order, double i, double n) {
  return SineAndCosineOf(order * (2.0 * Pi * i / n)).cosine;
}

// Sums of cosines in their periodic form: Harris, "On the use of windows for harmonic analysis with the
// discrete Fourier transform", Proc. IEEE 66 (1978); the flat top as ISO 18431-2 has it. The taper of the
// cosine-tapered window is a tenth of the samples at either end.
/// All windows, in menu order; the subscript is WindowType. A new window is a row here.
inline constexpr std::array kSpectralWindows = {
    SpectralWindow{"fourier.window-rectangular", "Rectangular (none)", "Rectangular", "Rectangular", nullptr},
    SpectralWindow{
        "fourier.window-blackman", "Blackman", "Blackman", "Blackman",
        [](double i, double n) { return 0.42 - 0.5 * WindowCosine(1, i, n) + 0.08 * WindowCosine(2, i, n); }},
    SpectralWindow{"fourier.window-blackman-harris", "Blackman-Harris", "Blackman-Harris", "Blk'man-Harris",
                   [](double i, double n) {
                     return 0.35875 - 0.48829 * WindowCosine(1, i, n) + 0.14128 * WindowCosine(2, i, n) -
                            0.01168 * WindowCosine(3, i, n);
                   }},
    SpectralWindow{"fourier.window-cosine-tapered", "Cosine tapered", "Cosine-tapered", "Cosine-tapered",
                   [](double i, double n) {
                     const double taper = n / 10;
                     const double fromEnd = i > n - taper ? n - i : i;
                     return fromEnd < taper ? (1 - SineAndCosineOf(Pi * fromEnd / taper).cosine) / 2 : 1.0;
                   }},
    SpectralWindow{"fourier.window-flat-top", "Flat-top", "Flat-top", "Flat-top",
                   [](double i, double n) {
                     return 0.21557895 - 0.41663158 * WindowCosine(1, i, n) +
                            0.277263158 * WindowCosine(2, i, n) - 0.083578947 * WindowCosine(3, i, n) +
                            0.006947368 * WindowCosine(4, i, n);
                   }},
    SpectralWindow{"fourier.window-hamming", "Hamming", "Hamming", "Hamming",
                   [](double i, double n) { return 0.54 - 0.46 * WindowCosine(1, i, n); }},
    SpectralWindow{"fourier.window-hanning", "Hanning", "Hanning", "Hanning",
                   [](double i, double n) { return 0.5 - 0.5 * WindowCosine(1, i, n); }},
    SpectralWindow{"fourier.window-triangular", "Triangular", "Triangular", "Triangular",
                   [](double i, double n) { return 1 - std::abs(2 * i - n) / n; }},
};

/// The window of a WindowType; rectangular for one that is not in the table.
const SpectralWindow& WindowOf(std::int16_t type);

/// The weights of n samples, n >= 1; ones for the rectangular window.
std::vector<double> WindowWeights(const SpectralWindow& window, std::int64_t n);

/// x(i) = x(i) w(i). The rectangular window leaves x as it stands.
void ApplyWindow(const SpectralWindow& window, std::span<double> x);

}  // namespace velmora
