#include "emg/bursts/onsets_form.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "dsp/filters/filter_design.hpp"
#include "emg/bursts/onsets_view.hpp"
#include "events/store_events.hpp"

namespace velmora {
namespace {

// Whether a tenth of these samples or more, ten at least, stand in a row and are all the same. The noise of
// an amplifier is not, unless a converter is too coarse to tell rest from nothing.
bool IsLifeless(const Trial& trial, int channel, SampleRange range) {
  constexpr std::int32_t kFewest = 10;
  const std::int32_t enough = std::max(kFewest, (range.hi - range.lo + 1) / 10);
  std::int32_t inARow = 1;
  for (std::int32_t i = range.lo + 1; i <= range.hi && inARow < enough; ++i) {
    inARow = trial.Data(i, channel) == trial.Data(i - 1, channel) ? inARow + 1 : 1;
  }
  return inARow >= enough;
}

}  // namespace

OnsetsForm::OnsetsForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmOnsets", "Onsets and Offsets"), range_(range) {
  std::copy(workbench.thresholds.ChanThreshold.begin(), workbench.thresholds.ChanThreshold.end(),
            thresholds_.begin());
  AddEnvelopeFields();
  AddThresholdFields();
  AddTimeFields();
  AddFlag("chkEvents", "S&tore as events", events_);
  AddButtons();
  Follow();
}

void OnsetsForm::AddEnvelopeFields() {
  AddChannels("channels", "&Channels", channels_);
  AddFlag("chkTeager", "&Teager-Kaiser first", envelope_.teagerKaiser);
  AddFlag("chkRectify", "&Rectify", envelope_.rectify);
  AddNumber("txtEnvelope", "&Envelope cut-off", envelope_.cutoff,
            {.lowest = 0, .highest = workbench_.trial.Rate / 2, .openAbove = true})
      .units = "Hz, 0 = none";
}

void OnsetsForm::AddThresholdFields() {
  const double samples = range_.hi - range_.lo + 1;
  AddChoice("optBaseline", "&Baseline", baseline_,
            {"&Quietest stretch", "&Start of the range", "Between the &cursors", "Entered t&hreshold"})
      .edited = [this] { Follow(); };
  AddNumber("txtQuiet", "Stretch (s)", quiet_, {2 / workbench_.trial.Rate, samples / workbench_.trial.Rate});
  AddNumber("txtSDs", "&Standard deviations", deviations_, {0.5, 20});
  fields_.push_back({.name = "Thresholds",
                     .caption = "Threshold",
                     .target = &thresholds_,
                     .valuesOf = &workbench_.thresholds.ThresholdsOf});
}

void OnsetsForm::AddTimeFields() {
  const double all = 1000 * (range_.hi - range_.lo + 1) / workbench_.trial.Rate;
  AddNumber("txtAbove", "Shortest &burst (ms)", shortest_, {0, all});
  AddNumber("txtBelow", "Longest &gap (ms)", longestGap_, {0, all});
  AddNumber("txtSecond", "Second threshold (SDs, 0 = none)", second_, {0, 100});
  AddNumber("txtSecondTime", "for (ms)", secondTime_, {0, all});
}

void OnsetsForm::Follow() {
  const bool entered = baseline_ == kEntered;
  for (FormField& field : fields_) {
    if (field.name == "txtQuiet") {
      field.hidden = entered || baseline_ == kCursors;
    } else if (field.name == "txtSDs" || field.name == "txtSecond" || field.name == "txtSecondTime") {
      field.hidden = entered;
    } else if (field.name == "Thresholds") {
      field.hidden = !entered;
    }
  }
}

std::int64_t OnsetsForm::SamplesOf(double milliseconds) const {
  return RoundHalfEven(milliseconds * workbench_.trial.Rate / 1000);
}

std::size_t OnsetsForm::QuietSamples() const {
  const std::int64_t samples = RoundHalfEven(quiet_ * workbench_.trial.Rate);
  return static_cast<std::size_t>(std::clamp<std::int64_t>(samples, 2, range_.hi - range_.lo + 1));
}

bool OnsetsForm::HasBaseline() {
  const Trial& trial = workbench_.trial;
  if (baseline_ != kCursors ||
      (trial.CursorLo >= range_.lo && trial.CursorHi <= range_.hi && trial.CursorHi > trial.CursorLo)) {
    return true;
  }
  ShowRefusal(workbench_, {.title = "No Baseline",
                           .text = "Two cursors must mark the baseline within the range.",
                           .icon = Icon::Exclamation});
  return false;
}

SampleRange OnsetsForm::Rest(const std::vector<double>& envelope) const {
  std::size_t first = 0;
  std::size_t count = QuietSamples();
  if (baseline_ == kQuietest) {
    first = QuietestStretch(envelope, count);
  } else if (baseline_ == kCursors) {
    first = static_cast<std::size_t>(std::int64_t{workbench_.trial.CursorLo} - range_.lo);
    count = static_cast<std::size_t>(std::int64_t{workbench_.trial.CursorHi} - workbench_.trial.CursorLo + 1);
  }
  return {static_cast<std::int32_t>(first), static_cast<std::int32_t>(first + count - 1)};
}

ChannelBursts OnsetsForm::Search(int channel) const {
  ChannelBursts found{.channel = channel,
                      .envelope = EnvelopeOf(workbench_.trial, channel, range_, envelope_)};
  BurstRule rule{.shortest = SamplesOf(shortest_), .longestGap = SamplesOf(longestGap_)};
  if (baseline_ == kEntered) {
    rule.threshold = thresholds_[channel];
  } else {
    const SampleRange rest = Rest(found.envelope);
    const std::span envelope(found.envelope);
    found.rest = MeanDeviationOf(
        envelope.first(static_cast<std::size_t>(rest.hi) + 1).subspan(static_cast<std::size_t>(rest.lo)));
    found.lifeless = IsLifeless(workbench_.trial, channel, {range_.lo + rest.lo, range_.lo + rest.hi});
    rule.threshold = found.rest->mean + deviations_ * found.rest->deviation;
    if (second_ > 0) {
      rule.second = found.rest->mean + second_ * found.rest->deviation;
      rule.secondSamples = SamplesOf(secondTime_);
    }
  }
  found.threshold = rule.threshold;
  found.bursts = FindSignalBursts(found.envelope, rule);
  return found;
}

bool OnsetsForm::Compute() {
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (!HasBaseline()) {
    return false;
  }
  channels = WithoutMissing(workbench_, channels, range_);
  if (channels.empty()) {
    return false;
  }
  found_.clear();
  try {
    const bool done = ReadCancellable(workbench_, "Looking for onsets", [&](const Turn& turn) {
      for (const int c : channels) {
        found_.push_back(Search(c));
        Give(turn);
      }
    });
    if (!done) {
      return false;
    }
  } catch (const FilterDesignError& error) {
    ShowRefusal(workbench_, {.title = "Invalid Filter", .text = error.what(), .icon = Icon::Exclamation});
    return false;
  }
  DidEach(workbench_, channels, [this](int c) {
    const auto it =
        std::find_if(found_.begin(), found_.end(), [c](const auto& of) { return of.channel == c; });
    return Words() + ", " + CountOf(static_cast<std::int64_t>(it->bursts.size()), "burst");
  });
  TellLifelessRest();
  KeepEvents();
  return true;
}

void OnsetsForm::TellLifelessRest() {
  std::string numbers;
  for (const ChannelBursts& of : found_) {
    if (of.lifeless) {
      numbers += (numbers.empty() ? "" : ", ") + ChannelNumber(of.channel);
    }
  }
  if (!numbers.empty()) {
    ShowRefusal(workbench_,
                {.title = "No Rest in the Baseline",
                 .text = "Much of the baseline is one value that never changes, in channels: " + numbers +
                         ".  A sensor that was off, or samples filled in, say nothing of rest, nor does the "
                         "threshold made of them.  Choose a range or a baseline without them.",
                 .icon = Icon::Exclamation});
  }
}

std::string OnsetsForm::Words() const {
  return baseline_ == kEntered ? "Onsets and offsets at entered thresholds"
                               : "Onsets and offsets at " + PlainNumber(deviations_) + " SD above rest";
}

void OnsetsForm::KeepEvents() {
  if (!events_) {
    return;
  }
  std::vector<FoundEvents> events;
  for (const ChannelBursts& of : found_) {
    FoundEvents& times = events.emplace_back(FoundEvents{.channel = of.channel});
    for (const SignalBurst& burst : of.bursts) {
      const auto sample = [this](std::int64_t at) { return static_cast<std::int32_t>(range_.lo + at); };
      times.times.push_back({.on = SampleToTime(workbench_.trial, sample(burst.on)),
                             .off = SampleToTime(workbench_.trial, sample(burst.off))});
    }
  }
  StoreEvents(workbench_, events);
}

void FindOnsets(Workbench& workbench) {
  constexpr int kFewestSamples = 5;
  if (const auto range = AskTimedRange(workbench, kFewestSamples)) {
    OnsetsForm form(workbench, *range);
    if (form.Ask()) {
      ShowOnsets(workbench, form);
    }
  }
}

}  // namespace velmora
