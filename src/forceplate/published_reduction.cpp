#include "forceplate/published_reduction.hpp"

#include <array>
#include <cmath>
#include <cstdint>

#include "forceplate/amti_reduction.hpp"
#include "forceplate/kistler_reduction.hpp"
#include "forceplate/plate_distances.hpp"
#include "forceplate/stretches.hpp"

namespace velmora {
namespace {

constexpr double kCentimetresPerMetre = 100.0;

/// Forces in N and moments in N.m about the centre of the top.
struct Loads {
  double Fx;
  double Fy;
  double Fz;
  double Mx;
  double My;
  double Mz;
};

double Metres(const ForcePlate& plate, double distance) {
  return Centimetres(plate, distance) / kCentimetresPerMetre;
}

// The six channels that every plate ends in.
void Store(float* d, const Loads& on, double minForce) {
  if (!(std::abs(on.Fz) >= minForce)) {
    std::fill_n(d, kAmtiChannels, 0.0F);
    return;
  }
  const double x = -on.My / on.Fz;
  const double y = on.Mx / on.Fz;
  d[0] = static_cast<float>(on.Fx);
  d[1] = static_cast<float>(on.Fy);
  d[2] = static_cast<float>(on.Fz);
  d[3] = static_cast<float>(x * kCentimetresPerMetre);
  d[4] = static_cast<float>(y * kCentimetresPerMetre);
  d[5] = static_cast<float>(on.Mz - x * on.Fy + y * on.Fx);
}

void StoreFriction(float* d, const Loads& on, double minForce) {
  const bool loaded = std::abs(on.Fz) >= minForce;
  const double friction = std::sqrt(on.Fx * on.Fx + on.Fy * on.Fy);
  d[6] = loaded ? static_cast<float>(friction) : 0.0F;
  d[7] = loaded ? static_cast<float>(std::abs(friction / on.Fz)) : 0.0F;
}

template <typename Sample>
void ReduceSamples(Trial& trial, int base, int channels, const Turn& turn, const Sample& sample) {
  const ChannelView first = trial.Channel(base + 1);
  (void)trial.Channel(base + channels);
  InStretches(trial.NData, turn, [&](std::int64_t from, std::int64_t samples) {
    for (std::int64_t i = from - 1; i < from - 1 + samples; ++i) {
      sample(&first[i]);
    }
  });
}

}  // namespace

void ReduceKistlerAsPublished(Trial& trial, int base, const ForcePlate& plate, float minForce,
                              const Turn& turn) {
  const double a = Metres(plate, plate.a);
  const double b = Metres(plate, plate.b);
  const double az0 = -std::abs(Metres(plate, plate.az0));
  const double x = -plate.XYRange / plate.XSens;
  const double y = -plate.XYRange / plate.YSens;
  const double z = -plate.ZRange / plate.ZSens;
  const std::array<double, kKistlerChannels> newtons = {x, x, y, y, z, z, z, z};
  const double* zero = &trial.ChanOffset[base + 1];
  ReduceSamples(trial, base, kKistlerChannels, turn, [&](float* d) {
    std::array<double, kKistlerChannels> f{};
    for (std::size_t k = 0; k < f.size(); ++k) {
      f[k] = (d[k] - zero[k]) * newtons[k];
    }
    const auto [fx12, fx34, fy14, fy23, fz1, fz2, fz3, fz4] = f;
    const double Fx = fx12 + fx34;
    const double Fy = fy14 + fy23;
    const Loads on{.Fx = Fx,
                   .Fy = Fy,
                   .Fz = fz1 + fz2 + fz3 + fz4,
                   .Mx = b * (fz1 + fz2 - fz3 - fz4) + Fy * az0,
                   .My = a * (-fz1 + fz2 + fz3 - fz4) - Fx * az0,
                   .Mz = b * (-fx12 + fx34) + a * (fy14 - fy23)};
    Store(d, on, minForce);
    StoreFriction(d, on, minForce);
  });
}

void ReduceAmtiAsPublished(Trial& trial, int base, const ForcePlate& plate, float minForce,
                           const Turn& turn) {
  const double h = std::abs(Metres(plate, plate.az0));
  ReduceSamples(trial, base, kAmtiChannels, turn, [&](float* d) {
    const double Fx = d[0];
    const double Fy = d[1];
    const Loads on{.Fx = Fx, .Fy = Fy, .Fz = d[2], .Mx = -h * Fy + d[3], .My = h * Fx + d[4], .Mz = d[5]};
    Store(d, on, minForce);
  });
}

}  // namespace velmora
