#include "formats/amti/bsf_reader.hpp"

#include <array>
#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

constexpr double kNewtons = 4.4482216152605;          // a pound
constexpr double kNewtonMetres = 0.1129848290276167;  // an inch-pound
constexpr double kMillimetres = 25.4;                 // an inch
constexpr int kIntegers = 100;                        // versions
constexpr int kNumbers = 105;
constexpr std::size_t kMostSensors = 32;
constexpr std::array kLoads = {"Fx", "Fy", "Fz", "Mx", "My", "Mz"};
constexpr std::int16_t kAmtiType = 5;  // in the program's list of types

class BsfFile : public InterleavedFile {
 public:
  explicit BsfFile(const std::string& path) : InterleavedFile(path) {
    constexpr std::int64_t mostHeaders = std::int64_t{1} << 20;
    const std::string bytes = ReadBytes(file_, 0, mostHeaders);
    const ByteReader reader(bytes);
    version_ = reader.At<std::int32_t>(0);
    if (version_ != kIntegers && version_ != kNumbers) {
      throw FileError("its version " + std::to_string(version_) + " is not known");
    }
    Describe(reader);
    std::int64_t at = 4 + std::int64_t{reader.At<std::int32_t>(4)};
    const std::int64_t plates = reader.At<std::int32_t>(8);
    const std::int64_t others = reader.At<std::int32_t>(12);
    if (plates < 0 || others < 0 || plates + others < 1 || plates + others > mostHeaders) {
      throw FileError("the header counts no instruments");
    }
    for (std::int64_t k = 0; k < plates + others; ++k) {
      at = TakeInstrument(reader, at, k, k < plates);
    }
    const double promised = rate_ * reader.At<double>(164);
    TakeLayout({.offset = at, .type = version_ == kIntegers ? SampleType::Int16 : SampleType::Float64},
               promised >= 1 && promised < INT32_MAX ? RoundHalfEven(promised) : 0, CountedBy::Bytes);
  }

 private:
  void Describe(const ByteReader& reader) {
    rate_ = std::max<double>(reader.At<std::int32_t>(212), 0.0);
    const auto add = [&](const char* what, std::size_t at, std::size_t count) {
      if (const std::string text = reader.TextAt(at, count); !text.empty()) {
        found_.lines.push_back(what + text);
      }
    };
    add("Subject: ", 16, 100);
    add("Date: ", 116, 12);
    add("Born: ", 128, 12);
    add("Protocol: ", 216, 150);
    add("Test: ", 366, 200);
    add("Examiner: ", 866, 100);
  }

  // Returns where the next header begins, or the data.
  std::int64_t TakeInstrument(const ByteReader& file, std::int64_t at, std::int64_t number, bool isPlate) {
    const auto head = static_cast<std::size_t>(std::max<std::int64_t>(at, 0));
    const std::int64_t size = file.At<std::int32_t>(head);
    const std::int64_t channels = file.At<std::int32_t>(head + 32);
    if (at < 0 || size < 664 + 4 || channels < 1 || channels > static_cast<std::int64_t>(kMostSensors)) {
      throw FileError("the header of instrument " + std::to_string(number + 1) + " is damaged");
    }
    const std::string name = file.TextAt(head + 12, 20);
    RecordedPlate plate{.words = (isPlate ? "Force plate: " : "Instrument: ") + name};
    for (std::int64_t c = 0; c < channels; ++c) {
      plate.channels.push_back(static_cast<int>(found_.channels.size()));
      AddChannel(file, head, static_cast<std::size_t>(c), number, isPlate);
    }
    const double length = file.At<float>(head + 52);
    const double width = file.At<float>(head + 56);
    plate.reducible = isPlate && channels == static_cast<std::int64_t>(kLoads.size()) &&
                      std::isfinite(length) && std::isfinite(width);
    if (plate.reducible) {
      plate.definition = {.PlateType = kAmtiType,
                          .PlateName = name,
                          .Width = width * kMillimetres,
                          .Length = length * kMillimetres,
                          .optDistance = 1};
    }
    found_.plates.push_back(std::move(plate));
    return at + size;
  }

  void AddChannel(const ByteReader& file, std::size_t head, std::size_t c, std::int64_t number,
                  bool isPlate) {
    const bool known = isPlate && c < kLoads.size();
    const bool isForce = c < 3;
    RecordedChannel channel{.rate = rate_};
    if (known) {
      channel.label = kLoads.at(c) + (number > 0 ? "#" + std::to_string(number + 1) : std::string());
      channel.units = isForce ? "N" : "N.m";
      channel.gain = isForce ? kNewtons : kNewtonMetres;
    }
    if (version_ == kIntegers) {
      const auto item = [&](std::size_t at) { return double{file.At<float>(head + at + 4 * c)}; };
      const double divisor = item(72) * item(404) * item(532) * item(660);
      const double gain = 1e6 / divisor * channel.gain;
      if (std::isfinite(gain) && divisor != 0) {
        channel.gain = gain;
      } else {
        channel.gain = 1.0;
        channel.units = "counts";
        found_.remarks.push_back("The sensitivity of channel " + std::to_string(found_.channels.size() + 1) +
                                 " is 0: its values are counts.");
      }
    }
    found_.channels.push_back(std::move(channel));
  }

  int version_ = 0;
  double rate_ = 0.0;
};

}  // namespace

std::unique_ptr<RecordingFile> OpenBsf(const std::string& path) {
  return std::make_unique<BsfFile>(path);
}

}  // namespace velmora
