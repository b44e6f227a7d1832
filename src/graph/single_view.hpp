#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/workbench.hpp"
#include "graph/time_view.hpp"

namespace velmora {

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
class SingleView : public TimeView {
 public:
  /// Opens on the channels selected in the picker's state, on the settings of `workbench.graph`.
  explicit SingleView(Workbench& workbench);

  [[nodiscard]] const Graph& Drawing() const { return Lead(); }
  [[nodiscard]] Graph& Drawing() { return Lead(); }
  [[nodiscard]] const char* PointsCaption() const { return offersLines_ ? "&Lines" : "&Points"; }
  [[nodiscard]] std::string TitleText() const override;
  [[nodiscard]] std::string StyleName(int /*graph*/) const override { return "Graph.cwx"; }
  // The boxes for the selection.
  [[nodiscard]] std::string CountText() const;
  [[nodiscard]] std::string IntervalText() const;
  /// At the cursor that was moved last. Nothing while the read-out is closed or there is no cursor.
  [[nodiscard]] std::optional<CursorValues> Values() const;

  bool TrialChanged() override;

  // Drawing.
  /// Plots the trial with the default looks and no cursors.
  void Load();
  void Replot() override;
  void Reset() override;
  /// Asks which channels are shown.
  void SelectChannels();
  /// The first channel shown names the ordinate; with `onlyOfOne`, one among several names nothing.
  void CaptionOrdinate(bool onlyOfOne);
  void ShowAll();
  void ResetZoom() override;
  void SetScale(Scale scale) override;
  [[nodiscard]] std::int32_t ShownScale() const override { return workbench_.graph.GraphScaleChoice; }
  void SetDefaultLooks() override;
  void TogglePoints();

  // Cursors.
  /// More cursors behind the others. Without a colour they take those of the keys 1 and 2.
  void AddCursors(const std::vector<double>& places, std::optional<Colour> colour = std::nullopt);
  /// Removes the cursors behind the first two.
  void KeepFirstTwo();
  /// Removes the cursors between the first and the last.
  void KeepFirstAndLast();
  void DeleteCursor();
  void ToggleValues();
  void ToggleHorizontal();
  void ToggleNumbers() { ShowNumbers(!numbersShown_); }
  /// Numbers of the cursors in the list, when there are two at least.
  void ShowNumbers(bool on);
  [[nodiscard]] bool HorizontalShown() const { return horizontal_; }
  [[nodiscard]] bool NumbersShown() const { return numbersShown_; }

  // A dialogue beside the graph.
  /// The window draws what changed in the view while the dialogue is open. Nothing without a window.
  enum class Redraw { Preview, All };
  std::function<void(Redraw)> onRedraw;
  /// A level of the preview (from 1) is dragged to y. Set by the dialogue that has levels.
  std::function<void(int level, double y)> onLevel;
  /// No preview takes the last one away.
  void ShowPreview(std::optional<GraphPreview> preview);
  void RedrawAll() const;

  /// The menu offers triggering: not after a scan without a trigger. The key works always.
  bool TriggeringOffered = true;

  /// The horizontal line of a cursor (from 1) was dragged to y. Nothing when there is no such cursor.
  void MoveCrosshair(int cursor, double y);

  // The view window.
  void PanForward(bool toEnd) override;
  void PanBack(bool toStart) override;

  void ChangeChannels() override;
  void ShowKeyList() override;

 private:
  bool DoKey(const KeyPress& key) override;
  void DoMove(const CursorMove& move) override;
  void DoClick(const GraphClick& click) override;
  void CursorsChanged() override;
  [[nodiscard]] double PanWindow() const;
  void ShowChannels();

  ChannelFlags channels_;  // shown, as far as the trial has them
  bool offersLines_ = false;
  bool valuesShown_ = false;
  bool numbersShown_ = false;
  bool horizontal_ = false;
  int moved_ = 1;  // the cursor that was moved last
};

/// The view that is open. Throws std::runtime_error when none is.
SingleView& OpenSingleView(Workbench& workbench);

}  // namespace velmora
