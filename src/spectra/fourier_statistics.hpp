#pragma once

#include <cstdint>

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "spectra/harmonic_regression.hpp"

namespace velmora {

/// Amplitude and integral statistics of one channel.
struct AmplitudeSums {
  double sum = 0.0;
  double absolute = 0.0;
  double squares = 0.0;
};

/// Over the epoch, each sample taken as the number that its shortest decimal text reads as (0.1, not
/// 0.10000000149011612).
AmplitudeSums SumAmplitudes(const Trial& trial, const Epoch& epoch);

/// "Fourier analysis &Statistics": asks for the range and the number of harmonics, takes the statistics of
/// every channel and shows them.
void ShowFourierStatistics(Workbench& workbench);
/// The same over a range that is known.
void ShowFourierStatistics(Workbench& workbench, SampleRange range);

}  // namespace velmora
