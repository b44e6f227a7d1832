#pragma once

#include <string>
#include <vector>

#include "core/trial/trial.hpp"

namespace velmora::examples {

/// One trial of the made study.
struct StudyTrial {
  std::string name;     // "S3-high-2"
  std::string command;  // that saves it as its laboratory does: "save.c3d"
  std::string extension;
  int laboratory = 0;  // 0 to 2
  double height = 0;   // m, of the drop
  int person = 0;      // from 1
  int repetition = 0;  // from 1
};

/// 24 landings from a box: six people, two in each of three laboratories, from 0.3 and 0.6 m, twice each. The
/// laboratories write the same three signals (ground reaction force, EMG of vastus lateralis and biceps
/// femoris) in another order, at another rate, under other labels and in other files.
std::vector<StudyTrial> StudyTrials();

/// Fills the trial; the same on every machine.
void MakeStudyTrial(const StudyTrial& study, Trial& trial);

}  // namespace velmora::examples
