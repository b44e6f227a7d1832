#include "dsp/filters/butterworth_form.hpp"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "core/questions/questions.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/ask_entry.hpp"
#include "dsp/filters/filter_and_tell.hpp"
#include "dsp/filters/filter_options.hpp"
#include "dsp/filters/recursive_filter.hpp"

namespace velmora {
namespace {

constexpr int kPadZeros = 0;
constexpr int kPadMeans = 1;
constexpr int kPadReflected = 2;

constexpr const char* kHelp =
    "A Butterworth filter is maximally flat in its pass band: it keeps the amplitudes below the cutoff best, "
    "but overshoots and rings after an abrupt change.\n\n"
    "A critically-damped filter does not overshoot. It rolls off more gradually, so that it attenuates more "
    "of the frequencies just below the cutoff.  A Bessel filter delays all frequencies below the cutoff "
    "nearly alike and overshoots very little.\n\n"
    "Both these filters are constructed from a second-order filter so the final filter order increases as "
    "twice the number of passes or four times the number of passes if the filter is zero-lag.\n\n"
    "A zero-lag filter runs each pass forward and then backward through the data, which removes the phase "
    "lag.  The cutoff is adjusted for the number of passes, so that the final filter is down by 3 dB at the "
    "frequency entered.\n\n"
    "Padding points are added to the ends before filtering, and removed afterwards, so that the filter has "
    "settled when it reaches the data.";

}  // namespace

ButterworthForm::ButterworthForm(Workbench& workbench)
    : Form("frmButterworth", "Butterworth Filter Selection"),
      workbench_(workbench),
      cwnPadding_(RoundHalfEven32(workbench.trial.NData / 5.0)),
      paddingOffered_(cwnPadding_) {
  workbench_.filters.ZeroLag.fill(true);
  passes_.fill(1.0);
  std::copy(workbench_.filters.FilterCutoffs.begin(), workbench_.filters.FilterCutoffs.end(),
            cutoffs_.begin());
  UpdateOrders();
  AddFields();
  AddButtons();
}

void ButterworthForm::AddFields() {
  fields_ = {
      {.name = "optPassType",
       .caption = "Pass type",
       .target = &optPassType_,
       .choices = {"&Low-pass", "&High-pass"}},
      {.name = "optFilter",
       .caption = "Filter (all are 2nd-order)",
       .target = &optFilter_,
       .choices = {"&Butterworth", "&Critically-damped", "Be&ssel"}},
      {.name = "optPad",
       .caption = "Padding",
       .target = &optPad_,
       .choices = {"Pad with &Zeros", "Pad with &Means", "&Pad Reflexively"}},
      {.name = "cwnPadding",
       .caption = "Padding points.  Up to 200 padding points may be added to the ends.",
       .target = &cwnPadding_},
      {.name = "chkRectify", .caption = "Rectify signal(s) for &Linear Envel.", .target = &chkRectify_},
      {.name = "FilterCutoffs",
       .caption = "Cutoff.  A zero cutoff means do NOT filter.",
       .target = &cutoffs_,
       .units = "Hz",
       .edited = [this] { CutoffEdited(); },
       .valuesOf = &workbench_.filters.CutoffsOf},
      {.name = "Passes", .caption = "Passes", .target = &passes_, .edited = [this] { PassesEdited(); }},
      {.name = "Order", .caption = "Order", .target = &orders_, .readOnly = true},
      {.name = "ZeroLag",
       .caption = "Zero-lag",
       .target = &workbench_.filters.ZeroLag,
       .edited = [this] { ZeroLagEdited(); }},
  };
}

void ButterworthForm::AddButtons() {
  const auto closing = [this](void (ButterworthForm::*procedure)()) {
    return [this, procedure] {
      (this->*procedure)();
      return true;
    };
  };
  const auto staying = [this](void (ButterworthForm::*procedure)()) {
    return [this, procedure] {
      (this->*procedure)();
      return false;
    };
  };
  // Reset goes back to nothing asked for, as None does, and not to what was there at the opening.
  buttons_ = {
      {"&Filter", FormButton::Role::Accept, closing(&ButterworthForm::Filter)},
      {"&All", FormButton::Role::Other, staying(&ButterworthForm::CopyLastToAll)},
      {"&None", FormButton::Role::Other, staying(&ButterworthForm::ClearChannels)},
      {"&Reset", FormButton::Role::Other, staying(&ButterworthForm::ClearChannels)},
      {"&Cancel", FormButton::Role::Cancel, closing(&ButterworthForm::Cancel)},
      {"&Help", FormButton::Role::Other, staying(&ButterworthForm::Help)},
  };
}

void ButterworthForm::ClickCutoff(int channel) {
  AskEntry(workbench_, *this, "FilterCutoffs", channel, "Enter Cutoff", "Enter cutoff frequency (Hz).");
}

void ButterworthForm::ClickPasses(int channel) {
  AskEntry(workbench_, *this, "Passes", channel, "Number of Passes", "Enter number of passes of filter.");
}

void ButterworthForm::SetCutoff(int channel, double cutoff) {
  cutoffs_[channel] = cutoff;
  workbench_.filters.FilterCutoffs[channel] = static_cast<float>(cutoff);
}

void ButterworthForm::CutoffEdited() {
  lastCutoff_ = cutoffs_[EditedChannel()];
  SetCutoff(EditedChannel(), lastCutoff_);
  touched_ = Touched::Cutoffs;
}

void ButterworthForm::PassesEdited() {
  constexpr double highest = std::numeric_limits<std::int16_t>::max();
  double& passes = passes_[EditedChannel()];
  passes = std::clamp(static_cast<double>(RoundHalfEven(passes)), -highest, highest);
  lastPasses_ = passes;
  touched_ = Touched::Passes;
  UpdateOrders();
}

void ButterworthForm::ZeroLagEdited() {
  lastZeroLag_ = workbench_.filters.ZeroLag[EditedChannel()];
  UpdateOrders();
}

void ButterworthForm::UpdateOrders() {
  for (int c = 1; c <= kMaxChannels; ++c) {
    orders_[c] = passes_[c] * (workbench_.filters.ZeroLag[c] ? 4 : 2);
  }
}

void ButterworthForm::CopyLastToAll() {
  for (int c = 1; c <= workbench_.trial.NChan; ++c) {
    workbench_.filters.ZeroLag[c] = lastZeroLag_;
    if (touched_ == Touched::Cutoffs) {
      SetCutoff(c, lastCutoff_);
    } else if (touched_ == Touched::Passes) {
      passes_[c] = lastPasses_;
    }
  }
  UpdateOrders();
}

void ButterworthForm::ClearChannels() {
  for (int c = 1; c <= kMaxChannels; ++c) {
    SetCutoff(c, 0.0);
  }
  passes_.fill(1.0);
  workbench_.filters.ZeroLag.fill(true);
  UpdateOrders();
}

void ButterworthForm::Cancel() {
  ClearChannels();
  workbench_.chooser.ChooserCancelled = true;
}

void ButterworthForm::Filter() {
  const std::int64_t points =
      std::min<std::int64_t>(std::abs(std::int64_t{cwnPadding_}), std::numeric_limits<std::int32_t>::max());
  ChannelsFilter filter{.type = optPassType_ == 0 ? PassType::Low : PassType::High,
                        .design = DesignOfThree(optFilter_),
                        .Padding = static_cast<std::int32_t>(optPad_ == kPadMeans ? -points : points),
                        .PadZeros = optPad_ == kPadZeros,
                        .Rectify = chkRectify_,
                        .Cutoffs = workbench_.filters.FilterCutoffs,
                        .ZeroLag = workbench_.filters.ZeroLag};
  std::transform(passes_.begin(), passes_.end(), filter.Passes.begin(),
                 [](double passes) { return static_cast<std::int16_t>(passes); });
  FilterAndTell(workbench_, filter, MoreWords());
  workbench_.filters.CutoffsOf = workbench_.LoadedFile;
  workbench_.chooser.ChooserCancelled = false;
  MarkChanged(workbench_, true);
}

std::string ButterworthForm::MoreWords() const {
  const bool rectifies =
      chkRectify_ && optPassType_ == 0 && DesignOfThree(optFilter_) != FilterDesign::Bessel;
  std::string words = rectifies ? ", rectified before" : "";
  if (optPad_ != kPadReflected || cwnPadding_ != paddingOffered_) {
    const char* how = optPad_ == kPadZeros ? " zeros" : optPad_ == kPadMeans ? " means" : " reflected points";
    words +=
        ", padded with " +
        std::to_string(std::min<std::int64_t>(std::abs(std::int64_t{cwnPadding_}), kHighestChannelPadding)) +
        how;
  }
  return words;
}

void ButterworthForm::Help() {
  workbench_.questions.AskBox({.title = "Filter Help", .text = kHelp, .icon = Icon::Information});
}

}  // namespace velmora
