#include "core/trial/generated_trial.hpp"

#include <limits>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

std::optional<std::int64_t> GeneratedSamples(Workbench& workbench, double rate, double time,
                                             const std::string& title) {
  const double samples = rate * time + 1;
  if (rate > 0 && time > 0 && samples < std::numeric_limits<std::int32_t>::max()) {
    return RoundHalfEven(samples);
  }
  ShowRefusal(workbench,
              {.title = title,
               .text = "Sampling rate and time must be above zero, with fewer than 2147483647 samples.",
               .icon = Icon::Exclamation});
  return std::nullopt;
}

bool StartGeneratedTrial(Workbench& workbench, double rate, double time, const std::string& title) {
  const std::optional<std::int64_t> samples = GeneratedSamples(workbench, rate, time, title);
  if (!samples) {
    return false;
  }
  Trial& trial = workbench.trial;
  trial.AllocateData(0, *samples);
  trial.Rate = rate;
  trial.Duration = time;
  trial.OriginalDuration = time;
  trial.SetChannelDefaults(0);
  trial.ChanLabel[0] = "Time";
  trial.ChanUnits[0] = "s";
  trial.RebuildTimeColumn();
  trial.TrialTitle = "Fourier series";
  trial.TrialName = "Fourier";
  trial.CursorLo = 1;
  trial.CursorHi = trial.NData;
  return true;
}

}  // namespace velmora
