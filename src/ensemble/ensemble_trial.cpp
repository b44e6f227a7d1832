#include "ensemble/ensemble_trial.hpp"

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/time_base/time_base.hpp"
#include "import/load_file.hpp"

namespace velmora {
namespace {

constexpr std::int16_t kEnsembleAverage = 2;  // FileTypeCode

void FillChannel(Trial& trial, const EnsembleAverage& average, int j) {
  const EnsembleSums& sums = average.Sums();
  const int files = average.EnsembleFiles();
  const int mean = 2 * j + 1;
  const auto row = static_cast<std::size_t>(j);
  trial.SetChannelDefaults(mean);
  trial.SetChannelDefaults(mean + 1);
  trial.ChanLabel[mean] = average.LabelOf(row);
  trial.ChanLabel[mean + 1] = "SD" + average.LabelOf(row).Text();
  trial.ChanUnits[mean] = trial.ChanUnits[mean + 1] = average.UnitsOf(row);
  for (std::int64_t k = 1; k <= trial.NData; ++k) {
    float* frame = trial.matrix.Frame(k);
    frame[mean] = sums.Mean(k, j, files);
    frame[mean + 1] = sums.Deviation(k, j, files);
  }
}

}  // namespace

void UseNormalTimeBase(Workbench& workbench, bool seconds, double meanTime) {
  Trial& trial = workbench.trial;
  if (seconds) {
    UseSeconds(trial, (trial.NData - 1) / meanTime, meanTime);
    trial.ChanLabel[0] = "Mean time";
  } else {
    UsePercentage(trial);
  }
  workbench.time = {.Base = seconds ? TimeBase::Seconds : TimeBase::Percentage};
}

void MakeAveragedTrial(Workbench& workbench, const EnsembleAverage& average, bool seconds,
                       const std::string& name) {
  Trial& trial = workbench.trial;
  const int channels = average.Sums().Width();
  ResetTrial(workbench);
  trial.AllocateData(2 * channels, static_cast<std::int64_t>(average.Sums().Intervals()) + 1);
  trial.SetChannelDefaults(0);
  UseNormalTimeBase(workbench, seconds, average.MeanTime());
  for (int j = 0; j < channels; ++j) {
    FillChannel(trial, average, j);
  }
  trial.ChanRate.fill(trial.Rate);
  trial.TrialTitle = "Ensemble averaged data";
  trial.TrialName = name;
  trial.FileTypeCode = kEnsembleAverage;
  trial.FormatName = "Ensemble average";
  trial.HeaderLines[++trial.HeaderLineCount] =
      "Number of files in average: " + std::to_string(average.EnsembleFiles());
  if (seconds) {
    trial.HeaderLines[++trial.HeaderLineCount] =
        "Mean time (s): " + FormatNumber(average.MeanTime(), workbench.patterns.ValuePattern);
  }
  trial.OriginalDuration = trial.Duration;
  trial.CursorLo = 1;
  trial.CursorHi = trial.NData;
  workbench.graph.ViewDuration = trial.Duration;  // a stretch in seconds means nothing here
  ShowFirstChannelPage(workbench);
  MarkChanged(workbench, true);
}

}  // namespace velmora
