// The X-Y plot's window as a person uses it. With VELMORA_SCREENSHOTS set to a directory it leaves pictures
// of what it saw there.
#include "ui/graph/xy_window.hpp"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <cmath>

#include "plot/draw_picture.hpp"
#include "support/command_test.hpp"
#include "ui/person.hpp"
#include "ui/plot_mouse.hpp"

namespace velmora::ui {
namespace {

/// A stride of 111 samples at 100 Hz, hip and knee on a circle about (10, 30) of 20 degrees,
/// counter-clockwise from the right.
struct XYWindowTest : test::FileTest {
  QPointer<ViewWindow> open;
  XYWindow* window = nullptr;

  void SetUp() override {
    workbench.desktop.draw = DrawPicture;
    test::Samples hip;
    test::Samples knee;
    for (int i = 0; i <= 110; ++i) {
      hip.push_back(static_cast<float>(10 + 20 * std::cos(i * 2 * M_PI / 111)));
      knee.push_back(static_cast<float>(30 + 20 * std::sin(i * 2 * M_PI / 111)));
    }
    test::SetChannels(trial, {hip, knee}, 100.0);
    for (const std::size_t c : {1UL, 2UL}) {
      trial.ChanLabel[c] = c == 1 ? "Hip" : "Knee";
      trial.ChanUnits[c] = "deg";
    }
    trial.TrialName = trial.TrialTitle = "Stride";
    SetCursors(1, 61);
    workbench.DataDir = directory.Path("");
    AnswerForm({{"comX", "00: Hip"}, {"chkTime", "true"}});
    Run("graph.xy");
    ASSERT_NE(workbench.view, nullptr);
    open = MakeViewWindow(
        workbench, [this](const Command& command) { RunCommand(workbench, command); }, nullptr);
    window = qobject_cast<XYWindow*>(open);
    ASSERT_NE(window, nullptr);
    window->ShowGraph();
    ASSERT_TRUE(test::WaitForWindowExposed(window));
    window->activateWindow();
    ASSERT_TRUE(test::WaitForWindowActive(window));
  }
  void TearDown() override { delete open; }

  XYView& View() { return OpenXYView(workbench); }
  GraphWidget& Plot() { return window->Plot(); }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) { test::PressIn(Plot(), key, held); }
  void Press(const char* button) {
    QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
    QApplication::processEvents();
  }
  void Choose(const char* entry) { test::ChooseIn(*window, entry); }
  [[nodiscard]] QPoint Place(double x, double y) {
    return {static_cast<int>(std::lround(Plot().xAxis->coordToPixel(x))),
            static_cast<int>(std::lround(Plot().yAxis->coordToPixel(y)))};
  }
  void Resize(int width, int height) {
    window->resize(width, height);
    ASSERT_TRUE(test::WaitFor([&] { return window->size() == QSize(width, height); }));
    QApplication::processEvents();
  }
  void ExpectEqualScales(const char* when) {
    const double across = Plot().xAxis->coordToPixel(1) - Plot().xAxis->coordToPixel(0);
    const double up = Plot().yAxis->coordToPixel(0) - Plot().yAxis->coordToPixel(1);
    EXPECT_NEAR(across / up, 1, 1e-9) << when;
  }
  void Shot(const char* name) { test::Shot(*window, name); }
};

TEST_F(XYWindowTest, ALoopIsLookedAtInAnyWindow) {
  ExpectEqualScales("opened");
  Shot("xy");
  Resize(1500, 500);
  ExpectEqualScales("wide");
  Choose("xy.ellipse");
  Shot("xy-wide");
  Resize(600, 900);
  ExpectEqualScales("tall");
  Choose("background.white");
  Shot("xy-tall");

  // The wheel zooms both axes at the pointer; a double click shows all again.
  const QPoint at = Place(10, 50);
  const double wide = Plot().xAxis->range().size();
  QWheelEvent wheel(at, Plot().mapToGlobal(at), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&Plot(), &wheel);
  QApplication::processEvents();
  ExpectEqualScales("zoomed");
  EXPECT_NEAR(Plot().xAxis->range().size(), wide / 1.25, wide * 0.01);
  EXPECT_NEAR(Plot().yAxis->pixelToCoord(at.y()), 50, wide * 0.01);
  const double left = Plot().xAxis->range().lower;
  Key(Qt::Key_Right);
  EXPECT_GT(Plot().xAxis->range().lower, left);
  const double bottom = Plot().yAxis->range().lower;
  Key(Qt::Key_Up);
  EXPECT_GT(Plot().yAxis->range().lower, bottom);
  QTest::mouseDClick(&Plot(), Qt::LeftButton, {}, Place(10, 50));
  QApplication::processEvents();
  EXPECT_NEAR(Plot().xAxis->range().size(), wide, 1e-6);

  Choose("xy.equal-scales");
  const double across = Plot().xAxis->coordToPixel(1) - Plot().xAxis->coordToPixel(0);
  EXPECT_GT(std::abs(across + Plot().yAxis->coordToPixel(1) - Plot().yAxis->coordToPixel(0)), 0.5);
}

TEST_F(XYWindowTest, AClickTellsTheSampleAndItsTime) {
  auto* place = window->findChild<QLabel*>("place");
  QTest::mouseClick(&Plot(), Qt::LeftButton, {}, Place(-10, 30) + QPoint(3, 0));
  QApplication::processEvents();
  const std::string text = place->text().toStdString();
  EXPECT_TRUE(text.starts_with("n = 56, 0.550 s: ") || text.starts_with("n = 57, 0.560 s: ")) << text;
  EXPECT_EQ(View().Drawing().Points.back().text, text);
  Shot("xy-picked");
  Key(Qt::Key_Escape);
  EXPECT_EQ(place->text(), "");
  EXPECT_FALSE(View().PickedSample().has_value());

  // The stretch between the cursors is the upper half of the circle and a little more.
  Key(Qt::Key_W);
  EXPECT_EQ(window->findChild<QPushButton*>("cmdWindow")->text(), "&Full");
  EXPECT_GT(View().Drawing().Ordinate.Minimum, 20);
  Press("cmdWindow");
  EXPECT_LT(View().Drawing().Ordinate.Minimum, 12);

  // A zoom area, drawn with the mouse.
  Press("optZoom");
  test::DragIn(Plot(), Place(0, 40), Place(20, 20));
  EXPECT_NEAR(View().Drawing().Abscissa.Minimum, 0, 0.5);
  EXPECT_NEAR(View().Drawing().Ordinate.Maximum, 40, 0.5);
  ExpectEqualScales("zoom area");
  Key(Qt::Key_Escape);
  EXPECT_EQ(View().Drawing().Track, TrackMode::None);
}

TEST_F(XYWindowTest, PicturesTablesAndOtherChannels) {
  const std::string svg = directory.Path("loop.svg");
  questions.fileAnswers.push_back({svg});
  QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  QApplication::processEvents();
  const std::string drawn = test::ReadFile(svg);
  for (const char* text : {">Hip (deg)</text>", ">Start</text>", ">End</text>", ">X-Y Plot of Stride<"}) {
    EXPECT_NE(drawn.find(text), std::string::npos) << text;
  }
  QTest::keyClick(window, Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(QApplication::clipboard()->image().isNull());

  std::string title;
  questions.formAnswers.emplace_back([&title](Form& form) {
    title = form.Tables().front().title;
    return std::string("Exit");
  });
  Key(Qt::Key_T);
  EXPECT_NE(title.find("Against Hip"), std::string::npos) << title;

  AnswerForm({{"comX", "Time"}, {"chkTime", "false"}});
  Press("cmdSelect");
  EXPECT_EQ(View().Drawing().Abscissa.Caption, "Time (s)");
  EXPECT_NEAR(View().Drawing().Abscissa.Maximum, 1.1, 0.1);
  Shot("xy-time");

  // Erased elsewhere: the window goes with its last channel.
  window->Rest();
  questions.boxAnswers = {Button::Yes};
  RunPicking("channel.erase", {2});
  window->Refresh();
  EXPECT_TRUE(test::WaitFor([this] { return open == nullptr || !open->isVisible(); }));
  EXPECT_EQ(workbench.view, nullptr);
}

}  // namespace
}  // namespace velmora::ui
