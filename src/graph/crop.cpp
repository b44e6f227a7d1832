#include "graph/crop.hpp"

#include <cstring>
#include <stdexcept>
#include <vector>

#include "core/trial/event_lines.hpp"

namespace velmora {
namespace {

void CheckRange(const Trial& trial, std::int32_t lo, std::int32_t hi) {
  if (lo < 1 || hi < lo || hi > trial.NData) {
    throw std::out_of_range("samples " + std::to_string(lo) + " to " + std::to_string(hi) +
                            " are no stretch of " + std::to_string(trial.NData));
  }
}

// Moves samples from..NData down to `to`, then cuts the trial to `samples`.
void MoveDown(Trial& trial, std::int32_t from, std::int32_t to, std::int32_t samples, CropTimes times) {
  std::vector<float> kept;  // the times that stay where they are
  if (times == CropTimes::Reset) {
    for (std::int32_t i = 1; i <= samples; ++i) {
      kept.push_back(trial.matrix.Frame(i)[0]);
    }
  }
  if (from <= trial.NData && from != to) {
    const std::int64_t floats = (std::int64_t{samples} - to + 1) * trial.matrix.Stride();
    std::memmove(trial.matrix.Frame(to), trial.matrix.Frame(from),
                 static_cast<std::size_t>(floats) * sizeof(float));
  }
  trial.ResizeData(samples);
  if (times == CropTimes::Reset) {
    const double start = kept.front();
    RetimeEventLines(trial,
                     [start](double time) { return start + time; });  // row 0 tells yet whence they came
  }
  for (std::size_t i = 0; i < kept.size(); ++i) {
    trial.matrix.Frame(static_cast<std::int64_t>(i) + 1)[0] = kept[i];
  }
  trial.Duration = trial.Rate > 0 ? (trial.NData - 1) / trial.Rate : 0.0;
}

}  // namespace

bool CropSamples(Trial& trial, std::int32_t lo, std::int32_t hi, CropTimes times) {
  CheckRange(trial, lo, hi);
  const std::int32_t samples = hi - lo + 1;
  if (samples == trial.NData) {
    return false;
  }
  MoveDown(trial, lo, 1, samples, times);
  return true;
}

void CutSamples(Trial& trial, std::int32_t lo, std::int32_t hi, CropTimes times) {
  CheckRange(trial, lo, hi);
  const std::int32_t samples = trial.NData - (hi - lo + 1);
  if (samples < 1) {
    throw std::out_of_range("a cut must leave a sample");
  }
  MoveDown(trial, hi + 1, lo, samples, times);
}

}  // namespace velmora
