#include "formats/bioware/bioware2_reader.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/bioware/bioware2_layout.hpp"
#include "formats/bioware/plate_sensors.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

class BioWare2File : public InterleavedFile {
 public:
  explicit BioWare2File(const std::string& path)
      : InterleavedFile(path), bytes_(ReadBytes(file_, 0, bioware2::kData)), header_(bytes_) {
    if (!bytes_.starts_with(bioware2::kMagic)) {
      throw FileError("this is no BioWare 2 file");
    }
    channels_ = header_.At<std::int16_t>(bioware2::kChannels);
    plates_ = header_.At<std::int16_t>(bioware2::kPlates);
    FindData();
    Describe();
    for (int p = 0; p < plates_; ++p) {
      AddPlate(p);
    }
    AddAuxiliaries();
    const double promised = rate_ * header_.At<float>(bioware2::kSeconds);
    TakeLayout({.offset = static_cast<std::int64_t>(bioware2::kData - missing_)},
               promised >= 1 && promised < INT32_MAX ? RoundHalfEven(promised) : 0, CountedBy::Bytes);
  }

 private:
  // The data are whole frames behind a header that makes sense, with the byte of padding or without.
  void FindData() {
    const auto fits = [this](std::size_t dataAt) {
      const std::int64_t rest = file_.Size() - static_cast<std::int64_t>(dataAt);
      return rest > 0 && rest % (2 * std::int64_t{channels_}) == 0;
    };
    rate_ = header_.At<float>(bioware2::kRate);
    const bool counts = plates_ >= 0 && plates_ <= 2 && channels_ >= 1 &&
                        channels_ >= bioware2::kChannelsAPlate * plates_ && std::isfinite(rate_) &&
                        rate_ >= 0;
    if (counts && fits(bioware2::kData)) {
      missing_ = 0;
    } else if (counts && fits(bioware2::kData - 1)) {
      missing_ = 1;
    } else {
      throw FileError("its header and its size contradict each other; export the trial as text in BioWare");
    }
  }

  // A float of the two plates' (0, 1); items behind the padding lie a byte earlier where there is none.
  [[nodiscard]] double Item(std::size_t at, int plate) const {
    const std::size_t shift = at > bioware2::kReverse ? missing_ : 0;
    const double value = header_.At<float>(at - shift + 4 * static_cast<std::size_t>(plate));
    if (!std::isfinite(value)) {
      throw FileError("the header holds what is no number");
    }
    return value;
  }

  void Describe() {
    const auto text = [this](std::size_t at, std::size_t count) { return header_.TextAt(at, count); };
    found_.title = text(bioware2::kDescription, 51);
    const auto add = [this](const char* what, const std::string& value) {
      if (!value.empty()) {
        found_.lines.push_back(what + value);
      }
    };
    add("", text(bioware2::kTitle, 80));
    add("Date: ", text(bioware2::kDate, 14));
    add("Time: ", text(bioware2::kTime, 14));
    add("Subject: ", text(bioware2::kPatient, 31));
    add("Subject number: ", text(bioware2::kPatientId, 31));
    add("", text(bioware2::kDescription + 51, 51));
    if (header_.At<std::uint8_t>(bioware2::kReverse) != 0) {
      found_.lines.emplace_back("Taken in reverse");
    }
  }

  void AddPlate(int plate) {
    RecordedPlate found{.words = "Force plate " + std::to_string(plate + 1) + ": Kistler, volts",
                        .reducible = true};
    constexpr double millimetres = 10.0;  // a centimetre
    found.definition = {.PlateName = "Plate " + std::to_string(plate + 1) + " of the file",
                        .a = Item(bioware2::kA, plate) * millimetres,
                        .b = Item(bioware2::kB, plate) * millimetres,
                        .az0 = Item(bioware2::kAz0, plate) * millimetres,
                        .Width = Item(bioware2::kWidth, plate) * millimetres,
                        .Length = Item(bioware2::kLength, plate) * millimetres,
                        .XYRange = Item(bioware2::kXYRange, plate),
                        .ZRange = Item(bioware2::kZRange, plate),
                        .XSens = Item(bioware2::kXSens, plate),
                        .YSens = Item(bioware2::kYSens, plate),
                        .ZSens = Item(bioware2::kZSens, plate),
                        .optDistance = 1};
    for (const char* sensor : kPlateSensors) {
      found.channels.push_back(static_cast<int>(found_.channels.size()));
      AddChannel(plates_ > 1 ? sensor + ("#" + std::to_string(plate + 1)) : sensor, bioware2::kVolts);
    }
    found_.plates.push_back(std::move(found));
  }

  // The devices that are enabled, one after the other; channels beyond them have no name.
  void AddAuxiliaries() {
    for (std::size_t k = 0; k < bioware2::kAuxiliaries; ++k) {
      if (static_cast<int>(found_.channels.size()) < channels_ &&
          header_.At<std::uint8_t>(bioware2::kAuxiliary - missing_ + k) != 0) {
        AddChannel(header_.TextAt(bioware2::kAuxiliaryNames - missing_ + 50 * k, 10),
                   bioware2::kVolts * Item(bioware2::kMultiplier + 4 * k, 0));
      }
    }
    while (static_cast<int>(found_.channels.size()) < channels_) {
      AddChannel("", bioware2::kVolts);
    }
  }

  void AddChannel(const std::string& label, double gain) {
    found_.channels.push_back({.label = label, .units = "V", .rate = rate_, .gain = gain});
  }

  std::string bytes_;
  ByteReader header_;
  int channels_ = 0;
  int plates_ = 0;
  double rate_ = 0.0;
  std::size_t missing_ = 0;  // bytes of padding that are not there
};

}  // namespace

std::unique_ptr<RecordingFile> OpenBioWare2(const std::string& path) {
  return std::make_unique<BioWare2File>(path);
}

}  // namespace velmora
