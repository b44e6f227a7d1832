// The window of the multi-axis graph as a person uses it. With VELMORA_SCREENSHOTS set to a directory it
// leaves pictures of what it saw there.
#include <QPushButton>
#include <QScrollBar>

#include "ui/multi_window_person.hpp"

namespace velmora::ui {
namespace {

TEST_F(MultiWindowTest, ACursorIsDraggedOnTheThirdOfEightGraphsAndMovesOnAll) {
  Open(8);
  Key(Qt::Key_2);
  EXPECT_EQ(questions.boxes.back().title, "Click on a Graph");
  EXPECT_EQ(View().Cursors(), 0);
  Click(Place(3, 1.0));
  EXPECT_EQ(View().Selected(), 3);
  Key(Qt::Key_2);
  ASSERT_EQ(View().Cursors(), 2);
  Drag(Place(3, View().CommonCursors()[0]), Place(3, 1.5));
  for (const Graph& graph : View().Graphs()) {
    EXPECT_NEAR(graph.Cursors[0].XPosition, 1.5, 0.01);
  }
  EXPECT_EQ(trial.CursorLo, View().SampleOf(1));
  const std::int32_t before = View().SampleOf(1);
  Key(Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(View().SampleOf(1), before + 100);
  Key(Qt::Key_Left, Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
  EXPECT_EQ(View().SampleOf(1), before + 99);
  EXPECT_EQ(Sidebar().at(1), "Cursor#1   Yellow:");
  EXPECT_EQ(Sidebar().at(3), QString::fromStdString("      n =  " + std::to_string(before + 99)));
  Key(Qt::Key_8);  // the bar's own
  EXPECT_EQ(View().Lead().Track, TrackMode::ZoomArea);
  EXPECT_TRUE(window->findChild<QPushButton*>("optZoom")->isChecked());
  Key(Qt::Key_Escape);
  EXPECT_TRUE(window->findChild<QPushButton*>("optCursor")->isChecked());
  test::Shot(*window, "multi-8");
}

TEST_F(MultiWindowTest, SixtyFourGraphsScrollAndOneIsShownAlone) {
  questions.boxAnswers = {Button::OK};
  Open(64);
  auto* bar = window->findChild<QScrollBar*>("lanes");
  ASSERT_TRUE(bar->isVisible());
  const int fits = Plot().FittingLanes();
  EXPECT_LT(fits, 64);
  EXPECT_EQ(Plot().LaneOf(64), nullptr);
  test::Shot(*window, "multi-64");
  bar->setValue(bar->maximum());
  QApplication::processEvents();
  ASSERT_NE(Plot().LaneOf(64), nullptr);
  Click(Place(64, 1.0));
  EXPECT_EQ(View().Selected(), 64);
  const QPoint label = Place(64, 0.0) - QPoint(20, 0);
  QTest::mouseDClick(&Plot(), Qt::LeftButton, {}, label);
  QApplication::processEvents();
  EXPECT_EQ(Plot().Lanes(), 1);
  EXPECT_FALSE(bar->isVisible());
  QTest::mouseDClick(&Plot(), Qt::LeftButton, {}, Place(64, 0.0) - QPoint(20, 0));
  QApplication::processEvents();
  EXPECT_EQ(Plot().Lanes(), 64);
}

TEST_F(MultiWindowTest, AWheelZoomsTheTimeOfAllAndTheOrdinateOfOne) {
  Open(3);
  const auto wheel = [this](QPoint at, Qt::KeyboardModifiers held) {
    QWheelEvent event(QPointF(at), Plot().mapToGlobal(QPointF(at)), {}, {0, 120}, Qt::NoButton, held,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Plot(), &event);
    QApplication::processEvents();
  };
  wheel(Place(2, 2.0), {});
  EXPECT_NEAR(View().GraphAt(1).Abscissa.Maximum - View().GraphAt(1).Abscissa.Minimum, 4.0 / 1.25, 1e-6);
  EXPECT_EQ(View().GraphAt(3).Abscissa.Minimum, View().GraphAt(1).Abscissa.Minimum);
  const Axis before = View().GraphAt(1).Ordinate;
  const Axis zoomed = View().GraphAt(2).Ordinate;
  wheel(Place(2, 2.0), Qt::ShiftModifier);
  EXPECT_EQ(View().GraphAt(1).Ordinate.Maximum, before.Maximum);
  EXPECT_LT(View().GraphAt(2).Ordinate.Maximum, zoomed.Maximum);
  auto* pan = window->findChild<QAction*>("zoom.pan-x");
  pan->trigger();
  EXPECT_EQ(questions.boxes.back().title, "Click on a Graph");
  Click(Place(1, 2.0));
  pan->trigger();
  EXPECT_TRUE(pan->isChecked());
  const double start = View().Lead().Abscissa.Minimum;
  Drag(Place(1, 2.0), Place(1, 1.8));
  EXPECT_NEAR(View().Lead().Abscissa.Minimum, start + 0.2, 0.01);
  window->findChild<QAction*>("scale.same")->trigger();
  EXPECT_TRUE(window->findChild<QAction*>("scale.same")->isChecked());
  EXPECT_FALSE(window->findChild<QAction*>("scale.autoscale")->isChecked());
  window->findChild<QAction*>("value.maximums")->trigger();
  test::Shot(*window, "multi-values");
  window->close();
  EXPECT_EQ(workbench.view, nullptr);
}

}  // namespace
}  // namespace velmora::ui
