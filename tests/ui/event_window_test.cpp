// Thresholds, onsets and events in the window of the multi-axis graph. With VELMORA_SCREENSHOTS set to a
// directory it leaves pictures of what it saw there.
#include "events/event_files.hpp"
#include "graph/threshold_lines.hpp"
#include "ui/graph/event_table.hpp"
#include "ui/multi_window_person.hpp"
#include "ui/person.hpp"

namespace velmora::ui {
namespace {

struct EventWindowTest : MultiWindowTest {
  void Choose(const char* id) { test::ChooseIn(*window, id); }
  [[nodiscard]] bool Greyed(const char* id) const {
    return !window->findChild<QAction*>(QString::fromLatin1(id))->isEnabled();
  }
  void DragCursors(double from, double to) {
    Drag(Place(1, View().CommonCursors()[0], 0.7), Place(1, from, 0.7));
    Drag(Place(1, View().CommonCursors()[1], 0.7), Place(1, to, 0.7));
  }
  /// A stretch at rest, thresholds of it, and their lines.
  void MakeThresholds() {
    Click(Place(1, 2.0));
    Key(Qt::Key_2);
    DragCursors(0.05, 1.0);
    questions.inputAnswers = {"3"};
    questions.PickCancel();
    Choose("threshold.calculate");
    Choose("threshold.display");
  }
  [[nodiscard]] EventTable& Table() const { return *window->findChild<EventTable*>(); }
};

TEST_F(EventWindowTest, ThreeEventsAreRecordedAndLeavingIsCalledOff) {
  Open(3);
  for (const char* id : {"threshold.display", "threshold.sd-level", "threshold.save"}) {
    EXPECT_TRUE(Greyed(id)) << id;
  }
  MakeThresholds();
  EXPECT_FALSE(Greyed("threshold.sd-level"));
  EXPECT_TRUE(window->findChild<QAction*>("grid.thresholds")->isChecked());
  test::Shot(*window, "thresholds");
  questions.boxAnswers = {Button::No};
  Key(Qt::Key_F9);
  ASSERT_TRUE(workbench.events.EventTracking);
  EXPECT_TRUE(Table().isVisible());
  DragCursors(1.05, 2.6);
  Key(Qt::Key_O);
  // The offset of graph 1, the fifth of its list, is put where it belongs.
  const GraphCursor offset = View().GraphAt(1).Cursors.at(4);
  ASSERT_EQ(offset.Kind, CursorKind::Offset);
  Drag(Place(1, offset.XPosition, 0.3), Place(1, 2.2, 0.3));
  Click(Place(2, 3.0), Qt::RightButton);
  const EventRecord first = workbench.events.ChannelEvents.at(0);
  EXPECT_NEAR(first[1].off, 2.2, 0.01);
  EXPECT_NEAR(first[2].on, 1.22, 0.03);
  for (const double from : {2.7, 3.1}) {
    Key(Qt::Key_Insert);
    DragCursors(from, from + 0.3);
    Choose("cursor.remove-onsets");
    Click(Place(3, 3.5), Qt::RightButton);
  }
  ASSERT_EQ(workbench.events.NEvents(), 3);
  EXPECT_EQ(Table().topLevelItemCount(), 3);
  EXPECT_NEAR(workbench.events.ChannelEvents.at(2)[3].on, 3.1, 0.01);
  // Its lines fold away.
  const QStringList opened = Sidebar();
  EXPECT_TRUE(opened.at(0).endsWith("Event 3 of 3"));
  EXPECT_TRUE(opened.at(1).contains("Event:3 of3."));
  test::Shot(*window, "sidebar-events");
  const auto clickHead = [this] {
    auto* sidebar = window->findChild<QListWidget*>("txtInfo");
    QTest::mouseClick(sidebar->viewport(), Qt::LeftButton, {},
                      sidebar->visualItemRect(sidebar->item(0)).center());
    QApplication::processEvents();
  };
  clickHead();
  EXPECT_EQ(Sidebar().mid(1), opened.mid(4));
  test::Shot(*window, "sidebar-folded");
  clickHead();
  EXPECT_EQ(Sidebar(), opened);

  QTest::mouseClick(Table().viewport(), Qt::LeftButton, {},
                    Table().visualItemRect(Table().topLevelItem(0)).center());
  QApplication::processEvents();
  EXPECT_EQ(workbench.events.CurrentEvent, 1);
  EXPECT_EQ(Table().currentItem(), Table().topLevelItem(0));
  Key(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(workbench.events.CurrentEvent, 2);
  test::Shot(*window, "events");

  questions.boxAnswers = {Button::Cancel};
  window->close();
  QApplication::processEvents();
  ASSERT_TRUE(window != nullptr && window->isVisible());
  EXPECT_EQ(questions.boxes.back().title, "Events Not Saved");
  EXPECT_EQ(workbench.events.NEvents(), 3);
  questions.boxAnswers = {Button::Yes};
  questions.fileAnswers.push_back({directory.Path("squat.vmv")});
  const std::string table = ChannelEventsText(workbench);
  window->close();
  EXPECT_TRUE(test::WaitFor([this] { return window == nullptr; }));
  EXPECT_EQ(test::ReadFile(directory.Path("squat.vmv")), table);
  EXPECT_EQ(workbench.view, nullptr);
}

}  // namespace
}  // namespace velmora::ui
