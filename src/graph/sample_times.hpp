#pragma once

#include <cstdint>

#include "core/trial/trial.hpp"

namespace velmora {

/// The abscissa of a trial as a drawing asks for it: where a sample lies, and which samples lie in a
/// stretch. Samples count from 1.
class SampleTimes {
 public:
  /// One pass over row 0. The trial must stay, unchanged, as long as this is asked.
  void Take(const Trial& trial);

  [[nodiscard]] std::int64_t Samples() const { return samples_; }
  /// Every sample is at the time of the one before it or later, and all times are finite.
  [[nodiscard]] bool Sorted() const { return sorted_; }
  /// Where row 0 counts (i-1)/Rate, that number itself: its 32 bits hold it only nearly.
  [[nodiscard]] double At(std::int64_t sample) const {
    return uniform_ ? static_cast<double>(sample - 1) / rate_ : static_cast<double>(*matrix_->Frame(sample));
  }
  /// The first sample at `time` or later, Samples() + 1 when there is none. Only of sorted times.
  [[nodiscard]] std::int64_t FirstFrom(double time) const;

 private:
  [[nodiscard]] std::int64_t Guess(double time) const;

  const SampleMatrix* matrix_ = nullptr;
  std::int64_t samples_ = 0;
  double rate_ = 0.0;
  bool uniform_ = false;
  bool sorted_ = false;
};

}  // namespace velmora
