#include "sample_trials.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "made_signals.hpp"

namespace velmora::examples {
void MakeEmgBursts(Trial& trial) {
  Prepare(trial, "1 EMG bursts of two muscles, walking on the spot", 1000.0, 6.0,
          {{"Vastus lat", "mV"}, {"Biceps fem", "mV"}, {"Footswitch", "V"}});
  MuscleNoise vastus(11, trial.Rate);
  MuscleNoise biceps(12, trial.Rate);
  Random base(13);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    double extensor = 0.02;
    double flexor = 0.015;
    bool down = false;
    for (const double start : {0.8, 2.6, 4.4}) {
      extensor += 0.9 * Hump(t, start, start + 0.7);
      flexor += 0.5 * Hump(t, start + 0.8, start + 1.4);
      down = down || (t > start + 0.1 && t < start + 0.9);
    }
    trial.Data(i + 1, 1) = static_cast<float>(extensor * vastus.Next() + 0.004);  // the amplifier's offset
    trial.Data(i + 1, 2) = static_cast<float>(flexor * biceps.Next() - 0.007);
    trial.Data(i + 1, 3) = static_cast<float>((down ? 4.8 : 0.1) + 0.02 * base.Normal());
  }
}

void MakeForcePlateStep(Trial& trial) {
  Prepare(trial, "2 Step over a force platform", 1000.0, 1.5,
          {{"Fx", "N"}, {"Fy", "N"}, {"Fz", "N"}, {"Mx", "N.m"}, {"My", "N.m"}, {"Mz", "N.m"}});
  Random noise(21);
  const double weight = 720.0;
  const double begin = 0.4;
  const double stance = 0.68;
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    const double s = (t - begin) / stance;  // 0 at the heel's touch, 1 at toe-off
    const bool on = s > 0 && s < 1;
    // Two humps of loading and push-off; braking, then driving; the foot rolls from heel to toe.
    const double fz =
        on ? weight * (1.05 * Hump(s, -0.02, 0.56) + 1.1 * Hump(s, 0.44, 1.0) + 0.55 * Hump(s, 0.1, 0.9))
           : 0.0;
    const double fy = on ? -0.18 * weight * std::sin(2 * Pi * s) : 0.0;
    const double fx = on ? 0.05 * weight * std::sin(Pi * s) : 0.0;
    const double x = 0.03 + 0.01 * std::sin(Pi * s);
    const double y = -0.12 + 0.25 * s;
    const double row[] = {fx, fy, fz, y * fz, -x * fz, x * fy - y * fx};
    for (int c = 1; c <= trial.NChan; ++c) {
      const double grain = c <= 3 ? 0.8 : 0.15;
      trial.Data(i + 1, c) = static_cast<float>(row[c - 1] + grain * noise.Normal());
    }
  }
}

namespace {

/// What lies on an eight-channel plate: a force at a place of its top, in N and m.
struct PlateLoad {
  double fx = 0.0;
  double fy = 0.0;
  double fz = 0.0;
  double x = 0.0;
  double y = 0.0;
};

// Sensors at 0.12 and 0.2 m, 0.054 m below the top, of a newton a unit. The signs are those with which the
// program's own formulas find the force and its place again.
void PutOnSensors(Trial& trial, std::int64_t i, int base, const PlateLoad& load, Random& noise) {
  constexpr double a = 0.12;
  constexpr double b = 0.2;
  constexpr double az0 = -0.054;
  const double across = (load.x * load.fz - load.fx * az0) / a;  // fz2 + fz3 - fz1 - fz4
  const double along = (load.y * load.fz + load.fy * az0) / b;   // fz1 + fz2 - fz3 - fz4
  const double row[] = {load.fx / 2,
                        load.fx / 2,
                        load.fy / 2,
                        load.fy / 2,
                        (load.fz - across + along) / 4,
                        (load.fz + across + along) / 4,
                        (load.fz + across - along) / 4,
                        (load.fz - across - along) / 4};
  for (int k = 0; k < 8; ++k) {
    trial.Data(i, base + 1 + k) = static_cast<float>(row[k] + 0.2 * noise.Normal());
  }
}

// One step: two humps of loading and push-off, braking and driving, the foot rolling from heel to toe.
PlateLoad StepAt(double s, double weight) {
  if (s <= 0 || s >= 1) {
    return {};
  }
  return {.fx = 0.05 * weight * std::sin(Pi * s),
          .fy = -0.18 * weight * std::sin(2 * Pi * s),
          .fz = weight * (1.05 * Hump(s, -0.02, 0.56) + 1.1 * Hump(s, 0.44, 1.0) + 0.55 * Hump(s, 0.1, 0.9)),
          .x = 0.03 + 0.01 * std::sin(Pi * s),
          .y = -0.12 + 0.25 * s};
}

}  // namespace

void MakeTwoPlateStep(Trial& trial) {
  Prepare(trial, "4 Two steps over two force platforms", 1000.0, 2.0,
          {{"1 fx12", "N"},
           {"1 fx34", "N"},
           {"1 fy14", "N"},
           {"1 fy23", "N"},
           {"1 fz1", "N"},
           {"1 fz2", "N"},
           {"1 fz3", "N"},
           {"1 fz4", "N"},
           {"2 fx12", "N"},
           {"2 fx34", "N"},
           {"2 fy14", "N"},
           {"2 fy23", "N"},
           {"2 fz1", "N"},
           {"2 fz2", "N"},
           {"2 fz3", "N"},
           {"2 fz4", "N"}});
  Random noise(41);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    PutOnSensors(trial, i + 1, 0, StepAt((t - 0.4) / 0.68, 720.0), noise);
    PutOnSensors(trial, i + 1, 8, StepAt((t - 0.95) / 0.68, 720.0), noise);
  }
}

namespace {

/// A sway of the centre of gravity in one direction: a few slow sines.
struct SlowSway {
  double phase[5];

  explicit SlowSway(Random& random) {
    for (double& angle : phase) {
      angle = 2 * Pi * random.Uniform();
    }
  }
  /// Metres from the middle, and metres per second squared, of a sway `size` times the usual.
  void At(double t, double size, double& place, double& acceleration) const {
    constexpr double hertz[] = {0.07, 0.16, 0.31, 0.52, 0.83};
    constexpr double metres[] = {0.0042, 0.0024, 0.0013, 0.0006, 0.0002};
    place = acceleration = 0.0;
    for (int k = 0; k < 5; ++k) {
      const double w = 2 * Pi * hertz[k];
      const double part = size * metres[k] * std::cos(w * t + phase[k]);
      place += part;
      acceleration -= w * w * part;
    }
  }
};

}  // namespace

// The body is a pendulum about its ankles: the pressure runs ahead of its centre by as much as accelerates
// it.
void MakeQuietStance(Trial& trial) {
  Prepare(trial, "5 Quiet stance on a force platform", 100.0, 30.0,
          {{"Fx", "N"}, {"Fy", "N"}, {"Fz", "N"}, {"Mx", "N.m"}, {"My", "N.m"}, {"Mz", "N.m"}});
  constexpr double weight = 640.0;
  constexpr double gravity = 9.80665;
  constexpr double height = 1.7;
  constexpr double top = 0.0413;
  constexpr double centre = 0.521 * height;
  constexpr double perSecondSquared = gravity * centre / (0.0533 * height * height + centre * centre);
  Random noise(51);
  const SlowSway across(noise);
  const SlowSway along(noise);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    double x = 0.0;
    double y = 0.0;
    double ax = 0.0;
    double ay = 0.0;
    across.At(t, 0.6, x, ax);
    along.At(t, 1.0, y, ay);
    const double fx = weight / gravity * ax;
    const double fy = weight / gravity * ay;
    x += 0.01 - ax / perSecondSquared;
    y += -0.02 - ay / perSecondSquared;
    const double row[] = {fx, fy, weight, y * weight - fy * top, -x * weight - fx * top, x * fy - y * fx};
    for (int c = 1; c <= trial.NChan; ++c) {
      trial.Data(i + 1, c) = static_cast<float>(row[c - 1] + (c <= 3 ? 0.1 : 0.01) * noise.Normal());
    }
  }
}

namespace {

constexpr double kJumperMass = 72.0;
constexpr double kJumpGravity = 9.80665;

// Down, then up against the ground, which lets go over the last 30 ms.
double PushAt(double t) {
  constexpr double kTakeOff = 2.02;
  const double dip = -6.0 * Hump(t, 1.2, 1.6);
  const double push = 14.5 * Hump(t, 1.5, 2.1);
  const double held = std::clamp((kTakeOff - t) / 0.03, 0.0, 1.0);
  return (kJumpGravity + dip + push) * held;
}

}  // namespace

void MakeJump(Trial& trial) {
  Prepare(trial, "10 Countermovement jump", 1000.0, 4.0, {{"Fx", "N"}, {"Fy", "N"}, {"Fz", "N"}});
  constexpr double kTakeOff = 2.02;
  double upwards = 0.0;  // m/s at take-off
  for (std::int64_t i = 0; TimeOf(trial, i) < kTakeOff; ++i) {
    upwards += (PushAt(TimeOf(trial, i)) - kJumpGravity) / trial.Rate;
  }
  const double landing = kTakeOff + 2 * upwards / kJumpGravity;
  Random noise(91);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    // The fall is stopped within 0.4 s.
    const double stop = kJumpGravity * std::clamp((t - landing) / 0.01, 0.0, 1.0) +
                        upwards / 0.2 * Hump(t, landing, landing + 0.4);
    const double force = kJumperMass * (t < kTakeOff ? PushAt(t) : stop);
    const double ringing = 30 * Hump(t, kTakeOff + 0.2, kTakeOff + 0.21);
    const double row[] = {4 * Hump(t, 1.4, 2.0), -15 * Hump(t, 1.5, 2.0), force + ringing};
    for (int c = 1; c <= trial.NChan; ++c) {
      trial.Data(i + 1, c) = static_cast<float>(row[c - 1] + 0.8 * noise.Normal());
    }
  }
}

void MakeTreadmillWalk(Trial& trial) {
  Prepare(trial, "9 A minute on the treadmill", 100.0, 60.0, {{"Fz left", "N"}, {"Knee left", "deg"}});
  constexpr double weight = 700.0;
  Random noise(61);
  double begin = 0.4;  // of the stride at hand, when the heel strikes
  double length = 1.17;
  double size = 1.0;
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    if (t >= begin + length) {
      begin += length;
      length = 1.17 + 0.02 * noise.Normal();
      size = 1.0 + 0.02 * noise.Normal();
    }
    const double stance = (t - begin) / (0.62 * length);  // 0 to 1 on the ground
    const double stride = (t - begin) / length;
    const bool loaded = stance >= 0 && stance < 1;
    const double humps = std::sin(Pi * stance) + 0.35 * std::sin(3 * Pi * stance);
    const double bounce = stance < 0.05 ? 200 * std::sin(2 * Pi * stance / 0.05) : 0.0;  // of the heel
    const double force = loaded ? size * weight * humps * 1.15 + bounce : 0.0;
    const double knee = 8 + 12 * Hump(stride, 0.02, 0.3) + 55 * Hump(stride, 0.5, 0.98);
    trial.Data(i + 1, 1) = static_cast<float>(force + 3.0 * noise.Normal());
    trial.Data(i + 1, 2) = static_cast<float>(size * knee + 0.4 * noise.Normal());
  }
}

void MakeNoisyDisplacement(Trial& trial) {
  Prepare(trial, "3 Reaching with the wrist, four times", 100.0, 8.0, {{"Wrist X", "m"}, {"Wrist Z", "m"}});
  Random noise(31);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    const double reach = 0.5 * (1 - std::cos(2 * Pi * t / 2.0));
    trial.Data(i + 1, 1) = static_cast<float>(0.15 + 0.42 * reach + 0.001 * noise.Normal());
    trial.Data(i + 1, 2) = static_cast<float>(0.95 + 0.12 * std::sin(Pi * reach) + 0.001 * noise.Normal());
  }
}

void MakeHeadImpacts(Trial& trial) {
  Prepare(trial, "6 Two blows on a head form", 20000.0, 0.4, {{"Head acc", "g"}});
  Random noise(41);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    const double blows = 230 * Hump(t, 0.1, 0.108) + 85 * Hump(t, 0.25, 0.28);
    // The resultant of three axes is never below 0, not even at rest.
    trial.Data(i + 1, 1) = static_cast<float>(std::hypot(blows + 0.3 * noise.Normal(), 0.3 * noise.Normal()));
  }
}

namespace {

/// From 0 to 1 between two places, with smooth ends.
double Step(double x, double from, double to) {
  const double part = std::clamp((x - from) / (to - from), 0.0, 1.0);
  return 0.5 * (1 - std::cos(Pi * part));
}

}  // namespace

void MakeHeadFall(Trial& trial) {
  Prepare(trial, "10 A head form falls", 10000.0, 0.2,
          {{"Head X", "m/s^2"}, {"Head Y", "m/s^2"}, {"Head Z", "m/s^2"}});
  constexpr double g = 9.80665;
  Random noise(43);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    const double blow = 95 * g * Hump(t, 0.04, 0.085) + 6 * g * Hump(t, 0.15, 0.18);
    const double since = std::max(t - 0.04, 0.0);
    const double ring = 6 * g * std::exp(-since / 0.008) * std::sin(2 * Pi * 500 * since);
    const double row[] = {0.48 * blow + ring, 0.36 * blow - 0.5 * ring, 0.80 * blow};
    for (int c = 1; c <= trial.NChan; ++c) {
      trial.Data(i + 1, c) = static_cast<float>(row[c - 1] + 0.5 * noise.Normal());
    }
  }
}

// The shank rolls over the foot, which takes energy up, and then the calf pushes off, which gives more of it
// back.
void MakeAnkleStep(Trial& trial) {
  Prepare(trial, "11 The ankle in a step", 200.0, 1.1, {{"Ankle mom", "N.m"}, {"Ankle ang", "deg"}});
  Random noise(53);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double s = TimeOf(trial, i) / 1.1;
    const double moment = -8 * Hump(s, 0.0, 0.1) + 112 * Step(s, 0.05, 0.48) * (1 - Step(s, 0.5, 0.63));
    const double angle = 5 * Hump(s, 0.0, 0.14) - 10 * Step(s, 0.12, 0.44) + 28 * Step(s, 0.45, 0.63) -
                         18 * Step(s, 0.65, 0.85);
    trial.Data(i + 1, 1) = static_cast<float>(moment);
    trial.Data(i + 1, 2) = static_cast<float>(angle + 0.03 * noise.Normal());
  }
}

namespace {

/// One person's way to tire.
struct Person {
  const char* title;
  std::uint64_t seed;
  double fresh;  // Hz, around which the muscle's power lies at first
  double tired;  // and at the end
  double force;  // N
};

void MakeHold(Trial& trial, const Person& person) {
  Prepare(trial, person.title, 1000.0, 60.0, {{"Biceps br", "mV"}, {"Trigno BR", "mV"}, {"Force", "N"}});
  constexpr std::int64_t kTrignoDelay = 48;  // samples
  MuscleNoise biceps(person.seed, trial.Rate);
  MuscleNoise brachioradialis(person.seed + 1, trial.Rate);
  Random noise(person.seed + 2);
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(trial.NData);
    const double frequency = person.fresh + (person.tired - person.fresh) * part;
    biceps.Resonate(frequency);
    brachioradialis.Resonate(1.1 * frequency);
    // The helper comes in every five seconds.
    const double late = TimeOf(trial, std::max<std::int64_t>(i - kTrignoDelay, 0));
    const double help = 0.05 + 0.4 * std::pow(std::sin(Pi * late / 5.0), 4);
    const double tremor = 0.02 * std::sin(2 * Pi * 9.0 * TimeOf(trial, i)) * (0.5 + part);
    trial.Data(i + 1, 1) =
        static_cast<float>((0.25 + 0.15 * part) * biceps.Next() + 0.011 + 0.002 * noise.Normal());
    trial.Data(i + 1, 2) = static_cast<float>(help * brachioradialis.Next() + 0.002 * noise.Normal());
    trial.Data(i + 1, 3) = static_cast<float>(person.force * (1 + tremor) + 0.3 * noise.Normal());
  }
}

}  // namespace

void MakeHoldOfFirst(Trial& trial) {
  MakeHold(trial, {.title = "7 Holding a weight until tired, first person",
                   .seed = 71,
                   .fresh = 105,
                   .tired = 60,
                   .force = 92});
}

void MakeHoldOfSecond(Trial& trial) {
  MakeHold(trial, {.title = "8 Holding a weight until tired, second person",
                   .seed = 81,
                   .fresh = 95,
                   .tired = 75,
                   .force = 120});
}

namespace {

/// A bell of height 1 at `centre`; a third of it is left one `width` away.
double Bell(double x, double centre, double width) {
  const double away = (x - centre) / width;
  return std::exp(-away * away);
}

}  // namespace

// The hip goes back from heel strike to the end of stance and swings forward; the knee bends a little under
// the load and a lot in the swing.
void MakeHipKneeStride(Trial& trial) {
  Random random(61);
  Prepare(trial, "10 Hip and knee over a stride", 100.0, 1.1, {{"Hip", "deg"}, {"Knee", "deg"}});
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const double x = static_cast<double>(i - 1) / static_cast<double>(trial.NData - 1);
    const double turn = 2 * std::numbers::pi * x;
    const double hip = 12 + 21 * std::cos(turn + 0.35) - 2.5 * std::cos(2 * turn + 1.2);
    const double knee = 4 + 14 * Bell(x, 0.15, 0.09) + 58 * Bell(x, 0.73, 0.13);
    trial.Data(i, 1) = static_cast<float>(hip + 0.05 * random.Normal());
    trial.Data(i, 2) = static_cast<float>(knee + 0.05 * random.Normal());
  }
}

// Two peaks of the force on either side of midstance, then the swing; the knee bends a little under the load
// and a lot in the swing. A whole stride is 1 long.
void MakeStride(Trial& trial, int stride) {
  Random random(static_cast<std::uint64_t>(100 + stride));
  constexpr double kRate = 200.0;
  const double seconds = std::round((1.05 + 0.05 * random.Normal()) * kRate) / kRate;
  Prepare(trial, "Stride", kRate, seconds, {{"Fz", "N"}, {"Knee", "deg"}});
  const double weight = 700.0 * (1 + 0.02 * random.Normal());
  const double first = 0.14 + 0.01 * random.Normal();
  const double second = 0.46 + 0.01 * random.Normal();
  const double load = 14 + 2 * random.Normal();
  const double swing = 58 + 3 * random.Normal();
  constexpr double kToeOff = 0.62;
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const double x = static_cast<double>(i - 1) / static_cast<double>(trial.NData - 1);
    const double stance = std::clamp(std::min(x / 0.03, (kToeOff - x) / 0.04), 0.0, 1.0);
    const double force = 0.72 * Bell(x, 0.3, 0.2) + 0.85 * Bell(x, first, 0.09) + 0.9 * Bell(x, second, 0.09);
    trial.Data(i, 1) = static_cast<float>(stance * force * weight + 2 * random.Normal());
    trial.Data(i, 2) = static_cast<float>(4 + load * Bell(x, 0.15, 0.09) + swing * Bell(x, 0.73, 0.13) +
                                          0.3 * random.Normal());
  }
}

}  // namespace velmora::examples
