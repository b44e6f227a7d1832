#include "formats/wav/wav_header.hpp"

#include <algorithm>

#include "core/text/numbers.hpp"

namespace velmora {
namespace {

constexpr std::uint16_t kTagPcm = 1;
constexpr std::uint16_t kTagFloat = 3;
constexpr std::uint16_t kTagALaw = 6;
constexpr std::uint16_t kTagMuLaw = 7;
constexpr std::uint16_t kTagExtensible = 0xFFFE;

constexpr std::int64_t kFirstChunk = 12;
constexpr std::int64_t kChunkHead = 8;
constexpr int kMostChunks = 1000;

WavHeader::Coding CodingOf(std::uint16_t tag) {
  switch (tag) {
    case kTagPcm:
      return WavHeader::Coding::Integers;
    case kTagFloat:
      return WavHeader::Coding::Floats;
    case kTagALaw:
      return WavHeader::Coding::ALaw;
    case kTagMuLaw:
      return WavHeader::Coding::MuLaw;
    case 2:
      throw FileError("samples coded as Microsoft ADPCM are not read; convert the file to PCM");
    case 0x11:
      throw FileError("samples coded as IMA ADPCM are not read; convert the file to PCM");
    case 0x55:
      throw FileError("samples coded as MP3 are not read; convert the file to PCM");
    default:
      throw FileError("samples of coding " + std::to_string(tag) + " are not read; convert the file to PCM");
  }
}

ByteOrder OrderOfMagic(const std::string& head) {
  const std::string magic = head.substr(0, 4);
  if (head.size() < kFirstChunk) {
    throw FileError("the file ends inside its header");
  }
  if ((magic != "RIFF" && magic != "RIFX" && magic != "RF64") || head.substr(8, 4) != "WAVE") {
    throw FileError("this is no WAV file");
  }
  return magic == "RIFX" ? ByteOrder::Big : ByteOrder::Little;
}

}  // namespace

WavHeader::WavHeader(const InputFile& file) : order(OrderOfMagic(ReadBytes(file, 0, kFirstChunk))) {
  TakeChunks(file);
  if (channels < 1) {
    throw FileError("the header counts no channels");
  }
  if (rate <= 0) {
    throw FileError("the file states a sampling rate of 0 Hz");
  }
  if (dataAt == 0) {
    throw FileError("the file holds no samples");
  }
}

void WavHeader::TakeChunks(const InputFile& file) {
  constexpr std::int64_t mostText = std::int64_t{64} << 10;
  constexpr std::uint32_t unknown = 0xFFFFFFFF;
  bool hasFormat = false;
  std::int64_t dataBytes = 0;
  std::int64_t at = kFirstChunk;
  for (int k = 0; k < kMostChunks && at + kChunkHead <= file.Size(); ++k) {
    const std::string head = ReadBytes(file, at, kChunkHead);
    const std::string name = head.substr(0, 4);
    const std::int64_t size = ByteReader(head, order).At<std::uint32_t>(4);
    const std::int64_t body = at + kChunkHead;
    if (name == "fmt ") {
      TakeFormat(ReadBytes(file, body, std::min(size, std::int64_t{40})));
      hasFormat = true;
    } else if (name == "ds64") {
      longDataBytes_ = ByteReader(ReadBytes(file, body, 16), order).At<std::int64_t>(8);
    } else if (name == "LIST") {
      TakeTexts(ReadBytes(file, body, std::min(size, mostText)));
    } else if (name == "data") {
      dataAt = body;
      dataBytes = size == unknown && longDataBytes_ > 0 ? longDataBytes_ : size;
      break;
    }
    at = body + size + size % 2;
  }
  if (!hasFormat) {
    throw FileError("the file ends inside its header");
  }
  const bool believable = dataBytes > 0 && dataBytes != unknown && wordBytes > 0 && channels > 0;
  promised = believable ? dataBytes / (wordBytes * channels) : 0;
}

void WavHeader::TakeFormat(const std::string& bytes) {
  constexpr std::size_t subTag = 24;
  constexpr std::size_t validBits = 18;
  const ByteReader reader(bytes, order);
  auto tag = reader.At<std::uint16_t>(0);
  channels = reader.At<std::uint16_t>(2);
  rate = reader.At<std::uint32_t>(4);
  bits = reader.At<std::uint16_t>(14);
  wordBytes = (bits + 7) / 8;
  if (tag == kTagExtensible) {
    tag = static_cast<std::uint16_t>(reader.At<std::uint32_t>(subTag));
    const std::int64_t valid = reader.At<std::uint16_t>(validBits);
    bits = valid > 0 ? std::min(valid, bits) : bits;
  }
  coding = CodingOf(tag);
  if (wordBytes < 1 || wordBytes > 8) {
    throw FileError("samples of " + std::to_string(bits) + " bits are not read");
  }
}

// Chunks of the list INFO; a logger of accelerations tells its scale there.
void WavHeader::TakeTexts(const std::string& bytes) {
  ByteReader reader(bytes, order);
  if (reader.Size() < 4 || reader.TakeBytes(4) != "INFO") {
    return;
  }
  while (reader.Rest() >= kChunkHead) {
    std::string name(reader.TakeBytes(4));
    const std::size_t size = std::min<std::size_t>(reader.Take<std::uint32_t>(), reader.Rest());
    if (const std::string text = reader.TakeText(size); !text.empty()) {
      comments.push_back(name.append(": ").append(text));
    }
    reader.Skip(std::min<std::size_t>(size % 2, reader.Rest()));
  }
}

std::int64_t WavHeader::FramesIn(std::int64_t fileBytes) const {
  return std::max<std::int64_t>(fileBytes - dataAt, 0) / (wordBytes * channels);
}

std::string WavHeader::CodingName() const {
  switch (coding) {
    case Coding::MuLaw:
      return "mu-law";
    case Coding::ALaw:
      return "A-law";
    case Coding::Floats:
      return std::to_string(bits) + "-bit floats";
    default:
      return std::to_string(bits) + "-bit integers";
  }
}

}  // namespace velmora
