#pragma once

#include <cstdint>
#include <span>

#include "core/files/files.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

enum class SampleType { Int16, UInt16, Float32, Float64 };

/// Bytes of a sample of one channel.
std::int64_t BytesOf(SampleType type);

/// How samples lie whose channels stand side by side: blocks of equal size, each with bytes that are no
/// samples and then whole samples of all channels.
struct InterleavedLayout {
  std::int64_t offset = 0;   // of the first block
  std::int64_t skipped = 0;  // bytes at the start of a block
  std::int64_t samplesPerBlock = 1;
  std::int64_t channels = 0;
  SampleType type = SampleType::Int16;
  ByteOrder order = ByteOrder::Little;
  double general = 1.0;  // every value is multiplied by it at last

  [[nodiscard]] std::int64_t BlockBytes() const {
    return skipped + samplesPerBlock * channels * BytesOf(type);
  }
  /// Samples of whole blocks that a file of this size holds; 0 for an impossible layout.
  [[nodiscard]] std::int64_t SamplesIn(std::int64_t fileBytes) const;
};

/// value = (raw + offset) * gain, times the layout's general factor: in 64 bits in this order, rounded to 32
/// bits once.
struct Scaling {
  double offset = 0.0;
  double gain = 1.0;
};

/// Reads as RecordingFile::ReadSamples does; `scalings` are by channel of the file. Throws FileError.
std::int64_t ReadInterleaved(const InputFile& file, const InterleavedLayout& layout,
                             std::span<const Scaling> scalings, const SampleTarget& target);

/// The same from frames in memory, `width` floats each, which become samples `first` (from 1) and on.
/// Throws FileError for a value that is infinite or no number.
void StoreFrames(const float* frames, std::int64_t width, std::int64_t first, std::int64_t count,
                 const SampleTarget& target);

/// Column 0 of samples `first` (from 1) and on.
void StoreTimes(std::int64_t first, std::int64_t count, const SampleTarget& target);

/// Throws FileError when one of these samples (from 1) is infinite or no number.
void CheckFinite(std::int64_t first, std::int64_t count, const SampleTarget& target);

/// A file of which all samples lie in one such layout.
class InterleavedFile : public RecordingFile {
 public:
  std::int64_t ReadSamples(const SampleTarget& target) override {
    return ReadInterleaved(file_, layout_, scalings_, target);
  }

 protected:
  explicit InterleavedFile(const std::string& path) : file_(path) {}

  /// Who knows how many samples there are, where header and bytes differ.
  enum class CountedBy { Header, Bytes };

  /// When found_.channels are described: counts their samples, of which the header promises so many (0: it
  /// does not say), and scales them by their offset and gain.
  void TakeLayout(const InterleavedLayout& layout, std::int64_t promised, CountedBy counted);

  InputFile file_;
  InterleavedLayout layout_;
  std::vector<Scaling> scalings_;  // by channel
};

}  // namespace velmora
