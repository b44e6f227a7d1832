#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/command.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

/// A part of a channel between two changes of sign.
struct SignedPart {
  double middle = 0.0;    // seconds after the trial's first sample
  double integral = 0.0;  // in the channel's units times seconds
};

/// The integrals of a channel over samples range.lo to range.hi, part by part. A part goes on while the sum
/// so far times the next sample is not negative; the sample that ends it begins the next one. It stands at
/// (first + closing)/2 * dt, samples counted from 1. NaN adds nothing.
std::vector<SignedPart> IntegralsOf(const Trial& trial, int channel, SampleRange range);

/// The first samples with the largest and the smallest value of the range; 0 when none is a number.
struct ExtremeSamples {
  std::int32_t maximum = 0;
  std::int32_t minimum = 0;
};
ExtremeSamples ExtremesOf(const Trial& trial, int channel, SampleRange range);

/// CursorLo to CursorHi as ones that the trial has, which they then are: below 1 is 1, a CursorHi outside is
/// NData, and they swap when they are out of order.
SampleRange CorrectedRange(Trial& trial);

/// The menu of values on the graphs.
std::span<const Command> ValueCommands();

}  // namespace velmora
