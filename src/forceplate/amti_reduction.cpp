#include "forceplate/amti_reduction.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "forceplate/stretches.hpp"

namespace velmora {
namespace {

constexpr float kTop = 0.0413F;  // m
constexpr double kCentimetres = 100.0;

// One sample, all in 64 bits until it is stored. `d` is its first channel.
void Reduce(float* d, const std::array<float, kAmtiChannels>& s, double minForce, MomentUnit unit) {
  const double h = kTop;
  double Fx = double{d[0]} * s[0];
  double Fy = double{d[1]} * s[1];
  double Fz = double{d[2]} * s[2];
  const double Mx = double{d[3]} * s[3];
  const double My = double{d[4]} * s[4];
  const double Mz = double{d[5]} * s[5];
  double Ax = 0.0;
  double Ay = 0.0;
  double Tz = 0.0;
  if (std::abs(Fz) >= minForce) {
    Ax = -(Fx * h + My) / Fz;
    Ay = (Fy * h + Mx) / Fz;
    Tz = Ax * Fy - (Ay * Fx + Mz);
  } else {
    Fx = Fy = Fz = 0.0;
  }
  if (unit == MomentUnit::NewtonCentimetres) {
    Tz = Tz / kCentimetres;
  } else {
    Ax = Ax * kCentimetres;
    Ay = Ay * kCentimetres;
  }
  d[0] = static_cast<float>(Fx);
  d[1] = static_cast<float>(Fy);
  d[2] = static_cast<float>(Fz);
  d[3] = static_cast<float>(Ax);
  d[4] = static_cast<float>(Ay);
  d[5] = static_cast<float>(Tz);
}

}  // namespace

void ApplyLoads(Trial& trial, int base, const PlateMatrix& loads, const Turn& turn) {
  const ChannelView first = trial.Channel(base + 1);
  (void)trial.Channel(base + kAmtiChannels);
  InStretches(trial.NData, turn, [&](std::int64_t from, std::int64_t samples) {
    for (std::int64_t s = from - 1; s < from - 1 + samples; ++s) {
      float* const d = &first[s];
      std::array<double, kAmtiChannels> sums{};
      for (std::size_t i = 0; i < sums.size(); ++i) {
        for (std::size_t j = 0; j < sums.size(); ++j) {
          sums[i] += loads[sums.size() * i + j] * d[j];
        }
      }
      std::copy(sums.begin(), sums.end(), d);
    }
  });
}

void ReduceAmtiForces(Trial& trial, int base, const std::array<float, kAmtiChannels>& sensitivities,
                      float minForce, MomentUnit unit, const Turn& turn) {
  const ChannelView first = trial.Channel(base + 1);
  (void)trial.Channel(base + kAmtiChannels);
  InStretches(trial.NData, turn, [&](std::int64_t from, std::int64_t samples) {
    for (std::int64_t i = from - 1; i < from - 1 + samples; ++i) {
      Reduce(&first[i], sensitivities, minForce, unit);
    }
  });
}

}  // namespace velmora
