#pragma once

#include <cstdint>

namespace velmora {

/// Between files, where channel lies behind channel, and memory, where sample lies behind sample.
/// `rows` are `width` channels of `samples` floats each, `rowStride` floats apart; `frames` are
/// `samples` frames, `frameStride` floats apart, of which the first `width` floats are meant.

/// For a matrix that is filled once and too large to be found in a cache later: contiguous frames
/// (frameStride == width), aligned to 16 bytes, are written around the caches.
void RowsToFrames(const float* rows, std::int64_t rowStride, int width, std::int64_t samples, float* frames,
                  std::int64_t frameStride);

/// The same for a matrix that is read again soon.
void RowsToFramesInCaches(const float* rows, std::int64_t rowStride, int width, std::int64_t samples,
                          float* frames, std::int64_t frameStride);

void FramesToRows(const float* frames, std::int64_t frameStride, int width, std::int64_t samples, float* rows,
                  std::int64_t rowStride);

/// Copies around the caches, for what is not read again soon. Both are aligned to 16 bytes and `count` is a
/// multiple of 4.
void StreamOut(const float* from, std::int64_t count, float* to);

}  // namespace velmora
