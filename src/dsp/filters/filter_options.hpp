#pragma once

#include <cstdint>

#include "dsp/filters/filter_design.hpp"
#include "dsp/filters/filter_section.hpp"

namespace velmora {

// The choices that the dialogues of digital filters share, by index.

enum PassOption : std::int32_t { kLowPassOption, kHighPassOption, kBandPassOption, kBandStopOption };
enum DesignOption : std::int32_t {
  kButterworthOption,
  kCriticallyDampedOption,
  kChebyshevOption,
  kEllipticOption,
  kInverseChebyshevOption,
  kBesselOption
};

bool IsBandOption(std::int32_t passOption);

/// Of the four pass options.
Band BandOf(std::int32_t passOption);

/// Whether the design is a second-order section run again and again, low-pass or high-pass.
bool IsDesignByPasses(std::int32_t designOption);
/// Butterworth for any option that has no name of its own here.
FilterDesign DesignByPassesOf(std::int32_t designOption);

/// Of the dialogue of the recursive filters, which has these three alone and in another order.
FilterDesign DesignOfThree(std::int32_t designOption);

/// Of a design of any order.
Approximation ApproximationOf(std::int32_t designOption);

}  // namespace velmora
