#pragma once

#include "core/trial/trial.hpp"

namespace velmora::examples {

/// Trials as an instrument would have recorded them, made of formulas and of random numbers that are
/// the same on every machine. Each replaces what was in `trial`.

/// Surface EMG of two leg muscles in mV at 1000 Hz, 6 s: three bursts of the first, the second in
/// between, and a foot switch in V.
void MakeEmgBursts(Trial& trial);

/// One walking step over a force platform at 1000 Hz, 1.5 s: forces in N and moments in N.m about
/// the centre of its top, of a person of 720 N.
void MakeForcePlateStep(Trial& trial);

/// Two walking steps over two eight-channel platforms at 1000 Hz, 2 s: the sensors' forces in N, of a person
/// of 720 N. Sensors at 120 and 200 mm, 54 mm below the top.
void MakeTwoPlateStep(Trial& trial);

/// Quiet stance on a six-channel platform at 100 Hz, 30 s: forces in N and moments in N.m about sensors
/// 41.3 mm below the top, of a person of 640 N and 1.7 m who sways about the ankles.
void MakeQuietStance(Trial& trial);

/// A jump from both feet with a countermovement, on a platform at 1000 Hz, 4 s: forces in N, of a person of
/// 72 kg who leaves the ground at 2.9 m/s. The plate rings once in the flight.
void MakeJump(Trial& trial);

/// A minute of walking on a treadmill at 100 Hz: the vertical force below the left foot in N, of a person of
/// 700 N, and the left knee's flexion in degrees. 51 heel strikes some 1.17 s apart, no two alike; the heel
/// bounces at most of them.
void MakeTreadmillWalk(Trial& trial);

/// A wrist that reaches out and back four times, in m at 100 Hz, 8 s, with the noise of a camera
/// system: 1 mm on two coordinates.
void MakeNoisyDisplacement(Trial& trial);

/// The resultant acceleration of a head form in g at 20 kHz, 0.4 s: a hard blow of 8 ms and a padded one of
/// 30 ms.
void MakeHeadImpacts(Trial& trial);

/// Three axes of an accelerometer in a head form that falls, in m/s^2 at 10 kHz, 0.6 s: it hangs, falls, hits
/// the ground obliquely within 9 ms, bounces and lies. Gravity is measured while it rests, and nothing while
/// it falls.
void MakeHeadFall(Trial& trial);

/// The ankle of a person of 70 kg in a walking step at 200 Hz, 1.1 s from heel strike to heel strike: the
/// moment in N.m and the angle in degrees, both above 0 for plantar flexion, the angle with the noise of a
/// camera system.
void MakeAnkleStep(Trial& trial);

/// Surface EMG in mV of an arm that holds a weight for 60 s at 1000 Hz, of two people: the biceps by wires
/// with an amplifier's offset, the brachioradialis by a Trigno sensor that comes 48 ms late, and the force in
/// N. The spectrum sinks as the muscles tire, and the amplitude grows.
void MakeHoldOfFirst(Trial& trial);
void MakeHoldOfSecond(Trial& trial);

/// One stride of a walk from heel strike to heel strike at 100 Hz, 1.1 s: the flexion of hip and knee in
/// degrees.
void MakeHipKneeStride(Trial& trial);

/// One stride of a walk from heel strike to heel strike at 200 Hz: the vertical force under the foot in N, of
/// a person of 700 N, and the angle of the knee in degrees. No two strides (1, 2, ...) are of the same
/// length.
void MakeStride(Trial& trial, int stride);
template <int stride>
void MakeStride(Trial& trial) {
  MakeStride(trial, stride);
}

}  // namespace velmora::examples
