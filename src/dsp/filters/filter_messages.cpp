#include "dsp/filters/filter_messages.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {
namespace {

using Outcome = FilterVerdict::Outcome;

std::string Hertz(double value, const char* pattern = "0.00") {
  return FormatNumber(value, pattern) + " Hz";
}

// To hundredths: a limit that is told must be one that is accepted.
double RoundedDown(double limit) {
  return std::floor(limit * 100.0) / 100.0;
}

}  // namespace

std::string ReasonText(const FilterVerdict& verdict) {
  const std::string maximum = "\nMaximum is " + Hertz(verdict.limit) + ".";
  switch (verdict.outcome) {
    case Outcome::TooFewPasses:
      return "Number of passes " + PlainNumber(verdict.number) + " is too low.\nMinimum is " +
             PlainNumber(verdict.limit) + ".";
    case Outcome::TooManyPasses:
      return "Number of passes " + PlainNumber(verdict.number) + " is too high.\nMaximum is " +
             PlainNumber(verdict.limit) + ".";
    case Outcome::LowPassTooHigh:
      return "Adjusted cutoff frequency " + Hertz(verdict.number) + " is too high (> sampling rate/2)." +
             maximum;
    // The number of both high-pass texts is a fraction of the rate, in spite of its units.
    case Outcome::HighPassAdjustedTooHigh:
      return "Adjusted cutoff frequency " + Hertz(verdict.number) + " is too high." + maximum;
    case Outcome::HighPassTooHigh:
      return "Cutoff frequency " + Hertz(verdict.number) + " is too high." + maximum;
    case Outcome::CutoffTooLow:
      return "Cutoff frequency " + PlainNumber(verdict.cutoff) + " Hz is too low for the sampling rate.";
    case Outcome::Accepted:
      break;
  }
  return {};
}

std::string ShortReason(const FilterVerdict& verdict) {
  const std::string asked = PlainNumber(verdict.cutoff) + " Hz, ";
  switch (verdict.outcome) {
    case Outcome::TooFewPasses:
      return PlainNumber(verdict.number) + " passes" + ", at least " + PlainNumber(verdict.limit);
    case Outcome::TooManyPasses:
      return PlainNumber(verdict.number) + " passes, at most " + PlainNumber(verdict.limit);
    case Outcome::LowPassTooHigh:
    case Outcome::HighPassAdjustedTooHigh:
    case Outcome::HighPassTooHigh:
      return asked + "at most " + PlainNumber(RoundedDown(verdict.limit)) + " Hz";
    case Outcome::CutoffTooLow:
      return asked + "too low for the sampling rate";
    case Outcome::Accepted:
      break;
  }
  return {};
}

std::string CancelledText(int channel) {
  return "\n\nFiltering is cancelled for channel " + std::to_string(channel) + ".";
}

void ShowVerdict(Workbench& workbench, int channel, const FilterVerdict& verdict) {
  if (verdict.lowestUseful) {
    ShowRefusal(workbench, {.title = "Low Cutoff Frequency",
                            .text = "Cutoff frequency " + Hertz(verdict.cutoff, "0.0000") +
                                    " is so low that it may have no effect.\nMinimum is " +
                                    Hertz(*verdict.lowestUseful, "0.0000") + ".",
                            .icon = Icon::Exclamation});
  }
  if (verdict.Accepted()) {
    return;
  }
  const bool passes = verdict.outcome == Outcome::TooFewPasses || verdict.outcome == Outcome::TooManyPasses;
  ShowRefusal(workbench, {.title = passes ? "Invalid Number of Passes" : "Invalid Cutoff Frequency",
                          .text = ReasonText(verdict) + CancelledText(channel),
                          .icon = Icon::Exclamation});
}

}  // namespace velmora
