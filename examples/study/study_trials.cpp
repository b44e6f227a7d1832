#include "study/study_trials.hpp"

#include "made_signals.hpp"

namespace velmora::examples {
namespace {

/// How a laboratory records. Channels are told by what they are of: 0 force, 1 vastus lateralis, 2 biceps
/// femoris.
struct Laboratory {
  const char* command;
  const char* extension;
  double rate;  // Hz
  int order[3];
  ChannelName names[3];  // of force, vastus, biceps
};

constexpr Laboratory kLaboratories[] = {
    {"save.vmb", "vmb", 1000.0, {0, 1, 2}, {{"Fz", "N"}, {"EMG VL", "mV"}, {"EMG BF", "mV"}}},
    {"save.c3d", "c3d", 2000.0, {2, 1, 0}, {{"FZ 1", "N"}, {"L_VL.emg", "mV"}, {"L_BF.emg", "mV"}}},
    {"save.vma", "vma", 1200.0, {1, 0, 2}, {{"plate fz", "N"}, {"vl left", "mV"}, {"bf left", "mV"}}},
};

constexpr double kTouch = 0.6;  // s

// A blow of the forefoot, a higher one of the heel, and the stance that is left.
double Force(double t, double weight, double height) {
  const double since = t - kTouch;
  if (since <= 0) {
    return 0.0;
  }
  const double blow = weight * (0.8 + 3.0 * height);
  const double settled = weight * (1 - std::exp(-since / 0.05));
  return settled + blow * Hump(since, 0.0, 0.03) + 1.7 * blow * Hump(since, 0.02, 0.09);
}

}  // namespace

std::vector<StudyTrial> StudyTrials() {
  std::vector<StudyTrial> trials;
  for (int person = 1; person <= 6; ++person) {
    for (const double height : {0.3, 0.6}) {
      for (int repetition = 1; repetition <= 2; ++repetition) {
        const int laboratory = (person - 1) / 2;
        trials.push_back({.name = "S" + std::to_string(person) + (height < 0.5 ? "-low-" : "-high-") +
                                  std::to_string(repetition),
                          .command = kLaboratories[laboratory].command,
                          .extension = kLaboratories[laboratory].extension,
                          .laboratory = laboratory,
                          .height = height,
                          .person = person,
                          .repetition = repetition});
      }
    }
  }
  return trials;
}

void MakeStudyTrial(const StudyTrial& study, Trial& trial) {
  const Laboratory& laboratory = kLaboratories[study.laboratory];
  std::vector<ChannelName> names;
  for (const int signal : laboratory.order) {
    names.push_back(laboratory.names[signal]);
  }
  const std::string title = study.name + " landing from " + (study.height < 0.5 ? "0.3 m" : "0.6 m");
  Prepare(trial, title.c_str(), laboratory.rate, 2.0, names);
  const auto seed = static_cast<std::uint64_t>(1000 + 100 * study.person + (study.height < 0.5 ? 0 : 10) +
                                               study.repetition);
  MuscleNoise vastus(seed, laboratory.rate);
  MuscleNoise biceps(seed + 1000, laboratory.rate);
  Random noise(seed + 2000);
  const double weight = 560.0 + 45.0 * study.person;
  const double effort = (0.4 + 0.6 * study.height) * (0.95 + 0.1 * noise.Uniform());
  for (std::int64_t i = 0; i < trial.NData; ++i) {
    const double t = TimeOf(trial, i);
    const double ready = Hump(t, kTouch - 0.15, kTouch + 0.1);  // muscles tense before the ground is there
    const double brake = Hump(t, kTouch, kTouch + 0.5);
    const double signals[] = {Force(t, weight, study.height) * (0.97 + 0.03 * effort) + 1.5 * noise.Normal(),
                              (0.02 + effort * (0.5 * ready + brake)) * vastus.Next() + 0.006,
                              (0.015 + 0.6 * effort * (ready + 0.4 * brake)) * biceps.Next() - 0.004};
    for (int c = 1; c <= 3; ++c) {
      trial.Data(i + 1, c) = static_cast<float>(signals[laboratory.order[c - 1]]);
    }
  }
}

}  // namespace velmora::examples
