#include "statistics/regression_form.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/new_channels.hpp"
#include "core/trial/refusals.hpp"

namespace velmora {

RegressionForm::RegressionForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmRegression", "Linear Regression"), range_(range) {
  AddChannel("comY", "&Y (dependent)", y_);
  AddFlag("chkTime", "&Time as an X", time_);
  AddFlag("chkIntercept", "&Intercept", intercept_);
  AddFlag("chkFitted", "Add the &fitted channel", fitted_);
  AddFlag("chkResiduals", "Add the r&esiduals", residuals_);
  AddChannels("channels", "&X (independent)", channels_);
  channels_.fill(false);
  AddButtons();
}

// Terms and their number.
bool RegressionForm::TakeChannels() {
  terms_ = SelectedChannels(workbench_.trial, channels_);
  if (time_) {
    terms_.insert(terms_.begin(), 0);
  }
  if (y_ == 0 || terms_.empty()) {
    RefuseTooFewChannels(workbench_, y_ == 0 ? 2 : 1);
    return false;
  }
  if (std::find(terms_.begin(), terms_.end(), y_) != terms_.end()) {
    ShowRefusal(workbench_, {.title = "Channel Chosen Twice",
                             .text = "The dependent channel cannot be one of the independent ones.",
                             .icon = Icon::Exclamation});
    return false;
  }
  if (terms_.size() > kMostX) {
    ShowRefusal(workbench_, {.title = "Too Many Channels Selected",
                             .text = "You can choose at most " + std::to_string(kMostX) +
                                     " independent channels, time among them.",
                             .icon = Icon::Exclamation});
    return false;
  }
  return HasFreeChannels(workbench_, (fitted_ ? 1 : 0) + (residuals_ ? 1 : 0));
}

// The samples at which all channels are numbers. False when it was cancelled.
bool RegressionForm::TakeRows(const GoesOn& goesOn) {
  constexpr std::int64_t kBetweenTurns = 1 << 16;
  const Trial& trial = workbench_.trial;
  columns_.assign(terms_.size(), {});
  yValues_.clear();
  for (std::int64_t i = range_.lo; i <= range_.hi; ++i) {
    if ((i - range_.lo) % kBetweenTurns == 0 && !Goes(goesOn, 0.0)) {
      return false;
    }
    const auto isNumber = [&](int c) { return std::isfinite(trial.Data(i, c)); };
    if (!isNumber(y_) || !std::all_of(terms_.begin(), terms_.end(), isNumber)) {
      continue;
    }
    yValues_.push_back(trial.Data(i, y_));
    for (std::size_t k = 0; k < terms_.size(); ++k) {
      columns_[k].push_back(trial.Data(i, terms_[k]));
    }
  }
  return true;
}

RegressionTrouble RegressionForm::Fit() {
  constexpr std::int64_t kLong = 1'000'000;  // numbers
  const std::int64_t samples = std::int64_t{range_.hi} - range_.lo + 1;
  LongWork work(workbench_, "Fitting", samples * static_cast<std::int64_t>(terms_.size() + 1) > kLong);
  const GoesOn goesOn = work.Turns();
  return TakeRows(goesOn) ? FitRegression(columns_, yValues_, intercept_, fit_, goesOn)
                          : RegressionTrouble::Cancelled;
}

bool RegressionForm::Compute() {
  if (!TakeChannels()) {
    return false;
  }
  switch (Fit()) {
    case RegressionTrouble::TooFewData:
      RefuseTooFewData(workbench_);
      return false;
    case RegressionTrouble::Dependent:
      ShowRefusal(workbench_, {.title = "Channels Depend on Each Other",
                               .text = "The regression has no single answer.  Take out one of the channels.",
                               .icon = Icon::Exclamation});
      return false;
    case RegressionTrouble::Cancelled:
      return false;
    case RegressionTrouble::None:
      break;
  }
  const std::vector<std::vector<float>> modelled = Modelled();
  MakeTables();
  TellFit();
  Add(modelled);
  return true;
}

std::string RegressionForm::TermOf(int channel) const {
  const std::string label = Trim(workbench_.trial.ChanLabel[channel].Text());
  return !label.empty() ? label : channel == 0 ? std::string("Time") : ChannelNumber(channel);
}

ResultTable RegressionForm::TermTable() const {
  ResultTable table{.name = "frmRegression",
                    .title = TermOf(y_) + " by least squares",
                    .columns = {"Term", "Coefficient", "Std.Err.", "t", "p", "95% low", "95% high"}};
  const auto add = [&table](const std::string& term, const Coefficient& of) {
    table.rows.push_back({term, of.value, CellOf(of.error), CellOf(of.t), CellOf(of.probability),
                          CellOf(of.low), CellOf(of.high)});
  };
  if (fit_.intercept) {
    add("Intercept", *fit_.intercept);
  }
  for (std::size_t k = 0; k < terms_.size(); ++k) {
    add(TermOf(terms_[k]), fit_.slopes[k]);
  }
  table.formats = {nullptr, nullptr, nullptr, nullptr, AsProbability(), nullptr, nullptr};
  return table;
}

ResultTable RegressionForm::FitTable() const {
  return {
      .name = "frmRegressionFit",
      .title = intercept_ ? "How well it fits" : "How well it fits (R squared about 0, without intercept)",
      .columns = {"Quantity", "Value"},
      .rows = {{"R squared", CellOf(fit_.r2)},
               {"Adjusted R squared", CellOf(fit_.adjustedR2)},
               {"Std. error of estimate", fit_.estimateError},
               {"F", CellOf(fit_.f)},
               {"p", CellOf(fit_.probability)},
               {"SSE", fit_.sse},
               {"n", static_cast<double>(fit_.count)}}};
}

ResultTable RegressionForm::AgreementTable() const {
  const Agreement of = AgreementOf(columns_.front(), yValues_);
  return {.name = "frmAgreement",
          .title = TermOf(y_) + " less " + TermOf(terms_.front()) +
                   " (limits of agreement: bias and 1.96 standard deviations)",
          .columns = {"Quantity", "Value"},
          .rows = {{"Bias", of.bias},
                   {"Std.Dev.", of.deviation},
                   {"Lower limit", of.LowerLimit()},
                   {"Upper limit", of.UpperLimit()},
                   {"RMS difference", of.rms}}};
}

void RegressionForm::MakeTables() {
  results_ = {.name = "frmRegression",
              .title = "Linear regression of " + FileNamePart(workbench_.trial.FileName),
              .file = {.what = "statistics", .extension = ".tab"},
              .head = {.range = range_, .parameters = ParametersOf(workbench_.trial, *this)},
              .tables = {TermTable(), FitTable()}};
  if (terms_.size() == 1 && terms_.front() != 0) {
    results_.tables.push_back(AgreementTable());
  }
}

void RegressionForm::TellFit() {
  std::string words = "Linear regression by ";
  for (const int c : terms_) {
    words += (c == terms_.front() ? "" : ", ") + TermOf(c);
  }
  Did(workbench_, words + (fit_.r2 ? ", R squared " + FormatNumber(*fit_.r2, "0.0000") : ""), std::array{y_});
}

// Over the whole trial, beyond the range as well.
std::vector<std::vector<float>> RegressionForm::Modelled() const {
  const Trial& trial = workbench_.trial;
  std::vector<std::vector<float>> modelled(static_cast<std::size_t>(fitted_) +
                                           static_cast<std::size_t>(residuals_));
  for (std::int64_t i = 1; i <= trial.NData && !modelled.empty(); ++i) {
    double value = fit_.intercept ? fit_.intercept->value : 0.0;
    for (std::size_t k = 0; k < terms_.size(); ++k) {
      value += fit_.slopes[k].value * trial.Data(i, terms_[k]);
    }
    const double y = trial.Data(i, y_);
    const auto keep = [&](std::vector<float>& samples, double result, bool ofNumbers) {
      samples.push_back(static_cast<float>(result));
      if (ofNumbers && !std::isfinite(samples.back())) {
        throw std::range_error("The result for sample " + std::to_string(i) +
                               " is not a number that data can hold.");
      }
    };
    if (fitted_) {
      keep(modelled.front(), value, std::isfinite(value));
    }
    if (residuals_) {
      keep(modelled.back(), y - value, std::isfinite(value) && std::isfinite(y));
    }
  }
  return modelled;
}

void RegressionForm::Add(const std::vector<std::vector<float>>& modelled) {
  Trial& trial = workbench_.trial;
  const std::string units = trial.ChanUnits[y_].Text();
  std::vector<NewChannel> made;
  if (fitted_) {
    made.push_back({"Fitted", units});
  }
  if (residuals_) {
    made.push_back({"Residual", units});
  }
  if (made.empty()) {
    return;
  }
  int c = AppendChannels(workbench_, made);
  for (const std::vector<float>& samples : modelled) {
    const ChannelView channel = trial.Channel(c++);
    for (std::int64_t i = 0; i < channel.size(); ++i) {
      channel[i] = samples[static_cast<std::size_t>(i)];
    }
  }
}

void ShowRegression(Workbench& workbench, SampleRange range) {
  RegressionForm form(workbench, range);
  if (form.Ask()) {
    ShowResults(workbench, std::move(form.Found()));
  }
}

}  // namespace velmora
