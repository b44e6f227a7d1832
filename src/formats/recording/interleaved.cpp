#include "formats/recording/interleaved.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "core/text/numbers.hpp"

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
  std::array<std::int64_t, kMaxChannels> index{};
  std::array<double, kMaxChannels> offset{};
  std::array<double, kMaxChannels> gain{};
  std::array<double, kMaxChannels> general{};
};

Plan PlanOf(std::span<const int> channels, std::span<const Scaling> scalings) {
  Plan plan;
  for (const int channel : channels) {
    const auto c = static_cast<std::size_t>(plan.count++);
    const Scaling scaling = scalings.empty() ? Scaling{} : scalings[static_cast<std::size_t>(channel)];
    plan.index.at(c) = channel;
    plan.offset.at(c) = scaling.offset;
    plan.gain.at(c) = scaling.gain;
    plan.general.at(c) = scaling.general;
    plan.dense = plan.dense && channel == channels.front() + static_cast<int>(c);
    plan.asIs = plan.asIs && scaling.offset == 0 && scaling.gain == 1 && scaling.general == 1;
  }
  return plan;
}

template <typename Word>
Word Load(const char* words, std::int64_t index) {
  Word word;
  std::memcpy(&word, words + index * static_cast<std::int64_t>(sizeof(Word)), sizeof word);
  return word;
}

/// Every word of one frame to its column. `toNumber` makes a double of a Word.
template <typename Word, typename ToNumber>
void ConvertFrame(const char* words, const Plan& plan, float* out, const ToNumber& toNumber) {
  const auto convert = [&plan, &toNumber](Word word, int c) {
    const auto k = static_cast<std::size_t>(c);
    return static_cast<float>((toNumber(word) + plan.offset[k]) * plan.gain[k] * plan.general[k]);
  };
  if (plan.dense) {
    const char* from = words + plan.index[0] * static_cast<std::int64_t>(sizeof(Word));
    for (int c = 0; c < plan.count; ++c) {
      out[c] = convert(Load<Word>(from, c), c);
    }
    return;
  }
  for (int c = 0; c < plan.count; ++c) {
    out[c] = convert(Load<Word>(words, plan.index[static_cast<std::size_t>(c)]), c);
  }
}

template <typename Word>
void ConvertInOrder(const char* words, const Plan& plan, float* out, bool big) {
  if (big) {
    ConvertFrame<Word>(words, plan, out, [](Word word) { return static_cast<double>(SwappedBytes(word)); });
  } else {
    ConvertFrame<Word>(words, plan, out, [](Word word) { return static_cast<double>(word); });
  }
}

void Convert(const char* words, const InterleavedLayout& layout, const Plan& plan, float* out) {
  const bool big = layout.order == ByteOrder::Big;
  switch (layout.type) {
    case SampleType::Int16:
      ConvertInOrder<std::int16_t>(words, plan, out, big);
      break;
    case SampleType::UInt16:
      ConvertInOrder<std::uint16_t>(words, plan, out, big);
      break;
    case SampleType::Float64:
      ConvertInOrder<double>(words, plan, out, big);
      break;
    case SampleType::Float32:
      if (layout.order == ByteOrder::Vax) {
        ConvertFrame<std::uint32_t>(words, plan, out, FromVaxFloat);
      } else if (plan.asIs && plan.dense && !big) {
        std::memcpy(out, words + plan.index[0] * static_cast<std::int64_t>(sizeof(float)),
                    static_cast<std::size_t>(plan.count) * sizeof(float));
      } else {
        ConvertInOrder<float>(words, plan, out, big);
      }
      break;
  }
}

// A piece of whole blocks to the samples from `first` (from 1) on.
void ConvertBlocks(const std::vector<char>& piece, std::int64_t blocks, const InterleavedLayout& layout,
                   const Plan& plan, std::int64_t first, SampleMatrix& matrix) {
  const std::int64_t frameBytes = layout.channels * BytesOf(layout.type);
  for (std::int64_t b = 0; b < blocks; ++b) {
    const char* words = piece.data() + b * layout.BlockBytes() + layout.skipped;
    for (std::int64_t s = 0; s < layout.samplesPerBlock; ++s) {
      const std::int64_t sample = first + b * layout.samplesPerBlock + s;
      if (sample > matrix.Samples()) {
        return;
      }
      Convert(words + s * frameBytes, layout, plan, matrix.Frame(sample) + 1);
    }
  }
}

bool IsFinite(const float* values, int count) {
  constexpr std::uint32_t exponent = 0x7F800000U;
  std::uint32_t worst = 0;
  for (int c = 0; c < count; ++c) {
    worst = std::max(worst, std::bit_cast<std::uint32_t>(values[c]) & exponent);
  }
  return worst != exponent;
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
    *target.matrix.Frame(i) =
        target.rate > 0 ? static_cast<float>(static_cast<double>(i - 1) / target.rate) : 0.0F;
  }
}

void CheckFinite(std::int64_t first, std::int64_t count, const SampleTarget& target) {
  const int channels = static_cast<int>(target.channels.size());
  for (std::int64_t i = first; i < first + count; ++i) {
    const float* values = target.matrix.Frame(i) + 1;
    if (IsFinite(values, channels)) {
      continue;
    }
    int c = 0;
    while (std::isfinite(values[c])) {
      ++c;
    }
    throw FileError("sample " + FormatCount(i) + " of channel " +
                    std::to_string(target.channels[static_cast<std::size_t>(c)] + 1) +
                    (std::isnan(values[c]) ? " is no number" : " is too large"));
  }
}

void StoreFrames(const float* frames, std::int64_t width, std::int64_t first, std::int64_t count,
                 const SampleTarget& target) {
  const Plan plan = PlanOf(target.channels, {});
  const InterleavedLayout layout{.channels = width, .type = SampleType::Float32};
  for (std::int64_t k = 0; k < count; ++k) {
    Convert(reinterpret_cast<const char*>(frames + k * width), layout, plan,
            target.matrix.Frame(first + k) + 1);
  }
  StoreTimes(first, count, target);
  CheckFinite(first, count, target);
}

std::int64_t ReadInterleaved(const InputFile& file, const InterleavedLayout& layout,
                             std::span<const Scaling> scalings, const SampleTarget& target) {
  const Plan plan = PlanOf(target.channels, scalings);
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
    ConvertBlocks(piece, blocks, layout, plan, done + 1, target.matrix);
    StoreTimes(done + 1, count, target);
    CheckFinite(done + 1, count, target);
    done += count;
  }
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
