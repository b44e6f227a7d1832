#include "formats/wav/wav_reader.hpp"

#include <sndfile.h>

#include <algorithm>
#include <optional>

#include "formats/recording/interleaved.hpp"
#include "formats/wav/wav_header.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kPieceFrames = 4096;

Recording Describe(const WavHeader& header, std::int64_t frames) {
  Recording found{.promised = header.promised};
  found.channels.assign(static_cast<std::size_t>(header.channels), {.rate = header.rate, .samples = frames});
  found.lines.push_back("Coding: " + header.CodingName());
  found.lines.insert(found.lines.end(), header.comments.begin(), header.comments.end());
  return found;
}

/// Words that need no more than a factor: 16-bit integers and floats.
class PlainWavFile : public InterleavedFile {
 public:
  PlainWavFile(const std::string& path, const WavHeader& header, SampleType type) : InterleavedFile(path) {
    constexpr double fullScale = 32768.0;
    found_ = Describe(header, 0);
    for (RecordedChannel& channel : found_.channels) {
      channel.gain = type == SampleType::Int16 ? 1 / fullScale : 1.0;
    }
    TakeLayout({.offset = header.dataAt, .type = type, .order = header.order}, header.promised,
               CountedBy::Header);
  }
};

std::optional<SampleType> PlainType(const WavHeader& header) {
  if (header.coding == WavHeader::Coding::Integers && header.wordBytes == sizeof(std::int16_t)) {
    return SampleType::Int16;
  }
  if (header.coding == WavHeader::Coding::Floats && header.wordBytes == sizeof(float)) {
    return SampleType::Float32;
  }
  const bool isDouble = header.coding == WavHeader::Coding::Floats && header.wordBytes == sizeof(double);
  return isDouble ? std::optional(SampleType::Float64) : std::nullopt;
}

/// What the others have in common: the loop over their frames.
class WavFile : public RecordingFile {
 public:
  WavFile(WavHeader header, std::int64_t frames) : header_(std::move(header)), frames_(frames) {
    found_ = Describe(header_, frames_);
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    std::vector<float> piece(static_cast<std::size_t>(kPieceFrames * header_.channels));
    const std::int64_t wanted = target.matrix.Samples();
    std::int64_t done = 0;
    while (done < wanted) {
      if (target.turn(static_cast<double>(done) / static_cast<double>(wanted))) {
        break;
      }
      const std::int64_t got = ReadPiece(done, std::min(kPieceFrames, wanted - done), piece.data());
      if (got <= 0) {
        break;
      }
      StoreFrames(piece.data(), header_.channels, done + 1, got, target);
      done += got;
    }
    return done;
  }

 protected:
  /// Frames from `first` (from 0) on; returns how many there were.
  virtual std::int64_t ReadPiece(std::int64_t first, std::int64_t count, float* to) = 0;

  WavHeader header_;
  std::int64_t frames_;
};

struct CloseSound {
  void operator()(SNDFILE* file) const { sf_close(file); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

/// Read by libsndfile. Its count of frames is a claim: it is read until nothing more comes.
class SoundFile : public WavFile {
 public:
  SoundFile(Sound sound, WavHeader header, std::int64_t frames)
      : WavFile(std::move(header), frames), sound_(std::move(sound)) {}

 protected:
  std::int64_t ReadPiece(std::int64_t /*first*/, std::int64_t count, float* to) override {
    return sf_readf_float(sound_.get(), to, count);
  }

 private:
  Sound sound_;
};

/// Integers of more than 32 bits, which the library does not read.
class WideIntegerFile : public WavFile {
 public:
  WideIntegerFile(const std::string& path, WavHeader header, std::int64_t frames)
      : WavFile(std::move(header), frames), file_(path) {}

 protected:
  std::int64_t ReadPiece(std::int64_t first, std::int64_t count, float* to) override {
    const std::int64_t frameBytes = header_.channels * header_.wordBytes;
    bytes_.resize(static_cast<std::size_t>(count * frameBytes));
    const auto got = static_cast<std::int64_t>(
        file_.ReadAt(header_.dataAt + first * frameBytes, bytes_.data(), bytes_.size()));
    const std::int64_t frames = got / frameBytes;
    for (std::int64_t k = 0; k < frames * header_.channels; ++k) {
      to[k] = Value(bytes_.data() + k * header_.wordBytes);
    }
    return frames;
  }

 private:
  // Left-justified in 64 bits, so that full scale is 2^63; rounded to 32 bits once.
  [[nodiscard]] float Value(const char* word) const {
    std::uint64_t bits = 0;
    for (std::int64_t k = 0; k < header_.wordBytes; ++k) {
      const std::int64_t at = header_.order == ByteOrder::Big ? header_.wordBytes - 1 - k : k;
      const std::uint64_t byte = static_cast<unsigned char>(word[at]);
      bits |= byte << static_cast<unsigned>(8 * (8 - header_.wordBytes + k));
    }
    return static_cast<float>(static_cast<std::int64_t>(bits)) * 0x1p-63F;
  }

  InputFile file_;
  std::vector<char> bytes_;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenWav(const std::string& path) {
  constexpr std::int64_t mostByLibrary = 4;  // bytes of an integer
  const InputFile file(path);
  WavHeader header(file);
  const std::int64_t held = header.FramesIn(file.Size());
  if (held < 1) {
    throw FileError("the file holds no samples");
  }
  if (const std::optional<SampleType> type = PlainType(header)) {
    return std::make_unique<PlainWavFile>(path, header, *type);
  }
  if (header.coding == WavHeader::Coding::Integers && header.wordBytes > mostByLibrary) {
    const std::int64_t frames = header.promised > 0 ? std::min(held, header.promised) : held;
    return std::make_unique<WideIntegerFile>(path, std::move(header), frames);
  }
  SF_INFO info{};
  Sound sound(sf_open(path.c_str(), SFM_READ, &info));
  if (!sound) {
    throw FileError(sf_strerror(nullptr));
  }
  if (info.channels != header.channels) {
    throw FileError("the file's header contradicts itself");
  }
  return std::make_unique<SoundFile>(std::move(sound), std::move(header),
                                     std::min<std::int64_t>(held, info.frames));
}

}  // namespace velmora
