#include "core/trial/refusals.hpp"

#include "core/text/numbers.hpp"

namespace velmora {

void RefuseTooFewChannels(Workbench& workbench, int least) {
  ShowRefusal(workbench, {.title = "Too Few Channels Selected",
                          .text = "You must choose at least " + CountOf(least, "channel") + ".",
                          .icon = Icon::Exclamation});
}

void RefuseTooFewData(Workbench& workbench, const char* text) {
  ShowRefusal(workbench, {.title = "Too Few Data", .text = text, .icon = Icon::Exclamation});
}

bool EnoughToIntegrate(Workbench& workbench, std::int64_t samples) {
  constexpr std::int64_t kFewest = 5;
  if (samples >= kFewest) {
    return true;
  }
  RefuseTooFewData(workbench, "Too few data points to integrate.");
  return false;
}

std::string EntryMustBe(const std::string& field, double lowest, double highest) {
  return field + " must be from " + PlainNumber(lowest) + " to " + PlainNumber(highest) + ".";
}

bool MayBeLarge(Workbench& workbench, std::int64_t samples, int channels) {
  constexpr double kGigabyte = 1e9;
  const double bytes = static_cast<double>(samples) * (channels + 1.0) * sizeof(float);
  return bytes <= kGigabyte ||
         workbench.questions.AskBox({.title = "Large Trial",
                                     .text = "The trial will have " + CountOf(samples, "sample") + " in " +
                                             CountOf(channels, "channel") + ", " +
                                             FormatNumber(bytes / kGigabyte, "0.0") +
                                             " GB.\nPress Yes to go on all the same or No to stop.",
                                     .icon = Icon::Question,
                                     .buttons = {Button::Yes, Button::No}}) == Button::Yes;
}

void RefuseEntry(Workbench& workbench, const std::string& field, double lowest, double highest) {
  ShowRefusal(
      workbench,
      {.title = "Invalid Entry", .text = EntryMustBe(field, lowest, highest), .icon = Icon::Exclamation});
}

bool HasTimeBase(Workbench& workbench) {
  if (workbench.trial.Rate > 0 && IsTimeBased(workbench)) {
    return true;
  }
  ShowRefusal(workbench, {.title = "Invalid Sampling Rate or Timebase",
                          .text = "Data not time based.  Processing cannot continue.",
                          .icon = Icon::Exclamation});
  return false;
}

std::optional<SampleRange> AskTimedRange(Workbench& workbench, std::int64_t fewest) {
  if (workbench.trial.NData < 1 || !HasTimeBase(workbench)) {
    return std::nullopt;
  }
  const SampleRange range = AskCursorRange(workbench);
  if (std::int64_t{range.hi} - range.lo + 1 < fewest) {
    RefuseTooFewData(workbench);
    return std::nullopt;
  }
  return range;
}

}  // namespace velmora
