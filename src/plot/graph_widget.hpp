#pragma once

#include "plot/gesture.hpp"
#include "plot/graph_plot.hpp"
#include "plot/range_moves.hpp"

namespace velmora {

/// A graph under the mouse. It changes nothing by itself: it tells what a person did, and shows the
/// graph again when Redraw is called.
///   wheel               zoom of the abscissa at the pointer; with shift of the ordinate; with ctrl a pan
///   middle button       pan, whatever the mode
///   left button         drags a cursor; else what the graph's track mode says
///   double click        back to all
/// While a dialogue beside the graph previews what it would do, its levels are dragged in place of cursors,
/// and clicks mean nothing.
class GraphWidget : public GraphPlot {
  Q_OBJECT

 public:
  explicit GraphWidget(QWidget* parent = nullptr);

  /// Titles and names are elided and ask for no room.
  [[nodiscard]] QSize minimumSizeHint() const override { return {240, 160}; }

  bool CancelGesture() override;

 signals:
  /// Cursor `cursor` (from 1) was dragged to `x`.
  void cursorDragged(int cursor, double x);
  /// Its horizontal line was dragged to `y`.
  void crosshairDragged(int cursor, double y);
  /// Level `level` (from 1) of the preview was dragged to `y`.
  void levelDragged(int level, double y);
  void dragEnded();
  void rangeChosen(const velmora::GraphRange& range);
  /// The pointer is at this place of the axes.
  void pointed(double x, double y);
  /// At a place of the axes.
  void clicked(double x, double y);
  void doubleClicked();
  void rightClicked(const QPoint& globalPlace);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  [[nodiscard]] RangeMoves Moves() const {
    return {*xAxis, *yAxis, Lead() != nullptr && Lead()->EqualScales};
  }
  void PressLeft();
  void EmitClicked(const QPointF& place);
  void DragCursor(const QPointF& place);
  [[nodiscard]] bool Previews() const { return Lead() != nullptr && Lead()->Preview; }
  [[nodiscard]] Qt::CursorShape PointerAt(const QPointF& place) const;

  Gesture gesture_ = Gesture::None;
  int cursor_ = 0;  // or level that is dragged
  QPointF pressed_;
  QPointF last_;
  QCPItemRect* band_ = nullptr;  // the plot owns it
};

}  // namespace velmora
