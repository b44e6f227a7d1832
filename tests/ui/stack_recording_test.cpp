#include "graph/multi/multi_view.hpp"
#include "graph/threshold_lines.hpp"
#include "plot/draw_picture.hpp"
#include "sample_trials.hpp"
#include "support/recorded_person.hpp"
#include "ui/multi_window_person.hpp"
#include "ui/person.hpp"

namespace velmora::test {
namespace {

/// What a person does at the stack of graphs with the mouse is written down, and repeats.
struct StackRecording : RecordedPerson {
  QPointer<ui::MultiWindow> graphs;

  void SetUp() override {
    RecordedPerson::SetUp();
    WriteTrialFile(input, [](Trial& trial) { examples::MakeEmgBursts(trial); });
    Load();
    person.FillForm({{"channels 1", "true"}, {"channels 2", "true"}, {"channels 3", "true"}}, "OK");
    Do("graph.multi");
    ASSERT_NE(workbench.view, nullptr);
    graphs = qobject_cast<ui::MultiWindow*>(ui::MakeViewWindow(
        workbench, [this](const Command& command) { RunCommand(workbench, command); }, nullptr));
    ASSERT_NE(graphs, nullptr);
    graphs->resize(1200, 800);
    graphs->ShowGraph();
    ASSERT_TRUE(test::WaitFor([this] { return graphs->isVisible() && !Plot().ShownLanes().empty(); }));
    QApplication::processEvents();
  }
  void TearDown() override { delete graphs; }
  StackWidget& Plot() { return graphs->Plot(); }
  MultiView& View() { return OpenMultiView(workbench); }
  EventMemory& Events() { return workbench.events; }
  void Drag(int graph, double from, double to, double part = 0.7) {
    DragIn(Plot(), PlaceIn(Plot(), graph, from, part), PlaceIn(Plot(), graph, to, part));
  }
  void Mouse(int graph, double x, Qt::MouseButton button) {
    QTest::mouseClick(&Plot(), button, {}, PlaceIn(Plot(), graph, x, 0.4));
    QApplication::processEvents();
  }
  void Choose(const char* id) { ChooseIn(*graphs, id); }
  QPoint Line(int graph, double x) {
    return PlaceOfValue(Plot(), graph, x, ThresholdLineOf(View().GraphAt(graph))->YPosition);
  }
};

TEST_F(StackRecording, GesturesAtTheStackRepeatFromTheHistory) {
  Mouse(1, 3.0, Qt::LeftButton);
  PressIn(Plot(), Qt::Key_2);
  Drag(2, View().CommonCursors()[0], 0.1);
  Drag(3, View().CommonCursors()[1], 0.7);
  person.inputAnswers = {"4"};
  person.PickChannels({1, 2, 3});
  Choose("threshold.calculate");
  Choose("grid.thresholds");
  const double calculated = workbench.thresholds.ChanThreshold[1];
  // A click on a line asks nothing as long as it stands at the threshold; Cancel takes nothing.
  const QPoint line = Line(1, 5.0);
  QTest::mouseClick(&Plot(), Qt::LeftButton, {}, line);
  DragIn(Plot(), line, line - QPoint(0, 12));
  EXPECT_EQ(workbench.thresholds.ChanThreshold[1], calculated);
  person.boxAnswers = {Button::Cancel, Button::Yes};
  PressIn(Plot(), Qt::Key_T);
  EXPECT_EQ(workbench.thresholds.ChanThreshold[1], calculated);
  QTest::mouseClick(&Plot(), Qt::LeftButton, {}, Line(1, 5.0));
  EXPECT_EQ(person.boxes.back().title, "Change Threshold.");
  const double dragged = workbench.thresholds.ChanThreshold[1];
  ASSERT_GT(dragged, calculated);
  // A record by the right button, one by a double click on one graph, with a mark that was moved.
  person.boxAnswers = {Button::Yes};
  PressIn(Plot(), Qt::Key_F9);
  Drag(1, View().CommonCursors()[1], 2.4);
  Drag(1, View().CommonCursors()[0], 0.75);
  PressIn(Plot(), Qt::Key_O);
  Mouse(2, 3.0, Qt::RightButton);
  PressIn(Plot(), Qt::Key_Insert);
  Drag(3, View().CommonCursors()[1], 4.2);
  Drag(3, View().CommonCursors()[0], 2.5);
  PressIn(Plot(), Qt::Key_O);
  const GraphCursor offset = View().GraphAt(3).Cursors.back();
  ASSERT_EQ(offset.Kind, CursorKind::Offset);
  Drag(3, offset.XPosition, 4.1, 0.3);
  QTest::mouseDClick(&Plot(), Qt::LeftButton, {}, PlaceIn(Plot(), 3, 3.0, 0.4));
  QApplication::processEvents();
  ASSERT_EQ(Events().NEvents(), 2);
  EXPECT_NEAR(Events().ChannelEvents[1][3].off, 4.1, 0.01);
  EXPECT_EQ(Events().ChannelEvents[1][1].on, EventTimes::kNone);
  person.fileAnswers.push_back({directory.Path("walk.vmv")});
  PressIn(Plot(), Qt::Key_F10);
  const std::string table = ReadFile(directory.Path("walk.vmv"));
  EXPECT_NE(table.find("Footswitch"), std::string::npos);
  ASSERT_TRUE(person.boxAnswers.empty());

  const auto again = Replay();
  EXPECT_EQ(ReadFile(directory.Path("again/walk.vmv")), table);
  EXPECT_EQ(again->State().thresholds.ChanThreshold[1], static_cast<float>(dragged));
}

}  // namespace
}  // namespace velmora::test
