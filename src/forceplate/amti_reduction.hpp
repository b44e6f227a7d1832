#pragma once

#include <array>

#include "core/trial/trial.hpp"
#include "dsp/turn.hpp"

namespace velmora {

inline constexpr int kAmtiChannels = 6;

/// What the moments of a plate are in.
enum class MomentUnit {
  NewtonCentimetres,  // the centre of pressure comes out in cm, the free moment is divided by 100
  NewtonMetres,       // the centre of pressure is multiplied by 100
};

/// Turns channels base+1 to base+6 (Fx Fy Fz Mx My Mz, each times its sensitivity) into Fx, Fy, Fz (N), Ax,
/// Ay (cm) and Tz (N.m), in place. Samples with a vertical force below minForce (N) on either side, or
/// none at all, become zeros. The top of the plate is 0.0413 m above its sensors.
/// Throws std::out_of_range when the trial has not got the channels.
void ReduceAmtiForces(Trial& trial, int base, const std::array<float, kAmtiChannels>& sensitivities,
                      float minForce, MomentUnit unit, const Turn& turn = {});

/// Turns the six channels of a plate of a file into the loads that they stand for (N, N.m), in place.
/// Throws std::out_of_range when the trial has not got the channels.
void ApplyLoads(Trial& trial, int base, const PlateMatrix& loads, const Turn& turn = {});

}  // namespace velmora
