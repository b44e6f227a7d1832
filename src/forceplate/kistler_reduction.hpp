#pragma once

#include <array>

#include "core/command_memory.hpp"
#include "core/simd.hpp"
#include "core/trial/trial.hpp"
#include "dsp/turn.hpp"

namespace velmora {

inline constexpr int kKistlerChannels = 8;

/// What the formulas of an eight-channel plate take, each rounded to 32 bits.
struct KistlerFactors {
  float a = 0.0F;  // distances; Ax and Ay come out in their unit, Tz in newtons times a hundredth of it
  float b = 0.0F;
  float az0 = 0.0F;  // below 0
  float S1 = 0.0F;   // newtons per unit of a channel along X
  float S2 = 0.0F;   // along Y
  float S3 = 0.0F;   // along Z
};

/// The factors of a plate from its ranges and sensitivities; distances are taken in its optDistance, and
/// turned into centimetres where that names a unit.
KistlerFactors KistlerFactorsOf(const ForcePlate& plate);

/// Turns channels base+1 to base+8 (fx12 fx34 fy14 fy23 fz1 fz2 fz3 fz4, less their ChanOffset) into Fx,
/// -Fy, Fz (N), Ax, Ay, Tz, the friction force and its coefficient, in place, sample by sample. Samples
/// with a vertical force below minForce (N) on either side, or none at all, become zeros.
/// Throws std::out_of_range when the trial has not got the channels.
void ReduceKistlerForces(Trial& trial, int base, const KistlerFactors& factors, float minForce,
                         const Turn& turn = {}, SimdLevel level = MachineSimdLevel());

/// The same one sample after the other: what the fast way is held to.
void ReduceKistlerForcesPlainly(Trial& trial, int base, const KistlerFactors& factors, float minForce);

}  // namespace velmora
