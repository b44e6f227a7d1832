#include "dsp/filters/filter_and_tell.hpp"

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/filters/filter_messages.hpp"

namespace velmora {
namespace {

PerChannel<FilterVerdict> FilterUnderPanel(Workbench& workbench, const ChannelsFilter& filter) {
  ProgressPanel panel(workbench, ProgressPanel::Kind::Processing);
  return FilterChannels(workbench.trial, filter, MachineSimdLevel(), TurnOf(panel));
}

std::string WordsOf(const ChannelsFilter& filter, int channel, const std::string& more) {
  std::string words = NameOf(filter.type, filter.design) + ", 2nd order, ";
  if (filter.Passes[channel] != 1) {
    words += std::to_string(filter.Passes[channel]) + " passes, ";
  }
  words += filter.ZeroLag[channel] ? "zero-lag, " : "one way, ";
  return words + PlainNumber(filter.Cutoffs[channel]) + " Hz" + more;
}

void Tell(Workbench& workbench, const ChannelsFilter& filter, const PerChannel<FilterVerdict>& verdicts,
          const std::string& more) {
  ChannelList filtered;
  ChannelList refused;
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    if (filter.Cutoffs[c] > 0) {
      (verdicts[c].Accepted() ? filtered : refused).push_back(c);
    }
  }
  DidEach(workbench, filtered, [&](int c) { return WordsOf(filter, c, more); });
  const bool rectifies =
      filter.Rectify && filter.type == PassType::Low && filter.design != FilterDesign::Bessel;
  if (rectifies && !refused.empty()) {  // the filter comes after it
    Did(workbench, "Rectified", refused);
  }
  for (const int c : refused) {
    LeftOut(workbench, c, ShortReason(verdicts[c]));
  }
}

}  // namespace

std::string NameOf(PassType type, FilterDesign design) {
  const std::string pass = type == PassType::Low ? "Low-pass " : "High-pass ";
  switch (design) {
    case FilterDesign::CriticallyDamped:
      return pass + "critically-damped";
    case FilterDesign::Bessel:
      return pass + "Bessel";
    case FilterDesign::Butterworth:
      break;
  }
  return pass + "Butterworth";
}

void FilterAndTell(Workbench& workbench, const ChannelsFilter& filter, const std::string& more) {
  const PerChannel<FilterVerdict> verdicts = FilterUnderPanel(workbench, filter);
  for (int c = 1; c <= workbench.trial.NChan; ++c) {
    ShowVerdict(workbench, c, verdicts[c]);
  }
  Tell(workbench, filter, verdicts, more);
}

}  // namespace velmora
