#pragma once

#include "core/questions/analysis_form.hpp"
#include "dsp/channel_list.hpp"
#include "emg/maximums/window_maximum.hpp"

namespace velmora {

/// The reference contraction: the largest window of each channel goes to the stored maximums.
class MaximumsForm : public AnalysisForm {
 public:
  /// `channels`: those that are chosen to begin with.
  MaximumsForm(Workbench& workbench, SampleRange range, const ChannelFlags& channels = {});

 private:
  bool Compute() override;
  void Store(const ChannelList& channels, const std::vector<WindowMaximum>& found, std::int32_t width);
  [[nodiscard]] std::string MethodWords() const;

  SampleRange range_;
  std::int32_t method_ = static_cast<std::int32_t>(MaximumMethod::MeanAbsolute);
  double window_ = 0.5;  // seconds
  ChannelFlags channels_{};
  bool keep_ = true;
};

/// Asks for the range, then the dialogue, and shows all maximums of the session. Refuses a trial that is not
/// over time.
void DetermineMaximums(Workbench& workbench);

/// The same from the multi-axis graph: between its cursors, of the channels on view.
void DetermineMaximumsOfView(Workbench& workbench);

}  // namespace velmora
