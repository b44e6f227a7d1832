#include "run/history/trial_aside.hpp"

#include <utility>

namespace velmora {

bool TrialAside::CanHold(const Trial& trial) {
  constexpr std::int64_t most = 1'000'000'000;  // bytes
  return trial.NData * (trial.NChan + std::int64_t{1}) * static_cast<std::int64_t>(sizeof(float)) <= most;
}

TrialAside::TrialAside(Workbench& workbench) {
  start_ = StartOf(workbench);
  trial_ = std::exchange(workbench.trial, Trial());
  workbench.trial.SavedLabels = trial_.SavedLabels;  // of the file before, which is not read again
  workbench.trial.SavedUnits = trial_.SavedUnits;
  records_ = workbench.records;
  merge_ = std::exchange(workbench.merge, MergeStore());
  time_ = workbench.time;
  events_ = workbench.events;
  results_ = workbench.results;
  loadedFile_ = workbench.LoadedFile;
}

void TrialAside::PutBack(Workbench& workbench) {
  workbench.trial = std::move(trial_);
  workbench.records = std::move(records_);
  workbench.merge = std::move(merge_);
  workbench.time = time_;
  workbench.events = std::move(events_);
  workbench.results = std::move(results_);
  workbench.LoadedFile = std::move(loadedFile_);
  TakeUp(workbench, start_);
}

}  // namespace velmora
