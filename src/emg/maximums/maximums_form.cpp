#include "emg/maximums/maximums_form.hpp"

#include <algorithm>
#include <utility>

#include "core/results/result_form.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/missing_samples.hpp"
#include "core/trial/refusals.hpp"
#include "dsp/design/cancellable_run.hpp"
#include "emg/maximums/stored_maximums.hpp"
#include "graph/multi/multi_values.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {
namespace {

/// Its file gathers: what stands in it stays where it is larger.
class MaximumsView : public ResultForm {
 public:
  MaximumsView(Workbench& workbench, std::string title)
      : ResultForm(workbench, "frmMaximums", std::move(title)) {
    SetTables({MaximumTable(workbench, workbench.emg.Maximums)});
    buttons_ = {StayButton("&Save", [this] { SaveMaximums(workbench_, workbench_.emg.Maximums); }),
                ClipboardButton("Send results to &Clipboard"), ExitButton("E&xit")};
  }
};

}  // namespace

MaximumsForm::MaximumsForm(Workbench& workbench, SampleRange range, const ChannelFlags& channels)
    : AnalysisForm(workbench, "frmMaximums", "Determine Maximums"), range_(range), channels_(channels) {
  AddChoice("optMethod", "&Method", method_,
            {"&Largest absolute value", "&Mean absolute value of a window", "&RMS of a window",
             "M&ean of a window (envelopes)"})
      .edited = [this] {
    for (FormField& field : fields_) {
      if (field.name == "txtWindow") {
        field.hidden = static_cast<MaximumMethod>(method_) == MaximumMethod::LargestAbsolute;
      }
    }
  };
  const double samples = range.hi - range.lo + 1;
  AddNumber("txtWindow", "&Window (s)", window_, {1 / workbench.trial.Rate, samples / workbench.trial.Rate});
  AddChannels("channels", "&Channels", channels_);
  AddFlag("chkKeep", "&Keep the larger of this and the stored one", keep_);
  AddButtons();
}

std::string MaximumsForm::MethodWords() const {
  return WithoutMnemonic(FindField("optMethod")->choices[static_cast<std::size_t>(method_)]);
}

bool MaximumsForm::Compute() {
  ChannelList channels = SelectedChannels(workbench_.trial, channels_);
  if (channels.empty()) {
    RefuseTooFewChannels(workbench_, 1);
    return false;
  }
  channels = WithoutMissing(workbench_, channels, range_);
  if (channels.empty()) {
    return false;
  }
  const auto method = static_cast<MaximumMethod>(method_);
  const std::int32_t width =
      method == MaximumMethod::LargestAbsolute
          ? 1
          : std::clamp(RoundHalfEven32(window_ * workbench_.trial.Rate), 1, range_.hi - range_.lo + 1);
  std::vector<WindowMaximum> found;
  const bool done = ReadCancellable(workbench_, "Determining maximums", [&](const Turn& turn) {
    for (const int c : channels) {
      found.push_back(
          FindWindowMaximum(workbench_.trial, c, range_, {width, method}, MachineSimdLevel(), turn));
    }
  });
  if (!done) {
    return false;
  }
  Store(channels, found, width);
  TellSharedMaximums(workbench_, channels);
  return true;
}

// This trial's stand first, in the order of its channels.
void MaximumsForm::Store(const ChannelList& channels, const std::vector<WindowMaximum>& found,
                         std::int32_t width) {
  const Trial& trial = workbench_.trial;
  std::vector<StoredMaximum>& all = workbench_.emg.Maximums;
  std::vector<StoredMaximum> first;
  int kept = 0;
  for (std::size_t k = 0; k < channels.size(); ++k) {
    const int c = channels[k];
    const StoredMaximum one{.Channel = static_cast<std::int16_t>(c),
                            .Label = LabelOnOneLine(trial, c),
                            .Units = OneLine(Trim(trial.ChanUnits[c].Text())),
                            .Maximum = found[k].value,
                            .Time = double{trial.Data(found[k].first, 0)} + (width - 1) / 2.0 / trial.Rate,
                            .Method = MethodWords(),
                            .Window = width / trial.Rate,
                            .File = trial.FileName};
    kept += StoreMaximum(all, one, keep_) ? 0 : 1;
    const StoredMaximum stored = *FindMaximum(all, one.Label);
    std::erase_if(all, [&](const StoredMaximum& other) { return EqualNoCase(other.Label, stored.Label); });
    StoreMaximum(first, stored, true);
  }
  all.insert(all.begin(), first.begin(), first.end());
  std::string words = "Maximums: " + MethodWords();
  if (static_cast<MaximumMethod>(method_) != MaximumMethod::LargestAbsolute) {
    words += " of " + PlainNumber(width / trial.Rate) + " s";
  }
  if (kept > 0) {
    words += " (" + std::to_string(kept) + " stored before " + (kept == 1 ? "is" : "are") +
             " no smaller and stayed)";
  }
  Did(workbench_, words, channels);
}

namespace {

void AskAndShow(Workbench& workbench, SampleRange range, const ChannelFlags& channels) {
  if (MaximumsForm(workbench, range, channels).Ask()) {
    MaximumsView(workbench, "Maximums of this session, over all trials").Show(workbench);
  }
}

}  // namespace

void DetermineMaximums(Workbench& workbench) {
  if (workbench.trial.NData > 0 && HasTimeBase(workbench)) {
    AskAndShow(workbench, AskCursorRange(workbench), {});
  }
}

void DetermineMaximumsOfView(Workbench& workbench) {
  MultiView& view = OpenMultiView(workbench);
  if (!HasTimeBase(workbench)) {
    return;
  }
  ChannelFlags shown{};
  for (const int graph : view.ShownGraphs()) {
    for (const int channel : view.ChannelsOf(graph)) {
      shown[channel] = true;
    }
  }
  AskAndShow(workbench, CorrectedRange(workbench.trial), shown);
}

}  // namespace velmora
