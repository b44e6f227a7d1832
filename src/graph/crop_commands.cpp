#include "graph/crop_commands.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "core/questions/form.hpp"
#include "core/text/numbers.hpp"
#include "core/trial/abscissa.hpp"
#include "core/trial/helpers.hpp"
#include "events/event_table.hpp"
#include "graph/crop.hpp"
#include "graph/time_view.hpp"

namespace velmora {
namespace {

enum class Work { Keep, Cut };

/// The last look at the range before samples go.
class ClipForm : public Form {
 public:
  ClipForm(Workbench& workbench, std::string caption, Work work, SampleRange range)
      : Form("frmClip", "Crop Data"),
        workbench_(workbench),
        work_(work),
        lo_(range.lo),
        hi_(range.hi),
        resetTime_(workbench.graph.ClipResetTime) {
    const double samples = workbench.trial.NData;
    fields_ = {
        {.name = "CursorLo", .caption = "&First datum", .target = &lo_, .lowest = 1, .highest = samples},
        {.name = "CursorHi", .caption = "&Last datum", .target = &hi_, .lowest = 1, .highest = samples},
        {.name = "ClipResetTime", .caption = "&Reset initial time to zero", .target = &resetTime_}};
    buttons_ = {{.caption = std::move(caption),
                 .role = FormButton::Role::Accept,
                 .press = [this] { return Accept(); }},
                {.caption = "Cancel", .role = FormButton::Role::Cancel, .press = [] { return true; }}};
  }

  /// Nothing when the form was cancelled.
  std::optional<SampleRange> Ask() {
    Show(workbench_);
    return accepted_ ? std::optional(SampleRange{lo_, hi_}) : std::nullopt;
  }

 private:
  bool Accept() {
    if (hi_ < lo_) {
      const char* none = work_ == Work::Cut ? "No cutting will be done." : "No cropping will be done.";
      return Refuse(std::string("There are no data between the two cursors.  ") + none);
    }
    if (work_ == Work::Cut && hi_ - lo_ + 1 == workbench_.trial.NData) {
      return Refuse("No data would be left.  No cutting will be done.");
    }
    workbench_.graph.ClipResetTime = resetTime_;
    accepted_ = true;
    return true;
  }

  // The form closes: nothing is to be done, and the cursors are there to choose anew.
  bool Refuse(const std::string& text) {
    ShowRefusal(workbench_, {.title = "Interval Too Small", .text = text, .icon = Icon::Information});
    return true;
  }

  Workbench& workbench_;
  Work work_;
  std::int32_t lo_;
  std::int32_t hi_;
  bool resetTime_;
  bool accepted_ = false;
};

struct Proposal {
  const char* caption;
  Work work = Work::Keep;
  SampleRange range;
  // Which cursors gave the range; they go to the ends of what is left.
  bool first = false;
  bool last = false;
};

// A remark and no warning: the cut is what was asked for.
void TellGap(Workbench& workbench, SampleRange cut, CropTimes times) {
  Trial& trial = workbench.trial;
  if (times == CropTimes::Move && cut.lo > 1 && cut.hi < trial.NData) {
    trial.Notices.push_back("The times jump behind sample " + std::to_string(cut.lo - 1) + ", where " +
                            std::to_string(cut.hi - cut.lo + 1) +
                            " were cut; cursors behind it count as if there were no gap.");
  }
}

// What counts seconds or goes by times follows the samples that are left.
void FollowCrop(Workbench& workbench) {
  Trial& trial = workbench.trial;
  TimeMemory& time = workbench.time;
  if (time.SecondsRate > 0) {
    time.SecondsDuration = (trial.NData - 1) / time.SecondsRate;
  }
  if (time.Base == TimeBase::UserUnits || time.Base == TimeBase::Frames) {
    trial.Duration = double{trial.Data(trial.NData, 0)} - double{trial.Data(1, 0)};
  }
}

// "Cropped to samples 101 to 400 (0.5000 to 1.9950 s)"
void Tell(Workbench& workbench, Work work, SampleRange range, double from, double to) {
  const std::string times = AbscissaText(workbench, from, "0.0000") + " to " +
                            AbscissaText(workbench, to, "0.0000") + " " + AbscissaUnits(workbench);
  Did(workbench, std::string(work == Work::Cut ? "Cut out samples " : "Cropped to samples ") +
                     std::to_string(range.lo) + " to " + std::to_string(range.hi) + " (" + times + ")" +
                     (workbench.graph.ClipResetTime ? ", time set to 0" : ""));
}

// What lies behind the samples that go stays with its own, in the table of events and, where the times do not
// go with the samples, on the graph.
void KeepOnSamples(Workbench& workbench, TimeView& view, Work work, SampleRange range) {
  const double rate = workbench.trial.Rate;
  if (!(rate > 0)) {
    return;
  }
  const bool cut = work == Work::Cut;
  const double from = cut ? (range.lo - 1) / rate : 0.0;
  const double to = (cut ? range.hi : range.lo - 1) / rate;
  if (const int lost = CloseGap(workbench.events, from, to); lost > 0) {
    AddNotice(workbench, CountOf(lost, "recorded time") +
                             " of events lay in the samples that were removed, and went with them.");
  }
  if (cut) {
    view.RemoveMarks();
  } else if (workbench.graph.ClipResetTime) {
    view.RemoveCursors(CursorKind::Value);  // which may tell times
    view.BringForward(to * rate / SamplesPerUnit(workbench.trial));
  }
}

void Clip(Workbench& workbench, TimeView& view, const Proposal& proposal) {
  const auto range = ClipForm(workbench, proposal.caption, proposal.work, proposal.range).Ask();
  if (!range) {
    return;
  }
  const auto timeOf = [&trial = workbench.trial](std::int32_t sample) {
    return trial.Data(std::clamp(sample, 1, trial.NData), 0);
  };
  const double from = timeOf(range->lo);
  const double to = timeOf(range->hi);
  const CropTimes times = workbench.graph.ClipResetTime ? CropTimes::Reset : CropTimes::Move;
  if (proposal.work == Work::Cut) {
    TellGap(workbench, *range, times);
    CutSamples(workbench.trial, range->lo, range->hi, times);
  } else if (!CropSamples(workbench.trial, range->lo, range->hi, times)) {
    return;
  }
  FollowCrop(workbench);
  MarkChanged(workbench, true);
  Tell(workbench, proposal.work, *range, from, to);
  KeepOnSamples(workbench, view, proposal.work, *range);
  view.MoveCursorsToEnds(proposal.first, proposal.last);
  view.Replot();
}

void CropOutside(Workbench& workbench) {
  TimeView& view = OpenTimeView(workbench);
  if (view.Cursors() >= 2) {
    Clip(workbench, view, {.caption = "&Crop", .range = view.PairRange(), .first = true, .last = true});
  }
}

void TrimLeft(Workbench& workbench) {
  TimeView& view = OpenTimeView(workbench);
  if (view.Cursors() >= 1) {
    Clip(workbench, view,
         {.caption = "&Trim Left", .range = {view.SampleOf(1), workbench.trial.NData}, .first = true});
  }
}

void TrimRight(Workbench& workbench) {
  TimeView& view = OpenTimeView(workbench);
  if (view.Cursors() >= 1) {
    const int cursor = view.Cursors() >= 2 ? 2 : 1;
    Clip(workbench, view, {.caption = "&Trim Right", .range = {1, view.SampleOf(cursor)}, .last = true});
  }
}

void CutInside(Workbench& workbench) {
  TimeView& view = OpenTimeView(workbench);
  if (view.Cursors() >= 2) {
    Clip(workbench, view,
         {.caption = "&Cut", .work = Work::Cut, .range = view.PairRange(), .first = true, .last = true});
  }
}

void SelectCrop(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  Clip(workbench, OpenTimeView(workbench), {.caption = "&Crop", .range = {trial.CursorLo, trial.CursorHi}});
}

constexpr std::string_view kCropMenu = "&Single-axis graph/C&rop";

constexpr std::array kCropCommands = {
    Command{"crop.outside", "&Crop outside cursors", kCropMenu, Needs::View, CropOutside},
    Command{"crop.left", "Trim area &Left of cursor", kCropMenu, Needs::View, TrimLeft},
    Command{"crop.right", "Trim area &Right of cursor", kCropMenu, Needs::View, TrimRight},
    Command{"crop.cut", "C&ut area inside cursors", kCropMenu, Needs::View, CutInside},
    Command{"crop.select", "&Select crop", kCropMenu, Needs::View, SelectCrop},
};

}  // namespace

std::span<const Command> CropCommands() {
  return kCropCommands;
}

}  // namespace velmora
