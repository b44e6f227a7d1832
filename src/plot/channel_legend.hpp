#pragma once

#include <qcustomplot.h>

#include "graph/graph.hpp"

namespace velmora {

/// The visible plots of a graph beside it: a piece of each line with its mark, label and units. Takes
/// as many columns as it needs, and no room while it is hidden. The colours of time have their times below.
class ChannelLegend : public QCPLayoutElement {
 public:
  explicit ChannelLegend(QCustomPlot* plot);

  /// nullptr hides it.
  void Show(const Graph* graph, Colour background);

  [[nodiscard]] QSize minimumOuterSizeHint() const override;
  [[nodiscard]] QSize maximumOuterSizeHint() const override;

 protected:
  void draw(QCPPainter* painter) override;
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;

 private:
  struct Entry {
    const Plot* plot;  // nullptr: text alone
    QString text;
  };
  [[nodiscard]] QFont Font() const;
  [[nodiscard]] int RowHeight() const;
  [[nodiscard]] int Rows() const;
  [[nodiscard]] int ColumnWidth() const;
  void DrawLine(QCPPainter& painter, const Plot& plot, const QPointF& middle) const;
  void DrawTimeColours(QCPPainter& painter, const QPointF& middle) const;
  void DrawEntry(QCPPainter& painter, const Entry& entry, const QRect& rect) const;

  std::vector<Entry> entries_;
  bool byTime_ = false;  // lines have the colours of time
  Colour background_ = kBlack;
};

}  // namespace velmora
