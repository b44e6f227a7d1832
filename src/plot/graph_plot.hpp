#pragma once

#include "plot/drawn_plot.hpp"

namespace velmora {

class ChannelLegend;
class CursorOverlay;
class PreviewOverlay;
class ResultMarks;
class TracePlottable;

/// A graph drawn: title, axes with round ticks and captions, grid, traces, cursors, and beside them the
/// channels.
class GraphPlot : public DrawnPlot {
 public:
  explicit GraphPlot(QWidget* parent = nullptr);

  /// nullptr shows an empty plot.
  void SetGraph(const Graph* graph) { graph_ = graph; }
  void Clear() override { graph_ = nullptr; }
  [[nodiscard]] bool Shows(const Graph& graph) const { return graph_ == &graph; }
  /// Whether the channels are listed beside the axes while the graph's sidebar is on.
  void SetLegend(bool on) { legendOn_ = on; }

  void Arrange() final;

 protected:
  [[nodiscard]] const Graph* Lead() const final { return graph_; }
  [[nodiscard]] CursorOverlay& Overlay() const { return *cursors_; }
  [[nodiscard]] PreviewOverlay& PreviewLines() const { return *preview_; }

 private:
  void ArrangeTitle();
  void FitScales();

  const Graph* graph_ = nullptr;
  bool legendOn_ = true;
  // The plot library owns these.
  QCPTextElement* heading_ = nullptr;
  ChannelLegend* channels_ = nullptr;
  TracePlottable* traces_ = nullptr;
  ResultMarks* marks_ = nullptr;
  PreviewOverlay* preview_ = nullptr;
  CursorOverlay* cursors_ = nullptr;
};

}  // namespace velmora
