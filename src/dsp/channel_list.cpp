#include "dsp/channel_list.hpp"

namespace velmora {

ChannelList SelectedChannels(const Trial& trial, const ChannelFlags& flags) {
  ChannelList channels;
  for (int c = 1; c <= trial.NChan; ++c) {
    if (flags[c]) {
      channels.push_back(c);
    }
  }
  return channels;
}

std::vector<ChannelRun> RunsOf(const ChannelList& channels) {
  std::vector<ChannelRun> runs;
  for (const int c : channels) {
    if (!runs.empty() && runs.back().last + 1 == c) {
      runs.back().last = c;
    } else {
      runs.push_back({c, c});
    }
  }
  return runs;
}

}  // namespace velmora
