#include "spectra/fourier_statistics.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "results/statistics_form.hpp"
#include "spectra/decimal_number.hpp"

namespace velmora {
namespace {

ResultTable EmptyTable(const Workbench& workbench) {
  const NumberPatterns& patterns = workbench.patterns;
  const auto value = ThroughPattern(patterns.ValuePattern);
  const auto frequency = ThroughPattern("0.0");
  return {.name = "frmFourierStats",
          .title = "Fourier Anaylsis statistics for file: " + workbench.trial.FileName,
          .columns = {"Channel", "Label", "Mean Abs.Value", "RMS", "Median freq.", "Mean freq.",
                      "95%tile freq.", "99%tile freq.", "Time integ'l", "Abs. integ'l"},
          .formats = {nullptr, nullptr, value, value, frequency, frequency, frequency, frequency,
                      SumFormat(patterns, {.large = "0."}), SumFormat(patterns)}};
}

/// frmFourierStats.
class FourierStatsForm : public StatisticsForm {
 public:
  FourierStatsForm(Workbench& workbench, const SampleRange& range, std::int32_t harmonics, ResultTable table)
      : StatisticsForm(workbench, Kind::Fourier, "frmFourierStats", table.title, range, Times::Texts),
        harmonics_(harmonics) {
    AddRangeFields();
    fields_.push_back({.name = "NHarm", .caption = "Harmonics", .target = &harmonics_, .readOnly = true});
    SetTables({std::move(table)});
    AddCommonButtons("Sa&ve", "Send results to &Clipboard");
  }

 private:
  [[nodiscard]] std::string ClipboardText() const override {
    const Trial& trial = workbench_.trial;
    return "Fourier analyses for: \t" + trial.TrialTitle + "\nCode:\t" + trial.TrialName +
           "\nMax. harmonics\t" + std::to_string(harmonics_) + "\nRange:\t" + std::to_string(Range().lo) +
           "\t" + std::to_string(Range().hi) + "\nTimes:\t" + StartText() + "\t" + EndText() + "\n" +
           TableText(tables_.front());
  }

  std::int32_t harmonics_;
};

// 0 when the view is not to come up.
std::int32_t AskHarmonics(Workbench& workbench, std::int32_t most) {
  const std::string typed = workbench.questions.AskInput(
      {.title = "Number of Harmonics to Compute",
       .prompt =
           "Enter maximum number of harmonics to compute.  Maximum must be <= " + std::to_string(most) + ".",
       .defaultText = std::to_string(most),
       .isNumber = true});
  if (typed.empty()) {
    return 0;
  }
  const double answer = std::abs(Val(typed));
  return answer < most ? RoundHalfEven32(answer) : most;
}

bool ConfirmMany(Workbench& workbench, std::int32_t harmonics) {
  constexpr std::int32_t kMany = 1000;
  return harmonics <= kMany ||
         workbench.questions.AskBox({.title = "Confirm Request",
                                     .text = "Confirm that you want to process over 1000 harmonics.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

std::vector<ResultTable::Cell> RowOf(Workbench& workbench, const Epoch& epoch, std::int32_t harmonics,
                                     const HarmonicsDone& done) {
  const Trial& trial = workbench.trial;
  const AmplitudeSums sums = SumAmplitudes(trial, epoch);
  const double samples = epoch.Samples();
  const double step = trial.Rate > 0 ? 1.0 / trial.Rate : 0.0;
  const std::string& label = trial.ChanLabel[epoch.channel];
  const FourFrequencies found = HarmonicRegressionPlain(trial, epoch, harmonics, workbench.spectrum, done);
  workbench.results.ResultText = SpectrumReport(epoch.channel, "  " + TrimRight(label), found);
  return {ChannelNumber(epoch.channel),
          label,
          sums.absolute / samples,
          std::sqrt(sums.squares / samples),
          found.median,
          found.mean,
          found.p95,
          found.p99,
          sums.sum * step,
          sums.absolute * step};
}

ResultTable TakeStatistics(Workbench& workbench, const SampleRange& range, std::int32_t harmonics) {
  ResultTable table = EmptyTable(workbench);
  const int channels = workbench.trial.NChan;
  ProgressPanel panel(workbench);
  panel.SetFormat("Computing stats");
  panel.SetLimits(0, static_cast<double>(channels) * harmonics);
  for (int c = 1; c <= channels && !workbench.CancelRequested; ++c) {
    panel.SetStatus("Channel " + ChannelNumber(c) + ": Processing...");
    const auto done = [&](std::int32_t count) {
      panel.SetValue(static_cast<double>(c - 1) * harmonics + count);
      return !panel.GiveTurn();
    };
    auto row = RowOf(workbench, {.channel = c, .first = range.lo, .last = range.hi}, harmonics, done);
    if (!workbench.CancelRequested) {
      table.rows.push_back(std::move(row));
    }
  }
  return table;
}

}  // namespace

AmplitudeSums SumAmplitudes(const Trial& trial, const Epoch& epoch) {
  constexpr std::int32_t kAtOnce = 1024;
  std::array<float, kAtOnce> samples;
  std::array<double, kAtOnce> numbers;
  AmplitudeSums sums;
  const float* at = trial.matrix.Frame(epoch.first) + epoch.channel;
  for (std::int32_t done = 0; done < epoch.Samples(); done += kAtOnce) {
    const auto count = static_cast<std::size_t>(std::min(kAtOnce, epoch.Samples() - done));
    for (std::size_t i = 0; i < count; ++i, at += trial.matrix.Stride()) {
      samples[i] = *at;
    }
    DecimalNumbers({samples.data(), count}, numbers);
    for (std::size_t i = 0; i < count; ++i) {
      sums.sum += numbers[i];
      sums.absolute += std::abs(numbers[i]);
      sums.squares += numbers[i] * numbers[i];
    }
  }
  return sums;
}

void ShowFourierStatistics(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  if (trial.NData >= 1 && trial.NChan >= 1) {
    ShowFourierStatistics(workbench, AskCursorRange(workbench));
  }
}

void ShowFourierStatistics(Workbench& workbench, SampleRange range) {
  const std::int32_t harmonics = AskHarmonics(workbench, RoundHalfEven32((range.hi - range.lo) / 2.0));
  if (harmonics == 0 || !ConfirmMany(workbench, harmonics)) {
    return;
  }
  ResultTable table = TakeStatistics(workbench, range, harmonics);
  ChannelList all;
  for (int c = 1; c <= static_cast<int>(table.rows.size()); ++c) {
    all.push_back(c);
  }
  Did(workbench, "Fourier statistics, " + std::to_string(harmonics) + " harmonics", all);
  FourierStatsForm(workbench, range, harmonics, std::move(table)).Show(workbench);
}

}  // namespace velmora
