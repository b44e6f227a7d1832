#include "formats/recording/scale_samples.hpp"

#include <bit>
#include <cstring>

namespace velmora {
namespace {

template <typename Word>
[[gnu::always_inline]] inline Word LoadWord(const char* words, std::int64_t index) {
  Word word;
  std::memcpy(&word, words + index * static_cast<std::int64_t>(sizeof(Word)), sizeof word);
  return word;
}

template <typename Word>
[[gnu::always_inline]] inline void ScalePlainly(const FramesToScale<Word>& job) {
  const int channels = job.channels;
  const double general = job.general;
  const double* const offset = job.offset;
  const double* const gain = job.gain;
  for (std::int64_t k = 0; k < job.frames; ++k) {
    const char* const words = job.words + k * job.wordStride;
    float* const out = job.out + k * job.outStride;
    for (int c = 0; c < channels; ++c) {
      out[c] =
          static_cast<float>((static_cast<double>(LoadWord<Word>(words, c)) + offset[c]) * gain[c] * general);
    }
  }
}

template <typename Word>
[[gnu::target("avx2")]] void ScaleAvx2(const FramesToScale<Word>& job) {
  ScalePlainly(job);
}

template <typename Word>
[[gnu::target("avx512f,avx512bw,avx512dq,avx512vl")]] void ScaleAvx512(const FramesToScale<Word>& job) {
  ScalePlainly(job);
}

template <typename Word>
void Scale(const FramesToScale<Word>& job, SimdLevel level) {
  if (level >= SimdLevel::Avx512) {
    ScaleAvx512(job);
  } else if (level >= SimdLevel::Avx2) {
    ScaleAvx2(job);
  } else {
    ScalePlainly(job);
  }
}

[[gnu::always_inline]] inline std::int64_t RunPlainly(const RunToScale& job) {
  const char* const counts = job.counts;
  float* const out = job.out;
  std::int32_t atLimit = 0;
  for (std::int64_t i = 0; i < job.samples; ++i) {
    const std::int32_t count = LoadWord<std::int16_t>(counts, i);
    atLimit +=
        static_cast<std::int32_t>(count <= job.lowest) | static_cast<std::int32_t>(count >= job.highest);
    out[i] = static_cast<float>((count + job.offset) * job.gain);
  }
  return atLimit;
}

[[gnu::target("avx2")]] std::int64_t RunAvx2(const RunToScale& job) {
  return RunPlainly(job);
}

[[gnu::target("avx512f,avx512bw,avx512dq,avx512vl")]] std::int64_t RunAvx512(const RunToScale& job) {
  return RunPlainly(job);
}

[[gnu::always_inline]] inline bool AreFinitePlainly(const float* values, std::int64_t count) {
  constexpr std::int32_t exponent = 0x7F800000;
  std::int32_t found = 0;
  for (std::int64_t i = 0; i < count; ++i) {
    const auto bits = std::bit_cast<std::int32_t>(values[i]);
    found |= static_cast<std::int32_t>((bits & exponent) == exponent);
  }
  return found == 0;
}

[[gnu::target("avx2")]] bool AreFiniteAvx2(const float* values, std::int64_t count) {
  return AreFinitePlainly(values, count);
}

[[gnu::target("avx512f,avx512bw,avx512dq,avx512vl")]] bool AreFiniteAvx512(const float* values,
                                                                           std::int64_t count) {
  return AreFinitePlainly(values, count);
}

}  // namespace

bool AreFinite(const float* values, std::int64_t count, SimdLevel level) {
  if (level >= SimdLevel::Avx512) {
    return AreFiniteAvx512(values, count);
  }
  return level >= SimdLevel::Avx2 ? AreFiniteAvx2(values, count) : AreFinitePlainly(values, count);
}

void ScaleFrames(const FramesToScale<std::int16_t>& job, SimdLevel level) {
  Scale(job, level);
}
void ScaleFrames(const FramesToScale<std::uint16_t>& job, SimdLevel level) {
  Scale(job, level);
}
void ScaleFrames(const FramesToScale<float>& job, SimdLevel level) {
  Scale(job, level);
}
void ScaleFrames(const FramesToScale<double>& job, SimdLevel level) {
  Scale(job, level);
}

std::int64_t ScaleRun(const RunToScale& job, SimdLevel level) {
  if (level >= SimdLevel::Avx512) {
    return RunAvx512(job);
  }
  return level >= SimdLevel::Avx2 ? RunAvx2(job) : RunPlainly(job);
}

}  // namespace velmora
