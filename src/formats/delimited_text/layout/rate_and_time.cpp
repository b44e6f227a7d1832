#include "formats/delimited_text/layout/rate_and_time.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

// A given rate within this part of the calculated one is taken for the same.
constexpr double kRateTolerance = 1e-3;

Button AskBadTime(Workbench& workbench) {
  return workbench.questions.AskBox({.title = "Invalid Format of Data or Time Channel",
                                     .text =
                                         "There was an error reading the TIME channel.\n"
                                         "  a) The number of channels may be incorrect. \n"
                                         "  b) The time channel number is incorrect.\n"
                                         "  c) The file contains nonnumeric characters in the data area.\n"
                                         "  d) Some channels may contain no data or only tabs.\n"
                                         "Press Retry to enter new parameters or Cancel to continue.",
                                     .icon = Icon::Exclamation,
                                     .buttons = {Button::Retry, Button::Cancel}});
}

double AskWhichRate(Workbench& workbench, double given, double calculated) {
  const auto hertz = [&workbench](double rate) {
    return FormatNumber(rate, workbench.patterns.RatePattern) + " Hz";
  };
  const std::string typed = workbench.questions.AskInput(
      {.title = "Enter Correct Sampling Rate",
       .prompt = "Given sampling rate was different from rate computed from data file.\nGiven rate was " +
                 hertz(given) + "\nCalculated rate was " + hertz(calculated) +
                 "\nEnter correct sampling rate per channel (Hz)",
       .defaultText = PlainNumber(calculated),
       .isNumber = true});
  const double rate = Val(typed);
  return rate > 0 ? rate : calculated;
}

// Three decimals; what is slower than that keeps its digits.
double Truncated(double rate) {
  const double truncated = std::trunc(1000.0 * rate) / 1000.0;
  return truncated > 0 ? truncated : rate;
}

bool IsKnown(const Trial& trial) {
  constexpr std::int16_t kVisual3DText = 91;
  return trial.Rate > 0 && !(trial.FileTypeCode == kVisual3DText && trial.Rate == 1.0);
}

}  // namespace

TimeOutcome SettleRateWithoutTime(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (trial.Rate == 0.0) {
    const std::string typed = workbench.questions.AskInput(
        {.title = "Enter Sampling Rate",
         .prompt = "Enter sampling rate per channel in samples per second or hertz (Hz).",
         .defaultText = FormatNumber(trial.PreviousRate, "0"),
         .isNumber = true});
    if (typed.empty()) {
      return TimeOutcome::GivenUp;
    }
    trial.Rate = std::max(Val(typed), 0.0);
  }
  trial.RebuildTimeColumn();
  trial.Duration = static_cast<double>(trial.Data(trial.NData, 0)) - static_cast<double>(trial.Data(1, 0));
  return TimeOutcome::Settled;
}

TimeOutcome SettleRateFromTimes(Workbench& workbench) {
  constexpr std::int16_t kPdt = 23;
  Trial& trial = workbench.trial;
  const double elapsed =
      static_cast<double>(trial.Data(trial.NData, 0)) - static_cast<double>(trial.Data(1, 0));
  if (!(elapsed > 0)) {
    return AskBadTime(workbench) == Button::Retry ? TimeOutcome::EnterParametersAgain
                                                  : TimeOutcome::ReadWithoutTime;
  }
  const double calculated = Truncated(static_cast<double>(trial.NData - 1) / elapsed);
  if (!IsKnown(trial) || trial.FileTypeCode == kPdt) {
    trial.Rate = calculated;
  } else if (std::abs(trial.Rate - calculated) > kRateTolerance * std::max(trial.Rate, calculated)) {
    trial.Rate = AskWhichRate(workbench, trial.Rate, calculated);
  }
  trial.Duration = elapsed;
  return TimeOutcome::Settled;
}

}  // namespace velmora
