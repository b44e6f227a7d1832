#include "dsp/time_base/time_base_commands.hpp"

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/event_times.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/refusals.hpp"
#include "core/trial/resample.hpp"
#include "dsp/channel_picking.hpp"
#include "dsp/time_base/shannon_resample.hpp"
#include "dsp/time_base/time_base.hpp"

namespace velmora {
namespace {

void RefuseEntry(Workbench& workbench, const std::string& text) {
  ShowRefusal(workbench, {.title = "Invalid Entry", .text = text, .icon = Icon::Exclamation});
}

bool HasIntervals(Workbench& workbench) {
  if (workbench.trial.NData >= 2) {
    return true;
  }
  if (workbench.trial.NData == 1) {
    ShowRefusal(workbench, {.title = "Too Few Data",
                            .text = "At least 2 samples are needed for this time base operation.",
                            .icon = Icon::Exclamation});
  }
  return false;
}

bool IsPositive(double value) {
  return value > 0 && std::isfinite(value);
}

// --- Re-sampling

// The number of intervals a person may ask for, the first being 1; the last leaves room for one sample
// more in a 32-bit count.
bool CanResampleTo(Workbench& workbench, std::int64_t intervals) {
  if (intervals >= 1 && intervals < std::numeric_limits<std::int32_t>::max()) {
    const Trial& trial = workbench.trial;
    return intervals < trial.NData || MayBeLarge(workbench, intervals + 1, trial.NChan);
  }
  RefuseEntry(workbench, "Invalid entry.  Data were not resampled.");
  return false;
}

// Units of the user and frames stand beside a rate that counts something else.
bool RateIsOfAbscissa(const Workbench& workbench) {
  return workbench.time.Base != TimeBase::UserUnits && workbench.time.Base != TimeBase::Frames;
}

std::string RateWords(const Workbench& workbench) {
  return ", now " + PlainNumber(workbench.trial.Rate) + " " +
         (IsTimeBased(workbench) ? "Hz" : "samples per unit of the abscissa");
}

/// The trial before it is re-sampled.
struct Unsampled {
  explicit Unsampled(const Trial& trial)
      : samples(trial.NData),
        rate(trial.Rate),
        duration(trial.Duration),
        first(trial.Data(1, 0)),
        last(trial.Data(trial.NData, 0)) {}
  std::int32_t samples;
  double rate;
  double duration;
  double first;  // of the abscissa
  double last;
};

// Re-sampling rebuilds row 0 from the rate, as if that were the rate of the abscissa.
void KeepAbscissa(Workbench& workbench, const Unsampled& before) {
  if (workbench.time.Base == TimeBase::Count) {
    UseSampleCount(workbench.trial);
  } else if (!RateIsOfAbscissa(workbench)) {
    SpreadAbscissa(workbench.trial, before.first, before.last);
    workbench.trial.Duration = before.duration;
  }
}

// What counts samples follows their new number: the abscissa, the remembered rate of the seconds base, and
// the cursors, which stay at their times.
void FinishResampling(Workbench& workbench, const Unsampled& before, const char* how) {
  Trial& trial = workbench.trial;
  const double ratio = (trial.NData - 1.0) / (before.samples - 1.0);
  KeepAbscissa(workbench, before);
  FollowRate(workbench, before.rate, ratio);
  workbench.time.SecondsRate *= ratio;
  trial.CursorLo = RoundHalfEven32((trial.CursorLo - 1.0) * ratio + 1.0);
  trial.CursorHi = RoundHalfEven32((trial.CursorHi - 1.0) * ratio + 1.0);
  NormaliseCursors(trial);
  MarkChanged(workbench, true);
  Did(workbench, std::string(how) + " from " + CountOf(before.samples, "sample") + " to " +
                     std::to_string(trial.NData) + (RateIsOfAbscissa(workbench) ? RateWords(workbench) : ""));
}

void ResampleLinearly(Workbench& workbench, std::int64_t intervals) {
  if (!CanResampleTo(workbench, intervals)) {
    return;
  }
  const Unsampled before(workbench.trial);
  ResampleAll(workbench.trial, intervals);
  FinishResampling(workbench, before, "Resampled linearly");
}

std::string AskDivisions(Workbench& workbench) {
  return workbench.questions.AskInput(
      {.title = "Time Base Divisions",
       .prompt = "Enter number of divisions of time base.  Currently there are " +
                 std::to_string(workbench.trial.NData - 1) +
                 " divisions.  Note, all channels will be resampled.",
       .isNumber = true});
}

void Normalize(Workbench& workbench) {
  if (!HasIntervals(workbench)) {
    return;
  }
  if (const std::string typed = AskDivisions(workbench); !typed.empty()) {
    ResampleLinearly(workbench, RoundHalfEven(Val(typed)));
  }
}

bool HasRate(Workbench& workbench) {
  if (IsPositive(workbench.trial.Rate)) {
    return true;
  }
  ShowRefusal(workbench, {.title = "Invalid Sampling Rate",
                          .text = "The sampling rate must be above zero for this operation.",
                          .icon = Icon::Exclamation});
  return false;
}

void ChangeRate(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  if (!HasIntervals(workbench) || !HasRate(workbench)) {
    return;
  }
  const std::string typed = workbench.questions.AskInput(
      {.title = "Change Sampling Rate",
       .prompt = "Enter new sampling rate.  Current rate is " + FormatNumber(trial.Rate, "0.00 Hz.") +
                 "  Note, all channels will be resampled.",
       .isNumber = true});
  if (!typed.empty()) {
    ResampleLinearly(workbench, RoundHalfEven(trial.NData * Val(typed) / trial.Rate));
  }
}

void Shannon(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (!HasIntervals(workbench) || !HasRate(workbench)) {
    return;
  }
  const std::string typed = AskDivisions(workbench);
  const std::int64_t intervals = RoundHalfEven(Val(typed));
  if (typed.empty() || !CanResampleTo(workbench, intervals)) {
    return;
  }
  const Unsampled before(trial);
  ProgressPanel panel(workbench);
  panel.SetFormat("Reconstructing signals");
  panel.SetStatus("Processing started.");
  panel.SetLimits(0, static_cast<double>(intervals + 1));
  const auto showAndGoOn = [&panel](std::int64_t done) {
    constexpr std::int64_t samplesATurn = 16;
    if (done % samplesATurn != 0) {
      return true;
    }
    panel.SetValue(static_cast<double>(done));
    return !panel.GiveTurn();
  };
  if (ShannonResample(trial, intervals, showAndGoOn)) {
    panel.SetStatus("Channel " + ChannelNumber(trial.NChan) + " done.");
    FinishResampling(workbench, before, "Resampled by Shannon reconstruction");
  }
}

// --- Moving data along the abscissa

void Reverse(Workbench& workbench) {
  if (workbench.trial.NData < 1) {
    return;
  }
  ReverseSamples(workbench.trial);
  ReverseEventTimes(workbench);
  MarkChanged(workbench, true);
  workbench.time.TimeReversed = !workbench.time.TimeReversed;
  Did(workbench, "Time reversed");
  workbench.questions.AskBox(
      {.text = "Time base reversed.  To undo, use this function again.", .icon = Icon::Information});
}

struct Move {
  std::string_view told;
  std::string_view pickPrompt;
  std::string_view amountPrompt;
  std::string_view refusal;
  void (*kernel)(Trial&, const ChannelList&, std::int32_t shift);
};

constexpr Move kPhaseShift = {
    "Shifted by ", "Choose which channel(s) to phase shift.",
    "Enter number of points to shift channel(s).\n"
    "Note, data will be lost with each shift. Enter 0 to cancel.",
    "Shifting is cancelled.\nAmount of shift is greater than or equal to number of data.", ShiftSamples};
constexpr Move kRotation = {"Rotated by ", "Choose which channel(s) to rotate.",
                            "Enter number of points to rotate channel(s).\nEnter 0 to cancel.",
                            "Amount of rotation is greater than or equal to number of data.", RotateSamples};

// By how many places; 0 for nothing to do.
std::int32_t AskAmount(Workbench& workbench, const Move& move) {
  const std::string typed = workbench.questions.AskInput({.title = "Amount of Shift",
                                                          .prompt = std::string(move.amountPrompt),
                                                          .defaultText = "0",
                                                          .isNumber = true});
  const std::int64_t amount = RoundHalfEven(Val(typed));
  if (amount <= -workbench.trial.NData || amount >= workbench.trial.NData) {
    ShowRefusal(workbench, {.text = std::string(move.refusal), .icon = Icon::Exclamation});
    return 0;
  }
  return static_cast<std::int32_t>(amount);
}

void MovePicked(Workbench& workbench, const Move& move) {
  if (workbench.trial.NData < 1) {
    return;
  }
  const bool changed = workbench.trial.FileChanged;  // the picker itself marks the file
  const ChannelList channels = PickChannels(workbench, move.pickPrompt);
  const std::int32_t amount = channels.empty() ? 0 : AskAmount(workbench, move);
  if (amount == 0) {
    MarkChanged(workbench, changed);
    return;
  }
  move.kernel(workbench.trial, channels, amount);
  MarkChanged(workbench, true);
  Did(workbench, std::string(move.told) + CountOf(amount, "sample"), channels);
}

void PhaseShift(Workbench& workbench) {
  MovePicked(workbench, kPhaseShift);
}
void Rotate(Workbench& workbench) {
  MovePicked(workbench, kRotation);
}

// --- What the abscissa counts

void RememberSeconds(Workbench& workbench) {
  if (IsTimeBased(workbench)) {
    workbench.time.SecondsRate = workbench.trial.Rate;
    workbench.time.SecondsDuration = workbench.trial.Duration;
  }
}

void SetTimeBase(Workbench& workbench, TimeBase base, const std::string& abscissa) {
  workbench.time.Base = base;
  MarkChanged(workbench, true);
  Did(workbench, "Abscissa in " + abscissa);
}

// What `use` makes the abscissa count, the rate may count as well; recorded times stay on their samples.
template <typename Use>
void Recount(Workbench& workbench, const Use& use) {
  const double before = workbench.trial.Rate;
  use(workbench.trial);
  FollowRate(workbench, before);
}

// A trial that came in another base has no seconds to go back to: its own rate and duration stay.
void RestoreSeconds(Workbench& workbench) {
  const bool known = workbench.time.SecondsRate > 0;
  if (!known && !IsTimeBased(workbench)) {
    AddNotice(
        workbench,
        "The file does not tell its sampling rate in Hz: its " + PlainNumber(workbench.trial.Rate) +
            " samples per unit of the abscissa were taken for it.  Correct it with Sampling Rate in the "
            "Edit menu.");
  }
  Recount(workbench, [known, &time = workbench.time](Trial& trial) {
    UseSeconds(trial, known ? time.SecondsRate : trial.Rate, known ? time.SecondsDuration : trial.Duration);
  });
}

void Count(Workbench& workbench) {
  if (workbench.trial.NData < 1) {
    return;
  }
  RememberSeconds(workbench);
  Recount(workbench, UseSampleCount);
  SetTimeBase(workbench, TimeBase::Count, "samples");
}

void Percentage(Workbench& workbench) {
  if (!HasIntervals(workbench)) {
    return;
  }
  RememberSeconds(workbench);
  Recount(workbench, UsePercentage);
  SetTimeBase(workbench, TimeBase::Percentage, "percent");
}

void Seconds(Workbench& workbench) {
  if (workbench.trial.NData < 1) {
    return;
  }
  RememberSeconds(workbench);
  RestoreSeconds(workbench);
  SetTimeBase(workbench, TimeBase::Seconds, "seconds");
}

std::string AskOr(Workbench& workbench, const InputQuestion& question, const char* whenEmpty) {
  const std::string typed = workbench.questions.AskInput(question);
  return typed.empty() ? whenEmpty : typed;
}

void UserUnits(Workbench& workbench) {
  if (!HasIntervals(workbench)) {
    return;
  }
  const std::string typed =
      workbench.questions.AskInput({.title = "User Units of Time Base",
                                    .prompt = "Enter new length of timebase (abscissa) or press Cancel.",
                                    .isNumber = true});
  if (typed.empty()) {
    return;
  }
  const double length = Val(typed);
  if (!IsPositive(length)) {
    RefuseEntry(workbench, "Invalid entry.  Timebase unchanged.");
    return;
  }
  const std::string label =
      AskOr(workbench,
            {.title = "Label for Abscissa",
             .prompt = "Enter abscissa's label and units (e.g., Force (N)) or press Cancel",
             .defaultText = "User Units"},
            "Abscissa");
  const std::string units = AskOr(workbench,
                                  {.title = "Units for Abscissa",
                                   .prompt = "Enter abscissa's units (e.g., N, kg, etc.) or press Cancel",
                                   .defaultText = "?"},
                                  "units");
  RememberSeconds(workbench);
  UseUserUnits(workbench.trial, length, label, units);
  SetTimeBase(workbench, TimeBase::UserUnits, label + ", " + PlainNumber(length) + " " + units + " long");
}

void Frames(Workbench& workbench) {
  if (!HasIntervals(workbench)) {
    return;
  }
  const std::string typed = workbench.questions.AskInput(
      {.title = "Video Frame for Time Base",
       .prompt = "Enter number of analog records per frame of video or press Cancel.",
       .defaultText = "1",
       .isNumber = true});
  if (typed.empty()) {
    return;
  }
  const double recordsPerFrame = Val(typed);
  if (!IsPositive(recordsPerFrame)) {
    RefuseEntry(workbench, "Invalid entry.  Timebase unchanged.");
    return;
  }
  RememberSeconds(workbench);
  // Frames pass in seconds, whatever the abscissa counted until now.
  const Trial& trial = workbench.trial;
  const bool known = workbench.time.SecondsRate > 0;
  UseFrames(workbench.trial, recordsPerFrame, known ? workbench.time.SecondsRate : trial.Rate,
            known ? workbench.time.SecondsDuration : trial.Duration);
  SetTimeBase(workbench, TimeBase::Frames, "video frames of " + PlainNumber(recordsPerFrame) + " samples");
}

// Row 0 holds seconds; only the way they are shown changes.
void HhMmSs(Workbench& workbench) {
  if (workbench.trial.NData < 1) {
    return;
  }
  if (workbench.time.Base == TimeBase::HhMmSs) {
    return;
  }
  if (IsTimeBased(workbench)) {
    workbench.time.Base = TimeBase::HhMmSs;
    Did(workbench, "Abscissa in hours, minutes and seconds");
    return;
  }
  RestoreSeconds(workbench);
  SetTimeBase(workbench, TimeBase::HhMmSs, "hours, minutes and seconds");
}

constexpr std::string_view kTimeBaseMenu = "&Analysis/&Time Base";
constexpr std::string_view kUnitsMenu = "&Analysis/&Time Base/&Units";

constexpr std::array kTimeBaseCommands = {
    Command{"time.normalize", "&Normalize to number of intervals", kTimeBaseMenu, Needs::Data, Normalize},
    Command{"time.phase-shift", "&Phase shift", kTimeBaseMenu, Needs::Data, PhaseShift},
    Command{"time.reverse", "&Reverse timebase", kTimeBaseMenu, Needs::Data, Reverse},
    Command{"time.shannon", "&Shannon Interpolation", kTimeBaseMenu, Needs::Data, Shannon},
    Command{"time.rotate", "Ro&tate", kTimeBaseMenu, Needs::Data, Rotate},
    Command{"time.change-rate", "&Change sampling rate", kTimeBaseMenu, Needs::Data, ChangeRate},
    Command{"timebase.count", "&Count", kUnitsMenu, Needs::Data, Count},
    Command{"timebase.percentage", "&Percentage", kUnitsMenu, Needs::Data, Percentage},
    Command{"timebase.seconds", "&Seconds", kUnitsMenu, Needs::Data, Seconds},
    Command{"timebase.user-units", "&User Units", kUnitsMenu, Needs::Data, UserUnits},
    Command{"timebase.frames", "Video (C3D) &Frame rate", kUnitsMenu, Needs::Data, Frames},
    Command{"timebase.hhmmss", "&HH:MM:SS", kUnitsMenu, Needs::Data, HhMmSs},
};

}  // namespace

std::span<const Command> TimeBaseCommands() {
  return kTimeBaseCommands;
}

}  // namespace velmora
