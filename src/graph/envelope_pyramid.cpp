#include "graph/envelope_pyramid.hpp"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "core/simd.hpp"

namespace velmora {
namespace {

// 32 samples in a block of the lowest level keep the whole below an eighth of the matrix (2/32 and a
// sixteenth of that, and so on); the drawing gains nothing from smaller blocks.
constexpr std::int64_t kLowestBlock = 32;
constexpr std::int64_t kFactor = 16;

#define SIMD_KERNEL "graph/envelope_kernel.inc"
#include "core/simd_widths.inc"

using FoldFrames = void (*)(const float* mins, const float* maxs, long stride, long count, float* min,
                            float* max);

void FoldPlainly(const float* mins, const float* maxs, long stride, long count, float* min, float* max) {
  for (long k = 0; k < count; ++k) {
    for (long c = 0; c < stride; ++c) {
      min[c] = std::min(min[c], mins[k * stride + c]);
      max[c] = std::max(max[c], maxs[k * stride + c]);
    }
  }
}

// The widest fold whose vectors a frame fills.
FoldFrames FoldFor(SimdLevel level, std::ptrdiff_t stride) {
  if (level == SimdLevel::Avx512 && stride >= avx512::kFloats) {
    return avx512::Fold;
  }
  if (level != SimdLevel::Sse2 && stride >= avx2::kFloats) {
    return avx2::Fold;
  }
  return stride >= sse2::kFloats ? sse2::Fold : FoldPlainly;
}

std::int64_t BlocksPer(std::size_t height) {
  return height == 1 ? kLowestBlock : kFactor;
}

/// Where column k of a stretch begins, counted from its first sample. Both counts fit 32 bits.
std::int64_t ColumnStart(std::int64_t samples, int column, int columns) {
  return samples * column / columns;
}

}  // namespace

ColumnExtremes::ColumnExtremes(int columns, int rows)
    : columns_(columns),
      rows_(rows),
      mins_(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows), Extremes{}.min),
      maxs_(mins_.size(), Extremes{}.max) {}

void EnvelopePyramid::Clear() {
  matrix_ = nullptr;
  levels_.clear();
}

EnvelopePyramid::Frames EnvelopePyramid::FramesOf(std::size_t height) const {
  if (height == 0) {
    const std::int64_t samples = matrix_->Samples();
    const float* first = samples > 0 ? matrix_->Frame(1) : nullptr;
    return {first, first, samples};
  }
  const Level& level = levels_[height - 1];
  const auto* mins = static_cast<const float*>(level.block.Get());
  return {mins, mins + level.frames * matrix_->Stride(), level.frames};
}

void EnvelopePyramid::Build(const SampleMatrix& matrix, SimdLevel level) {
  Clear();
  matrix_ = &matrix;
  simd_ = level;
  const std::ptrdiff_t stride = matrix.Stride();
  const FoldFrames fold = FoldFor(level, stride);
  for (std::size_t height = 1; FramesOf(height - 1).count >= BlocksPer(height); ++height) {
    const Frames below = FramesOf(height - 1);
    const std::int64_t perBlock = BlocksPer(height);
    const std::int64_t frames = below.count / perBlock;
    HugeBlock block(static_cast<std::size_t>(2 * frames * stride) * sizeof(float));
    auto* mins = static_cast<float*>(block.Get());
    float* maxs = mins + frames * stride;
    std::fill_n(mins, frames * stride, Extremes{}.min);
    std::fill_n(maxs, frames * stride, Extremes{}.max);
    for (std::int64_t k = 0; k < frames; ++k) {
      const std::ptrdiff_t from = k * perBlock * stride;
      fold(below.mins + from, below.maxs + from, stride, perBlock, mins + k * stride, maxs + k * stride);
    }
    levels_.push_back({std::move(block), frames});
  }
}

// Samples begin to end - 1, counted from 0, as few blocks as make them up: single ones at both ends of
// each level, and the level above for what lies between.
template <typename Fold>
void EnvelopePyramid::FoldRange(std::int64_t begin, std::int64_t end, const Fold& fold) const {
  for (std::size_t height = 0; begin < end; ++height) {
    const Frames frames = FramesOf(height);
    const bool top = height == levels_.size();
    const std::int64_t perBlock = top ? 1 : BlocksPer(height + 1);
    const std::int64_t above = top ? 0 : FramesOf(height + 1).count;
    const std::int64_t upBegin = (begin + perBlock - 1) / perBlock;
    const std::int64_t upEnd = std::min(end / perBlock, above);
    if (upBegin >= upEnd) {
      fold(frames, begin, end);
      return;
    }
    fold(frames, begin, upBegin * perBlock);
    fold(frames, upEnd * perBlock, end);
    begin = upBegin;
    end = upEnd;
  }
}

std::vector<Extremes> EnvelopePyramid::Columns(int channel, std::int64_t firstSample, std::int64_t lastSample,
                                               int nColumns) const {
  std::vector<Extremes> columns(static_cast<std::size_t>(std::max(nColumns, 0)));
  if (matrix_ == nullptr) {
    return columns;
  }
  if (channel < 0 || channel > matrix_->Channels()) {
    throw std::out_of_range("there is no channel " + std::to_string(channel));
  }
  const std::ptrdiff_t stride = matrix_->Stride();
  const std::int64_t samples = lastSample - firstSample + 1;
  for (int k = 0; samples > 0 && k < nColumns; ++k) {
    Extremes& column = columns[static_cast<std::size_t>(k)];
    const std::int64_t begin = firstSample - 1 + ColumnStart(samples, k, nColumns);
    const std::int64_t end = firstSample - 1 + ColumnStart(samples, k + 1, nColumns);
    FoldRange(std::max<std::int64_t>(begin, 0), std::min(end, matrix_->Samples()),
              [&](const Frames& frames, std::int64_t from, std::int64_t to) {
                for (std::int64_t i = from; i < to; ++i) {
                  column.min = std::min(column.min, frames.mins[i * stride + channel]);
                  column.max = std::max(column.max, frames.maxs[i * stride + channel]);
                }
              });
  }
  return columns;
}

ColumnExtremes EnvelopePyramid::Columns(std::int64_t firstSample, std::int64_t lastSample,
                                        int nColumns) const {
  const std::int64_t samples = std::max<std::int64_t>(lastSample - firstSample + 1, 0);
  std::vector<SampleSpan> spans;
  spans.reserve(static_cast<std::size_t>(std::max(nColumns, 0)));
  for (int k = 0; k < nColumns; ++k) {
    spans.push_back({firstSample + ColumnStart(samples, k, nColumns),
                     firstSample + ColumnStart(samples, k + 1, nColumns)});
  }
  return Columns(spans);
}

ColumnExtremes EnvelopePyramid::Columns(std::span<const SampleSpan> spans) const {
  const std::ptrdiff_t stride = matrix_ == nullptr ? 1 : matrix_->Stride();
  ColumnExtremes columns(static_cast<int>(spans.size()), static_cast<int>(stride));
  if (matrix_ == nullptr) {
    return columns;
  }
  const FoldFrames fold = FoldFor(simd_, stride);
  float* min = columns.mins_.data();
  float* max = columns.maxs_.data();
  for (const SampleSpan& span : spans) {
    FoldRange(std::max<std::int64_t>(span.begin - 1, 0), std::min(span.end - 1, matrix_->Samples()),
              [&](const Frames& frames, std::int64_t from, std::int64_t to) {
                fold(frames.mins + from * stride, frames.maxs + from * stride, stride, to - from, min, max);
              });
    min += stride;
    max += stride;
  }
  return columns;
}

Extremes EnvelopePyramid::Whole(int channel) const {
  return Columns(channel, 1, matrix_ == nullptr ? 0 : matrix_->Samples(), 1).front();
}

std::size_t EnvelopePyramid::Bytes() const {
  std::size_t bytes = 0;
  for (const Level& level : levels_) {
    bytes += static_cast<std::size_t>(2 * level.frames * matrix_->Stride()) * sizeof(float);
  }
  return bytes;
}

}  // namespace velmora
