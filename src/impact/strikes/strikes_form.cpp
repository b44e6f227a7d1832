#include "impact/strikes/strikes_form.hpp"

#include <algorithm>
#include <functional>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "impact/strikes/strikes_view.hpp"

namespace velmora {
namespace {

constexpr double kNewtonsOfImpact = 20;
constexpr double kPartOfLargest = 0.05;

}  // namespace

StrikesForm::StrikesForm(Workbench& workbench, SampleRange range)
    : AnalysisForm(workbench, "frmImpact", "Impact Analysis"), range_(range) {
  AddChannels("channels", "C&hannels", channels_);
  AddThresholdFields();
  AddPeakFields();
  AddChoice("comClass", "CFC c&lass", filter_.chosen, CfcChoice::Names());
  AddNumber("txtBodyWeight", "&Body weight (N, 0 = none)", bodyWeight_, {0, 99999});
  AddButtons();
  Follow();
}

void StrikesForm::AddThresholdFields() {
  constexpr Limits kLevel{0, 999'999};
  const double all = (range_.hi - range_.lo + 1) / workbench_.trial.Rate;
  shortest_ = std::min(shortest_, all);
  shortestGap_ = std::min(shortestGap_, all);
  AddNumber("txtThreshold", "&Threshold (0: 20 N, else 5 % of the largest)", threshold_, kLevel);
  AddNumber("txtRelease", "&Release (0: the threshold)", release_, kLevel);
  AddNumber("txtMinDuration", "Shortest &impact (s)", shortest_, {0, all});
  AddNumber("txtMinGap", "Shortest &gap (s)", shortestGap_, {0, all});
  AddFlag("chkNegative", "Impacts point &down", negative_);
}

void StrikesForm::AddPeakFields() {
  const double all = (range_.hi - range_.lo + 1) / workbench_.trial.Rate;
  peakWindow_ = std::min(peakWindow_, all);
  AddChoice("optPeak", "Peak", peak_, {"&Largest", "&First local maximum"}).edited = [this] { Follow(); };
  AddNumber("txtPeakWindow", "within (s)", peakWindow_, {0, all});
}

void StrikesForm::Follow() {
  for (FormField& field : fields_) {
    if (field.name == "txtPeakWindow") {
      field.hidden = peak_ == 0;
    }
  }
}

std::int64_t StrikesForm::SamplesIn(double seconds) const {
  return RoundHalfEven(seconds * workbench_.trial.Rate);
}

StrikeRule StrikesForm::RuleFor(int channel, const std::vector<double>& signal) const {
  const std::string units = Trim(workbench_.trial.ChanUnits[channel].Text());
  const bool newtons = units.starts_with("N") && units.find('m') == std::string::npos;  // no moment
  const double byItself =
      newtons ? kNewtonsOfImpact : kPartOfLargest * *std::max_element(signal.begin(), signal.end());
  StrikeRule rule{.contact = {.on = threshold_ > 0 ? threshold_ : byItself,
                              .shortest = SamplesIn(shortest_),
                              .shortestGap = SamplesIn(shortestGap_)}};
  rule.contact.off = release_ > 0 ? std::min(release_, rule.contact.on) : rule.contact.on;
  if (peak_ != 0) {
    rule.firstMaximumWithin = SamplesIn(peakWindow_);
  }
  return rule;
}

ChannelStrikes StrikesForm::Search(int channel, const std::optional<CfcSection>& filter) const {
  std::vector<double> all = SamplesOf(workbench_.trial, channel, {1, workbench_.trial.NData});
  if (filter) {
    RunCfc(all, *filter);
  }
  ChannelStrikes found{.channel = channel, .signal = {all.begin() + range_.lo - 1, all.begin() + range_.hi}};
  if (negative_) {
    std::transform(found.signal.begin(), found.signal.end(), found.signal.begin(), std::negate<>());
  }
  found.rule = RuleFor(channel, found.signal);
  if (found.rule.contact.on > 0) {
    found.strikes = FindStrikes(found.signal, found.rule, 1.0 / workbench_.trial.Rate);
  }
  return found;
}

bool StrikesForm::Compute() {
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (threshold_ > 0 && release_ > threshold_) {
    RefuseEntry(workbench_, "Release", 0, threshold_);
    return false;
  }
  // A filter stands on all samples of its channel.
  channels = WithoutMissing(workbench_, channels,
                            filter_.chosen > 0 ? SampleRange{1, workbench_.trial.NData} : range_);
  if (channels.empty()) {
    return false;
  }
  std::optional<CfcSection> filter;
  if (filter_.chosen > 0) {
    filter = DesignCfcFor(workbench_, filter_.Class());
    if (!filter) {
      return false;
    }
  }
  found_.clear();
  const bool done = ReadCancellable(workbench_, "Looking for impacts", [&](const Turn& turn) {
    for (const int c : channels) {
      found_.push_back(Search(c, filter));
      Give(turn);
    }
  });
  if (!done) {
    return false;
  }
  DidEach(workbench_, channels, [this](int c) {
    const auto it =
        std::find_if(found_.begin(), found_.end(), [c](const auto& of) { return of.channel == c; });
    return "Impact analysis, " + filter_.Words() + ", " +
           CountOf(static_cast<std::int64_t>(it->strikes.size()), "impact");
  });
  TellWithoutImpacts();
  return true;
}

void StrikesForm::TellWithoutImpacts() const {
  for (const ChannelStrikes& of : found_) {
    if (!of.strikes.empty()) {
      continue;
    }
    const double on = of.rule.contact.on;
    const std::string why = on > 0 ? "no impact of " + PlainNumber(shortest_) +
                                         " s or more at its threshold of " +
                                         FormatNumber(on, workbench_.patterns.ValuePattern)
                                   : "no value above zero, and so no impact";
    ShowRefusal(workbench_, {.title = "No Impacts",
                             .text = "Channel " + ChannelNumber(of.channel) + " has " + why + ".",
                             .icon = Icon::Exclamation});
  }
}

std::string StrikesForm::Words() const {
  return std::string(peak_ == 0 ? "Largest value"
                                : "First local maximum within " + PlainNumber(peakWindow_) + " s") +
         " as the peak; rates from 20 to 80 % of the samples to it, on average and the largest between "
         "neighbours; " +
         filter_.Words() + (negative_ ? "; turned upside down" : "");
}

void AnalyseImpacts(Workbench& workbench) {
  constexpr int kFewestSamples = 3;  // for a value with a neighbour on either side
  if (const auto range = AskTimedRange(workbench, kFewestSamples)) {
    StrikesForm form(workbench, *range);
    if (form.Ask()) {
      ShowStrikes(workbench, form);
    }
  }
}

}  // namespace velmora
