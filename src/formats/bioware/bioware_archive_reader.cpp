#include "formats/bioware/bioware_archive_reader.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/bioware/plate_sensors.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kChannelsOfPlate = 8;  // of a plate

[[noreturn]] void RefuseArchive() {
  throw FileError("it is a BioWare file of a layout that is not known; export the trial as text in BioWare");
}

/// Counts that the file repeats for itself and for each plate.
struct ArchiveShape {
  std::int64_t channels = 0;
  std::int64_t frames = 0;
  std::int64_t bits = 0;
  double rate = 0.0;

  friend bool operator==(const ArchiveShape&, const ArchiveShape&) = default;
};

ArchiveShape TakeArchiveShape(ByteReader& reader) {
  ArchiveShape shape;
  shape.channels = reader.Take<std::int32_t>();
  shape.frames = reader.Take<std::int32_t>();
  reader.Skip(4);
  shape.bits = reader.Take<std::int32_t>();
  shape.rate = reader.Take<double>();
  return shape;
}

std::string TakeString(ByteReader& reader) {
  return reader.TakeText(reader.Take<std::uint8_t>());
}

class BioWareArchive : public RecordingFile {
 public:
  explicit BioWareArchive(const std::string& path) : file_(path) {
    constexpr std::int64_t mostHeader = std::int64_t{4} << 10;
    std::string bytes = ReadBytes(file_, 0, mostHeader);
    try {
      ByteReader reader(bytes);
      const int plates = TakeHead(reader);
      std::int64_t at = static_cast<std::int64_t>(reader.Position());
      for (int p = 0; p < plates; ++p) {
        bytes = ReadBytes(file_, at, mostHeader);
        ByteReader plate(bytes);
        TakePlate(plate, p);
        dataAt_.push_back(at + static_cast<std::int64_t>(plate.Position()));
        at = dataAt_.back() + kChannelsOfPlate * shape_.frames * static_cast<std::int64_t>(sizeof(float));
        if (at > file_.Size()) {
          RefuseArchive();
        }
      }
      if (at != file_.Size() || plates < 1) {
        RefuseArchive();
      }
    } catch (const FileError&) {
      RefuseArchive();
    }
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    std::vector<float> values(static_cast<std::size_t>(shape_.frames));
    const std::int64_t bytes = shape_.frames * static_cast<std::int64_t>(sizeof(float));
    std::int64_t read = shape_.frames;
    for (std::size_t k = 0; k < target.channels.size(); ++k) {
      if (target.turn(static_cast<double>(k) / static_cast<double>(target.channels.size()))) {
        return 0;  // channel lies behind channel: there is no shorter trial
      }
      const int c = target.channels[k];
      const std::int64_t at =
          dataAt_[static_cast<std::size_t>(c / kChannelsOfPlate)] + c % kChannelsOfPlate * bytes;
      const auto got =
          static_cast<std::int64_t>(file_.ReadAt(at, values.data(), static_cast<std::size_t>(bytes)));
      read = std::min(read, got / static_cast<std::int64_t>(sizeof(float)));
      const ChannelView column = target.matrix.Channel(static_cast<int>(k) + 1);
      for (std::int64_t i = 0; i < std::min(read, column.size()); ++i) {
        column[i] = values[static_cast<std::size_t>(i)];
      }
    }
    read = std::min(read, target.matrix.Samples());
    StoreTimes(1, read, target);
    CheckFinite(1, read, target);
    return read;
  }

 private:
  // Returns the number of plates.
  int TakeHead(ByteReader& reader) {
    if (reader.Take<std::int32_t>() != 2) {
      RefuseArchive();
    }
    reader.Skip(12);
    const std::int64_t rows = reader.Take<std::int32_t>();
    const std::int64_t columns = reader.Take<std::int32_t>();
    if (rows < 0 || columns < 0 || rows > 1000 || columns > 1000) {
      RefuseArchive();
    }
    reader.Skip(static_cast<std::size_t>(4 + rows * columns * 4 + 26));
    shape_ = TakeArchiveShape(reader);
    if (shape_.channels != kChannelsOfPlate || shape_.frames < 1 || !std::isfinite(shape_.rate) ||
        shape_.rate <= 0) {
      RefuseArchive();
    }
    reader.Skip(4 + 4 + 4 + 4 + 8);
    return reader.Take<std::uint16_t>();
  }

  void TakePlate(ByteReader& reader, int number) {
    if (number == 0) {
      if (reader.Take<std::uint16_t>() != 0xFFFF || reader.Take<std::uint16_t>() != 1 ||
          reader.TakeBytes(reader.Take<std::uint16_t>()) != "CPlateEight") {
        RefuseArchive();
      }
    } else if (reader.Take<std::uint16_t>() != 0x8001) {
      RefuseArchive();
    }
    reader.Skip(12);
    if (TakeArchiveShape(reader) != shape_) {
      RefuseArchive();
    }
    reader.Skip(2 * 4 + 2 * 4 + 3 * 4);
    const std::string maker = TakeString(reader);
    const std::string type = TakeString(reader);
    const std::string serial = TakeString(reader);
    reader.Skip(2 * 4 + 8 + 4);
    AddPlate(reader, number, maker + ", " + type + ", " + serial);
    for (int k = 0; k < 3; ++k) {
      TakeString(reader);
    }
    reader.Skip(8 + 16 * 8 + 16 * 8 + 104);
  }

  void AddPlate(ByteReader& reader, int number, const std::string& name) {
    ForcePlate definition{.PlateName = name,
                          .XYRange = 1,
                          .ZRange = 1,
                          .XSens = -1,
                          .YSens = -1,
                          .ZSens = -1,
                          .optFormulas = 1,
                          .optDistance = 1};  // the channels are newtons already
    definition.Width = reader.Take<double>();
    definition.Length = reader.Take<double>();
    definition.a = reader.Take<double>();
    definition.b = reader.Take<double>();
    reader.Skip(24);
    definition.az0 = -std::abs(reader.Take<double>());
    reader.Skip(8);
    for (const double distance :
         {definition.Width, definition.Length, definition.a, definition.b, definition.az0}) {
      if (!std::isfinite(distance)) {
        RefuseArchive();
      }
    }
    RecordedPlate plate{.words = "Force plate " + std::to_string(number + 1) + ": " + name + ", " +
                                 FormatNumber(definition.Width, "0") + " x " +
                                 FormatNumber(definition.Length, "0") + " mm",
                        .definition = definition,
                        .reducible = true};
    for (const char* sensor : kPlateSensors) {
      plate.channels.push_back(static_cast<int>(found_.channels.size()));
      found_.channels.push_back({.label = number > 0 ? sensor + ("#" + std::to_string(number + 1)) : sensor,
                                 .units = "N",
                                 .rate = shape_.rate,
                                 .samples = shape_.frames});
    }
    found_.plates.push_back(std::move(plate));
  }

  InputFile file_;
  ArchiveShape shape_;
  std::vector<std::int64_t> dataAt_;  // by plate
};

}  // namespace

std::unique_ptr<RecordingFile> OpenBioWareArchive(const std::string& path) {
  return std::make_unique<BioWareArchive>(path);
}

}  // namespace velmora
