#include "ui/story.hpp"

namespace velmora::test {
namespace {

/// Events that were recorded in the graph, on the ways on which they could be lost.
struct UnsavedEventsTest : Story {
  /// The stack of graphs in its window.
  QWidget& OpenGraph() {
    person_.When("frmGraph2Choose", [](QWidget* dialog) { Person::Press(dialog, "All"); });
    person_.When("frmGraph2Choose", [](QWidget* dialog) { Person::Press(dialog, "OK"); });
    Choose("Select Channels for Multiaxis Graph");
    for (QWidget* widget : QApplication::allWidgets()) {
      if (widget->isVisible() && widget->inherits("velmora::StackWidget")) {
        return *widget;
      }
    }
    throw std::runtime_error("the graph does not open");
  }
  void RecordOne() {
    QWidget& plot = OpenGraph();
    const QPoint middle = plot.rect().center();
    QTest::mouseClick(&plot, Qt::LeftButton, {}, middle);
    QTest::keyClick(&plot, Qt::Key_2);
    person_.When("Start Onset/Event Recording", [](QWidget* box) { Person::Press(box, "No"); });
    QTest::keyClick(&plot, Qt::Key_F9);
    person_.Work();
    QTest::mouseClick(&plot, Qt::RightButton, {}, middle);
    QApplication::processEvents();
  }
  EventMemory& Events() { return window_->State().events; }
  void AnswerWith(const char* button) {
    person_.When("Events Not Saved", [button](QWidget* box) { Person::Press(box, button); });
  }
};

TEST_F(UnsavedEventsTest, TheProgramAndAnotherFileAskAndCancelKeepsThem) {
  OpenWalkAsExpert();
  RecordOne();
  ASSERT_TRUE(Events().EventsUnsaved);
  const double on = Events().ChannelEvents.at(0)[1].on;
  EXPECT_NEAR(on, 1.5, 0.001);  // a quarter of six seconds

  AnswerWith("Cancel");
  window_->close();
  person_.Work();
  EXPECT_TRUE(window_->isVisible());
  EXPECT_EQ(Events().ChannelEvents.at(0)[1].on, on);

  AnswerWith("Cancel");
  DoubleClickFile("walk.vmb");
  EXPECT_EQ(Events().NEvents(), 1);
  EXPECT_NE(window_->State().view, nullptr);

  AnswerWith("No");
  window_->close();
  person_.Work();
  EXPECT_TRUE(WaitFor([this] { return !window_->isVisible(); }));
}

}  // namespace
}  // namespace velmora::test
