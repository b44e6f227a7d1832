#pragma once

#include <string>
#include <vector>

#include "core/trial/helpers.hpp"
#include "graph/graph_view.hpp"

namespace velmora {

/// What the single-axis and the multi-axis graph have in common: graphs on one abscissa, which is the
/// trial's; the cursors from which the program learns a selection (CursorLo, CursorHi); the view window.
///
/// In a graph's list the cursors of a person come first; lines and marks that commands made stand behind
/// them.
class TimeView : public GraphView {
 public:
  using GraphView::GraphView;

  void ThresholdsChanged() override;
  void TrialReplaced() override {
    replaced_ = true;
    RemoveMarks();
  }
  /// The channels for which a graph has a line at the threshold, while these are shown.
  [[nodiscard]] virtual std::vector<int> ThresholdChannels(int graph) const;

  /// A channel that turns white on this ground is that everywhere.
  void SetBackground(Colour colour) override;
  void CaptionAbscissa();
  /// With cursors it drags them.
  void LeaveMode() override;

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
  /// Cursors 1 and the last of 1 and 2 go to the first and the last sample; those outside come back, values
  /// and whole bursts outside go.
  void MoveCursorsToEnds(bool first, bool last);
  /// The samples have other places now, earlier by this much: cursors and marks stay on theirs.
  void BringForward(double by);
  void RemoveCursors(CursorKind kind);
  /// Onsets, offsets and values.
  void RemoveMarks();

  // The view window.
  void ToggleWindow() override;
  /// The abscissa is that of all graphs. Until all is shown again pans step by what the abscissa shows.
  void ShowRange(int graph, double left, double right, double bottom, double top) override;
  virtual void PanForward(bool toEnd) = 0;
  virtual void PanBack(bool toStart) = 0;

 protected:
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
  /// To be called first when the trial has changed.
  void FollowAbscissa();
  void ShowWindow();
  void ShowWholeAbscissa();

  bool zoomed_ = false;  // the abscissa shows what the mouse chose

 private:
  bool PressPlaceKey(const KeyPress& key, const std::string& name);
  bool PressStatisticsKey(const std::string& name);
  void PlaceCursor(int cursor, double x);
  void RemoveMarksOutside(double start, double end);

  /// The abscissa as it was when the trial was plotted last.
  struct AbscissaShown {
    double rate = 0.0;  // samples to a unit
    double start = 0.0;
    double duration = 0.0;
    std::int32_t samples = 0;
  };
  [[nodiscard]] AbscissaShown AbscissaNow() const;
  AbscissaShown shown_;
  bool replaced_ = false;  // another trial has come since
  void LeftCursorToStart();
  void RightCursorToEnd();
  void CursorsToEnds();
};

/// The view that is open. Throws std::runtime_error when none with the trial's abscissa is.
TimeView& OpenTimeView(Workbench& workbench);
const TimeView* FindTimeView(const Workbench& workbench);

}  // namespace velmora
