#include "emg/epochs/epoch_view.hpp"

#include <string>
#include <utility>
#include <vector>

#include "core/results/result_form.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/smoothing/epoch_duration_form.hpp"
#include "emg/epochs/epochs.hpp"

namespace velmora {
namespace {

struct ChannelEpochs {
  int channel = 1;
  std::vector<EpochIntegral> epochs;
};

ResultTable TableOf(const Workbench& workbench, const std::vector<ChannelEpochs>& all) {
  const Trial& trial = workbench.trial;
  const ResultTable::Format value = ThroughPattern(workbench.patterns.ValuePattern);
  const ResultTable::Format time = ThroughPattern(workbench.patterns.TimePattern);
  const ResultTable::Format count = ThroughPattern("0");
  ResultTable table{.name = "frmEpoch",
                    .title = "Integrals by epoch",
                    .columns = {"Channel", "Label", "Epoch", "From", "To", "Integral", "Abs. integral",
                                "Mean", "Abs. mean", "RMS"},
                    .formats = {nullptr, nullptr, count, time, time, value, value, value, value, value}};
  for (const ChannelEpochs& of : all) {
    for (std::size_t k = 0; k < of.epochs.size(); ++k) {
      const EpochIntegral& epoch = of.epochs[k];
      table.rows.push_back({ChannelNumber(of.channel), Trim(trial.ChanLabel[of.channel].Text()),
                            static_cast<double>(k + 1), double{trial.Data(epoch.first, 0)},
                            double{trial.Data(epoch.last, 0)}, epoch.integral, epoch.absoluteIntegral,
                            epoch.mean, epoch.absoluteMean, epoch.rms});
    }
  }
  return table;
}

/// The table, and what of it may take the samples' place.
class EpochView : public ResultForm {
 public:
  EpochView(Workbench& workbench, Results results, std::vector<ChannelEpochs> all)
      : ResultForm(workbench, std::move(results)), all_(std::move(all)) {
    fields_.push_back({.name = "optValue",
                       .caption = "&Value",
                       .target = &value_,
                       .choices = {"&Integral", "&Abs. integral", "&Mean", "A&bs. mean", "&RMS"}});
    buttons_.insert(buttons_.end() - 1, StayButton("&Replace", [this] { Replace(); }));
  }

 private:
  [[nodiscard]] double ValueOf(const EpochIntegral& epoch) const {
    const double values[] = {epoch.integral, epoch.absoluteIntegral, epoch.mean, epoch.absoluteMean,
                             epoch.rms};
    return values[value_];
  }

  void Replace() {
    Trial& trial = workbench_.trial;
    ChannelList channels;
    for (const ChannelEpochs& of : all_) {
      const ChannelView x = trial.Channel(of.channel);
      for (std::int64_t i = 0; i < x.size(); ++i) {
        x[i] = 0.0F;
      }
      for (const EpochIntegral& epoch : of.epochs) {
        for (std::int64_t i = epoch.first; i <= epoch.last; ++i) {
          x[i - 1] = static_cast<float>(ValueOf(epoch));
        }
      }
      channels.push_back(of.channel);
    }
    MarkChanged(workbench_, true);
    Did(workbench_,
        "Samples replaced by the " +
            WithoutMnemonic(FindField("optValue")->choices[static_cast<std::size_t>(value_)]) +
            " of their epoch",
        channels);
  }

  std::vector<ChannelEpochs> all_;
  std::int32_t value_ = 1;
};

// Whether the width that was entered makes a table of these channels.
bool HasEpochs(Workbench& workbench, const ChannelList& channels, SampleRange range) {
  constexpr std::int64_t kMostEpochs = 500'000;
  if (channels.empty()) {
    RefuseTooFewChannels(workbench, 1);
    return false;
  }
  const std::int64_t epochs = (range.hi - range.lo + 1) / workbench.smoothing.WindowWidth;
  const std::int64_t rows = epochs * static_cast<std::int64_t>(channels.size());
  if (rows == 0) {
    RefuseTooFewData(workbench);
  } else if (rows > kMostEpochs) {
    ShowRefusal(workbench, {.title = "Too Many Epochs",
                            .text = "That makes " + FormatCount(rows) + " epochs of all channels, at most " +
                                    FormatCount(kMostEpochs) + " are listed.  Choose wider epochs.",
                            .icon = Icon::Exclamation});
  }
  return rows > 0 && rows <= kMostEpochs;
}

// The channels; the width is the workbench's. None when the dialogue was left.
ChannelList AskEpochs(Workbench& workbench, SampleRange range) {
  EpochDurationForm form(workbench);
  while (form.Ask()) {
    const ChannelList channels = SelectedChannels(workbench.trial, workbench.chooser.ChanSelected);
    if (HasEpochs(workbench, channels, range)) {
      return WithoutMissing(workbench, channels, range);
    }
  }
  return {};
}

}  // namespace

void IntegrateByEpoch(Workbench& workbench) {
  Trial& trial = workbench.trial;
  if (!EnoughToIntegrate(workbench, trial.NData) || !HasTimeBase(workbench)) {
    return;
  }
  const SampleRange range = AskCursorRange(workbench);
  const ChannelList channels = AskEpochs(workbench, range);
  if (channels.empty()) {
    return;
  }
  const std::int32_t width = workbench.smoothing.WindowWidth;
  const std::int32_t samples = range.hi - range.lo + 1;
  std::vector<ChannelEpochs> all;
  for (const int c : channels) {
    all.push_back({c, IntegrateEpochs(trial, c, range, width, 1.0 / trial.Rate)});
  }
  Results results{
      .name = "frmEpoch",
      .title = "Integrated by epochs of " + CountOf(width, "sample"),
      .file = {.what = "Integrated EMG", .extension = ".iem"},
      .head = {.range = range, .parameters = {{"WindowWidth", PlainNumber(width / trial.Rate), "Epoch (s)"}}},
      .tables = {TableOf(workbench, all)}};
  if (const std::int32_t rest = samples % width; rest > 0) {
    results.words = CountOf(rest, "sample") + " at the end fill" + (rest == 1 ? "s" : "") + " no epoch.";
  }
  Did(workbench, "Integrated by epochs of " + CountOf(width, "sample"), channels);
  EpochView(workbench, std::move(results), std::move(all)).Show(workbench);
}

}  // namespace velmora
