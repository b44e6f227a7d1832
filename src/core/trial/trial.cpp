#include "core/trial/trial.hpp"

#include <algorithm>
#include <stdexcept>

namespace velmora {

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
  std::vector<int> kept;
  for (int c = 1; c <= NChan; ++c) {
    if (!erase[c]) {
      kept.push_back(c);
    }
  }
  ArrangeChannels(kept);
}

void Trial::ArrangeChannels(std::span<const int> order) {
  const auto arrange = [&order](auto& row) {
    const auto before = row;
    for (std::size_t k = 0; k < order.size(); ++k) {
      row[k + 1] = before[order[k]];
    }
  };
  arrange(ChanLabel);
  arrange(ChanUnits);
  arrange(ChanRate);
  arrange(ChanGain);
  arrange(ChanOffset);
  arrange(ChanNumber);
  arrange(ChanAutozero);
  arrange(ChanColour);
  arrange(ChanGraphSlot);
  PerChannel<float> before{};
  for (std::int64_t i = 1; i <= matrix.Samples(); ++i) {
    float* frame = matrix.Frame(i);
    std::copy_n(frame, NChan + 1, before.data());
    for (std::size_t k = 0; k < order.size(); ++k) {
      frame[k + 1] = before[order[k]];
    }
  }
  CutChannels(static_cast<int>(order.size()));
}

void Trial::RebuildTimeColumn() {
  const ChannelView times = Channel(0);
  for (std::int64_t i = 0; i < times.size(); ++i) {
    times[i] = Rate > 0 ? static_cast<float>(static_cast<double>(i) / Rate) : 0.0F;
  }
}

}  // namespace velmora
