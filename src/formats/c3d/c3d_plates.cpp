#include "formats/c3d/c3d_plates.hpp"

#include <array>
#include <cmath>
#include <span>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr const char* kPlateGroup = "FORCE_PLATFORM";
constexpr std::size_t kSixLoads = 6;
constexpr int kMatrixType = 4;
constexpr std::int16_t kC3dAmtiType = 5;  // in the program's list of types
constexpr double kMillimetre = 0.001;     // m

struct Vector {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

Vector operator-(const Vector& a, const Vector& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
double Length(const Vector& v) {
  return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

/// The parameters of all plates; a plate's share begins at its own place.
struct PlateParameters {
  std::vector<double> types;
  std::vector<double> channels;
  std::size_t channelsEach = 0;
  std::vector<double> corners;
  std::vector<double> origins;
  std::vector<double> matrices;
  double millimetres = 1.0;  // of the file's unit of length
  std::string pointUnits;

  [[nodiscard]] Vector At(const std::vector<double>& all, std::size_t first) const {
    if (first + 3 > all.size()) {
      return {};
    }
    return {all[first] * millimetres, all[first + 1] * millimetres, all[first + 2] * millimetres};
  }
};

double MillimetresOf(std::string_view units) {
  if (EqualNoCase(units, "m") || EqualNoCase(units, "meters")) {
    return 1000.0;
  }
  return EqualNoCase(units, "cm") ? 10.0 : 1.0;
}

PlateParameters ReadPlateParameters(const C3dHead& head) {
  const C3dParameters& parameters = head.parameters;
  PlateParameters all{.types = parameters.Numbers(kPlateGroup, "TYPE"),
                      .channels = parameters.LongNumbers(kPlateGroup, "CHANNEL"),
                      .corners = parameters.LongNumbers(kPlateGroup, "CORNERS"),
                      .origins = parameters.LongNumbers(kPlateGroup, "ORIGIN"),
                      .matrices = parameters.LongNumbers(kPlateGroup, "CAL_MATRIX")};
  const C3dParameter* channel = parameters.Find(kPlateGroup, "CHANNEL");
  all.channelsEach =
      channel == nullptr || channel->dimensions.size() < 2 ? kSixLoads : channel->dimensions.front();
  const std::vector<std::string> units = parameters.Texts("POINT", "UNITS");
  all.pointUnits = units.empty() ? "mm" : units.front();
  all.millimetres = MillimetresOf(all.pointUnits);
  return all;
}

// Newton metres in the unit of a moment: as its channel says, else in newtons by the unit of length.
double NewtonMetresOf(const std::string& units, const PlateParameters& all) {
  const std::string lower = ToLower(units);
  if (lower.find("mm") != std::string::npos) {
    return kMillimetre;
  }
  const bool newtons = lower.starts_with("n") && lower.find('m') != std::string::npos;
  return newtons ? 1.0 : all.millimetres * kMillimetre;
}

std::vector<int> ChannelsOfPlate(const PlateParameters& all, std::size_t plate) {
  std::vector<int> channels;
  for (std::size_t k = plate * all.channelsEach;
       k < (plate + 1) * all.channelsEach && k < all.channels.size(); ++k) {
    if (all.channels[k] > 0) {
      channels.push_back(static_cast<int>(all.channels[k]) - 1);
    }
  }
  return channels;
}

/// From the plate's origin to the middle of its surface, which lies above it: a z above 0 is a mistake of
/// sign.
Vector OriginOf(const PlateParameters& all, std::size_t plate) {
  const Vector origin = all.At(all.origins, 3 * plate);
  return origin.z > 0 ? Vector{-origin.x, -origin.y, -origin.z} : origin;
}

// Six loads in N and N.m about a point straight below the middle of the surface, of six channels: what the
// file's matrix makes of them (none: they are loads), with moments taken from the plate's origin to that
// point.
PlateMatrix LoadsOf(const PlateParameters& all, std::size_t plate, bool calibrated, double newtonMetres) {
  PlateMatrix loads{};
  for (std::size_t j = 0; j < kSixLoads; ++j) {
    for (std::size_t i = 0; i < kSixLoads; ++i) {
      const double factor =
          calibrated ? all.matrices[plate * kSixLoads * kSixLoads + i + kSixLoads * j] : (i == j ? 1.0 : 0.0);
      loads[kSixLoads * i + j] = factor * (i < 3 ? 1.0 : newtonMetres);
    }
  }
  const Vector origin = OriginOf(all, plate);
  const double x = origin.x * kMillimetre;
  const double y = origin.y * kMillimetre;
  for (std::size_t j = 0; j < kSixLoads; ++j) {
    const double Fx = loads[j];
    const double Fy = loads[kSixLoads + j];
    const double Fz = loads[2 * kSixLoads + j];
    loads[3 * kSixLoads + j] -= y * Fz;
    loads[4 * kSixLoads + j] += x * Fz;
    loads[5 * kSixLoads + j] -= x * Fy - y * Fx;
  }
  return loads;
}

ForcePlate PlateAt(const PlateParameters& all, std::size_t plate) {
  const auto corner = [&](std::size_t k) { return all.At(all.corners, 12 * plate + 3 * k); };
  return {.PlateName = "Plate " + std::to_string(plate + 1) + " of the file",
          .Width = Length(corner(0) - corner(1)),
          .Length = Length(corner(1) - corner(2)),
          .optFormulas = 1,  // the file's numbers are those of the published form
          .optDistance = 1};
}

void DescribeAmti(RecordedPlate& plate, const PlateParameters& all, std::size_t number, int type,
                  const std::vector<std::string>& units) {
  const bool calibrated = type == kMatrixType;
  if (plate.channels.size() < kSixLoads ||
      (calibrated && all.matrices.size() < (number + 1) * kSixLoads * kSixLoads)) {
    return;
  }
  plate.channels.resize(kSixLoads);
  const auto moment = static_cast<std::size_t>(plate.channels[3]);
  const double newtonMetres = NewtonMetresOf(moment < units.size() ? units[moment] : "", all);
  plate.definition.PlateType = kC3dAmtiType;
  plate.definition.az0 = std::abs(OriginOf(all, number).z);
  plate.loads = LoadsOf(all, number, calibrated, newtonMetres);
  plate.reducible = true;
}

// Its channels are newtons already: ranges and sensitivities that change nothing.
void DescribeKistler(RecordedPlate& plate, const PlateParameters& all, std::size_t number) {
  constexpr std::size_t eight = 8;
  if (plate.channels.size() < eight) {
    return;
  }
  plate.channels.resize(eight);
  const Vector origin = all.At(all.origins, 3 * number);
  ForcePlate& definition = plate.definition;
  definition.a = std::abs(origin.x);
  definition.b = std::abs(origin.y);
  definition.az0 = -std::abs(origin.z);
  definition.XYRange = definition.ZRange = 1.0;
  definition.XSens = definition.YSens = definition.ZSens = -1.0;
  plate.reducible = true;
}

// Numbers from `first` on, as many as `to` holds; zeros for those that the file has not got.
void CopyNumbers(const std::vector<double>& from, std::size_t first, std::span<float> to) {
  for (std::size_t k = 0; k < to.size() && first + k < from.size(); ++k) {
    to[k] = static_cast<float>(from[first + k]);
  }
}

C3dPlateRecord RecordAt(const PlateParameters& all, std::size_t plate, int type) {
  C3dPlateRecord record{.type = static_cast<std::int16_t>(type), .units = all.pointUnits};
  CopyNumbers(all.corners, 12 * plate, record.corners);
  CopyNumbers(all.origins, 3 * plate, record.origin);
  if (type == kMatrixType) {
    record.matrix.resize(kSixLoads * kSixLoads);
    CopyNumbers(all.matrices, record.matrix.size() * plate, record.matrix);
  }
  return record;
}

std::string WordsOf(const RecordedPlate& plate, std::size_t number, int type) {
  std::string words = "Force plate " + std::to_string(number + 1) + ": type " + std::to_string(type) + ", " +
                      FormatNumber(plate.definition.Width, "0") + " x " +
                      FormatNumber(plate.definition.Length, "0") + " mm, channels";
  for (const int channel : plate.channels) {
    words += " " + std::to_string(channel + 1);
  }
  return words;
}

}  // namespace

std::vector<RecordedPlate> C3dPlates(const C3dHead& head) {
  const PlateParameters all = ReadPlateParameters(head);
  const std::vector<std::string> units = head.parameters.LongTexts("ANALOG", "UNITS");
  const std::int64_t used =
      head.parameters.Count(kPlateGroup, "USED", static_cast<std::int64_t>(all.types.size()));
  std::vector<RecordedPlate> plates;
  for (std::size_t p = 0; p < std::min(static_cast<std::size_t>(used), all.types.size()); ++p) {
    const int type = static_cast<int>(all.types[p]);
    RecordedPlate plate{.channels = ChannelsOfPlate(all, p), .definition = PlateAt(all, p)};
    plate.words = WordsOf(plate, p, type);
    if (std::any_of(plate.channels.begin(), plate.channels.end(),
                    [&head](int c) { return c >= head.channels; })) {
      plate.words += ", which the file has not got";
    } else if (type == 2 || type == kMatrixType) {
      DescribeAmti(plate, all, p, type, units);
    } else if (type == 3) {
      DescribeKistler(plate, all, p);
    }
    plate.record = RecordAt(all, p, type);
    plates.push_back(std::move(plate));
  }
  return plates;
}

}  // namespace velmora
