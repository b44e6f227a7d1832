#include "forceplate/plate_geometry.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "forceplate/file_plates.hpp"
#include "forceplate/kistler_reduction.hpp"
#include "forceplate/plate_distances.hpp"
#include "forceplate/plate_types.hpp"

namespace velmora {
namespace {

const ForcePlate& PlateOf(const PlateMemory& plates, int plate) {
  return plates.PlateTable.at(static_cast<std::size_t>(plate));
}

// Between plates the entries are millimetres. As long as nobody says what the plate's own distances are,
// they all are what the prompts ask for.
double Spacing(const ForcePlate& plate, double millimetres) {
  return static_cast<DistanceUnit>(plate.optDistance) == DistanceUnit::AsEntered ? millimetres
                                                                                 : millimetres / 10;
}

std::array<PlatePoint, 4> Rectangle(const PlateMemory& plates, int plate, double x, double y) {
  return {OnTheFloor(plates, plate, {x, y}), OnTheFloor(plates, plate, {-x, y}),
          OnTheFloor(plates, plate, {-x, -y}), OnTheFloor(plates, plate, {x, -y})};
}

}  // namespace

PlatePoint OnTheFloor(const PlateMemory& plates, int plate, PlatePoint local) {
  if (plate != 1) {
    return local;
  }
  const double angle = plates.PlateAngle * Pi / 180;
  const ForcePlate& how = PlateOf(plates, plate);
  return {local.x * std::cos(angle) + local.y * std::sin(angle) + Spacing(how, plates.PlateOffsetX),
          -local.x * std::sin(angle) + local.y * std::cos(angle) + Spacing(how, plates.PlateOffsetY)};
}

std::optional<std::array<PlatePoint, 4>> OutlineOf(const PlateMemory& plates, int plate) {
  const ForcePlate& how = PlateOf(plates, plate);
  if (!(how.Width > 0) || !(how.Length > 0)) {
    return std::nullopt;
  }
  return Rectangle(plates, plate, Centimetres(how, how.Width) / 2, Centimetres(how, how.Length) / 2);
}

// The given formulas count Ax towards sensors 2 and 3, the published ones towards 1 and 4.
std::optional<std::array<PlatePoint, 4>> SensorsOf(const PlateMemory& plates, int plate) {
  const ForcePlate& how = PlateOf(plates, plate);
  if (FamilyOf(how) == PlateFamily::Amti || (how.a == 0 && how.b == 0)) {
    return std::nullopt;
  }
  const double x = Centimetres(how, how.a) * (how.optFormulas == 0 ? -1 : 1);
  return Rectangle(plates, plate, x, Centimetres(how, how.b));
}

namespace {

const FilePlate* OfFile(const Trial& trial, const PlateMemory& plates, int plate) {
  const auto k = static_cast<std::size_t>(plate);
  const bool known = k < trial.FilePlates.size() && (trial.FileTypeCode == kBioWareFile ||
                                                     plates.FirstChannel == trial.FilePlates.front().base);
  return known ? &trial.FilePlates[k] : nullptr;
}

// Fz of six channels.
double VerticalOf(const float* d, const PlateMatrix* loads) {
  if (loads == nullptr) {
    return d[2];
  }
  double Fz = 0.0;
  for (std::size_t j = 0; j < 6; ++j) {
    Fz += (*loads)[12 + j] * d[j];
  }
  return Fz;
}

}  // namespace

const PlateMatrix* LoadsOfFile(const Trial& trial, const PlateMemory& plates, int plate) {
  const FilePlate* file = OfFile(trial, plates, plate);
  return file != nullptr && file->loads && !trial.ForcesReduced ? &*file->loads : nullptr;
}

std::int64_t BaseChannelOf(const Trial& trial, const PlateMemory& plates, int plate) {
  if (const FilePlate* file = OfFile(trial, plates, plate)) {
    return file->base;
  }
  return plates.FirstChannel + std::int64_t{plate} * ChannelsOf(FamilyIn(trial, PlateOf(plates, plate)));
}

std::optional<VerticalForce> VerticalForceOf(const Trial& trial, const PlateMemory& plates, int plate) {
  const ForcePlate& how = PlateOf(plates, plate);
  const PlateFamily family = FamilyIn(trial, how);
  const bool amti = family == PlateFamily::Amti;
  const std::int64_t base = BaseChannelOf(trial, plates, plate);
  if (trial.NData < 1 || base + ChannelsOf(family) > trial.NChan) {
    return std::nullopt;
  }
  const auto first = static_cast<int>(base) + (amti ? 1 : 5);
  const PlateMatrix* loads = LoadsOfFile(trial, plates, plate);
  const double scale = amti ? 1.0 : KistlerFactorsOf(how).S3;
  VerticalForce force;
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const float* d = trial.matrix.Frame(i) + first;
    const double Fz = (amti ? VerticalOf(d, loads) : double{d[0]} + d[1] + d[2] + d[3]) * scale;
    force.atFirst = i == 1 ? Fz : force.atFirst;
    force.largest = std::abs(Fz) > std::abs(force.largest) ? Fz : force.largest;
  }
  return force;
}

}  // namespace velmora
