#include "core/trial/sample_matrix.hpp"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

namespace velmora {
namespace {

// A block this many times larger than a new trial needs is given back rather than used again.
constexpr std::size_t kMostWaste = 4;

// More zeros than this come cheaper from the system, which gives them when they are first touched.
constexpr std::size_t kMostCleared = std::size_t{16} << 20;

std::size_t BytesOf(int channels, std::int64_t samples) {
  if (channels < 0 || samples < 0) {
    throw std::invalid_argument("negative matrix shape");
  }
  return static_cast<std::size_t>(channels + 1) * static_cast<std::size_t>(samples) * sizeof(float);
}

}  // namespace

void SampleMatrix::Allocate(int channels, std::int64_t samples, Fill fill) {
  Discard();
  const std::size_t bytes = BytesOf(channels, samples);
  const bool small = bytes <= kMostCleared;
  const bool fits =
      bytes <= block_.Bytes() && block_.Bytes() / kMostWaste <= bytes && (fill == Fill::None || small);
  if (!fits) {
    block_ = HugeBlock();  // first, so that old and new never stand side by side
    block_ = HugeBlock(bytes);
  } else if (fill == Fill::Zero) {
    std::memset(block_.Get(), 0, bytes);
  }
  channels_ = channels;
  samples_ = samples;
}

void SampleMatrix::Discard() {
  channels_ = -1;
  samples_ = 0;
}

void SampleMatrix::Resize(int channels, std::int64_t samples) {
  if (channels_ < 0) {
    Allocate(channels, samples);
    return;
  }
  if (channels <= channels_ && samples <= samples_) {
    CompactFrames(channels, samples);
    return;
  }
  HugeBlock wider(BytesOf(channels, samples));
  const std::ptrdiff_t stride = channels + 1;
  const std::size_t shared = static_cast<std::size_t>(std::min(channels, channels_)) + 1;
  auto* to = static_cast<float*>(wider.Get());
  for (std::int64_t i = 0; i < std::min(samples, samples_); ++i) {
    std::memcpy(to + i * stride, data_() + i * Stride(), shared * sizeof(float));
  }
  block_ = std::move(wider);
  channels_ = channels;
  samples_ = samples;
}

// Smaller in both directions: frames only move towards the front, so no second block is needed.
void SampleMatrix::CompactFrames(int channels, std::int64_t samples) {
  const std::ptrdiff_t stride = channels + 1;
  if (stride != Stride()) {
    for (std::int64_t i = 1; i < samples; ++i) {
      std::memmove(data_() + i * stride, data_() + i * Stride(),
                   static_cast<std::size_t>(stride) * sizeof(float));
    }
  }
  channels_ = channels;
  samples_ = samples;
}

void SampleMatrix::Check(std::int64_t i, int c) const {
  if (i < 1 || i > samples_ || c < 0 || c > channels_) {
    throw std::out_of_range("Data(" + std::to_string(i) + ", " + std::to_string(c) + ") lies outside " +
                            std::to_string(samples_) + " samples, channels 0 to " +
                            std::to_string(channels_));
  }
}

float& SampleMatrix::At(std::int64_t i, int c) {
  Check(i, c);
  return data_()[(i - 1) * Stride() + c];
}

float SampleMatrix::At(std::int64_t i, int c) const {
  Check(i, c);
  return data_()[(i - 1) * Stride() + c];
}

ChannelView SampleMatrix::Channel(int c) {
  if (c < 0 || c > channels_) {
    throw std::out_of_range("there is no channel " + std::to_string(c) + " of " +
                            std::to_string(std::max(channels_, 0)));
  }
  return {data_() + c, Stride(), samples_};
}

}  // namespace velmora
