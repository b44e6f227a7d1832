#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/command_memory.hpp"

namespace velmora {

/// Median, mean, 95th and 99th percentile frequency.
struct FourFrequencies {
  double median = 0.0;
  double mean = 0.0;
  double p95 = 0.0;
  double p99 = 0.0;
};

void KeepFrequencies(SpectrumMemory& spectrum, const FourFrequencies& frequencies);
FourFrequencies KeptFrequencies(const SpectrumMemory& spectrum);

/// How the sum of the normalised powers is kept on the way to the mean frequency.
enum class PowerSum { Double, Single };

/// Makes the power lists 0 to `last` anew, all zero.
void ClearPowers(SpectrumMemory& spectrum, std::int32_t last);

/// The powers of the lines 1 to `last`, which stand in PowerNorm, become all five lists. Returns false, with
/// all lists zero, when there is no spectrum: all powers are 0, or one is not finite. Percentages are of the
/// largest power and of the total; the mean is of the frequencies k step, weighted by the powers.
///
/// The percentiles are those of laboratories that have published them. The median and the 95th are where the
/// cumulated power crosses 50 and 95 %, and the fraction of a line by which it does so is added to the
/// frequency as it stands, in lines; the 99th is carried on from the bracket of the 95th.
bool SummarisePowers(SpectrumMemory& spectrum, std::int32_t last, double step, PowerSum sum,
                     FourFrequencies& frequencies);

/// The four with the fraction in hertz, and the 99th from a bracket of its own; zeros without a spectrum.
FourFrequencies ExactFrequencies(const SpectrumMemory& spectrum, double step);

/// Rounded to single precision.
FourFrequencies InSingles(const FourFrequencies& frequencies);

/// The report of one channel. `label` as it is to stand, its blanks in front included.
std::string SpectrumReport(int channel, std::string_view label, const FourFrequencies& frequencies);

}  // namespace velmora
