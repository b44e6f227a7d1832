#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "run/history/recorder.hpp"

namespace velmora {

/// A line of the history as a person reads it.
struct HistoryLine {
  std::string words;
  std::string inFull;    // every channel and every wording
  std::size_t last = 0;  // the line stands for the steps up to this one (from 0)
  bool undone = false;   // it was gone back behind and can be done again
};

/// Which of the steps something comes of: all that did something, and of the looks those that a later
/// deed depends on, since it used the graph, the samples between the cursors, the colours of the channels or
/// what the picker was left with.
std::vector<bool> NeededSteps(const std::vector<RecordedStep>& steps);

/// The needed steps in words. What was done in a graph up to the next deed is one line. The first `done`
/// are those that the trial has seen.
std::vector<HistoryLine> HistoryLines(const std::vector<RecordedStep>& steps, std::size_t done);

}  // namespace velmora
