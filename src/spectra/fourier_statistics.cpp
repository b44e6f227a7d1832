#include "spectra/fourier_statistics.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "core/questions/form.hpp"
#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "results/result_presses.hpp"
#include "spectra/decimal_number.hpp"

namespace velmora {
namespace {

// An integral as the grid shows it: with fewer decimals the larger it is.
ResultTable::Format IntegralFormat(const NumberPatterns& patterns, const char* large) {
  constexpr double kLarge = 1e6;
  constexpr double kMiddle = 1e4;
  return [patterns, large](double value) {
    const double size = std::abs(value);
    return FormatNumber(value, size >= kLarge    ? large
                               : size >= kMiddle ? patterns.TimePattern
                                                 : patterns.ValuePattern);
  };
}

ResultTable EmptyTable(const Workbench& workbench) {
  const NumberPatterns& patterns = workbench.patterns;
  const auto value = ThroughPattern(patterns.ValuePattern);
  const auto frequency = ThroughPattern("0.0");
  return {.name = "frmFourierStats",
          .title = "Fourier Anaylsis statistics for file: " + workbench.trial.FileName,
          .columns = {"Channel", "Label", "Mean Abs.Value", "RMS", "Median freq.", "Mean freq.",
                      "95%tile freq.", "99%tile freq.", "Time integ'l", "Abs. integ'l"},
          .formats = {nullptr, nullptr, value, value, frequency, frequency, frequency, frequency,
                      IntegralFormat(patterns, "0."), IntegralFormat(patterns, "#.")}};
}

/// frmFourierStats.
class FourierStatsForm : public Form {
 public:
  FourierStatsForm(Workbench& workbench, const SampleRange& range, std::int32_t harmonics, ResultTable table)
      : Form("frmFourierStats", table.title),
        workbench_(workbench),
        first_(range.lo),
        last_(range.hi),
        samples_(range.hi - range.lo + 1),
        harmonics_(harmonics) {
    const Trial& trial = workbench.trial;
    const std::string& pattern = workbench.patterns.TimePattern;
    const double start = SampleToTime(trial, first_);
    const double end = SampleToTime(trial, last_);
    start_ = FormatNumber(start, pattern) + " s";
    end_ = FormatNumber(end, pattern) + " s";
    duration_ = FormatNumber(end - start, pattern);
    const auto show = [this](const char* name, const char* caption, FormField::Target target) {
      fields_.push_back({.name = name, .caption = caption, .target = target, .readOnly = true});
    };
    show("StartTime", "Start time", &start_);
    show("EndTime", "End time", &end_);
    show("FirstSample", "First sample", &first_);
    show("LastSample", "Last sample", &last_);
    show("N", "Samples", &samples_);
    show("Duration", "Duration (s)", &duration_);
    show("NHarm", "Harmonics", &harmonics_);
    tables_.push_back(std::move(table));
    buttons_ = {{"E&xit", FormButton::Role::Accept, [] { return true; }},
                {.caption = "Send results to &Clipboard",
                 .press =
                     [this] {
                       SendToClipboard(workbench_, ClipboardText());
                       return false;
                     }},
                {.caption = "&Print", .press = [this] {
                   PrintResults(workbench_, *this);
                   return false;
                 }}};
  }

 private:
  [[nodiscard]] std::string ClipboardText() const {
    const Trial& trial = workbench_.trial;
    return "Fourier analyses for: \t" + trial.TrialTitle + "\nCode:\t" + trial.TrialName +
           "\nMax. harmonics\t" + std::to_string(harmonics_) + "\nRange:\t" + std::to_string(first_) + "\t" +
           std::to_string(last_) + "\nTimes:\t" + start_ + "\t" + end_ + "\n" + TableText(tables_.front());
  }

  Workbench& workbench_;
  std::int32_t first_;
  std::int32_t last_;
  std::int32_t samples_;
  std::int32_t harmonics_;
  std::string start_;
  std::string end_;
  std::string duration_;
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
  if (trial.NData < 1 || trial.NChan < 1) {
    return;
  }
  const SampleRange range = AskCursorRange(workbench);
  const std::int32_t harmonics = AskHarmonics(workbench, RoundHalfEven32((range.hi - range.lo) / 2.0));
  if (harmonics == 0 || !ConfirmMany(workbench, harmonics)) {
    return;
  }
  ResultTable table = TakeStatistics(workbench, range, harmonics);
  KeepTable(workbench.results.ResultTables, table);
  ChannelList all;
  for (int c = 1; c <= static_cast<int>(table.rows.size()); ++c) {
    all.push_back(c);
  }
  Did(workbench, "Fourier statistics, " + std::to_string(harmonics) + " harmonics", all);
  FourierStatsForm(workbench, range, harmonics, std::move(table)).Show(workbench);
}

}  // namespace velmora
