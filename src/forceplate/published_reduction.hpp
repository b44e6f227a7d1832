#pragma once

#include "core/command_memory.hpp"
#include "core/trial/trial.hpp"
#include "dsp/turn.hpp"

namespace velmora {

/// Channels base+1 to base+8 of an eight-channel plate as the maker publishes it (Kistler, "Formulae for the
/// evaluation of force plate data"): right-handed, forces as they come, with Mx = b (fz1+fz2-fz3-fz4) +
/// Fy az0, My = a (-fz1+fz2+fz3-fz4) - Fx az0, az0 below 0, and the point (-My/Fz, Mx/Fz). Layout,
/// units and threshold as of ReduceKistlerForces, ChanOffset too; Fy keeps its sign.
/// Throws std::out_of_range when the trial has not got the channels.
void ReduceKistlerAsPublished(Trial& trial, int base, const ForcePlate& plate, float minForce,
                              const Turn& turn = {});

/// Channels base+1 to base+6 (N and N.m) in the right-handed form of the open literature: the centre of
/// pressure x = (-h Fx - My)/Fz, y = (-h Fy + Mx)/Fz with h the depth of the sensors below the top, the free
/// moment Mz - x Fy + y Fx. Layout, units and threshold as of ReduceAmtiForces.
/// Throws std::out_of_range when the trial has not got the channels.
void ReduceAmtiAsPublished(Trial& trial, int base, const ForcePlate& plate, float minForce,
                           const Turn& turn = {});

}  // namespace velmora
