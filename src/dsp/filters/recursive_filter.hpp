#pragma once

#include <cstdint>
#include <span>

#include "core/trial/helpers.hpp"
#include "core/trial/trial.hpp"
#include "dsp/filters/filter_section.hpp"

namespace velmora {

/// What a caller of a recursive filter asks for.
struct FilterSettings {
  float Cutoff = 0.0F;      // Hz, the -3 dB point of all passes together
  std::int16_t Passes = 1;  // times the second-order section runs, at least 1
  /// Points in front and behind; below 0 means of that many points, else reflective or zeros.
  std::int32_t Padding = 0;
  bool IsZeroLag = false;   // each pass forward and backward
  bool IsCritical = false;  // critically damped instead of Butterworth; not for the Bessel routines
  bool PadZeros = false;
  bool Rectify = false;  // LowPassChannel alone: absolute values first
};

/// Highest number of padding points of the channel routines.
inline constexpr std::int64_t kHighestChannelPadding = 200;

// Filter samples range.lo to range.hi (from 1; hi at most NData) of one channel in place. A verdict
// other than Accepted leaves the samples as they were, but rectified where that was asked for.
// The recursion feeds back outputs rounded to 32 bits; the sums are 64-bit. Throw std::out_of_range for
// a channel or range outside the trial.

FilterVerdict LowPassChannel(Trial& trial, int channel, SampleRange range, const FilterSettings& settings);
FilterVerdict HighPassChannel(Trial& trial, int channel, SampleRange range, const FilterSettings& settings);
FilterVerdict LowPassBesselChannel(Trial& trial, int channel, SampleRange range,
                                   const FilterSettings& settings);
FilterVerdict HighPassBesselChannel(Trial& trial, int channel, SampleRange range,
                                    const FilterSettings& settings);

/// Filters one channel in place forward only, without padding, by coefficients in 64 bits. Throws
/// std::out_of_range for a channel outside the trial.
FilterVerdict FilterForward(Trial& trial, int channel, PassType type, FilterDesign design, float cutoff,
                            std::int16_t passes);

// The first four on a caller's array sampled at `rate` Hz, with up to values.size() - 1 padding points.

FilterVerdict LowPassArray(std::span<float> values, double rate, const FilterSettings& settings);
FilterVerdict HighPassArray(std::span<float> values, double rate, const FilterSettings& settings);
FilterVerdict LowPassBesselArray(std::span<float> values, double rate, const FilterSettings& settings);
FilterVerdict HighPassBesselArray(std::span<float> values, double rate, const FilterSettings& settings);

}  // namespace velmora
