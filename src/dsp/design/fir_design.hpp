#pragma once

#include <cstdint>
#include <vector>

#include "dsp/filters/filter_design.hpp"

namespace velmora {

enum class FirWindow : std::int32_t {
  Hamming,
  Hanning,
  Blackman,
  Kaiser,
  Rectangular
};  // as dialogues number

inline constexpr std::int32_t kFewestTaps = 3;
inline constexpr std::int32_t kMostTaps = 9999;

/// A windowed sinc. Frequencies in Hz; `higher` counts for the two bands alone.
struct FirRequest {
  Band band = Band::LowPass;
  FirWindow window = FirWindow::Hamming;
  std::int32_t taps = 101;  // odd, kFewestTaps to kMostTaps
  double rate = 0.0;
  double cutoff = 0.0;
  double higher = 0.0;
  double attenuation = 40.0;  // dB, of the Kaiser window
};

/// The taps, of odd number and symmetric: gain 1 at 0, half the rate or the middle of the band, and one half
/// at the edges. (Oppenheim and Schafer, Discrete-Time Signal Processing, 7.5.) Throws FilterDesignError.
std::vector<double> DesignFir(const FirRequest& request);

/// Kaiser's window for an attenuation in dB: its shape, and the odd number of taps for a transition in Hz.
/// (Kaiser 1974.)
double KaiserBeta(double attenuation);
double KaiserTaps(double attenuation, double transition, double rate);

}  // namespace velmora
