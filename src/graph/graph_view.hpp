#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/open_view.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "graph/graph.hpp"

namespace velmora {

/// Vertical scales that both graphs have, in the order of the menus.
enum class Scale : std::int32_t {
  Auto,
  TenVolts,
  Percent,
  PlusMinusPercent,
  IncludeZero,
  PlusMinusMaximum,
  NoChange
};

/// What the single-axis and the multi-axis graph have in common: graphs on one abscissa, the cursors from
/// which the program learns a selection (CursorLo, CursorHi), the view window, looks. Graphs count from 1.
///
/// In a graph's list the cursors of a person come first; lines and marks that commands made stand behind
/// them.
class GraphView : public OpenView {
 public:
  explicit GraphView(Workbench& workbench);

  [[nodiscard]] int NGraphs() const { return static_cast<int>(graphs_.size()); }
  [[nodiscard]] std::span<Graph> Graphs() { return graphs_; }
  [[nodiscard]] std::span<const Graph> Graphs() const { return graphs_; }
  /// Throw std::out_of_range when there is no such graph.
  [[nodiscard]] Graph& GraphAt(int graph);
  [[nodiscard]] const Graph& GraphAt(int graph) const;
  /// The one whose abscissa and cursors all others have, too.
  [[nodiscard]] Graph& Lead() { return graphs_[lead_]; }
  [[nodiscard]] const Graph& Lead() const { return graphs_[lead_]; }

  [[nodiscard]] bool WindowMode() const { return windowMode_; }
  [[nodiscard]] const char* WindowCaption() const { return windowMode_ ? "&Full" : "&Window"; }
  /// The window tells what became of it.
  void SetMaximised(bool maximised) { maximised_ = maximised; }
  [[nodiscard]] bool Maximised() const { return maximised_; }
  /// The title with what the view adds to it.
  [[nodiscard]] virtual std::string TitleText() const = 0;
  /// The name of the file that keeps the looks of a graph.
  [[nodiscard]] virtual std::string StyleName(int graph) const = 0;

  void Leave() override;
  void ThresholdsChanged() override;
  /// The channels for which a graph has a line at the threshold, while these are shown.
  [[nodiscard]] virtual std::vector<int> ThresholdChannels(int graph) const;

  // Drawing.
  /// Plots the samples anew and shows the view window; looks and cursors stay.
  virtual void Replot() = 0;
  virtual void Reset() = 0;
  virtual void SetScale(Scale scale) = 0;
  virtual void SetDefaultLooks() = 0;
  void SetBackground(Colour colour);
  void SetTrack(TrackMode mode);
  /// Styles were read into the graphs: what must be the same in all is that of the first.
  void TakeStyles();
  void CaptionAbscissa();

  // Cursors.
  [[nodiscard]] int Cursors() const;
  /// Where the cursors stand, in their order.
  [[nodiscard]] std::vector<double> CommonCursors() const;
  void NoCursors() { SetCursors({}); }
  void OneCursor();
  void TwoCursors();
  /// From the first two cursors in order of time, the one cursor, or the whole trial.
  void TakeRange();
  /// The sample of cursor k (from 1), one that the trial has.
  [[nodiscard]] std::int32_t SampleOf(int cursor) const;
  /// The samples of the first two cursors, in order.
  [[nodiscard]] SampleRange PairRange() const;
  /// StatLo and StatHi become the samples between the first two cursors, those from the one cursor on, or
  /// all.
  void SetStatRange();
  /// Cursors 1 and the last of 1 and 2 go to the first and the last sample; those outside come back.
  void MoveCursorsToEnds(bool first, bool last);

  // The view window.
  void ToggleWindow();
  /// As Graph::ShowRange of one graph; the abscissa is that of all. Until all is shown again pans step by
  /// what the abscissa shows.
  void ShowRange(int graph, double left, double right, double bottom, double top);
  virtual void PanForward(bool toEnd) = 0;
  virtual void PanBack(bool toStart) = 0;

 protected:
  [[nodiscard]] ActionListener* Listener() const override { return workbench_.listener; }
  /// A key that both graphs have, its name in upper case. Returns whether it is one.
  bool PressCommonKey(const KeyPress& key, const std::string& name);
  void SetCursors(const std::vector<double>& positions);
  [[nodiscard]] Colour FirstCursorColour() const;
  /// Moves cursor k (from 1) of all graphs to x, but not past the trial. Throws as OpenView::MoveCursor.
  void MoveCommon(int cursor, double x);
  /// The list of cursors is another: their names and looks are to be as the view has them.
  virtual void CursorsChanged() {}
  /// Visibility and colours of a graph's channels; one that turned white is that everywhere.
  void ShowChannels(Graph& graph, const ChannelFlags& channels);
  void KeepColours();
  void SetAbscissa(double minimum, double maximum);
  void ShowWindow();
  void ShowWholeAbscissa();
  /// The default looks of one graph; ranges, captions and titles stay.
  static void ClearLooks(Graph& graph);

  Workbench& workbench_;
  std::vector<Graph> graphs_;
  std::size_t lead_ = 0;
  bool windowMode_ = false;
  bool zoomed_ = false;  // the abscissa shows what the mouse chose
  bool maximised_ = false;

 private:
  bool PressPlaceKey(const KeyPress& key, const std::string& name);
  bool PressWindowKey(const std::string& name);
  bool PressLookKey(const std::string& name);
  void PlaceCursor(int cursor, double x);
  void LeftCursorToStart();
  void RightCursorToEnd();
  void CursorsToEnds();
};

/// The view that is open. Throws std::runtime_error when none is.
GraphView& OpenGraphView(Workbench& workbench);

}  // namespace velmora
