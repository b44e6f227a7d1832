#include "core/trial/trial.hpp"

#include <stdexcept>

namespace velmora {
namespace {

// Everything that is kept per channel of a trial, so that erasing moves it all.
void MoveChannel(Trial& trial, int from, int to) {
  const auto f = static_cast<std::size_t>(from);
  const auto t = static_cast<std::size_t>(to);
  trial.ChanLabel[t] = trial.ChanLabel[f];
  trial.ChanUnits[t] = trial.ChanUnits[f];
  trial.ChanRate[t] = trial.ChanRate[f];
  trial.ChanGain[t] = trial.ChanGain[f];
  trial.ChanOffset[t] = trial.ChanOffset[f];
  trial.ChanNumber[t] = trial.ChanNumber[f];
  trial.ChanAutozero[t] = trial.ChanAutozero[f];
  trial.ChanColour[t] = trial.ChanColour[f];
  trial.ChanGraphSlot[t] = trial.ChanGraphSlot[f];
}

}  // namespace

std::int16_t DefaultColour(int channel) {
  return channel < 1 ? std::int16_t{0} : static_cast<std::int16_t>((channel - 1) % kColours + 1);
}

void Trial::AllocateData(int nChan, std::int64_t nData, SampleMatrix::Fill fill) {
  DiscardData();
  matrix.Allocate(nChan, nData, fill);
  NChan = static_cast<std::int16_t>(nChan);
  NData = static_cast<std::int32_t>(nData);
}

void Trial::DiscardData() {
  NData = 0;
  matrix.Discard();
}

void Trial::ResizeData(std::int64_t nData) {
  matrix.Resize(NChan, nData);
  NData = static_cast<std::int32_t>(nData);
}

void Trial::CutChannels(int nChan) {
  matrix.Resize(nChan, NData);
  NChan = static_cast<std::int16_t>(nChan);
}

void Trial::SetChannelDefaults(int channel) {
  ChanLabel[channel] = channel == 0 ? "Time" : "";
  ChanUnits[channel] = channel == 0 ? "s" : "V";
  ChanRate[channel] = Rate;
  ChanGain[channel] = 1.0;
  ChanOffset[channel] = 0.0;
  ChanNumber[channel] = static_cast<std::int16_t>(channel == 0 ? 0 : channel - 1);
  ChanAutozero[channel] = -1;
  ChanColour[channel] = DefaultColour(channel);
  ChanGraphSlot[channel] = 0;
}

void Trial::AddChannels(int count) {
  const int before = NChan;
  if (before + count > kMaxChannels) {
    throw std::length_error("a trial holds at most 64 channels");
  }
  matrix.Resize(before + count, NData);
  NChan = static_cast<std::int16_t>(before + count);
  for (int c = before + 1; c <= NChan; ++c) {
    SetChannelDefaults(c);
  }
}

void Trial::EraseChannels(const ChannelFlags& erase) {
  FilePlates.clear();  // their channels are somewhere else now
  int kept = 0;
  PerChannel<int> source{};
  for (int c = 1; c <= NChan; ++c) {
    if (!erase[c]) {
      source[++kept] = c;
      MoveChannel(*this, c, kept);
    }
  }
  for (std::int64_t i = 1; i <= matrix.Samples(); ++i) {
    float* frame = matrix.Frame(i);
    for (int k = 1; k <= kept; ++k) {
      frame[k] = frame[source[k]];
    }
  }
  CutChannels(kept);
}

void Trial::RebuildTimeColumn() {
  const ChannelView times = Channel(0);
  for (std::int64_t i = 0; i < times.size(); ++i) {
    times[i] = Rate > 0 ? static_cast<float>(static_cast<double>(i) / Rate) : 0.0F;
  }
}

}  // namespace velmora
