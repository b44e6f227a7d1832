#include "dsp/smoothing/smooth_form.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>

#include "core/questions/progress.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/ask_entry.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/filters/filter_and_tell.hpp"
#include "dsp/filters/filter_messages.hpp"
#include "dsp/filters/filter_options.hpp"
#include "dsp/filters/recursive_filter.hpp"

namespace velmora {
namespace {

// Choices of this dialogue alone.
constexpr std::int32_t kNotchOption = 4;
constexpr std::int32_t kSplineOption = 6;

// Where the fields lie in fields_.
enum SmoothField : std::size_t {
  kSmoothPassField = 1,
  kSmoothDesignField,
  kCutoffsField,
  kSecondCutoffsField,
  kOrdersField
};

ChannelList ChannelsToFilter(const Workbench& workbench) {
  ChannelFlags wanted{};
  std::transform(workbench.filters.FilterCutoffs.begin(), workbench.filters.FilterCutoffs.end(),
                 wanted.begin(), [](float cutoff) { return cutoff > 0; });
  return SelectedChannels(workbench.trial, wanted);
}

void CopyRounded(const ChannelNumbers& from, PerChannel<float>& to) {
  std::transform(from.begin(), from.end(), to.begin(),
                 [](double cutoff) { return static_cast<float>(cutoff); });
}

}  // namespace

SmoothForm::SmoothForm(Workbench& workbench)
    : Form("frmSmooth", "Digital Filter Selection"),
      workbench_(workbench),
      cutoffsBefore_(workbench.filters.FilterCutoffs),
      secondCutoffsBefore_(workbench.filters.SecondCutoffs),
      zeroLagBefore_(workbench.filters.ZeroLag),
      note_(
          "These filters, excepting the critically-damped filter and Bessel, use filters developed by "
          "National Instruments and contained in their Measurement Studio.") {
  workbench_.filters.ZeroLag.fill(true);
  orders_.fill(2.0);
  OfferCutoffs();
  AddFields();
  AddButtons();
  PassTypeEdited();
  DesignEdited();
}

void SmoothForm::AddFields() {
  fields_ = {
      {.name = "lblNote", .caption = "", .target = &note_, .readOnly = true},
      {.name = "optPassType",
       .caption = "Pass type",
       .target = &optPassType_,
       .choices = {"&Low-pass", "&High-pass", "&Band-pass", "Band-&stop (reject)", "&Notch"},
       .edited =
           [this] {
             PassTypeEdited();
             if (IsBandOption(optPassType_)) {
               OfferCutoffs();
               NoteFilled("FilterCutoffs");
               NoteFilled("SecondCutoffs");
             }
           }},
      {.name = "optFilter",
       .caption = "Filter",
       .target = &optFilter_,
       .choices = {"&Butterworth", "Critically-&damped", "&Chebyshev", "&Elliptic", "&Inverse Chebyshev",
                   "Be&ssel", "&GCVSPL"},
       .edited = [this] { DesignEdited(); }},
      {.name = "FilterCutoffs",
       .caption = "",
       .target = &cutoffs_,
       .units = "Hz",
       .edited = [this] { CopyRounded(cutoffs_, workbench_.filters.FilterCutoffs); },
       .valuesOf = &workbench_.filters.LastHighPassOf},
      {.name = "SecondCutoffs",
       .caption = "Higher cutoff",
       .target = &secondCutoffs_,
       .units = "Hz",
       .edited = [this] { CopyRounded(secondCutoffs_, workbench_.filters.SecondCutoffs); },
       .valuesOf = &workbench_.filters.LastLowPassOf},
      {.name = "Orders",
       .caption = "",
       .target = &orders_,
       .edited = [this] { orders_[EditedChannel()] = Order(EditedChannel()); }},
  };
}

void SmoothForm::AddButtons() {
  buttons_ = {
      {"&Filter", FormButton::Role::Accept, [this] { return Filter(); }},
      {"&Zero-lag", FormButton::Role::Other,
       [this] {
         wantsZeroLag_ = true;
         return true;
       }},
      {"&Cancel", FormButton::Role::Cancel,
       [this] {
         Cancel();
         return true;
       }},
  };
}

void SmoothForm::ClickCutoff(int channel) {
  AskEntry(workbench_, *this, "FilterCutoffs", channel, "Enter Cutoff", "Enter cutoff frequency (Hz).");
}

void SmoothForm::ClickSecondCutoff(int channel) {
  AskEntry(workbench_, *this, "SecondCutoffs", channel, "Enter Cutoff", "Enter cutoff frequency (Hz).");
}

void SmoothForm::ClickOrder(int channel) {
  AskEntry(workbench_, *this, "Orders", channel, "Enter Order", "Enter new filter order.");
}

void SmoothForm::PassTypeEdited() {
  const bool band = IsBandOption(optPassType_);
  fields_[kSecondCutoffsField].hidden = !band;
  fields_[kCutoffsField].caption = band ? "Lower cutoff" : "  Cutoff frequency (Hz)";
}

void SmoothForm::DesignEdited() {
  fields_[kOrdersField].caption = IsDesignByPasses(optFilter_) ? "Passes" : "Order";
  fields_[kSmoothPassField].disabledChoices.clear();
  if (IsDesignByPasses(optFilter_)) {
    fields_[kSmoothPassField].disabledChoices = {kBandPassOption, kBandStopOption};
  }
}

// A band lies between the last high-pass and the last low-pass cut-off.
void SmoothForm::OfferCutoffs() {
  workbench_.filters.FilterCutoffs = workbench_.filters.LastHighPassCutoffs;
  workbench_.filters.SecondCutoffs = workbench_.filters.LastLowPassCutoffs;
  std::copy(workbench_.filters.FilterCutoffs.begin(), workbench_.filters.FilterCutoffs.end(),
            cutoffs_.begin());
  std::copy(workbench_.filters.SecondCutoffs.begin(), workbench_.filters.SecondCutoffs.end(),
            secondCutoffs_.begin());
}

std::int16_t SmoothForm::Order(int channel) const {
  constexpr double highest = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(
      std::clamp(static_cast<double>(RoundHalfEven(orders_[channel])), -highest, highest));
}

bool SmoothForm::Filter() {
  if (optPassType_ == kNotchOption) {
    ShowRefusal(workbench_,
                {.title = "Not Implemented",
                 .text = "Notch filters have not been implemented.\nUse a Band-stop filter instead.",
                 .icon = Icon::Information});
    return true;
  }
  if (optFilter_ == kSplineOption || (IsDesignByPasses(optFilter_) && IsBandOption(optPassType_))) {
    ShowRefusal(workbench_, {.title = "Program Error",
                             .text = "Invalid filter selection or not implemented.",
                             .icon = Icon::Exclamation});
    return false;
  }
  told_.clear();
  refused_.clear();
  const bool done =
      IsDesignByPasses(optFilter_) ? FilterByPasses(DesignByPassesOf(optFilter_)) : FilterByDesign();
  if (done) {
    workbench_.filters.CutoffsOf = workbench_.LoadedFile;
    MarkChanged(workbench_, true);
  }
  Tell();
  return done;
}

void SmoothForm::Tell() {
  ChannelList filtered;
  for (const auto& [channel, words] : told_) {
    filtered.push_back(channel);
  }
  DidEach(workbench_, filtered, [this](int c) { return told_.at(c); });
  for (const auto& [channel, why] : refused_) {
    LeftOut(workbench_, channel, why);
  }
}

// Under a panel when it is much work; its Cancel leaves the channels before filtered.
bool SmoothForm::ForEachChannel(const std::function<bool(int)>& filter) {
  constexpr std::int64_t samplesWithoutPanel = 2'000'000;
  const ChannelList channels = ChannelsToFilter(workbench_);
  std::optional<ProgressPanel> panel;
  if (workbench_.trial.NData * static_cast<std::int64_t>(channels.size()) > samplesWithoutPanel) {
    panel.emplace(workbench_);
    panel->SetFormat("Filtering");
    panel->SetLimits(0, static_cast<double>(channels.size()));
  }
  for (const int channel : channels) {
    if (!filter(channel)) {
      return false;
    }
    if (panel) {
      panel->SetStatus("Channel " + ChannelNumber(channel) + " done.");
      panel->SetValue(panel->Value() + 1);
      if (panel->GiveTurn()) {
        break;
      }
    }
  }
  return true;
}

bool SmoothForm::FilterByDesign() {
  return ForEachChannel([this](int channel) {
    DesignAndRun(channel);
    return true;
  });
}

void SmoothForm::DesignAndRun(int channel) {
  try {
    const Biquads sections = DesignFilter({.approximation = ApproximationOf(optFilter_),
                                           .band = BandOf(optPassType_),
                                           .order = Order(channel),
                                           .rate = workbench_.trial.Rate,
                                           .cutoff = workbench_.filters.FilterCutoffs[channel],
                                           .higher = workbench_.filters.SecondCutoffs[channel]});
    RunBiquads(sections, workbench_.trial.Channel(channel));
    told_[channel] = DesignWords(channel);
  } catch (const FilterDesignError& error) {
    ShowRefusal(workbench_, {.title = "Invalid Filter",
                             .text = std::string(error.what()) + CancelledText(channel),
                             .icon = Icon::Exclamation});
    std::string why = error.what();
    refused_[channel] = why.substr(0, why.find_last_not_of('.') + 1);
  }
}

// "Band-pass Chebyshev, order 4, one way, 20 to 450 Hz"
std::string SmoothForm::DesignWords(int channel) const {
  const auto caption = [this](SmoothField field, std::int32_t choice) {
    return WithoutMnemonic(fields_[field].choices[static_cast<std::size_t>(choice)]);
  };
  std::string words = caption(kSmoothPassField, optPassType_) + " " +
                      caption(kSmoothDesignField, optFilter_) + ", order " + std::to_string(Order(channel)) +
                      ", one way, " + PlainNumber(workbench_.filters.FilterCutoffs[channel]);
  if (IsBandOption(optPassType_)) {
    words += " to " + PlainNumber(workbench_.filters.SecondCutoffs[channel]);
  }
  return words + " Hz";
}

// A low-pass cut-off that is too high stops the run, with the channels before it filtered.
bool SmoothForm::FilterByPasses(FilterDesign design) {
  const PassType type = optPassType_ == kLowPassOption ? PassType::Low : PassType::High;
  return ForEachChannel([this, type, design](int channel) {
    const FilterVerdict verdict = FilterForward(workbench_.trial, channel, type, design,
                                                workbench_.filters.FilterCutoffs[channel], Order(channel));
    ShowVerdict(workbench_, channel, verdict);
    if (verdict.Accepted()) {
      told_[channel] = NameOf(type, design) + ", 2nd order, " +
                       (Order(channel) == 1 ? "" : std::to_string(Order(channel)) + " passes, ") +
                       "one way, " + PlainNumber(workbench_.filters.FilterCutoffs[channel]) + " Hz";
    } else {
      refused_[channel] = ShortReason(verdict);
    }
    return verdict.outcome != FilterVerdict::Outcome::LowPassTooHigh;
  });
}

void SmoothForm::Cancel() {
  workbench_.filters.FilterCutoffs = cutoffsBefore_;
  workbench_.filters.SecondCutoffs = secondCutoffsBefore_;
  workbench_.filters.ZeroLag = zeroLagBefore_;
}

}  // namespace velmora
