#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"

namespace velmora {

// Places on the abscissa that a view shows, in its units. It starts at row 0's first value, which is 0 for
// a recording as it was made and the old time for a stretch that was cropped out of one. Samples are
// spaced evenly from there.

/// Row 0's first value; 0 without samples or when it is no finite number.
double AbscissaStart(const Trial& trial);

/// Samples to a unit of the abscissa: Rate, but where row 0 counts what was given a length of its own (units
/// of a person, frames of video) and Rate stayed that of the recording.
double SamplesPerUnit(const Trial& trial);

/// Duration behind the start.
double AbscissaEnd(const Trial& trial);

/// The sample at x, SamplesPerUnit*(x - start)+1 rounded with an exact half to the even one, or the nearest
/// that the trial has: 1..NData.
std::int32_t SampleOf(const Trial& trial, double x);

/// Where sample i (from 1) stands; the start when Rate is not positive.
double PlaceOf(const Trial& trial, std::int32_t i);

}  // namespace velmora
