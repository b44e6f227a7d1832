#include "import/merge.hpp"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/arrange_channels.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/resample.hpp"
#include "dsp/time_base/time_base.hpp"

namespace velmora {
namespace {

// What belongs to channels 1..count, from one trial to channels first+1.. of another.
void CopyChannelFields(const Trial& from, Trial& to, int count, int first) {
  const auto copy = [count, first](const auto& a, auto& b) {
    std::copy_n(a.begin() + 1, count, b.begin() + first + 1);
  };
  copy(from.ChanLabel, to.ChanLabel);
  copy(from.ChanUnits, to.ChanUnits);
  copy(from.ChanRate, to.ChanRate);
  copy(from.ChanGain, to.ChanGain);
  copy(from.ChanOffset, to.ChanOffset);
  copy(from.ChanNumber, to.ChanNumber);
  copy(from.ChanAutozero, to.ChanAutozero);
  copy(from.ChanColour, to.ChanColour);
  copy(from.ChanGraphSlot, to.ChanGraphSlot);
}

// Source and target are one trial here, so the channels behind move first.
void MoveChannelFields(Trial& trial, int count, int first) {
  const auto move = [count, first](auto& fields) {
    std::copy_backward(fields.begin() + 1, fields.begin() + count + 1, fields.begin() + first + count + 1);
  };
  move(trial.ChanLabel);
  move(trial.ChanUnits);
  move(trial.ChanRate);
  move(trial.ChanGain);
  move(trial.ChanOffset);
  move(trial.ChanNumber);
  move(trial.ChanAutozero);
  move(trial.ChanColour);
  move(trial.ChanGraphSlot);
}

bool CountsSeconds(TimeBase base) {
  return base == TimeBase::Seconds || base == TimeBase::HhMmSs;
}

std::string CountedBy(TimeBase base, const Trial& trial) {
  return CountsSeconds(base)            ? "seconds"
         : base == TimeBase::Percentage ? "percent"
                                        : Trim(trial.ChanUnits[0].Text());
}

}  // namespace

std::int64_t IntervalsAtRate(const Trial& trial, double rate) {
  const bool resampled = rate != trial.Rate && rate > 0 && trial.Rate > 0;
  return resampled ? RoundHalfEven(trial.NData / trial.Rate * rate) : trial.NData - std::int64_t{1};
}

void StoreForMerge(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  MergeStore& store = workbench.merge;
  Trial& stored = store.stored;
  stored.AllocateData(trial.NChan, trial.NData, SampleMatrix::Fill::None);
  const auto floats = static_cast<std::size_t>(trial.NData) * static_cast<std::size_t>(trial.NChan + 1);
  std::copy_n(trial.matrix.Frame(1), floats, stored.matrix.Frame(1));
  stored.Rate = trial.Rate;
  stored.Duration = trial.Duration;
  stored.Notices = trial.Notices;
  stored.NPlates = trial.NPlates;
  stored.FilePlates = trial.FilePlates;
  stored.ForcesReduced = trial.ForcesReduced;
  stored.PlatesCombined = trial.PlatesCombined;
  store.time = workbench.time;
  store.plates = workbench.plates;
  CopyChannelFields(trial, stored, trial.NChan, 0);
  stored.ChanLabel[0] = trial.ChanLabel[0];
  stored.ChanUnits[0] = trial.ChanUnits[0];
  store.changed = trial.FileChanged;
  store.MergePending = true;
}

std::string MatchTimeBases(Workbench& workbench) {
  MergeStore& store = workbench.merge;
  const bool nextTimed = CountsSeconds(workbench.time.Base);
  if (nextTimed && !CountsSeconds(store.time.Base) && store.time.SecondsRate > 0) {
    UseSeconds(store.stored, store.time.SecondsRate, store.time.SecondsDuration);
    store.time.Base = TimeBase::Seconds;
  }
  if (store.time.Base == workbench.time.Base || (nextTimed && CountsSeconds(store.time.Base))) {
    return {};
  }
  return "The abscissa of the stored data counts " + CountedBy(store.time.Base, store.stored) +
         ", that of the next file " + CountedBy(workbench.time.Base, workbench.trial) +
         ".  Give both files the same time base before they are merged.";
}

std::string WhyNotMerged(const Trial& stored, const Trial& next, MergeLengths how) {
  const bool synchronise = next.Rate != stored.Rate && next.Rate > 0 && stored.Rate > 0;
  const std::int64_t intervals = IntervalsAtRate(next, stored.Rate);
  if (synchronise && (next.NData < 2 || intervals < 1)) {
    return "The next file is too short to be re-sampled to the rate of the stored data.";
  }
  if (intervals >= std::numeric_limits<std::int32_t>::max()) {
    return "The next file would have too many samples at the rate of the stored data.";
  }
  const bool resample = how == MergeLengths::NormaliseNext || how == MergeLengths::NormaliseStored;
  if (resample && intervals + 1 != stored.NData && std::min(intervals, stored.NData - std::int64_t{1}) < 1) {
    return "A single sample cannot be normalized.  Choose to truncate or pad instead.";
  }
  return {};
}

void SynchroniseRate(Trial& trial, double rate) {
  if (trial.Rate > 0 && rate > 0) {
    ResampleAll(trial, IntervalsAtRate(trial, rate));
  }
  trial.Rate = rate;
}

void MatchLengths(Trial& stored, Trial& next, MergeLengths how) {
  switch (how) {
    case MergeLengths::NormaliseNext:
      ResampleAll(next, stored.NData - 1);
      break;
    case MergeLengths::NormaliseStored:
      ResampleAll(stored, next.NData - 1);
      break;
    case MergeLengths::CutOrPadStored:
      stored.ResizeData(next.NData);
      break;
    case MergeLengths::CutOrPadNext:
      next.ResizeData(stored.NData);
      break;
  }
}

void JoinChannels(const Trial& stored, Trial& next, const Trial& times) {
  if (stored.NData != next.NData || stored.NChan + next.NChan > kMaxChannels) {
    throw std::invalid_argument("trials of different length, or too many channels, cannot be joined");
  }
  const int first = stored.NChan;
  next.Notices.insert(next.Notices.begin(), stored.Notices.begin(), stored.Notices.end());
  const int own = next.NChan;
  SampleMatrix joined;
  joined.Allocate(first + own, next.NData, SampleMatrix::Fill::None);
  for (std::int64_t i = 1; i <= next.NData; ++i) {
    float* frame = joined.Frame(i);
    frame[0] = *times.matrix.Frame(i);
    std::copy_n(stored.matrix.Frame(i) + 1, first, frame + 1);
    std::copy_n(next.matrix.Frame(i) + 1, own, frame + 1 + first);
  }
  next.matrix = std::move(joined);
  next.NChan = static_cast<std::int16_t>(first + own);
  MoveChannelFields(next, own, first);
  CopyChannelFields(stored, next, first, 0);
  next.ChanLabel[0] = times.ChanLabel[0];
  next.ChanUnits[0] = times.ChanUnits[0];
}

void JoinPlates(Workbench& workbench) {
  Trial& joined = workbench.trial;
  const Trial& stored = workbench.merge.stored;
  if (stored.NPlates == 0) {
    MoveFilePlates(workbench, stored.NChan);
    return;
  }
  if (!joined.FilePlates.empty()) {
    AddNotice(workbench,
              "The force plates of the next file are no longer known: the stored data have force plates.");
  }
  joined.NPlates = stored.NPlates;
  joined.FilePlates = stored.FilePlates;
  joined.ForcesReduced = stored.ForcesReduced;
  joined.PlatesCombined = stored.PlatesCombined;
  workbench.plates = workbench.merge.plates;
}

}  // namespace velmora
