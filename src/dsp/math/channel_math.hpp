#pragma once

#include <cstdint>
#include <stdexcept>

#include "core/trial/trial.hpp"
#include "dsp/channel_list.hpp"

namespace velmora {

/// A sample whose result is no 32-bit number although its operands were numbers: an overflow, or a
/// power that has no real value. Samples written before it stay written: those of lower channels,
/// and the earlier ones of its own.
class ArithmeticFault : public std::range_error {
 public:
  ArithmeticFault(int channel, std::int64_t sample);
  [[nodiscard]] int Channel() const { return channel_; }

 private:
  int channel_;
};

// Point-wise and running operations, in place on samples 1..NData of the channels given. Samples are
// read as 32-bit floats, computed in 64 bits and rounded once at the store. Those that can overflow
// throw ArithmeticFault.

void Absolute(Trial& trial, const ChannelList& channels);
void Negate(Trial& trial, const ChannelList& channels);
/// Samples below 0 become 0.
void HalfWaveRectify(Trial& trial, const ChannelList& channels);
void Square(Trial& trial, const ChannelList& channels);
/// Square root; samples below 0 become 0.
void SquareRoot(Trial& trial, const ChannelList& channels);
/// 1/x where |x| is above 1e-6 (the 32-bit constant); other samples keep their value.
void Invert(Trial& trial, const ChannelList& channels);
void AddConstants(Trial& trial, const ChannelList& channels, const PerChannel<float>& constants);
/// x(i) becomes x(i) - level - slope * (i-1). A level of 0 takes nothing away, not even a sign of zero.
void SubtractLines(Trial& trial, const ChannelList& channels, const PerChannel<double>& levels,
                   const PerChannel<float>& slopes);
void MultiplyBy(Trial& trial, const ChannelList& channels, const PerChannel<float>& factors);
void DivideBy(Trial& trial, const ChannelList& channels, const PerChannel<float>& divisors);
/// General real power of each sample. A fractional power of a negative sample is an ArithmeticFault.
void RaiseToPower(Trial& trial, const ChannelList& channels, const PerChannel<float>& powers);

/// Running sum, rounded to 32 bits at every sample; sample 1 stays.
void Accumulate(Trial& trial, const ChannelList& channels);
/// Riemann sum over time with a 64-bit total: sample i becomes the sum of x(1..i) * timeStep.
void IntegrateOverTime(Trial& trial, const ChannelList& channels, double timeStep);
/// x(1) becomes |x(1)| timeStep, x(i) becomes |x(i)| timeStep + x(i-1), rounded to 32 bits at each step.
void RectifyAndIntegrate(Trial& trial, const ChannelList& channels, double timeStep);
/// First derivative: central differences over two intervals, one-sided at both ends. Needs at least
/// three samples; throws std::invalid_argument with fewer. timeStep in seconds, above 0.
void Differentiate(Trial& trial, const ChannelList& channels, double timeStep);

/// Length of the path whose coordinates are one, two or three channels, from sample first to last.
/// 0 when last does not lie above first.
double PathLength(const Trial& trial, const ChannelList& coordinates, std::int32_t first, std::int32_t last);

/// Root mean square of x - y over all samples; NData at least 1.
double RmsOfResiduals(const Trial& trial, int x, int y);

}  // namespace velmora
