#include "graph/multi/multi_view.hpp"
#include "graph/threshold_lines.hpp"
#include "plot/draw_picture.hpp"
#include "run/history/history.hpp"
#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/recipe_run.hpp"
#include "sample_trials.hpp"
#include "support/command_test.hpp"
#include "ui/multi_window_person.hpp"

namespace velmora::test {
namespace {

/// What a person does at the stack of graphs with the mouse is written down, and repeats.
struct StackRecording : testing::Test {
  TemporaryDirectory directory;
  ScriptedQuestions person;
  History history{person};
  Workbench workbench{history.Recording()};
  QPointer<ui::MultiWindow> graphs;
  const std::string input = directory.Path("walk.vmb");

  void SetUp() override {
    history.Attach(workbench);
    WriteTrialFile(input, [](Trial& trial) { examples::MakeEmgBursts(trial); });
    workbench.trial.FileName = input;
    RunCommand(workbench, *FindCommand("file.load"));
    person.FillForm({{"channels 1", "true"}, {"channels 2", "true"}, {"channels 3", "true"}}, "OK");
    RunCommand(workbench, *FindCommand("graph.multi"));
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
  void Do(const char* id) {
    graphs->findChild<QAction*>(QString::fromLatin1(id))->trigger();
    QApplication::processEvents();
  }
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
  Do("threshold.calculate");
  Do("grid.thresholds");
  const double calculated = workbench.thresholds.ChanThreshold[1];
  const QPoint line = Line(1, 5.0);
  DragIn(Plot(), line, line - QPoint(0, 12));
  person.boxAnswers = {Button::Yes};
  QTest::mouseClick(&Plot(), Qt::LeftButton, {}, Line(1, 5.0));
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

  Variables variables = {{"out", directory.Path("again")}};
  std::filesystem::create_directories(variables["out"]);
  SetInputVariables(variables, input);
  RecipeRun again({.input = input, .strict = true});
  const Outcome outcome = again.Run(ReadRecipe(history.Recipe(), "history", variables));
  ASSERT_FALSE(outcome.failure) << outcome.failure->why << "\n" << history.Recipe();
  EXPECT_EQ(ReadFile(directory.Path("again/walk.vmv")), table);
  EXPECT_EQ(again.State().thresholds.ChanThreshold[1], static_cast<float>(dragged));
}

}  // namespace
}  // namespace velmora::test
