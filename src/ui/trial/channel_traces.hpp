#pragma once

#include <cstdint>
#include <vector>

#include "core/trial/trial.hpp"
#include "graph/envelope_pyramid.hpp"

namespace velmora::ui {

/// What the window shows of every channel: its extremes, its mean and its small trace. Taken anew after
/// a command; between that, a trial of another shape than it was taken from shows nothing.
class ChannelTraces {
 public:
  /// One pass over all samples.
  void Take(const Trial& trial);
  void Clear();

  [[nodiscard]] bool Has(int channel) const;
  /// Extremes of `columns` stretches of the whole channel. Empty while there is nothing to show.
  [[nodiscard]] std::vector<Extremes> Columns(int channel, int columns) const;
  [[nodiscard]] Extremes Whole(int channel) const;
  /// Of the samples that are numbers.
  [[nodiscard]] double Mean(int channel) const { return means_[static_cast<std::size_t>(channel)]; }

 private:
  void TakeMeans(const SampleMatrix& matrix);

  const SampleMatrix* matrix_ = nullptr;
  int channels_ = 0;
  std::int64_t samples_ = 0;
  EnvelopePyramid envelope_;
  std::vector<double> means_;
};

}  // namespace velmora::ui
