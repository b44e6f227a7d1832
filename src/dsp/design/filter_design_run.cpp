// The dialogue of designed filters runs the filter.
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "dsp/design/cfc_choice.hpp"
#include "dsp/design/filter_design_form.hpp"
#include "dsp/filters/filter_options.hpp"

namespace velmora {
namespace {

// Of samples that were numbers; derivatives and coefficients may make them as large as they like.
void CheckStored(const Trial& trial, const ChannelList& channels) {
  for (const int c : channels) {
    if (MissingSamples(trial, c, {1, trial.NData}) > 0) {
      throw std::range_error("The result for channel " + ChannelNumber(c) +
                             " is not one that data can hold.  Nothing was changed.");
    }
  }
}

}  // namespace

// A filter that is longer than the channel has nothing to stand on.
bool FilterDesignForm::FitsChannels(const PlannedFilter& filter) {
  const std::int32_t samples = workbench_.trial.NData;
  if (filter.FewestSamples() <= samples) {
    return true;
  }
  const auto* taps = std::get_if<TapFilter>(&filter.kind);
  const std::string length =
      taps != nullptr ? std::to_string(taps->taps.size()) + " taps" : std::to_string(points_) + " points";
  ShowRefusal(workbench_, {.title = "Filter Too Long",
                           .text = "The filter has " + length + " and the channel " +
                                   std::to_string(samples) + " samples.",
                           .icon = Icon::Exclamation});
  return false;
}

// What is offered next time.
void FilterDesignForm::KeepCutoffs(const ChannelList& channels) {
  if (!HasEdges()) {
    return;
  }
  for (const int c : channels) {
    workbench_.filters.FilterCutoffs[c] = static_cast<float>(cutoff_);
    if (family_ != kNotch && IsBandOption(passType_)) {
      workbench_.filters.SecondCutoffs[c] = static_cast<float>(higher_);
    }
  }
  workbench_.filters.CutoffsOf = workbench_.LoadedFile;
}

bool FilterDesignForm::Compute() {
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  if (!whyNot_.empty()) {
    ShowRefusal(workbench_, {.title = "Invalid Filter", .text = whyNot_, .icon = Icon::Exclamation});
    return false;
  }
  const PlannedFilter filter = Design();
  if (!FitsChannels(filter)) {
    return false;
  }
  channels = WithoutMissing(workbench_, channels, {1, workbench_.trial.NData});
  if (channels.empty()) {
    return false;
  }
  if (family_ == kCfc) {
    TellLowCfcRate(workbench_, kCfcClasses.at(static_cast<std::size_t>(class_)));
  }
  const bool done = RunCancellable(workbench_, channels, "Filtering", [&](const Turn& turn) {
    RunPlanned(workbench_.trial, channels, filter, MachineSimdLevel(), turn);
    CheckStored(workbench_.trial, channels);
  });
  if (!done) {
    return false;
  }
  KeepCutoffs(channels);
  for (const ResultTable& table : tables_) {
    KeepTable(workbench_.results.ResultTables, table);
  }
  MarkChanged(workbench_, true);
  Did(workbench_, Words(), channels);
  return true;
}

void DesignDigitalFilter(Workbench& workbench) {
  if (workbench.trial.NData > 0 && HasTimeBase(workbench)) {
    FilterDesignForm(workbench).Ask();
  }
}

}  // namespace velmora
