// The window of the multi-axis graph as a person uses it. With VELMORA_SCREENSHOTS set to a directory it leaves
// pictures of what it saw there.
#include "ui/graph/multi_window.hpp"

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <cmath>

#include "plot/draw_picture.hpp"
#include "plot/stack_widget.hpp"
#include "support/command_test.hpp"
#include "ui/shot.hpp"
#include "ui/waiting.hpp"

namespace velmora::ui {
namespace {

struct MultiWindowTest : test::FileTest {
  QPointer<ViewWindow> window;

  void Open(int channels, int samples = 2001) {
    workbench.desktop.draw = DrawPicture;
    std::vector<test::Samples> all(static_cast<std::size_t>(channels));
    for (int c = 0; c < channels; ++c) {
      for (int i = 0; i < samples; ++i) {
        const double burst = i > 600 + 10 * c && i < 1100 + 10 * c ? 1.0 : 0.15;
        all[static_cast<std::size_t>(c)].push_back(
            static_cast<float>(burst * (c + 1) * std::sin(i * (0.31 + 0.05 * c)) * std::cos(i * 0.077)));
      }
    }
    test::SetChannels(trial, all, 500.0);
    for (int c = 1; c <= channels; ++c) {
      trial.ChanLabel[c] = "EMG " + std::to_string(c);
      trial.ChanUnits[c] = "mV";
      trial.ChanColour[c] = DefaultColour(c);
    }
    trial.TrialName = "squat";
    trial.TrialTitle = "Squat, 60 kg";
    questions.formAnswers.emplace_back([channels](Form& form) {
      for (int c = 1; c <= channels; ++c) {
        test::Type(form, {{"channels " + std::to_string(c), "true"}});
      }
      return std::string("OK");
    });
    Run("graph.multi");
    ASSERT_NE(workbench.view, nullptr);
    window = MakeViewWindow(
        workbench, [this](const Command& command) { RunCommand(workbench, command); }, nullptr);
    window->resize(1200, 800);
    window->ShowGraph();
    ASSERT_TRUE(test::WaitFor([this] { return window->isVisible() && !Plot().ShownLanes().empty(); }));
    QApplication::processEvents();
  }
  void TearDown() override {
    delete window;
    test::FileTest::TearDown();
  }

  [[nodiscard]] StackWidget& Plot() const { return qobject_cast<MultiWindow*>(window)->Plot(); }
  [[nodiscard]] MultiView& View() { return OpenMultiView(workbench); }
  /// The pixel of a value of the abscissa in the lane of a graph, at a part of its height from above.
  [[nodiscard]] QPoint Place(int graph, double x, double part = 0.5) const {
    const StackPlot::Shown* shown = Plot().LaneOf(graph);
    return {static_cast<int>(std::lround(shown->rect->axis(QCPAxis::atBottom)->coordToPixel(x))),
            shown->rect->top() + static_cast<int>(part * shown->rect->height())};
  }
  void Click(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(&Plot(), button, {}, at);
    QApplication::processEvents();
  }
  void Drag(QPoint from, QPoint to) {
    QTest::mousePress(&Plot(), Qt::LeftButton, {}, from);
    for (const double part : {0.5, 1.0}) {
      const QPointF at = QPointF(from) + part * QPointF(to - from);
      QMouseEvent move(QEvent::MouseMove, at, Plot().mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
      QApplication::sendEvent(&Plot(), &move);
    }
    QTest::mouseRelease(&Plot(), Qt::LeftButton, {}, to);
    QApplication::processEvents();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(&Plot(), key, held);
    QApplication::processEvents();
  }
  [[nodiscard]] QStringList Sidebar() const {
    QStringList lines;
    const auto* list = window->findChild<QListWidget*>("txtInfo");
    for (int k = 0; k < list->count(); ++k) {
      lines << list->item(k)->text();
    }
    return lines;
  }
};

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
