#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "core/trial/huge_block.hpp"

namespace velmora {

/// A strided window on one channel, for hot loops: the bounds are checked once, when
/// SampleMatrix::Channel makes it. Counts from 0, unlike Data(i, c), which counts samples from 1.
class ChannelView {
 public:
  ChannelView(float* first, std::ptrdiff_t stride, std::int64_t size)
      : first_(first), stride_(stride), size_(size) {}

  float& operator[](std::int64_t i) const {
    assert(i >= 0 && i < size_);
    return first_[i * stride_];
  }
  [[nodiscard]] std::int64_t size() const { return size_; }
  [[nodiscard]] std::ptrdiff_t stride() const { return stride_; }
  [[nodiscard]] float* data() const { return first_; }

 private:
  float* first_;
  std::ptrdiff_t stride_;
  std::int64_t size_;
};

/// The samples of a trial: 32-bit floats over sample 1..Samples() and channel 0..Channels().
/// All channels of one sample lie side by side without padding, so a frame (one sample of every
/// channel) is Channels() + 1 floats and the whole matrix is one contiguous run of frames.
class SampleMatrix {
 public:
  enum class Fill {
    Zero,
    /// The caller writes every element; a block that is used again is left as it stands.
    None,
  };

  /// Discards the contents and takes the new shape. The memory is used again where it fits.
  /// Throws std::bad_alloc when there is not enough memory; the matrix is then empty.
  void Allocate(int channels, std::int64_t samples, Fill fill = Fill::Zero);

  /// Shape 0 x 0. The memory is kept for the next trial.
  void Discard();

  /// Shape change that keeps what both shapes share; new elements are 0.
  void Resize(int channels, std::int64_t samples);

  /// Bounds-checked element, sample i from 1, channel c from 0. Throws std::out_of_range.
  float& At(std::int64_t i, int c);
  [[nodiscard]] float At(std::int64_t i, int c) const;

  /// Throws std::out_of_range when there is no channel c (0..Channels()).
  [[nodiscard]] ChannelView Channel(int c);

  [[nodiscard]] int Channels() const { return channels_; }
  [[nodiscard]] std::int64_t Samples() const { return samples_; }
  /// Floats from one sample of a channel to its next: Channels() + 1.
  [[nodiscard]] std::ptrdiff_t Stride() const { return channels_ + 1; }

  /// First float of the frame of sample i (from 1); unchecked beyond an assertion.
  [[nodiscard]] float* Frame(std::int64_t i) {
    assert(i >= 1 && i <= samples_);
    return data_() + (i - 1) * Stride();
  }
  [[nodiscard]] const float* Frame(std::int64_t i) const {
    assert(i >= 1 && i <= samples_);
    return data_() + (i - 1) * Stride();
  }

 private:
  [[nodiscard]] float* data_() const { return static_cast<float*>(block_.Get()); }
  void Check(std::int64_t i, int c) const;
  void CompactFrames(int channels, std::int64_t samples);

  HugeBlock block_;
  int channels_ = -1;  // -1: no matrix, not even a time column
  std::int64_t samples_ = 0;
};

}  // namespace velmora
