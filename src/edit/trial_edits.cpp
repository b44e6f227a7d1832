#include "edit/trial_edits.hpp"

#include <algorithm>

namespace velmora {

bool RecallLabels(Trial& trial) {
  bool known = false;
  // An abscissa in other units counts something else, whatever it was called before.
  const bool sameAbscissa = trial.SavedUnits[0] == trial.ChanUnits[0];
  for (std::size_t c = sameAbscissa ? 0 : 1; c <= static_cast<std::size_t>(trial.NChan); ++c) {
    if (!trial.SavedLabels[c].empty() || !trial.SavedUnits[c].empty()) {
      trial.ChanLabel[c] = trial.SavedLabels[c];
      trial.ChanUnits[c] = trial.SavedUnits[c];
      known = true;
    }
  }
  return known;
}

void CorrectRate(Trial& trial, double rate) {
  trial.Rate = rate;
  std::fill_n(trial.ChanRate.begin(), trial.NChan + 1, rate);
  trial.Duration = (trial.NData - 1) / rate;
  trial.OriginalDuration = trial.Duration;
  trial.RebuildTimeColumn();
}

}  // namespace velmora
