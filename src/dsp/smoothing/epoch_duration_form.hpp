#pragma once

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "dsp/smoothing/window_width.hpp"

namespace velmora {

/// The width of a moving window, in samples or seconds, and the channels it goes over. OK holds the
/// width to 1 .. NData-1 samples, keeps it in WindowWidth and the channels in ChanSelected.
class EpochDurationForm : public Form {
 public:
  explicit EpochDurationForm(Workbench& workbench);

  /// Whether the form was left with OK. It may be asked again, as it was left.
  bool Ask();

 private:
  bool Accept();

  Workbench& workbench_;
  WindowWidthEntry entry_;
  ChannelFlags channels_{};
  bool accepted_ = false;
};

}  // namespace velmora
