#pragma once

#include <cstdint>
#include <functional>

#include "core/trial/trial.hpp"

namespace velmora {

/// Re-samples every channel to `intervals` intervals (intervals+1 samples) over the same duration by
/// Whittaker-Shannon reconstruction (Shannon 1949, "Communication in the presence of noise"): each new
/// sample is the sum of all old ones, each weighted by a sinc of its distance. The work grows with the
/// product of old and new samples. Rate, NData, Duration and row 0 follow.
/// `goOn`, called now and then with the new samples done so far, may return false: the trial then stays
/// as it was. Returns whether it was re-sampled. NData at least 2, Rate above 0, intervals at least 1.
/// Throws std::bad_alloc before anything has changed.
bool ShannonResample(Trial& trial, std::int64_t intervals, const std::function<bool(std::int64_t)>& goOn);

}  // namespace velmora
