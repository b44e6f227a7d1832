#include "core/trial/transpose.hpp"

#include <emmintrin.h>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

// 16 samples of any number of channels are a whole number of cache lines in contiguous frames.
constexpr std::int64_t kBlockSamples = 16;
constexpr int kTile = 4;
constexpr int kMostWidth = 65;

// A 4 x 4 tile from `from`, lines `fromStride` apart, to `to`, lines `toStride` apart.
void TransposeTile(const float* from, std::int64_t fromStride, float* to, std::int64_t toStride) {
  __m128 a = _mm_loadu_ps(from);
  __m128 b = _mm_loadu_ps(from + fromStride);
  __m128 c = _mm_loadu_ps(from + 2 * fromStride);
  __m128 d = _mm_loadu_ps(from + 3 * fromStride);
  _MM_TRANSPOSE4_PS(a, b, c, d);
  _mm_storeu_ps(to, a);
  _mm_storeu_ps(to + toStride, b);
  _mm_storeu_ps(to + 2 * toStride, c);
  _mm_storeu_ps(to + 3 * toStride, d);
}

// Lines of `from` become columns of `to`: to[j * toStride + i] = from[i * fromStride + j].
void Transpose(const float* from, std::int64_t fromStride, std::int64_t lines, std::int64_t columns,
               float* to, std::int64_t toStride) {
  std::int64_t i = 0;
  for (; i + kTile <= lines; i += kTile) {
    std::int64_t j = 0;
    for (; j + kTile <= columns; j += kTile) {
      TransposeTile(from + i * fromStride + j, fromStride, to + j * toStride + i, toStride);
    }
    for (; j < columns; ++j) {
      for (std::int64_t k = i; k < i + kTile; ++k) {
        to[j * toStride + k] = from[k * fromStride + j];
      }
    }
  }
  for (; i < lines; ++i) {
    for (std::int64_t j = 0; j < columns; ++j) {
      to[j * toStride + i] = from[i * fromStride + j];
    }
  }
}

}  // namespace

void StreamOut(const float* from, std::int64_t count, float* to) {
  for (std::int64_t k = 0; k < count; k += kTile) {
    _mm_stream_ps(to + k, _mm_load_ps(from + k));
  }
  _mm_sfence();
}

void RowsToFrames(const float* rows, std::int64_t rowStride, int width, std::int64_t samples, float* frames,
                  std::int64_t frameStride) {
  std::int64_t done = 0;
  const bool aligned = reinterpret_cast<std::uintptr_t>(frames) % sizeof(__m128) == 0;
  if (frameStride == width && width <= kMostWidth && aligned) {
    alignas(64) std::array<float, kMostWidth * kBlockSamples> block;  // NOLINT: filled before it is read
    for (; done + kBlockSamples <= samples; done += kBlockSamples) {
      Transpose(rows + done, rowStride, width, kBlockSamples, block.data(), width);
      StreamOut(block.data(), width * kBlockSamples, frames + done * width);
    }
  }
  RowsToFramesInCaches(rows + done, rowStride, width, samples - done, frames + done * frameStride,
                       frameStride);
}

void RowsToFramesInCaches(const float* rows, std::int64_t rowStride, int width, std::int64_t samples,
                          float* frames, std::int64_t frameStride) {
  for (std::int64_t done = 0; done < samples; done += kBlockSamples) {
    Transpose(rows + done, rowStride, width, std::min(kBlockSamples, samples - done),
              frames + done * frameStride, frameStride);
  }
}

void FramesToRows(const float* frames, std::int64_t frameStride, int width, std::int64_t samples, float* rows,
                  std::int64_t rowStride) {
  for (std::int64_t done = 0; done < samples; done += kBlockSamples) {
    Transpose(frames + done * frameStride, frameStride, std::min(kBlockSamples, samples - done), width,
              rows + done, rowStride);
  }
}

}  // namespace velmora
