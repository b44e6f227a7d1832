#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/questions/result_table.hpp"
#include "graph/graph_view.hpp"
#include "graph/xy/xy_setup.hpp"

namespace velmora {

/// One channel against another. It keeps a copy of what it shows, in which row 0 is X and the channels are
/// those of Y, one after the other; a sample at which either is no finite number is a gap.
class XYView final : public GraphView {
 public:
  /// Throws std::bad_alloc.
  XYView(Workbench& workbench, const XYSetup& setup);

  [[nodiscard]] const XYSetup& Setup() const { return setup_; }
  [[nodiscard]] const Graph& Drawing() const { return Lead(); }
  /// The samples that are shown.
  [[nodiscard]] SampleRange Range() const { return range_; }
  /// The trial's channel of a plot of the drawing, from 1.
  [[nodiscard]] int ChannelOf(int plot) const { return channels_[static_cast<std::size_t>(plot - 1)]; }
  /// How many points a plot (from 1) has.
  [[nodiscard]] std::int64_t PointsOf(int plot) const { return points_[static_cast<std::size_t>(plot - 1)]; }
  [[nodiscard]] std::string TitleText() const override { return Lead().Title; }
  [[nodiscard]] std::string StyleName(int /*graph*/) const override { return "XY.cwx"; }

  /// Takes the samples anew; channels that are gone are left out. What is shown of the axes stays when as
  /// many samples of the same channels are there as before and reach as far.
  bool TrialChanged() override;

  // Drawing.
  void Replot() override;
  /// As at first: the default looks and everything in view.
  void Reset() override;
  void ResetZoom() override;
  void SetScale(Scale scale) override;
  [[nodiscard]] std::int32_t ShownScale() const override { return static_cast<std::int32_t>(scale_); }
  void SetDefaultLooks() override;
  void ChangeChannels() override;
  void ShowKeyList() override;
  /// Shows what lies between the trial's cursors, or everything again. Nothing without cursors.
  void ToggleWindow() override;

  void ToggleEqualScales();
  void ToggleMarks();
  /// Several channels have no colours of time; a box says so.
  void ToggleColourByTime();
  void ToggleEllipse();

  // A sample that was clicked.
  struct Picked {
    std::int32_t sample = 0;
    int plot = 1;
    double x = 0.0;
    double y = 0.0;
  };
  /// How much of an axis one pixel is; of a logarithmic one, of its logarithm.
  struct PixelSize {
    double x = 1.0;
    double y = 1.0;
  };
  /// Marks the sample nearest to a place of the axes, if one lies within a few pixels, and otherwise takes
  /// the mark away.
  void Pick(double x, double y, PixelSize pixel);
  /// First what the mouse does, then the sample that was clicked.
  void LeaveMode() override;
  /// "n = 123, 0.122 s: 45.2 deg, 12.1 deg" of the sample that was clicked; empty while none is.
  [[nodiscard]] std::string PickedText() const;
  [[nodiscard]] const std::optional<Picked>& PickedSample() const { return picked_; }

  /// One row a channel: "Channel", "Label", "Loop area", "Path length", "r", "Slope", "n".
  [[nodiscard]] const ResultTable& Table() const { return table_; }

 private:
  bool DoKey(const KeyPress& key) override;
  void DoMove(const CursorMove& move) override;
  void DoClick(const GraphClick& click) override;

  void Load();
  void TakeSamples();
  void Measure();
  void Decorate();
  void AddEnds();
  void CaptionAxes();
  void TellMissingEllipses();
  /// Of X and of each channel against it.
  [[nodiscard]] std::vector<Extremes> Reach() const;
  [[nodiscard]] SampleSpan BetweenCursors() const;
  [[nodiscard]] std::string TimeText(std::int32_t sample) const;
  void ShowAll();
  void ScaleToFit(std::int64_t first, std::int64_t last);

  XYSetup setup_;
  SampleRange range_{};
  std::vector<int> channels_;
  std::vector<std::int64_t> points_;
  Scale scale_ = Scale::Auto;
  Trial shown_;
  std::vector<FormGraph::Ellipse> ellipses_;
  ResultTable table_;
  std::optional<Picked> picked_;
};

/// The view that is open. Throws std::runtime_error when none is.
XYView& OpenXYView(Workbench& workbench);
const XYView* FindXYView(const Workbench& workbench);

}  // namespace velmora
