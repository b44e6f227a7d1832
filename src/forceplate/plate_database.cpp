#include "forceplate/plate_database.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "core/files/files.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "forceplate/plate_types.hpp"

namespace velmora {
namespace {

/// A record behind its name; whole and packed, in the order in which it lies in the file. Bytes behind it
/// are 0 when we write, and not looked at when we read.
struct Layout {
  std::int16_t type;
  std::int16_t formulas;
  std::int16_t distance;
  std::int16_t unused;
  std::array<double, 11> numbers;  // a b az0 Width Length Thickness XYRange ZRange XSens YSens ZSens
  std::array<double, 6> gains;     // Fx Fy Fz Mx My Mz
};
static_assert(sizeof(Layout) == 8 + 17 * sizeof(double));
static_assert(PlateDatabase::kNameBytes + sizeof(Layout) <= PlateDatabase::kRecordBytes);

constexpr std::array<double ForcePlate::*, 11> kNumbers = {
    &ForcePlate::a,      &ForcePlate::b,         &ForcePlate::az0,     &ForcePlate::Width,
    &ForcePlate::Length, &ForcePlate::Thickness, &ForcePlate::XYRange, &ForcePlate::ZRange,
    &ForcePlate::XSens,  &ForcePlate::YSens,     &ForcePlate::ZSens};

bool IsPlate(const Layout& record) {
  const auto within = [](std::int16_t value, std::int16_t count) { return value >= 0 && value < count; };
  const auto finite = [](double x) { return std::isfinite(x); };
  return within(record.type, static_cast<std::int16_t>(kPlateTypes.size())) && within(record.formulas, 2) &&
         within(record.distance, 4) && std::all_of(record.numbers.begin(), record.numbers.end(), finite) &&
         std::all_of(record.gains.begin(), record.gains.end(), finite);
}

std::string RecordOf(const ForcePlate& plate) {
  Layout record{.type = plate.PlateType,
                .formulas = static_cast<std::int16_t>(plate.optFormulas),
                .distance = static_cast<std::int16_t>(plate.optDistance),
                .unused = 0,
                .numbers = {},
                .gains = plate.comGains};
  for (std::size_t k = 0; k < kNumbers.size(); ++k) {
    record.numbers[k] = plate.*kNumbers[k];
  }
  std::string bytes = ToWindows1252(RecordName(plate.PlateName));
  bytes.resize(PlateDatabase::kNameBytes, ' ');
  bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
  bytes.resize(PlateDatabase::kRecordBytes, '\0');
  return bytes;
}

}  // namespace

std::string RecordName(std::string_view name) {
  const std::string line = FromWindows1252(ToWindows1252(OneLine(name)));
  return Trim(Left(Trim(line), PlateDatabase::kNameBytes));
}

std::string PlateDatabase::Name(std::size_t record) const {
  return Trim(OneLine(FromWindows1252(std::string_view(bytes_).substr(record * kRecordBytes, kNameBytes))));
}

std::vector<std::string> PlateDatabase::Names() const {
  std::vector<std::string> names;
  for (std::size_t k = 0; k < Records(); ++k) {
    names.push_back(Name(k));
  }
  return names;
}

std::optional<ForcePlate> PlateDatabase::Plate(std::size_t record) const {
  Layout read{};
  std::memcpy(&read, bytes_.data() + record * kRecordBytes + kNameBytes, sizeof read);
  if (!IsPlate(read)) {
    return std::nullopt;
  }
  ForcePlate plate{.PlateType = read.type,
                   .PlateName = Name(record),
                   .comGains = read.gains,
                   .optFormulas = read.formulas,
                   .optDistance = read.distance};
  for (std::size_t k = 0; k < kNumbers.size(); ++k) {
    plate.*kNumbers[k] = read.numbers[k];
  }
  return plate;
}

void PlateDatabase::Put(const ForcePlate& plate) {
  const std::string bytes = RecordOf(plate);
  const std::string name = RecordName(plate.PlateName);
  for (std::size_t k = 0; k < Records(); ++k) {
    if (Name(k) == name) {
      bytes_.replace(k * kRecordBytes, kRecordBytes, bytes);
      return;
    }
  }
  bytes_.insert(Records() * kRecordBytes, bytes);
}

PlateDatabase ReadPlateDatabase(const std::string& path, const std::function<void(double)>& turn) {
  constexpr std::size_t kPiece = 1000 * PlateDatabase::kRecordBytes;
  const InputFile file(path);
  std::string bytes(static_cast<std::size_t>(file.Size()), '\0');
  std::size_t at = 0;
  while (at < bytes.size()) {
    const std::size_t wanted = std::min(kPiece, bytes.size() - at);
    const std::size_t got = file.ReadAt(static_cast<std::int64_t>(at), bytes.data() + at, wanted);
    at += got;
    if (turn) {
      turn(static_cast<double>(at) / static_cast<double>(bytes.size()));
    }
    if (got < wanted) {
      break;  // it has become shorter
    }
  }
  bytes.resize(at);
  return PlateDatabase(std::move(bytes));
}

void WritePlateDatabase(Workbench& workbench, const std::string& path, const PlateDatabase& database) {
  OutputFile file(path);
  file.Write(database.Bytes());
  CommitSave(workbench, file);
}

}  // namespace velmora
