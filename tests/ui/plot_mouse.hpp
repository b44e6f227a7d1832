#pragma once

#include <QApplication>
#include <QTest>
#include <cmath>

#include "plot/graph_widget.hpp"
#include "ui/shot.hpp"
#include "ui/waiting.hpp"

namespace velmora::test {

/// The pixel of a value of the abscissa, at a part of the height from the top.
inline QPoint PlaceIn(const GraphWidget& plot, double x, double part) {
  return {static_cast<int>(std::lround(plot.xAxis->coordToPixel(x))),
          plot.axisRect()->top() + static_cast<int>(part * plot.axisRect()->height())};
}

/// Drags with the left button.
inline void DragIn(GraphWidget& plot, QPoint from, QPoint to) {
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
inline void PressIn(GraphWidget& plot, Qt::Key key, Qt::KeyboardModifiers held = {}) {
  QTest::keyClick(&plot, key, held);
  QApplication::processEvents();
}

}  // namespace velmora::test
