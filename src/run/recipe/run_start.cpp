#include "run/recipe/run_start.hpp"

#include <algorithm>

#include "spectra/windows.hpp"

namespace velmora {
namespace {

bool AnyIsUsed(const ThresholdMemory& thresholds) {
  const auto& levels = thresholds.ChanThreshold;
  return thresholds.ThresholdsValid || thresholds.BaselineTaken ||
         std::any_of(levels.begin(), levels.end(), [](double level) { return level != 0.0; });
}

// In the order of OfferedAgain.
auto OfferedBy(auto& workbench) {
  return std::tie(workbench.filters, workbench.smoothing, workbench.scaling, workbench.bias, workbench.impact,
                  workbench.graph, workbench.plates, workbench.ensemble, workbench.preferences.TriggerType);
}

}  // namespace

RunStart StartOf(const Workbench& workbench) {
  RunStart start;
  const SpectralWindow& window = WindowOf(workbench.spectrum.WindowType);
  if (window.weight != nullptr) {
    start.window = window.id;
  }
  if (AnyIsUsed(workbench.thresholds)) {
    start.thresholds = workbench.thresholds;
  }
  start.picked = workbench.chooser.ChanSelected;
  start.constants = workbench.chooser.ChanConst;
  start.offered = OfferedBy(workbench);
  return start;
}

void TakeUp(Workbench& workbench, const RunStart& start) {
  const auto row = std::find_if(kSpectralWindows.begin(), kSpectralWindows.end(),
                                [&start](const SpectralWindow& window) { return window.id == start.window; });
  workbench.spectrum.WindowType = row == kSpectralWindows.end()
                                      ? std::int16_t{0}
                                      : static_cast<std::int16_t>(row - kSpectralWindows.begin());
  workbench.thresholds = start.thresholds.value_or(ThresholdMemory());
  workbench.chooser.ChanSelected = start.picked;
  workbench.chooser.ChanConst = start.constants;
  if (start.offered) {
    OfferedBy(workbench) = *start.offered;
  }
}

}  // namespace velmora
