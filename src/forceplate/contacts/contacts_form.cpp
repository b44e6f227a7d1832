#include "forceplate/contacts/contacts_form.hpp"

#include <algorithm>

#include "core/text/numbers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "events/store_events.hpp"
#include "forceplate/contacts/contacts_view.hpp"
#include "forceplate/force_samples.hpp"

namespace velmora {
namespace {

constexpr double kMostNewtons = 99999.0;

}  // namespace

ContactsForm::ContactsForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmContacts", "Foot Contacts"), range_(range) {
  const double all = (range.hi - range.lo + 1) / workbench.trial.Rate;
  shortest_ = std::min(shortest_, all);
  shortestGap_ = std::min(shortestGap_, all);
  const Limits level{.lowest = 0, .highest = kMostNewtons, .openBelow = true};
  AddChannels("channels", "C&hannels", channels_);
  AddNumber("txtOn", "&On from", on_, level);
  AddNumber("txtOff", "O&ff below", off_, level);
  AddChoice("optUnits", "&Thresholds in", units_, {"&N", "% of the &largest force"});
  AddNumber("txtMinContact", "Shortest &contact (s)", shortest_, {0, all});
  AddNumber("txtMinGap", "Shortest &gap (s)", shortestGap_, {0, all});
  AddFlag("chkInterpolate", "&Interpolate the times", interpolate_);
  AddFlag("chkEvents", "S&tore as events", events_);
  AddButtons();
}

std::int64_t ContactsForm::SamplesIn(double seconds) const {
  return RoundHalfEven(seconds * workbench_.trial.Rate);
}

std::string ContactsForm::Words() const {
  const std::string units = units_ == kPercent ? " % of the largest force" : " N";
  return "on from " + PlainNumber(on_) + ", off below " + PlainNumber(off_) + units;
}

ChannelContacts ContactsForm::Search(int channel) const {
  ChannelContacts found{.channel = channel, .force = SamplesOf(workbench_.trial, channel, range_)};
  found.turned = PointsDown(found.force);
  if (found.turned) {
    TurnForce(found.force);
  }
  const double part =
      units_ == kPercent ? *std::max_element(found.force.begin(), found.force.end()) / 100 : 1.0;
  found.rule = {.on = on_ * part,
                .off = off_ * part,
                .shortest = SamplesIn(shortest_),
                .shortestGap = SamplesIn(shortestGap_)};
  // A channel of nothing but zeros has no largest force to take a part of.
  if (found.rule.on > 0) {
    found.contacts = MeasureContacts(found.force, found.rule, workbench_.trial.Rate, interpolate_);
  }
  return found;
}

bool ContactsForm::Compute() {
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  const double most = units_ == kPercent ? 100.0 : kMostNewtons;
  if (on_ > most) {
    RefuseEntry(workbench_, "On from", 0, most);
    return false;
  }
  if (off_ > on_) {
    RefuseEntry(workbench_, "Off below", 0, on_);
    return false;
  }
  channels = WithoutMissing(workbench_, channels, range_);
  if (channels.empty()) {
    return false;
  }
  found_.clear();
  const bool done = ReadCancellable(workbench_, "Looking for contacts", [&](const Turn& turn) {
    for (const int c : channels) {
      found_.push_back(Search(c));
      Give(turn);
    }
  });
  if (!done) {
    return false;
  }
  if (units_ == kNewtons) {
    std::for_each(channels.begin(), channels.end(), [this](int c) { TellIfNotNewtons(workbench_, c); });
  }
  DidEach(workbench_, channels, [this](int c) {
    const auto it =
        std::find_if(found_.begin(), found_.end(), [c](const auto& of) { return of.channel == c; });
    return "Contacts " + Words() + ": " + CountOf(static_cast<std::int64_t>(it->contacts.size()), "contact");
  });
  KeepEvents();
  return true;
}

// Where the range cuts a contact, nobody saw it begin or end.
void ContactsForm::KeepEvents() {
  if (!events_) {
    return;
  }
  const double begin = SampleToTime(workbench_.trial, range_.lo);
  std::vector<FoundEvents> events;
  for (const ChannelContacts& of : found_) {
    FoundEvents& times = events.emplace_back(FoundEvents{.channel = of.channel, .times = {}});
    for (const MeasuredContact& contact : of.contacts) {
      times.times.push_back({.on = contact.beganHere ? begin + contact.on : EventTimes::kNone,
                             .off = contact.endedHere ? begin + contact.off : EventTimes::kNone});
    }
  }
  StoreEvents(workbench_, events);
}

void FindFootContacts(Workbench& workbench) {
  constexpr int kFewestSamples = 5;
  if (const auto range = AskTimedRange(workbench, kFewestSamples)) {
    ContactsForm form(workbench, *range);
    if (form.Ask()) {
      ShowContacts(workbench, form);
    }
  }
}

}  // namespace velmora
