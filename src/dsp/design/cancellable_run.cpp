#include "dsp/design/cancellable_run.hpp"

#include <vector>

#include "core/questions/progress.hpp"

namespace velmora {
namespace {

/// Thrown out of a turn: the way out of a kernel that knows no Cancel.
struct Cancelled {};

std::vector<float> CopyOf(Trial& trial, const ChannelList& channels) {
  std::vector<float> copy;
  copy.reserve(static_cast<std::size_t>(trial.NData) * channels.size());
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    const float* frame = trial.matrix.Frame(i);
    for (const int c : channels) {
      copy.push_back(frame[c]);
    }
  }
  return copy;
}

void PutBack(Trial& trial, const ChannelList& channels, const std::vector<float>& copy) {
  const float* from = copy.data();
  for (std::int64_t i = 1; i <= trial.NData; ++i) {
    float* frame = trial.matrix.Frame(i);
    for (const int c : channels) {
      frame[c] = *from++;
    }
  }
}

}  // namespace

bool ReadCancellable(Workbench& workbench, const std::string& title,
                     const std::function<void(const Turn&)>& work) {
  ProgressPanel panel(workbench);
  panel.SetFormat(title);
  try {
    work([&panel] {
      if (panel.GiveTurn()) {
        throw Cancelled();
      }
    });
    return true;
  } catch (const Cancelled&) {
    return false;
  }
}

bool RunCancellable(Workbench& workbench, const ChannelList& channels, const std::string& title,
                    const std::function<void(const Turn&)>& work) {
  const std::vector<float> before = CopyOf(workbench.trial, channels);
  try {
    if (ReadCancellable(workbench, title, work)) {
      return true;
    }
  } catch (...) {
    PutBack(workbench.trial, channels, before);
    throw;
  }
  PutBack(workbench.trial, channels, before);
  return false;
}

}  // namespace velmora
