// The windows of single channels as a person uses them. With VELMORA_SCREENSHOTS set to a directory it
// leaves pictures of what it saw there.
#include "ui/graph/one_channel_window.hpp"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>
#include <algorithm>

#include "core/trial/helpers.hpp"
#include "plot/draw_picture.hpp"
#include "support/command_test.hpp"
#include "ui/graph/channel_windows.hpp"
#include "ui/person.hpp"
#include "ui/plot_mouse.hpp"

namespace velmora::ui {
namespace {

/// Four seconds at 250 Hz: a wave that grows, from -80 to 96, and one from -3 to 3.
struct OneChannelWindowTest : test::FileTest {
  ChannelWindows windows{workbench, nullptr};

  void SetUp() override {
    workbench.desktop.draw = DrawPicture;
    Load(2, 1001);
    workbench.onShowChannel = [this](int channel) { windows.Open(channel); };
  }
  void Load(int channels, int samples) {
    test::Samples grows;
    test::Samples small;
    for (int i = 0; i < samples; ++i) {
      grows.push_back(i % 40 == 20 ? static_cast<float>(16 * (i / 160)) : -static_cast<float>(i / 12.5));
      small.push_back(i % 2 == 0 ? 3.0F : -3.0F);
    }
    std::vector<test::Samples> all = {grows, small};
    all.resize(static_cast<std::size_t>(channels));
    test::SetChannels(trial, all, 250.0);
    trial.ChanLabel[1] = "Knee angle";
    trial.ChanUnits[1] = "deg";
    trial.ChanLabel[2] = "Marker";
    trial.ChanUnits[2] = "";
    trial.TrialTitle = "Counter movement jump";
    workbench.DataDir = directory.Path("");
  }
  static std::vector<OneChannelWindow*> Open() {
    const auto shown = test::VisibleWindows<OneChannelWindow>();
    std::vector<OneChannelWindow*> open(shown.begin(), shown.end());
    std::sort(open.begin(), open.end(),
              [](const auto* a, const auto* b) { return a->Channel() < b->Channel(); });
    return open;
  }
  OneChannelWindow& Window(int channel) {
    ShowChannel(workbench, channel);
    OneChannelWindow* window = nullptr;
    for (OneChannelWindow* open : Open()) {
      window = open->Channel() == channel ? open : window;
    }
    if (window == nullptr || !test::WaitForWindowExposed(window)) {
      throw std::runtime_error("the window does not open");
    }
    return *window;
  }
  static void Choose(const OneChannelWindow& window, const char* caption) {
    Entry(window, caption)->trigger();
    QApplication::processEvents();
  }
  static QAction* Entry(const OneChannelWindow& window, const char* caption) {
    for (QAction* action : window.findChildren<QAction*>()) {
      if (action->text() == QString::fromUtf8(caption)) {
        return action;
      }
    }
    throw std::runtime_error(std::string("no entry ") + caption);
  }
  static void Key(OneChannelWindow& window, Qt::Key key, Qt::KeyboardModifiers held = {}) {
    test::PressIn(window.Plot(), key, held);
  }
  static QCPRange Times(OneChannelWindow& window) { return window.Plot().xAxis->range(); }
  static QCPRange Values(OneChannelWindow& window) { return window.Plot().yAxis->range(); }
  static void DoubleClick(OneChannelWindow& window) {
    QTest::mouseDClick(&window.Plot(), Qt::LeftButton, {}, test::PlaceIn(window.Plot(), 2.0, 0.5));
    QApplication::processEvents();
  }
};

TEST_F(OneChannelWindowTest, PansZoomsAndResetsByMenuMouseAndKeys) {
  OneChannelWindow& window = Window(1);
  EXPECT_EQ(window.windowTitle(), "Channel Knee angle (deg)");
  EXPECT_EQ(Times(window), QCPRange(0, 4));
  EXPECT_EQ(Values(window), QCPRange(-80, 96));
  EXPECT_EQ(window.Plot().xAxis->label(), "Time (s)");
  EXPECT_EQ(window.Plot().yAxis->label(), "Knee angle (deg)");
  test::Shot(window, "one-channel");

  Choose(window, "&Zoom mode");
  EXPECT_TRUE(Entry(window, "&Zoom mode")->isChecked());
  GraphWidget& plot = window.Plot();
  test::DragIn(plot, test::PlaceIn(plot, 1.0, 0.25), test::PlaceIn(plot, 3.0, 0.75));
  EXPECT_NEAR(Times(window).lower, 1.0, 0.01);
  EXPECT_NEAR(Times(window).upper, 3.0, 0.01);
  EXPECT_NEAR(Values(window).upper, 96 - 176 * 0.25, 1.0);
  test::Shot(window, "one-channel-zoomed");
  const QCPRange values = Values(window);
  Choose(window, "Pan &X only");
  EXPECT_FALSE(Entry(window, "&Zoom mode")->isChecked());
  test::DragIn(plot, test::PlaceIn(plot, 2.0, 0.5), test::PlaceIn(plot, 2.5, 0.9));
  EXPECT_NEAR(Times(window).lower, 0.5, 0.01);
  EXPECT_EQ(Values(window), values);
  Choose(window, "Pan &Y only");
  const QCPRange times = Times(window);
  test::DragIn(plot, test::PlaceIn(plot, 1.0, 0.5), test::PlaceIn(plot, 1.5, 0.75));
  EXPECT_EQ(Times(window), times);
  EXPECT_NEAR(Values(window).lower, values.lower + values.size() / 4, 1.0);
  Key(window, Qt::Key_R);
  EXPECT_EQ(Times(window), QCPRange(0, 4));
  EXPECT_EQ(Values(window), QCPRange(-80, 96));
  EXPECT_FALSE(Entry(window, "Pan &Y only")->isChecked());

  questions.boxAnswers = {Button::Yes, Button::No, Button::Cancel};
  DoubleClick(window);
  EXPECT_EQ(questions.boxes.back().title, "Pan, Zoom or Reset?");
  EXPECT_TRUE(Entry(window, "&Pan X && Y")->isChecked());
  test::DragIn(plot, test::PlaceIn(plot, 1.0, 0.5), test::PlaceIn(plot, 1.5, 0.75));
  EXPECT_EQ(Times(window), QCPRange(0, 4));  // it is all there is
  EXPECT_NEAR(Values(window).lower, -80 + 44, 1.0);
  DoubleClick(window);
  EXPECT_TRUE(Entry(window, "&Zoom mode")->isChecked());
  DoubleClick(window);
  EXPECT_FALSE(Entry(window, "&Zoom mode")->isChecked());
  EXPECT_EQ(Values(window), QCPRange(-80, 96));

  Choose(window, "&White");
  EXPECT_TRUE(Entry(window, "&White")->isChecked());
  EXPECT_FALSE(Entry(window, "&Black")->isChecked());
  test::Shot(window, "one-channel-white");
  Key(window, Qt::Key_Question, Qt::ShiftModifier);
  EXPECT_EQ(questions.boxes.back().title, "Keyboard Functions");
  EXPECT_TRUE(questions.boxes.back().text.ends_with("F7  = full height"));
  Key(window, Qt::Key_Z, Qt::AltModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_X);
  EXPECT_TRUE(Entry(window, "Pan &X only")->isChecked());
  Key(window, Qt::Key_Escape);
  EXPECT_FALSE(Entry(window, "Pan &X only")->isChecked());
  questions.fileAnswers.push_back({directory.Path("knee.svg")});
  Choose(window, "Save p&icture...");
  EXPECT_TRUE(test::ReadFile(directory.Path("knee.svg")).find("Knee angle (deg)") != std::string::npos);
}

TEST_F(OneChannelWindowTest, FollowsTheTrialAndGoesWithItsChannel) {
  OneChannelWindow& knee = Window(1);
  EXPECT_EQ(Window(2).windowTitle(), "Channel Marker");
  EXPECT_EQ(&Window(1), &knee);
  Choose(knee, "&Zoom mode");
  test::DragIn(knee.Plot(), test::PlaceIn(knee.Plot(), 1.0, 0.25), test::PlaceIn(knee.Plot(), 3.0, 0.75));
  const QCPRange zoomed = Times(knee);

  // The stretch stays where it is while the samples are others.
  questions.PickChannels({1});
  Run("math.absolute");
  trial.ChanLabel[1] = "Knee";
  windows.Refresh();
  EXPECT_EQ(Times(knee), zoomed);
  EXPECT_EQ(Values(knee), QCPRange(0, 96));
  EXPECT_EQ(knee.windowTitle(), "Channel Knee (deg)");

  // It is drawn while a command has the samples away.
  QApplication::processEvents();
  const QImage before = knee.Plot().grab().toImage();
  trial.DiscardData();
  knee.Plot().Redraw();
  QApplication::processEvents();
  EXPECT_EQ(knee.Plot().grab().toImage(), before);

  Load(2, 476);
  windows.Refresh();
  EXPECT_EQ(Times(knee), QCPRange(0, 1.9));
  EXPECT_EQ(Values(knee), QCPRange(-38, 32));
  EXPECT_EQ(Open().size(), 2U);

  Load(1, 476);
  windows.Refresh();
  ASSERT_EQ(Open().size(), 1U);
  EXPECT_EQ(Open()[0], &knee);
  trial.DiscardData();
  windows.Refresh();
  EXPECT_TRUE(Open().empty());
  ShowChannel(workbench, 1);
  EXPECT_EQ(questions.boxes.back().text, "There is no channel 1.");
  EXPECT_TRUE(Open().empty());
}

}  // namespace
}  // namespace velmora::ui
