#include "formats/delsys/delsys_emg_reader.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

constexpr std::size_t kMostText = 255;

// A count and the characters.
std::string_view TakeLongText(ByteReader& reader) {
  const std::size_t size = reader.Take<std::uint32_t>();
  if (size > kMostText) {
    throw FileError("a text of its header is too long");
  }
  return reader.TakeBytes(size);
}

class DelsysEmgFile : public InterleavedFile {
 public:
  explicit DelsysEmgFile(const std::string& path) : InterleavedFile(path) {
    constexpr std::int64_t mostHeader = std::int64_t{16} << 20;
    const std::string bytes = ReadBytes(file_, 0, mostHeader);
    ByteReader reader(bytes);
    if (reader.TakeBytes(4) != "DEMG") {
      throw FileError("this is no Delsys .emg file");
    }
    const int version = reader.Take<std::uint16_t>();
    if (version == 1 || version == 2) {
      throw FileError("version " + std::to_string(version) +
                      " of the format is not known for certain; export the trial as text in EMGworks");
    }
    if (version != 3 && version != 4) {
      throw FileError("its version " + std::to_string(version) + " is not known");
    }
    TakeHeader(reader, version);
  }

 private:
  void TakeHeader(ByteReader& reader, int version) {
    reader.Skip(4);
    const std::string program = reader.TakeText(11);
    reader.Skip(11);
    const std::string card = reader.TakeText(255);
    reader.Skip(8);
    const std::int64_t channels = reader.Take<std::int32_t>();
    const std::int64_t samples = reader.Take<std::int32_t>();
    reader.Skip(4);
    const auto rate = reader.Take<double>();
    reader.Skip(8);
    const std::int64_t dataAt = reader.Take<std::uint32_t>();
    reader.Skip(16);
    const bool camera = reader.Take<std::uint32_t>() == 1;
    const std::string video = FixedFieldText(TakeLongText(reader));
    if (channels < 1 || samples < 1) {
      throw FileError("the header counts no samples");
    }
    for (std::int64_t c = 0; c < channels; ++c) {
      TakeChannel(reader, version, std::isfinite(rate) && rate > 0 ? rate : 0.0);
    }
    if (dataAt != static_cast<std::int64_t>(reader.Position())) {
      throw FileError("its header does not end where the data start; export the trial as text in EMGworks");
    }
    found_.lines.push_back("Recorded with: EMGworks " + program + (card.empty() ? "" : ", ") + card);
    if (camera && !video.empty()) {
      found_.lines.push_back("Video: " + video);
    }
    TakeLayout({.offset = dataAt}, samples, CountedBy::Header);
  }

  // value = (counts x resolution - offset) / gain, as one offset and one gain.
  void TakeChannel(ByteReader& reader, int version, double rate) {
    RecordedChannel channel{.rate = rate};
    reader.Skip(4);
    channel.units = FixedUnitsText(TakeLongText(reader));
    channel.label = FixedFieldText(TakeLongText(reader));
    const auto gain = reader.Take<double>();
    reader.Skip(8);
    const auto resolution = reader.Take<double>();
    const auto offset = reader.Take<double>();
    reader.Skip(16);
    if (version == 4) {
      const auto own = reader.Take<double>();
      reader.Skip(4);
      if (own > 0 && own != rate) {
        found_.remarks.push_back(channel.label + " has a rate of " + PlainNumber(own) + " Hz by itself; " +
                                 PlainNumber(rate) + " Hz was taken.");
      }
    }
    channel.gain = resolution / gain;
    channel.offset = -offset / resolution;
    if (!std::isfinite(channel.gain) || !std::isfinite(channel.offset) || channel.gain == 0) {
      channel.gain = 1.0;
      channel.offset = 0.0;
      channel.units = "counts";
      found_.remarks.push_back("The gain of " + channel.label + " says nothing: its values are counts.");
    }
    found_.channels.push_back(std::move(channel));
  }
};

}  // namespace

std::unique_ptr<RecordingFile> OpenDelsysEmg(const std::string& path) {
  return std::make_unique<DelsysEmgFile>(path);
}

}  // namespace velmora
