#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/open_view.hpp"
#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"
#include "graph/graph.hpp"

namespace velmora {

/// Vertical scales, in the order of the menu and of the dialogue.
enum class Scale : std::int32_t {
  Auto,
  TenVolts,
  Percent,
  PlusMinusPercent,
  IncludeZero,
  PlusMinusMaximum,
  NoChange
};

/// What the read-out of values at the cursor shows.
struct CursorValues {
  std::string Sample;
  std::string Time;
  struct Row {
    int channel = 0;
    std::string value;
  };
  std::vector<Row> Rows;  // the page of channels
};

/// The single-axis graph: all selected channels on one pair of axes, and the cursors from which the
/// program learns a selection (CursorLo, CursorHi).
class SingleView : public OpenView {
 public:
  /// Opens on the channels selected in the picker's state, on the settings of `workbench.graph`.
  explicit SingleView(Workbench& workbench);

  [[nodiscard]] const Graph& Drawing() const { return graph_; }
  [[nodiscard]] Graph& Drawing() { return graph_; }
  [[nodiscard]] bool WindowMode() const { return windowMode_; }
  [[nodiscard]] const char* WindowCaption() const { return windowMode_ ? "&Full" : "&Window"; }
  [[nodiscard]] const char* PointsCaption() const { return offersLines_ ? "&Lines" : "&Points"; }
  [[nodiscard]] int Cursors() const { return static_cast<int>(graph_.Cursors.size()); }
  /// The title with what the view adds to it.
  [[nodiscard]] std::string TitleText() const;
  // The boxes for the selection.
  [[nodiscard]] std::string CountText() const;
  [[nodiscard]] std::string IntervalText() const;
  /// Nothing while the read-out is closed or there is no cursor.
  [[nodiscard]] std::optional<CursorValues> Values() const;
  /// The window tells what became of it.
  void SetMaximised(bool maximised) { maximised_ = maximised; }
  [[nodiscard]] bool Maximised() const { return maximised_; }

  bool TrialChanged() override;
  void Leave() override;

  // Drawing.
  /// Plots the trial with the default looks and no cursors.
  void Load();
  /// Plots the samples anew and shows the view window; looks and cursors stay.
  void Replot();
  void Reset();
  /// Visibility and colours of the channels selected in the picker's state.
  void ShowChannels();
  /// The first channel shown names the ordinate; with `onlyOfOne`, one among several names nothing.
  void CaptionOrdinate(bool onlyOfOne);
  void ShowAll();
  void SetScale(Scale scale);
  void SetBackground(Colour colour);
  void SetDefaultLooks();
  void CaptionAbscissa();
  void TogglePoints();

  // Cursors.
  void NoCursors();
  void OneCursor();
  void TwoCursors();
  /// One more cursor behind the others.
  void AddCursor(double x, Colour colour);
  void DeleteCursor();
  void ToggleValues();
  void ToggleHorizontal();
  void ToggleNumbers();
  [[nodiscard]] bool HorizontalShown() const { return horizontal_; }
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

  /// The horizontal line of a cursor (from 1) was dragged to y. Nothing when there is no such cursor.
  void MoveCrosshair(int cursor, double y);

  // The view window.
  void ToggleWindow();
  /// As Graph::ShowRange. Until all is shown again pans step by what the abscissa shows.
  void ShowRange(double left, double right, double bottom, double top);
  void PanForward(bool toEnd);
  void PanBack(bool toStart);

 private:
  [[nodiscard]] ActionListener* Listener() const override { return workbench_.listener; }
  bool DoKey(const KeyPress& key) override;
  void DoMove(int cursor, double x) override;
  void DoClick(const GraphClick& click) override;
  void SetCursors(const std::vector<double>& positions);
  void NameCursors();
  void KeepColours();
  void LeftCursorToStart();
  void RightCursorToEnd();
  void CursorsToEnds();
  void RefuseStatistics();
  void ShowWindow();
  bool PressFunctionKey(const std::string& name);
  bool PressNavigationKey(const KeyPress& key);
  bool PressCharacterKey(const std::string& name);
  bool PressWindowKey(const std::string& name);
  [[nodiscard]] double PanWindow() const;

  Workbench& workbench_;
  Graph graph_;
  bool windowMode_ = false;
  bool zoomed_ = false;  // the abscissa shows what the mouse chose
  bool offersLines_ = false;
  bool valuesShown_ = false;
  bool numbersShown_ = false;
  bool horizontal_ = false;
  bool maximised_ = false;
};

/// The view that is open. Throws std::runtime_error when none is.
SingleView& OpenSingleView(Workbench& workbench);

/// The box with the keys of the view.
void ShowKeyboardHelp(Workbench& workbench);

}  // namespace velmora
