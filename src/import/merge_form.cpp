#include "import/merge_form.hpp"

#include <algorithm>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/refusals.hpp"
#include "import/merge.hpp"

namespace velmora {
namespace {

std::string Whole(double number) {
  return FormatNumber(number, "0");
}

std::string HowLengthsMatched(MergeLengths how) {
  switch (how) {
    case MergeLengths::NormaliseNext:
      return "the next file re-sampled to their length";
    case MergeLengths::NormaliseStored:
      return "which were re-sampled to the length of the next file";
    case MergeLengths::CutOrPadStored:
      return "which were cut or padded to the length of the next file";
    case MergeLengths::CutOrPadNext:
      return "the next file cut or padded to their length";
  }
  return {};
}

class MergeForm : public Form {
 public:
  explicit MergeForm(Workbench& workbench)
      : Form("frmMerge", "Merge Files"),
        workbench_(workbench),
        trial_(workbench.trial),
        store_(workbench.merge) {
    const bool pending = store_.MergePending;
    message_ = "Channels " + Whole(trial_.NChan) + ", data per channel " + Whole(trial_.NData) +
               ", files merged " + Whole(store_.NFilesMerged) + ", sampling rate " +
               FormatNumber(trial_.Rate, workbench.patterns.RatePattern) + " Hz";
    fields_ = {
        {.name = "option",
         .caption = "Files of different length",
         .target = &option_,
         .choices = {"&Normalize data size of next file to match current data size",
                     "&Normalize to current data size to match next file loaded",
                     "&Truncate or pad current data to match size of next file",
                     "&Truncate or pad next file to match current data size"}},
        {.name = "lblMessage", .caption = "Current data", .target = &message_, .readOnly = true},
    };
    const auto role = [](bool accept) { return accept ? FormButton::Role::Accept : FormButton::Role::Other; };
    buttons_ = {
        {.caption = "&Save", .role = role(!pending), .press = [this] { return Save(); }},
        {.caption = "&Merge", .role = role(pending), .press = [this] { return Merge(); }},
        {.caption = "&Cancel", .role = FormButton::Role::Cancel, .press = [this] { return Cancel(); }}};
  }

 private:
  bool Save() {
    if (trial_.NChan >= kMaxChannels) {
      TellTooMany(workbench_);
      return false;
    }
    StoreForMerge(workbench_);
    Did(workbench_, "Set aside to be merged with the next file");
    return true;
  }

  // Data that were set aside without having been saved go only when the user says so.
  bool Cancel() {
    const bool wouldLose = store_.MergePending && store_.changed;
    return (!wouldLose ||
            workbench_.questions.AskBox({.title = "File Changed but Not Saved",
                                         .text = "The stored data were modified but not saved.  Press Cancel "
                                                 "to go on merging or OK to discard them.",
                                         .icon = Icon::Exclamation,
                                         .buttons = {Button::OK, Button::Cancel},
                                         .about = store_.stored.FileName}) == Button::OK) &&
           Leave();
  }

  bool Leave() {
    if (store_.MergePending) {
      Did(workbench_, "Data set aside for a merge dropped");
    }
    return Forget();
  }

  bool Forget() {
    store_ = {.NFilesMerged = store_.NFilesMerged};
    return true;
  }

  bool Merge() {
    if (!store_.MergePending) {
      ShowRefusal(workbench_, {.title = "Nothing to Merge",
                               .text = "Press Save first, then load the next file.",
                               .icon = Icon::Exclamation});
      return false;
    }
    if (store_.stored.NChan + trial_.NChan > kMaxChannels) {
      TellTooMany(workbench_);
      return false;
    }
    std::string reason = MatchTimeBases(workbench_);
    if (reason.empty()) {
      reason = WhyNotMerged(store_.stored, trial_, static_cast<MergeLengths>(option_));
    }
    if (!reason.empty()) {
      ShowRefusal(
          workbench_,
          {.title = "Cannot Merge", .text = reason, .icon = Icon::Exclamation, .about = trial_.FileName});
      return false;
    }
    const std::int64_t samples = IntervalsAtRate(trial_, store_.stored.Rate) + 1;
    if (samples > trial_.NData && !MayBeLarge(workbench_, samples, trial_.NChan)) {
      return false;
    }
    if (!MatchRates()) {
      return Cancel();
    }
    Join();
    return Forget();
  }

  // False: the user exits rather than have the new file re-sampled.
  bool MatchRates() {
    if (trial_.Rate == store_.stored.Rate) {
      return true;
    }
    const Button answer = workbench_.questions.AskBox(
        {.title = "Sampling Rate Differ",
         .text = "Sampling rate is different from stored data.  Press Yes to synchronize the sampling rates "
                 "or No to exit.",
         .icon = Icon::Question,
         .buttons = {Button::Yes, Button::No},
         .about = trial_.FileName});
    if (answer == Button::Yes) {
      SynchroniseRate(trial_, store_.stored.Rate);
    }
    return answer == Button::Yes;
  }

  void Join() {
    Trial& stored = store_.stored;
    const double rate = stored.Rate;  // re-sampling to another length changes it
    const auto how = static_cast<MergeLengths>(option_);
    const bool differ = stored.NData != trial_.NData;
    const bool nextKept = how == MergeLengths::NormaliseStored || how == MergeLengths::CutOrPadStored;
    if (differ) {
      workbench_.questions.AskBox({.title = "File Sizes Different",
                                   .text = "Stored data have " + Whole(stored.NData) +
                                           " data per channel.\nNext file has " + Whole(trial_.NData) +
                                           " data per channel.",
                                   .icon = Icon::Information,
                                   .about = trial_.FileName});
      MatchLengths(stored, trial_, how);
    }
    JoinChannels(stored, trial_, differ && nextKept ? trial_ : stored);
    JoinPlates(workbench_);
    trial_.Rate = rate;
    std::fill_n(trial_.ChanRate.begin(), trial_.NChan + 1, trial_.Rate);
    trial_.Duration = trial_.Rate > 0 ? (trial_.NData - 1) / trial_.Rate : trial_.NData;
    trial_.CursorLo = trial_.CursorHi = 0;
    NormaliseCursors(trial_);
    ShowFirstChannelPage(workbench_);
    ++store_.NFilesMerged;
    MarkChanged(workbench_, true);
    Did(workbench_, "Merged with the data set aside" + (differ ? ", " + HowLengthsMatched(how) : "") +
                        ": now " + CountOf(trial_.NChan, "channel") + ", " + CountOf(trial_.NData, "sample"));
  }

  static void TellTooMany(Workbench& workbench) {
    ShowRefusal(workbench, {.title = "Too Many Channels Used",
                            .text = "You must erase some channels using the Channel menu. Press &Cancel to "
                                    "exit.",
                            .icon = Icon::Exclamation,
                            .about = workbench.trial.FileName});
  }

  friend void velmora::ShowMergeDialogue(Workbench& workbench);

  Workbench& workbench_;
  Trial& trial_;
  MergeStore& store_;
  std::int32_t option_ = 0;
  std::string message_;
};

}  // namespace

void ShowMergeDialogue(Workbench& workbench) {
  if (workbench.trial.NData < 1) {
    return;
  }
  if (workbench.trial.NChan >= kMaxChannels) {
    MergeForm::TellTooMany(workbench);
  }
  MergeForm(workbench).Show(workbench);
}

}  // namespace velmora
