#include "formats/motion_analysis/anb_reader.hpp"

#include <algorithm>
#include <bit>
#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/motion_analysis/motion_analysis_scale.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

// Entries of a key, the number of words of 4 bytes that follow, and these. Numbers of 32 bits have their high
// half first; halves are low byte first.
namespace key {
constexpr std::uint16_t kHeader = 0x8000;
constexpr std::uint16_t kData = 0x8100;
constexpr std::uint16_t kChannels = 0x0102;
constexpr std::uint16_t kRates = 0x0104;
constexpr std::uint16_t kStart = 0x0105;
constexpr std::uint16_t kRanges = 0x0106;
constexpr std::uint16_t kLabel = 0x0107;
constexpr std::uint16_t kBoard = 0x0108;
constexpr std::uint16_t kBits = 0x0109;
constexpr std::uint16_t kRate = 0x010A;
}  // namespace key

constexpr std::int64_t kMostHeader = std::int64_t{1} << 20;

std::uint32_t LongAt(const ByteReader& reader, std::size_t at) {
  return static_cast<std::uint32_t>(reader.At<std::uint16_t>(at)) << 16U | reader.At<std::uint16_t>(at + 2);
}

/// What the entries say.
struct AnbHeader {
  std::int64_t channels = 0;
  double bits = 0.0;
  double rate = 0.0;
  double start = 0.0;
  std::string board;
  std::vector<std::string> labels;
  std::vector<double> rates;
  std::vector<double> ranges;  // mV
  std::int64_t dataAt = 0;
  std::int64_t promised = 0;  // frames

  explicit AnbHeader(std::string_view bytes) {
    ByteReader reader(bytes);
    if (reader.Take<std::uint32_t>() != 0 || reader.At<std::uint16_t>(4) != key::kHeader) {
      throw FileError("this is no Motion Analysis binary analog file");
    }
    while (dataAt == 0) {
      const auto found = reader.Take<std::uint16_t>();
      const std::size_t words = reader.Take<std::uint16_t>();
      if (found == 0 && words == 0) {
        continue;
      }
      const ByteReader body(reader.TakeBytes(4 * words));
      if (found == key::kData) {
        dataAt = static_cast<std::int64_t>(reader.Position());
        promised = words > 0 ? (static_cast<std::int64_t>(LongAt(body, 0)) - 3) * 2 : 0;
      } else {
        Take(found, body);
      }
    }
  }

 private:
  void Take(std::uint16_t found, const ByteReader& body) {
    switch (found) {
      case key::kChannels:
        channels = LongAt(body, 0) & 0xFFFFU;
        break;
      case key::kBits:
        bits = static_cast<double>(LongAt(body, 0) & 0xFFFFU);  // some have a flag in the other half
        break;
      case key::kRate:
        rate = std::bit_cast<float>(LongAt(body, 0));
        break;
      case key::kStart:
        start = std::bit_cast<float>(LongAt(body, 0));
        break;
      case key::kBoard:
        board = body.TextAt(0, body.Size());
        break;
      case key::kLabel:
        labels.push_back(body.TextAt(0, body.Size()));
        break;
      case key::kRates:
        rates = Words(body);
        break;
      case key::kRanges:
        ranges = Words(body);
        break;
      default:
        break;
    }
  }

  static std::vector<double> Words(const ByteReader& body) {
    std::vector<double> words;
    for (std::size_t at = 0; at + 2 <= body.Size(); at += 2) {
      words.push_back(body.At<std::uint16_t>(at));
    }
    return words;
  }
};

class AnbFile : public InterleavedFile {
 public:
  explicit AnbFile(const std::string& path) : InterleavedFile(path) {
    const AnbHeader header(ReadBytes(file_, 0, kMostHeader));
    if (header.channels < 1) {
      throw FileError("the header counts no channels");
    }
    const double rate = std::isfinite(header.rate) && header.rate > 0 ? header.rate : 0.0;
    for (std::size_t c = 0; c < static_cast<std::size_t>(header.channels); ++c) {
      RecordedChannel channel{.label = c < header.labels.size() ? header.labels[c] : "", .rate = rate};
      ScaleToVolts(channel, c < header.ranges.size() ? header.ranges[c] : 0.0, header.bits);
      TellOwnRate(found_, channel, rate, c < header.rates.size() ? header.rates[c] : 0.0);
      found_.channels.push_back(std::move(channel));
    }
    if (!header.board.empty()) {
      found_.lines.push_back("Board: " + header.board);
    }
    found_.lines.push_back(ScaleLine(header.bits));
    if (header.start != 0 && std::isfinite(header.start)) {
      found_.lines.push_back("The recording starts at " + PlainNumber(header.start) + " s");
    }
    TakeLayout({.offset = header.dataAt}, std::max<std::int64_t>(header.promised, 0) / header.channels,
               CountedBy::Header);
  }
};

}  // namespace

std::unique_ptr<RecordingFile> OpenAnb(const std::string& path) {
  return std::make_unique<AnbFile>(path);
}

}  // namespace velmora
