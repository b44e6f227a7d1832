// The graph under the mouse, driven by events as a person makes them.
#include "plot/graph_widget.hpp"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include "plot/draw_picture.hpp"
#include "support/trials.hpp"
#include "ui/waiting.hpp"

namespace velmora::test {
namespace {

/// Two seconds at 100 Hz in -1..1, in an axis rectangle of 10 pixels a sample or so. The graph takes
/// what the person does as a view would.
struct GraphWidgetTest : testing::Test {
  Trial trial;
  Graph graph;
  GraphWidget widget;
  int clicks = 0;
  int doubleClicks = 0;

  void SetUp() override {
    SetChannels(trial, NoiseChannels(2, 201));
    graph.PlotXY(trial);
    for (auto& plot : graph.Plots) {
      plot.Visible = true;
    }
    graph.AutoScaleAbscissa();
    graph.Ordinate.SetMinMax(-1, 1);
    widget.SetGraph(&graph);
    QObject::connect(&widget, &GraphWidget::rangeChosen, [this](const GraphRange& range) {
      graph.Abscissa.SetMinMax(range.left, range.right);
      graph.Ordinate.SetMinMax(range.bottom, range.top);
      Draw();
    });
    QObject::connect(&widget, &GraphWidget::cursorDragged, [this](int cursor, double x) {
      graph.Cursors[static_cast<std::size_t>(cursor - 1)].XPosition = x;
    });
    QObject::connect(&widget, &GraphWidget::crosshairDragged, [this](int cursor, double y) {
      graph.Cursors[static_cast<std::size_t>(cursor - 1)].YPosition = y;
    });
    QObject::connect(&widget, &GraphWidget::clicked, [this] { ++clicks; });
    QObject::connect(&widget, &GraphWidget::doubleClicked, [this] { ++doubleClicks; });
    widget.resize(1000, 600);
    widget.show();
    ASSERT_TRUE(test::WaitForWindowExposed(&widget));
    Draw();
  }

  void Draw() {
    widget.Redraw();
    QApplication::processEvents();
  }
  [[nodiscard]] QPoint Place(double x, double y) const {
    return {static_cast<int>(std::lround(widget.xAxis->coordToPixel(x))),
            static_cast<int>(std::lround(widget.yAxis->coordToPixel(y)))};
  }
  void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(&widget, button, {}, from);
    for (const double part : {0.3, 0.7, 1.0}) {
      const QPointF at = QPointF(from) + part * QPointF(to - from);
      QMouseEvent move(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, button, {});
      QApplication::sendEvent(&widget, &move);
    }
    QTest::mouseRelease(&widget, button, {}, to);
  }
  void Wheel(QPoint at, int notches, Qt::KeyboardModifiers held = {}) {
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, held,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &wheel);
  }
  void ExpectRange(double left, double right, double bottom, double top) {
    const double pixel = (right - left) / 900 * 1.5;
    EXPECT_NEAR(graph.Abscissa.Minimum, left, pixel);
    EXPECT_NEAR(graph.Abscissa.Maximum, right, pixel);
    EXPECT_NEAR(graph.Ordinate.Minimum, bottom, 0.01);
    EXPECT_NEAR(graph.Ordinate.Maximum, top, 0.01);
  }
};

// A circle of a result is one in any window, and after any zoom: as wide as it is high.
TEST_F(GraphWidgetTest, EqualScalesHoldInAnyWindowAndPicture) {
  graph.EqualScales = true;
  graph.Abscissa.SetMinMax(-23, 25);
  graph.Ordinate.SetMinMax(-30, 30);
  graph.Ellipses = {{.x = 1, .y = 5, .major = 20, .minor = 20, .colour = 6}};
  graph.Plots[0].Visible = graph.Plots[1].Visible = false;
  const auto expectEqual = [this](QSize size) {
    const double across = widget.xAxis->coordToPixel(1) - widget.xAxis->coordToPixel(0);
    const double up = widget.yAxis->coordToPixel(0) - widget.yAxis->coordToPixel(1);
    EXPECT_NEAR(across / up, 1, 1e-9) << size.width();
    EXPECT_LE(widget.yAxis->range().lower, graph.Ordinate.Minimum + 1e-9) << size.width();
    EXPECT_GE(widget.xAxis->range().upper, graph.Abscissa.Maximum - 1e-9) << size.width();
  };
  const auto expectCircle = [](const QImage& picture, QSize size) {
    QRect circle;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const QColor at = picture.pixelColor(x, y);
        if (at.blue() > at.red() + 60 && at.blue() > at.green() + 30) {
          circle |= QRect(x, y, 1, 1);
        }
      }
    }
    EXPECT_GT(circle.width(), 60) << size.width();
    EXPECT_NEAR(circle.width(), circle.height(), 2) << size.width();
  };
  for (const QSize size : {QSize(1000, 400), QSize(420, 900), QSize(601, 599)}) {
    widget.resize(size);
    Draw();
    expectEqual(size);
    expectCircle(widget.grab().toImage(), size);
    const std::string png = DrawPicture({.graph = graph, .width = size.width(), .height = size.height()});
    expectCircle(QImage::fromData(QByteArray::fromStdString(png)), size);
  }
}

TEST_F(GraphWidgetTest, TheWheelZoomsAtThePointerAndPans) {
  Wheel(Place(0.5, 0.0), 2);  // 1.25 squared
  ExpectRange(0.5 - 0.5 / 1.5625, 0.5 + 1.5 / 1.5625, -1, 1);
  Wheel(Place(0.5, 0.0), -2);
  ExpectRange(0, 2, -1, 1);
  Wheel(Place(0.5, 0.5), 1, Qt::ShiftModifier);
  ExpectRange(0, 2, 0.5 - 1.5 / 1.25, 0.5 + 0.5 / 1.25);
  Wheel(Place(0.5, 0.5), -1, Qt::ShiftModifier);
  Wheel(Place(1.0, 0.0), -1, Qt::ControlModifier);  // a tenth of the width forward
  ExpectRange(0.2, 2.2, -1, 1);
}

TEST_F(GraphWidgetTest, DraggingFollowsTheMode) {
  Drag(Place(1.0, 0.0), Place(0.5, 0.5));  // no mode
  ExpectRange(0, 2, -1, 1);
  Drag(Place(1.0, 0.0), Place(0.5, 0.5), Qt::MiddleButton);
  ExpectRange(0.5, 2.5, -1.5, 0.5);
  graph.Track = TrackMode::PanX;
  Drag(Place(1.5, 0.0), Place(2.0, 0.4));
  ExpectRange(0, 2, -1.5, 0.5);
  graph.Track = TrackMode::PanY;
  Drag(Place(1.5, 0.0), Place(1.0, -0.5));
  ExpectRange(0, 2, -1, 1);
  graph.Track = TrackMode::ZoomArea;
  Drag(Place(1.5, 0.5), Place(0.5, -0.25));
  ExpectRange(0.5, 1.5, -0.25, 0.5);
  Drag(Place(0.6, 0.1), Place(0.6, 0.1) + QPoint(2, 1));  // too small to be meant
  ExpectRange(0.5, 1.5, -0.25, 0.5);

  QTest::mousePress(&widget, Qt::LeftButton, {}, Place(0.6, 0.1));
  EXPECT_TRUE(widget.CancelGesture());
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, Place(1.2, 0.4));
  ExpectRange(0.5, 1.5, -0.25, 0.5);
  EXPECT_FALSE(widget.CancelGesture());

  QTest::mouseDClick(&widget, Qt::LeftButton, {}, Place(1.0, 0.0));
  EXPECT_EQ(doubleClicks, 1);
  QTest::mouseClick(&widget, Qt::LeftButton, {}, Place(1.0, 0.0));
  EXPECT_EQ(clicks, 2);  // the small drag was one
}

TEST_F(GraphWidgetTest, CursorsAreDraggedByLineHandleAndCrosshair) {
  GraphCursor cursor{.XPosition = 0.5};
  graph.Cursors = {cursor, cursor};
  graph.Cursors[1].XPosition = 1.5;
  graph.Cursors[1].Color = kRed;
  graph.Track = TrackMode::DragCursors;
  Draw();
  const QImage before = widget.grab().toImage();
  Drag(Place(0.5, -0.5), Place(0.75, -0.5));
  EXPECT_NEAR(graph.Cursors[0].XPosition, 0.75, 0.003);
  Drag({Place(1.5, 0).x() + 5, widget.axisRect()->top() + 3}, Place(1.25, 0.9));  // by its handle
  EXPECT_NEAR(graph.Cursors[1].XPosition, 1.25, 0.003);
  const QImage after = widget.grab().toImage();
  const QPoint old = Place(0.5, -0.9);
  const QPoint now = Place(0.75, -0.9);
  EXPECT_EQ(before.pixelColor(old), QColor(Qt::yellow));
  EXPECT_EQ(after.pixelColor(now), QColor(Qt::yellow));
  EXPECT_NE(after.pixelColor(old), QColor(Qt::yellow));

  Drag(Place(1.0, 0.2), Place(0.9, 0.2));  // beside the cursors: pans
  ExpectRange(0.1, 2.1, -1, 1);
  graph.Cursors[1].Crosshair = CrosshairStyle::Both;
  Draw();
  Drag(Place(1.9, 0.0), Place(1.9, 0.6));
  EXPECT_NEAR(graph.Cursors[1].YPosition, 0.6, 0.01);
}

TEST_F(GraphWidgetTest, LogarithmicAxesZoomByFactors) {
  graph.Abscissa.Log = true;
  graph.Abscissa.SetMinMax(0.01, 1);
  Draw();
  Wheel(Place(0.1, 0.0), 1);
  EXPECT_NEAR(std::log10(graph.Abscissa.Minimum), -1 - 1 / 1.25, 0.01);
  EXPECT_NEAR(std::log10(graph.Abscissa.Maximum), -1 + 1 / 1.25, 0.01);
}

}  // namespace
}  // namespace velmora::test
