#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/picture.hpp"
#include "graph/time_view.hpp"

namespace velmora {

/// Vertical scales, in the order of the menu; the first six are those of Scale.
enum class MultiScale : std::int32_t {
  Auto,
  TenVolts,
  Percent,
  PlusMinusPercent,
  IncludeZeros,
  PlusMinusMaximums,
  Same,
  MinMax
};

/// The multi-axis graph: the chosen channels on a stack of graphs with one abscissa and two cursors in
/// common. A graph number that no channel has is a gap: it is not drawn, and the others keep their numbers.
class MultiView : public TimeView {
 public:
  /// Opens on `workbench.graph.GraphOfChannel` and the settings beside it.
  explicit MultiView(Workbench& workbench);

  /// Ascending; none of a gap.
  [[nodiscard]] std::vector<int> ChannelsOf(int graph) const;
  /// The lowest of them, 0 of a gap.
  [[nodiscard]] int ChannelOf(int graph) const;
  /// 0 of a channel that is not shown.
  [[nodiscard]] int GraphOf(int channel) const;
  /// The graphs that are drawn, in their order.
  [[nodiscard]] std::vector<int> ShownGraphs() const;

  /// The graph clicked last, 0 while there is none. One graph alone is selected from the start.
  [[nodiscard]] int Selected() const { return selected_; }
  void Select(int graph);

  [[nodiscard]] std::string TitleText() const override;
  [[nodiscard]] std::string StyleName(int graph) const override;
  /// What stands beside the graphs, line by line: the lines of the event, then the read-out.
  [[nodiscard]] std::vector<std::string> SidebarLines() const;
  /// Of the current event, one a graph; none while no events are tracked.
  [[nodiscard]] std::vector<std::string> EventLines() const;
  /// Of the trial, or of the samples under the cursors.
  [[nodiscard]] std::vector<std::string> ReadOutLines() const;

  bool TrialChanged() override;
  /// Unsaved events are asked about.
  bool MayLeave() override;
  void Leave() override;
  void EventsChanged() override { ShowEvents(); }
  [[nodiscard]] std::vector<int> ThresholdChannels(int graph) const override;

  // Drawing.
  /// Plots the trial with the default looks and no cursors.
  void Load();
  void Replot() override;
  void Reset() override;
  /// The selected graph's ordinate anew, and the whole abscissa.
  void ResetZoom() override;
  void SetDefaultLooks() override;
  void SetScale(Scale scale) override;
  /// All graphs get the lowest and the highest limit of any.
  void SetSameScale();
  [[nodiscard]] std::int32_t ShownScale() const override { return static_cast<std::int32_t>(scale_); }
  void CheckScale(MultiScale scale) { scale_ = scale; }

  void PanForward(bool toEnd) override;
  void PanBack(bool toStart) override;

  /// Where an arrow key moves a cursor. Nothing for other keys, and when there is no such cursor.
  [[nodiscard]] std::optional<CursorMove> ArrowMove(const KeyPress& key) const;

  /// The flag of "&Fix double-keying": the window passes over a key that comes twice by mistake.
  void ToggleFixDouble() { fixDouble_ = !fixDouble_; }
  [[nodiscard]] bool FixesDouble() const { return fixDouble_; }

  void ChangeChannels() override;
  void ShowKeyList() override;

 private:
  bool DoKey(const KeyPress& key) override;
  void DoMove(const CursorMove& move) override;
  void DoMoveThreshold(const ThresholdMove& move) override;
  void DoClick(const GraphClick& click) override;
  bool PressEventKey(const KeyPress& key, const std::string& name);
  bool PressOwnKey(const KeyPress& key, const std::string& name);
  void ResetCursors();
  void Interpolate();
  void Run(std::string_view id) const { workbench_.RunById(workbench_, id); }

  void TakeGraphs();
  void PlotGraphs();
  void CaptionGraphs();
  void ShowEvents();
  void AutoScale(Graph& graph) const;
  void ScaleAnew();
  [[nodiscard]] double PanStep() const;
  [[nodiscard]] double PanWindow() const;
  void ShowStretch(double start);

  void AddReadOut(std::vector<std::string>& lines) const;
  void AddValues(std::vector<std::string>& lines, int cursor) const;

  PerChannel<std::int16_t> graphOf_{};
  MultiScale scale_ = MultiScale::Auto;
  int selected_ = 0;
  bool fixDouble_ = false;
};

/// The graphs that are drawn, for a picture of them.
std::vector<Lane> LanesOf(const MultiView& view);

/// The view that is open. Throws std::runtime_error when none is.
MultiView& OpenMultiView(Workbench& workbench);
const MultiView* FindMultiView(const Workbench& workbench);

}  // namespace velmora
