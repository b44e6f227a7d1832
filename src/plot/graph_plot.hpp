#pragma once

#include <qcustomplot.h>

#include <optional>

#include "graph/graph.hpp"
#include "graph/picture.hpp"

namespace velmora {

class ChannelLegend;
class CursorOverlay;
class PreviewOverlay;
class ResultMarks;
class TracePlottable;

/// A graph drawn: title, axes with round ticks and captions, grid, traces, cursors, and beside them the
/// channels. It shows what the graph holds at the last Arrange; the graph must outlive it or be
/// replaced.
class GraphPlot : public QCustomPlot {
 public:
  explicit GraphPlot(QWidget* parent = nullptr);

  /// nullptr shows an empty plot.
  void SetGraph(const Graph* graph);
  [[nodiscard]] bool Shows(const Graph& graph) const { return graph_ == &graph; }
  /// The title with what a view adds to it.
  void SetTitle(const QString& title) { title_ = title; }
  /// Another background than the graph's own.
  void SetPaper(std::optional<Colour> paper) { paper_ = paper; }
  /// Whether the channels are listed beside the axes while the graph's sidebar is on.
  void SetLegend(bool on) { legendOn_ = on; }

  /// Takes everything from the graph; draws nothing yet.
  void Arrange();

  [[nodiscard]] Colour Background() const;
  /// What is shown, as a picture of the same size; nothing without a graph.
  [[nodiscard]] std::optional<PictureOrder> Picture() const;

 protected:
  [[nodiscard]] const Graph* Shown() const { return graph_; }
  [[nodiscard]] CursorOverlay& Overlay() const { return *cursors_; }
  [[nodiscard]] PreviewOverlay& PreviewLines() const { return *preview_; }
  /// The plot library's topmost layer, which can be drawn without the rest.
  [[nodiscard]] QCPLayer* CursorLayer() const { return layer("overlay"); }

 private:
  void ArrangeTitle();
  void FitScales();

  const Graph* graph_ = nullptr;
  QString title_;
  std::optional<Colour> paper_;
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
