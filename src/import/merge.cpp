#include "import/merge.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/trial/arrange_channels.hpp"
#include "core/trial/helpers.hpp"
#include "core/trial/resample.hpp"

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

std::int64_t IntervalsAtRate(const Trial& trial, double rate) {
  return RoundHalfEven(trial.NData / trial.Rate * rate);
}

}  // namespace

void StoreForMerge(const Trial& trial, MergeStore& store) {
  Trial& stored = store.stored;
  stored.AllocateData(trial.NChan, trial.NData, SampleMatrix::Fill::None);
  const auto floats = static_cast<std::size_t>(trial.NData) * static_cast<std::size_t>(trial.NChan + 1);
  std::copy_n(trial.matrix.Frame(1), floats, stored.matrix.Frame(1));
  stored.Rate = trial.Rate;
  stored.Notices = trial.Notices;
  if (!trial.ForcesReduced) {
    stored.FilePlates = trial.FilePlates;
  }
  CopyChannelFields(trial, stored, trial.NChan, 0);
  stored.ChanLabel[0] = trial.ChanLabel[0];
  stored.ChanUnits[0] = trial.ChanUnits[0];
  store.changed = trial.FileChanged;
  store.MergePending = true;
}

std::string WhyNotMerged(const Trial& stored, const Trial& next, MergeLengths how) {
  const bool synchronise = next.Rate != stored.Rate && next.Rate > 0 && stored.Rate > 0;
  const std::int64_t intervals = synchronise ? IntervalsAtRate(next, stored.Rate) : next.NData - 1;
  if (synchronise && (next.NData < 2 || intervals < 1)) {
    return "The next file is too short to be re-sampled to the rate of the stored data.";
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
}

void JoinPlates(Workbench& workbench, const Trial& stored) {
  Trial& trial = workbench.trial;
  ForgetReducedForces(trial);
  if (trial.FilePlates.empty()) {
    if (!stored.FilePlates.empty()) {
      trial.FilePlates = stored.FilePlates;
      trial.NPlates = static_cast<std::int16_t>(stored.FilePlates.size());
    }
    return;
  }
  MoveFilePlates(workbench, stored.NChan);
  if (!stored.FilePlates.empty()) {
    AddNotice(workbench, "The force plates of the data set aside are no longer known: those of " +
                             trial.FileName + " are.");
  }
}

}  // namespace velmora
