#pragma once

#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "core/simd.hpp"
#include "core/trial/huge_block.hpp"
#include "core/trial/sample_matrix.hpp"

namespace velmora {

/// The smallest and the largest of some samples. NaN does not count.
struct Extremes {
  float min = std::numeric_limits<float>::infinity();
  float max = -std::numeric_limits<float>::infinity();

  /// No sample at all, or none that is a number.
  [[nodiscard]] bool Empty() const { return min > max; }
  friend bool operator==(const Extremes&, const Extremes&) = default;
};

/// Samples `begin` to `end` - 1, counted from 1.
struct SampleSpan {
  std::int64_t begin = 1;
  std::int64_t end = 1;
  friend bool operator==(const SampleSpan&, const SampleSpan&) = default;
};

/// The extremes of every channel in some columns. Row 0 of the matrix is channel 0.
class ColumnExtremes {
 public:
  ColumnExtremes(int columns, int rows);

  [[nodiscard]] int Columns() const { return columns_; }
  [[nodiscard]] Extremes At(int column, int channel) const {
    const auto k = static_cast<std::size_t>(column) * static_cast<std::size_t>(rows_) +
                   static_cast<std::size_t>(channel);
    return {mins_[k], maxs_[k]};
  }

 private:
  friend class EnvelopePyramid;
  int columns_;
  int rows_;
  std::vector<float> mins_;
  std::vector<float> maxs_;
};

/// Minima and maxima of blocks of 32 samples, of 16 such blocks, of 16 of those, and so on: a drawing
/// of any stretch of any length in as many columns as there are pixels takes the time of a few blocks
/// a column, and no sample's peak is ever lost. Takes less than an eighth of the matrix' memory.
///
/// Samples count from 1. Columns of a stretch of n samples: column k of N holds its samples
/// floor(k n / N) to floor((k + 1) n / N) - 1, counted from the first; with fewer samples than columns
/// some columns are empty.
class EnvelopePyramid {
 public:
  /// One pass over all channels. The matrix must stay, unchanged, as long as the pyramid is asked.
  /// Throws std::bad_alloc.
  void Build(const SampleMatrix& matrix, SimdLevel level = MachineSimdLevel());
  /// No matrix; every column is empty.
  void Clear();

  /// What lies outside the matrix is left out: the columns of samples that are not there are empty.
  /// Throws std::out_of_range when there is no such channel.
  [[nodiscard]] std::vector<Extremes> Columns(int channel, std::int64_t firstSample, std::int64_t lastSample,
                                              int nColumns) const;
  /// The same of all channels at once, which costs little more than one.
  [[nodiscard]] ColumnExtremes Columns(std::int64_t firstSample, std::int64_t lastSample, int nColumns) const;
  /// Column k of all channels holds spans[k], whatever the others hold.
  [[nodiscard]] ColumnExtremes Columns(std::span<const SampleSpan> spans) const;
  /// All samples of one channel.
  [[nodiscard]] Extremes Whole(int channel) const;

  [[nodiscard]] std::size_t Bytes() const;

 private:
  /// Frames of minima, then as many frames of maxima; a frame is one block of every channel.
  struct Level {
    HugeBlock block;
    std::int64_t frames = 0;
  };
  /// One level as a fold sees it: the samples themselves are both minima and maxima.
  struct Frames {
    const float* mins = nullptr;
    const float* maxs = nullptr;
    std::int64_t count = 0;
  };

  [[nodiscard]] Frames FramesOf(std::size_t height) const;
  template <typename Fold>
  void FoldRange(std::int64_t begin, std::int64_t end, const Fold& fold) const;

  const SampleMatrix* matrix_ = nullptr;
  std::vector<Level> levels_;
  SimdLevel simd_ = SimdLevel::Sse2;
};

}  // namespace velmora
