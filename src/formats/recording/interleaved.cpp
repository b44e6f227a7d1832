#include "formats/recording/interleaved.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/trial/transpose.hpp"
#include "formats/recording/scale_samples.hpp"

namespace velmora {
namespace {

// Stays in the second-level cache between reading and converting.
constexpr std::int64_t kInterleavedPiece = std::int64_t{256} << 10;
constexpr std::int64_t kPiecesInATurn = 16;

/// The channels wanted, with what converts them, side by side for the loops over a frame.
struct Plan {
  int count = 0;
  bool dense = true;  // neighbours in the file: index[c] is index[0] + c
  bool asIs = true;   // nothing to convert
  double general = 1.0;
  std::array<std::int64_t, kMaxChannels> index{};
  std::array<double, kMaxChannels> offset{};
  std::array<double, kMaxChannels> gain{};
};

Plan PlanOf(std::span<const int> channels, std::span<const Scaling> scalings, double general) {
  Plan plan{.general = general};
  plan.asIs = general == 1;
  for (const int channel : channels) {
    const auto c = static_cast<std::size_t>(plan.count++);
    const Scaling scaling = scalings.empty() ? Scaling{} : scalings[static_cast<std::size_t>(channel)];
    plan.index.at(c) = channel;
    plan.offset.at(c) = scaling.offset;
    plan.gain.at(c) = scaling.gain;
    plan.dense = plan.dense && channel == channels.front() + static_cast<int>(c);
    plan.asIs = plan.asIs && scaling.offset == 0 && scaling.gain == 1;
  }
  return plan;
}

/// Frames that lie one behind the other in the file.
struct Run {
  const char* words = nullptr;
  std::int64_t stride = 0;  // bytes from one to the next
  std::int64_t frames = 0;
};

/// Any word of any frame: `toNumber` makes a double of the word at an address.
template <std::size_t bytes, typename ToNumber>
void ConvertEach(const Run& run, const Plan& plan, float* out, std::int64_t outStride,
                 const ToNumber& toNumber) {
  for (std::int64_t k = 0; k < run.frames; ++k) {
    const char* words = run.words + k * run.stride;
    for (int c = 0; c < plan.count; ++c) {
      const auto i = static_cast<std::size_t>(c);
      const double raw = toNumber(words + plan.index[i] * static_cast<std::int64_t>(bytes));
      out[k * outStride + c] = static_cast<float>((raw + plan.offset[i]) * plan.gain[i] * plan.general);
    }
  }
}

template <typename Word>
Word WordAt(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

template <typename Word>
void ConvertInOrder(const Run& run, const Plan& plan, float* out, std::int64_t outStride, ByteOrder order) {
  if (order == ByteOrder::Big) {
    ConvertEach<sizeof(Word)>(run, plan, out, outStride, [](const char* at) {
      return static_cast<double>(SwappedBytes(WordAt<Word>(at)));
    });
  } else if (plan.dense) {
    ScaleFrames(
        FramesToScale<Word>{.words = run.words + plan.index[0] * static_cast<std::int64_t>(sizeof(Word)),
                            .wordStride = run.stride,
                            .frames = run.frames,
                            .channels = plan.count,
                            .offset = plan.offset.data(),
                            .gain = plan.gain.data(),
                            .general = plan.general,
                            .out = out,
                            .outStride = outStride});
  } else {
    ConvertEach<sizeof(Word)>(run, plan, out, outStride,
                              [](const char* at) { return static_cast<double>(WordAt<Word>(at)); });
  }
}

// A frame is too short for the C library's copy to be worth its call.
[[gnu::always_inline]] inline void CopyFrame(const char* from, int count, float* to) {
  constexpr int kAtOnce = 4;
  constexpr std::size_t kBytes = kAtOnce * sizeof(float);
  if (count < kAtOnce) {
    std::memcpy(to, from, static_cast<std::size_t>(count) * sizeof(float));
    return;
  }
  const int last = count - kAtOnce;  // may overlap the ones before it
  for (int c = 0; c < last; c += kAtOnce) {
    std::memcpy(to + c, from + static_cast<std::size_t>(c) * sizeof(float), kBytes);
  }
  std::memcpy(to + last, from + static_cast<std::size_t>(last) * sizeof(float), kBytes);
}

void ConvertFloats(const Run& run, const Plan& plan, float* out, std::int64_t outStride, ByteOrder order) {
  if (order == ByteOrder::Vax) {
    ConvertEach<sizeof(float)>(run, plan, out, outStride,
                               [](const char* at) { return FromVaxFloat(WordAt<std::uint32_t>(at)); });
  } else if (plan.asIs && plan.dense && order == ByteOrder::Little) {
    const char* from = run.words + plan.index[0] * static_cast<std::int64_t>(sizeof(float));
    for (std::int64_t k = 0; k < run.frames; ++k) {
      CopyFrame(from + k * run.stride, plan.count, out + k * outStride);
    }
  } else {
    ConvertInOrder<float>(run, plan, out, outStride, order);
  }
}

void Convert(const Run& run, const InterleavedLayout& layout, const Plan& plan, float* out,
             std::int64_t outStride) {
  switch (layout.type) {
    case SampleType::Int16:
      ConvertInOrder<std::int16_t>(run, plan, out, outStride, layout.order);
      break;
    case SampleType::UInt16:
      ConvertInOrder<std::uint16_t>(run, plan, out, outStride, layout.order);
      break;
    case SampleType::Float64:
      ConvertInOrder<double>(run, plan, out, outStride, layout.order);
      break;
    case SampleType::Float32:
      ConvertFloats(run, plan, out, outStride, layout.order);
      break;
  }
}

[[noreturn]] void TellNotFinite(const float* frame, std::int64_t sample, const SampleTarget& target) {
  std::size_t c = 0;
  while (std::isfinite(frame[c + 1])) {
    ++c;
  }
  throw FileError("sample " + FormatCount(sample) + " of channel " + std::to_string(target.channels[c] + 1) +
                  (std::isnan(frame[c + 1]) ? " is no number" : " is too large"));
}

/// Whole frames in the making, with their times: they go to the matrix many at a time, around the caches.
class FrameTile {
 public:
  FrameTile(const SampleTarget& target, std::int64_t first)
      : target_(target), width_(target.matrix.Stride()), next_(first) {}

  void Append(Run run, const InterleavedLayout& layout, const Plan& plan) {
    while (run.frames > 0) {
      const std::int64_t count = std::min(run.frames, kFrames - used_);
      float* out = frames_.data() + used_ * width_;
      Convert({run.words, run.stride, count}, layout, plan, out + 1, width_);
      for (std::int64_t k = 0; k < count; ++k) {
        out[k * width_] = TimeOf(next_ + used_ + k, target_);
      }
      used_ += count;
      run.words += count * run.stride;
      run.frames -= count;
      if (used_ == kFrames) {
        Flush();
      }
    }
  }

  void Flush() {
    const std::int64_t floats = used_ * width_;
    if (!AreFinite(frames_.data(), floats)) {
      std::int64_t k = 0;
      while (AreFinite(frames_.data() + k * width_, width_)) {
        ++k;
      }
      TellNotFinite(frames_.data() + k * width_, next_ + k, target_);
    }
    float* to = used_ > 0 ? target_.matrix.Frame(next_) : nullptr;
    if (used_ == kFrames && reinterpret_cast<std::uintptr_t>(to) % 16 == 0) {
      StreamOut(frames_.data(), floats, to);
    } else {
      std::copy_n(frames_.data(), floats, to);
    }
    next_ += used_;
    used_ = 0;
  }

  static float TimeOf(std::int64_t sample, const SampleTarget& target) {
    return target.rate > 0 ? static_cast<float>(static_cast<double>(sample - 1) / target.rate) : 0.0F;
  }

 private:
  static constexpr std::int64_t kFrames = 64;  // with 64 channels 16 KiB; a whole number of cache lines

  const SampleTarget& target_;
  std::int64_t width_;  // floats of a frame
  std::int64_t next_;   // sample, from 1
  std::int64_t used_ = 0;
  alignas(64) std::array<float, (kMaxChannels + 1) * kFrames> frames_{};
};

// A piece of whole blocks, at most `samples` of them.
void AppendBlocks(FrameTile& tile, const char* piece, std::int64_t samples, const InterleavedLayout& layout,
                  const Plan& plan) {
  const std::int64_t frameBytes = layout.channels * BytesOf(layout.type);
  if (layout.skipped == 0) {
    tile.Append({piece, frameBytes, samples}, layout, plan);
    return;
  }
  for (std::int64_t done = 0; done < samples; done += layout.samplesPerBlock) {
    const char* block = piece + done / layout.samplesPerBlock * layout.BlockBytes();
    tile.Append({block + layout.skipped, frameBytes, std::min(layout.samplesPerBlock, samples - done)},
                layout, plan);
  }
}

}  // namespace

std::int64_t BytesOf(SampleType type) {
  switch (type) {
    case SampleType::Float32:
      return sizeof(float);
    case SampleType::Float64:
      return sizeof(double);
    default:
      return sizeof(std::int16_t);
  }
}

std::int64_t InterleavedLayout::SamplesIn(std::int64_t fileBytes) const {
  if (channels < 1 || samplesPerBlock < 1 || skipped < 0 || offset < 0 || offset > fileBytes ||
      channels > fileBytes || samplesPerBlock > fileBytes / channels) {
    return 0;
  }
  return (fileBytes - offset) / BlockBytes() * samplesPerBlock;
}

void StoreTimes(std::int64_t first, std::int64_t count, const SampleTarget& target) {
  for (std::int64_t i = first; i < first + count; ++i) {
    *target.matrix.Frame(i) = FrameTile::TimeOf(i, target);
  }
}

void CheckFinite(std::int64_t first, std::int64_t count, const SampleTarget& target) {
  const auto width = static_cast<std::int64_t>(target.channels.size()) + 1;
  for (std::int64_t i = first; i < first + count; ++i) {
    if (!AreFinite(target.matrix.Frame(i), width)) {
      TellNotFinite(target.matrix.Frame(i), i, target);
    }
  }
}

void StoreFrames(const float* frames, std::int64_t width, std::int64_t first, std::int64_t count,
                 const SampleTarget& target) {
  const InterleavedLayout layout{.channels = width, .type = SampleType::Float32};
  FrameTile tile(target, first);
  AppendBlocks(tile, reinterpret_cast<const char*>(frames), count, layout, PlanOf(target.channels, {}, 1.0));
  tile.Flush();
}

std::int64_t ReadInterleaved(const InputFile& file, const InterleavedLayout& layout,
                             std::span<const Scaling> scalings, const SampleTarget& target) {
  const Plan plan = PlanOf(target.channels, scalings, layout.general);
  FrameTile tile(target, 1);
  const std::int64_t wanted = target.matrix.Samples();
  const std::int64_t blockBytes = layout.BlockBytes();
  const std::int64_t blocksAPiece = std::max<std::int64_t>(kInterleavedPiece / blockBytes, 1);
  std::vector<char> piece(static_cast<std::size_t>(blocksAPiece * blockBytes));
  std::int64_t done = 0;
  for (std::int64_t round = 0; done < wanted; ++round) {
    if (round % kPiecesInATurn == 0 && target.turn(static_cast<double>(done) / static_cast<double>(wanted))) {
      break;
    }
    const std::int64_t at = layout.offset + done / layout.samplesPerBlock * blockBytes;
    const auto got = static_cast<std::int64_t>(file.ReadAt(at, piece.data(), piece.size()));
    const std::int64_t blocks = got / blockBytes;
    if (blocks == 0) {
      break;
    }
    const std::int64_t count = std::min(blocks * layout.samplesPerBlock, wanted - done);
    AppendBlocks(tile, piece.data(), count, layout, plan);
    done += count;
  }
  tile.Flush();
  return done;
}

void InterleavedFile::TakeLayout(const InterleavedLayout& layout, std::int64_t promised, CountedBy counted) {
  layout_ = layout;
  layout_.channels = static_cast<std::int64_t>(found_.channels.size());
  const std::int64_t held = layout_.SamplesIn(file_.Size());
  if (counted == CountedBy::Bytes && std::abs(held - promised) <= 1) {
    promised = held;  // a product of rate and time
  }
  if (counted == CountedBy::Bytes && promised > 0 && held > promised) {
    found_.remarks.push_back("The header counts " + FormatCount(promised) +
                             " samples per channel; the file holds " + FormatCount(held) + ".");
    promised = held;
  }
  found_.promised = promised;
  for (RecordedChannel& channel : found_.channels) {
    channel.samples = promised > 0 ? std::min(held, promised) : held;
    scalings_.push_back({.offset = channel.offset, .gain = channel.gain});
  }
}

}  // namespace velmora
