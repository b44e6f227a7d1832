#include "forceplate/combine_plates.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "forceplate/plate_types.hpp"
#include "forceplate/stretches.hpp"

namespace velmora {
namespace {

struct Angles {
  double cosPlate;
  double sinPlate;
  double cosProgression;
  double sinProgression;
};

/// Force, point of application and free moment.
struct Wrench {
  double Fx = 0.0;
  double Fy = 0.0;
  double Fz = 0.0;
  double Ax = 0.0;
  double Ay = 0.0;
  double Tz = 0.0;
};

Wrench OfPlate1(const float* d, const PlateSpacing& spacing) {
  return {.Fx = d[0],
          .Fy = -double{d[1]},
          .Fz = d[2],
          .Ax = d[3] - spacing.X / 2,
          .Ay = d[4] - spacing.Y / 2,
          .Tz = d[5]};
}

Wrench OfPlate2(const float* d, const PlateSpacing& spacing, const Angles& turned) {
  return {.Fx = d[0] * turned.cosPlate + d[1] * turned.sinPlate,
          .Fy = -double{d[0]} * turned.sinPlate + d[1] * turned.cosPlate,
          .Fz = d[2],
          .Ax = d[3] * turned.cosPlate + d[4] * turned.sinPlate + spacing.X,
          .Ay = -double{d[3]} * turned.sinPlate + d[4] * turned.cosPlate + spacing.Y,
          .Tz = d[5]};
}

Wrench Sum(const Wrench& p, const Wrench& q) {
  Wrench sum{.Fx = p.Fx + q.Fx, .Fy = p.Fy + q.Fy, .Fz = p.Fz + q.Fz};
  if (sum.Fz != 0) {
    sum.Ax = (p.Fz * p.Ax + q.Fz * q.Ax) / sum.Fz;
    sum.Ay = (p.Fz * p.Ay + q.Fz * q.Ay) / sum.Fz;
    sum.Tz = p.Tz + q.Tz + p.Fy * (p.Ax - sum.Ax) - p.Fx * (p.Ay - sum.Ay) + q.Fy * (q.Ax - sum.Ax) -
             q.Fx * (q.Ay - sum.Ay);
  }
  return sum;
}

// Each line takes what the one before has written.
void TurnToProgression(Wrench& sum, const Angles& turned) {
  sum.Fx = turned.cosProgression * sum.Fx + turned.sinProgression * sum.Fy;
  sum.Fy = turned.cosProgression * sum.Fy + turned.sinProgression * sum.Fx;
  sum.Ax = turned.cosProgression * sum.Ax + turned.sinProgression * sum.Ay;
  sum.Ay = turned.cosProgression * sum.Ay + turned.sinProgression * sum.Ax;
}

}  // namespace

void CombineTwoPlates(Trial& trial, int base, CombineKind kind, const PlateSpacing& spacing,
                      const Turn& turn) {
  const bool eight = kind == CombineKind::EightChannels;
  const int n = ChannelsOf(eight ? PlateFamily::Kistler : PlateFamily::Amti);
  (void)trial.Channel(base + 2 * n);
  const ChannelView first = trial.Channel(base + 1);
  const double theta = spacing.angle * Pi / 180;
  const double phi = spacing.progression * Pi / 180;
  const Angles turned{std::cos(theta), std::sin(theta), std::cos(phi), std::sin(phi)};
  InStretches(trial.NData, turn, [&](std::int64_t from, std::int64_t samples) {
    for (std::int64_t i = from - 1; i < from - 1 + samples; ++i) {
      float* const d = &first[i];
      Wrench sum = Sum(OfPlate1(d, spacing), OfPlate2(d + n, spacing, turned));
      const double Ff = std::sqrt(sum.Fx * sum.Fx + sum.Fy * sum.Fy);
      const double CF = sum.Fz != 0 ? std::abs(Ff / sum.Fz) : 0.0;
      TurnToProgression(sum, turned);
      d[0] = static_cast<float>(sum.Fx);
      d[1] = static_cast<float>(-sum.Fy);
      d[2] = static_cast<float>(sum.Fz);
      d[3] = static_cast<float>(sum.Ax);
      d[4] = static_cast<float>(sum.Ay);
      d[5] = static_cast<float>(sum.Tz);
      if (eight) {
        d[6] = static_cast<float>(Ff);
        d[7] = static_cast<float>(CF);
      }
    }
  });
}

}  // namespace velmora
