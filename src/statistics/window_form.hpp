#pragma once

#include <map>
#include <vector>

#include "core/questions/analysis_form.hpp"
#include "core/results/result_form.hpp"
#include "core/trial/helpers.hpp"
#include "dsp/channel_list.hpp"
#include "dsp/smoothing/window_width.hpp"

namespace velmora {

/// frmWindowStats: how a range is cut into windows, and which channels are looked at.
class WindowForm : public AnalysisForm {
 public:
  enum class Split : std::int32_t { OfWidth, Equal, BetweenCursors, Events };

  WindowForm(Workbench& workbench, SampleRange range, Split split);

  /// What was computed, after Ask.
  [[nodiscard]] Results& Found() { return results_; }

 private:
  using Windows = std::map<int, std::vector<SampleRange>>;  // by channel

  bool Compute() override;
  void FollowSplit();
  bool MakeWindows(const ChannelList& channels, Windows& windows);
  [[nodiscard]] std::vector<SampleRange> EventsOf(int channel) const;
  bool CanShow(const Windows& windows);
  bool FillTable(const Windows& windows);
  void Refuse(const char* title, const std::string& text);

  SampleRange range_;
  std::int32_t split_;
  WindowWidthEntry width_;
  double overlap_ = 0.0;
  std::int32_t count_ = 10;
  ChannelFlags channels_{};
  std::vector<std::int32_t> cursors_;  // samples
  Results results_;
};

/// Asks, and shows the table.
void ShowWindowStatistics(Workbench& workbench, SampleRange range, WindowForm::Split split);

}  // namespace velmora
