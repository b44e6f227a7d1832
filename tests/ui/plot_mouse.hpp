#pragma once

#include <QApplication>
#include <QTest>
#include <cmath>

#include "plot/graph_widget.hpp"
#include "plot/stack_widget.hpp"
#include "ui/shot.hpp"
#include "ui/waiting.hpp"

namespace velmora::test {

/// The pixel of a value of the abscissa, at a part of the height from the top.
inline QPoint PlaceIn(const GraphWidget& plot, double x, double part) {
  return {static_cast<int>(std::lround(plot.xAxis->coordToPixel(x))),
          plot.axisRect()->top() + static_cast<int>(part * plot.axisRect()->height())};
}

/// The same in the lane of a graph.
inline QPoint PlaceIn(const StackWidget& plot, int graph, double x, double part) {
  const StackPlot::Shown* shown = plot.LaneOf(graph);
  return {static_cast<int>(std::lround(shown->rect->axis(QCPAxis::atBottom)->coordToPixel(x))),
          shown->rect->top() + static_cast<int>(part * shown->rect->height())};
}

/// The pixel of a value in the lane of a graph.
inline QPoint PlaceOfValue(const StackWidget& plot, int graph, double x, double y) {
  const QCPAxisRect& rect = *plot.LaneOf(graph)->rect;
  return {static_cast<int>(std::lround(rect.axis(QCPAxis::atBottom)->coordToPixel(x))),
          static_cast<int>(std::lround(rect.axis(QCPAxis::atLeft)->coordToPixel(y)))};
}

/// Drags with the left button.
inline void DragIn(QWidget& plot, QPoint from, QPoint to) {
  QTest::mousePress(&plot, Qt::LeftButton, {}, from);
  for (const double part : {0.5, 1.0}) {
    const QPointF at = QPointF(from) + part * QPointF(to - from);
    QMouseEvent move(QEvent::MouseMove, at, plot.mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&plot, &move);
  }
  QTest::mouseRelease(&plot, Qt::LeftButton, {}, to);
  QApplication::processEvents();
}

/// A key for a graph.
inline void PressIn(QWidget& plot, Qt::Key key, Qt::KeyboardModifiers held = {}) {
  QTest::keyClick(&plot, key, held);
  QApplication::processEvents();
}

}  // namespace velmora::test
