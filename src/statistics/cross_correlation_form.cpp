#include "statistics/cross_correlation_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/files/paths.hpp"
#include "core/questions/long_work.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/time_base/time_base.hpp"

namespace velmora {
namespace {

std::string ChannelName(const Trial& trial, int channel) {
  return ChannelNumber(channel) + " " + Trim(trial.ChanLabel[channel].Text());
}

}  // namespace

CrossCorrelationForm::CrossCorrelationForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmCrossCorrelation", "Cross-correlation"),
      range_(range),
      maxLag_(std::floor((range.hi - range.lo + 1) / 4.0) / workbench.trial.Rate) {
  const double step = 1.0 / workbench.trial.Rate;
  maxLag_ = std::max(maxLag_, step);
  AddChannel("comX", "&X", x_);
  AddChannel("comY", "&Y", y_);
  AddNumber("txtMaxLag", "&Largest lag (s)", maxLag_, {step, (range.hi - range.lo) / workbench.trial.Rate});
  AddChoice("optNorm", "", norm_, {"Over the &whole range", "Over the &overlap"});
  AddFlag("chkShift", "&Shift Y back by the lag", shift_);
  AddButtons();
}

bool CrossCorrelationForm::Refuse(const char* title, const std::string& text) {
  ShowRefusal(workbench_, {.title = title, .text = text, .icon = Icon::Exclamation});
  return false;
}

std::vector<float> CrossCorrelationForm::SamplesOf(int channel) const {
  std::vector<float> samples;
  for (std::int64_t i = range_.lo; i <= range_.hi; ++i) {
    samples.push_back(workbench_.trial.Data(i, channel));
  }
  return samples;
}

bool CrossCorrelationForm::TakeChannels() {
  if (x_ == 0 || y_ == 0) {
    RefuseTooFewChannels(workbench_, 2);
    return false;
  }
  if (RefuseMissing(workbench_, x_, range_) || RefuseMissing(workbench_, y_, range_)) {
    return false;
  }
  for (const int c : {x_, y_}) {
    const std::vector<float> samples = SamplesOf(c);
    const auto [least, most] = std::minmax_element(samples.begin(), samples.end());
    if (!(*least < *most)) {
      return Refuse("Constant Channel", "Channel " + ChannelNumber(c) + " does not vary between samples " +
                                            std::to_string(range_.lo) + " and " + std::to_string(range_.hi) +
                                            ".");
    }
  }
  return true;
}

bool CrossCorrelationForm::Compute() {
  constexpr std::int32_t kLong = 500'000;  // samples
  if (!TakeChannels()) {
    return false;
  }
  const auto largestLag = static_cast<std::int32_t>(
      std::clamp<std::int64_t>(RoundHalfEven(maxLag_ * workbench_.trial.Rate), 1, range_.hi - range_.lo));
  const std::vector<float> x = SamplesOf(x_);
  const std::vector<float> y = SamplesOf(y_);
  const auto correlate = [&](const GoesOn& goesOn) {
    return CrossCorrelate(x, y, largestLag, static_cast<LagNorm>(norm_), goesOn);
  };
  if (range_.hi - range_.lo < kLong) {
    r_ = correlate({});
  } else {
    LongWork work(workbench_, "Correlating", true);
    r_ = WithTurns(work.Turns(), correlate);
    if (work.Cancelled()) {
      return false;
    }
  }
  const std::optional<BestLag> best = FindLag(r_);
  if (!best) {
    return Refuse("Constant Channel", "No lag was found at which both channels vary.");
  }
  MakeResults(largestLag, *best);
  Shift(best->samples);
  return true;
}

std::string CrossCorrelationForm::Words(const BestLag& best) const {
  const std::string time =
      FormatNumber(std::fabs(best.between) / workbench_.trial.Rate, workbench_.patterns.TimePattern) + " s";
  std::string words = best.samples == 0 && std::fabs(best.between) < 0.5 ? "Y goes along with X"
                      : best.between > 0                                 ? "Y follows X by " + time
                                                                         : "X follows Y by " + time;
  if (best.r < 0) {
    words += ", turned upside down";
  }
  words += " (r = " + FormatNumber(best.r, "0.000") + ")";
  const std::int64_t samples = std::int64_t{range_.hi} - range_.lo + 1;
  const std::int64_t overlap = samples - std::abs(best.samples);
  if (static_cast<LagNorm>(norm_) == LagNorm::Overlap && overlap * 10 < samples) {
    words += ", over " + CountOf(overlap, "sample") + " alone";
  }
  return words + ".";
}

void CrossCorrelationForm::MakeResults(std::int32_t largestLag, const BestLag& best) {
  const Trial& trial = workbench_.trial;
  const double rate = trial.Rate;
  ResultTable curve{.name = "frmCrossCorrelation",
                    .title = "Correlation by lag; above 0 Y follows X",
                    .columns = {"Lag (samples)", "Lag (s)", "r"}};
  curve.rows.reserve(r_.size());
  for (std::size_t k = 0; k < r_.size(); ++k) {
    const double lag = static_cast<double>(k) - largestLag;
    curve.rows.push_back({lag, lag / rate, CellOf(r_[k])});
  }
  curve.formats = {ThroughPattern("0"), ThroughPattern(workbench_.patterns.TimePattern),
                   ThroughPattern("0.0000")};
  ResultTable lag{.name = "frmLag",
                  .title = ChannelName(trial, y_) + " against " + ChannelName(trial, x_),
                  .columns = {"Quantity", "Value"},
                  .rows = {{"Lag (samples)", static_cast<double>(best.samples)},
                           {"Lag (s)", best.between / rate},
                           {"r at the lag", best.r},
                           {"r at 0", CellOf(r_[static_cast<std::size_t>(largestLag)])}}};
  results_ = {.name = "frmCrossCorrelation",
              .title = "Cross-correlation of " + FileNamePart(trial.FileName),
              .file = {.what = "statistics", .extension = ".tab"},
              .head = {.range = range_, .parameters = ParametersOf(trial, *this)},
              .tables = {std::move(lag), std::move(curve)},
              .graph = Picture(largestLag, best),
              .words = Words(best)};
  Did(workbench_, "Cross-correlation of channels " + ChannelNumber(x_) + " and " + ChannelNumber(y_) + ": " +
                      results_.words.substr(0, results_.words.size() - 1));
}

FormGraph CrossCorrelationForm::Picture(std::int32_t largestLag, const BestLag& best) const {
  const double rate = workbench_.trial.Rate;
  FormGraph graph{
      .title = Words(best),
      .x = {.minimum = -largestLag / rate, .maximum = largestLag / rate, .caption = "Lag of Y (s)"},
      .y = {.minimum = -1, .maximum = 1, .caption = "r"}};
  FormGraph::Plot plot{.name = "r", .colour = workbench_.trial.ChanColour[y_]};
  for (std::size_t k = 0; k < r_.size(); ++k) {
    plot.x.push_back((static_cast<double>(k) - largestLag) / rate);
    plot.y.push_back(r_[k]);
  }
  graph.plots = {std::move(plot)};
  graph.marks = {
      {best.between / rate, FormatNumber(best.between / rate, workbench_.patterns.TimePattern) + " s", 3}};
  return graph;
}

// As the phase shift does it: zeros come in, and nothing of the other channels moves.
void CrossCorrelationForm::Shift(std::int32_t lag) {
  if (!shift_ || lag == 0) {
    return;
  }
  ShiftSamples(workbench_.trial, {y_}, -lag);
  MarkChanged(workbench_, true);
  const int channel = y_;
  Did(workbench_, "Shifted by " + std::to_string(-lag) + " samples", std::array{channel});
}

void ShowCrossCorrelation(Workbench& workbench, SampleRange range) {
  if (!HasTimeBase(workbench)) {
    return;
  }
  if (range.hi - range.lo < 1) {
    RefuseTooFewData(workbench);
    return;
  }
  CrossCorrelationForm form(workbench, range);
  if (form.Ask()) {
    ShowResults(workbench, std::move(form.Found()));
  }
}

}  // namespace velmora
