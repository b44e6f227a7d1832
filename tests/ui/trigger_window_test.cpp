// Triggering as a person does it: a level is dragged in the graph behind the dialogue.
#include <QScreen>

#include "graph/single_view.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

struct TriggerWindow : Story {
  QWidget* graph = nullptr;
  QWidget* plot = nullptr;

  void OpenGraph() {
    WriteTrialFile(Path("treadmill.vmb"), examples::MakeTreadmillWalk);
    window_->State().UserLevel = UserLevelKind::Expert;
    Shown().FileName = Path("treadmill.vmb");
    window_->RunCommand(*FindCommand("file.load"));
    window_->State().chooser.ChanSelected.fill(false);
    window_->State().chooser.ChanSelected[1] = true;
    person_.When("frmGraphChoose", [](QWidget* dialog) { Person::Press(dialog, "OK"); });
    window_->RunCommand(*FindCommand("graph.single"));
    person_.Work();
    graph = VisibleWindows("frmGraph").value(0);
    ASSERT_NE(graph, nullptr);
    for (auto* widget : graph->findChildren<QWidget*>()) {
      plot = widget->inherits("velmora::GraphWidget") ? widget : plot;
    }
    ASSERT_NE(plot, nullptr);
  }
  SingleView& View() { return OpenSingleView(window_->State()); }
  void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) const {
    QMouseEvent event(type, at, plot->mapToGlobal(at), button, held, {});
    QApplication::sendEvent(plot, &event);
  }
  /// Where the pointer says that a level can be dragged, in the middle of the plot.
  [[nodiscard]] QPoint LevelPlace() const {
    for (int y = plot->height() - 1; y > 0; --y) {
      const QPoint at(plot->width() / 2, y);
      Mouse(QEvent::MouseMove, at, Qt::NoButton, {});
      if (plot->cursor().shape() == Qt::SplitVCursor) {
        return at - QPoint(0, 5);  // the reach is six to both sides
      }
    }
    return {};
  }
  void Drag(QPoint from, QPoint to) const {
    Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, Qt::LeftButton);
    Mouse(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    Mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, {});
  }
  static bool Tells(QWidget* dialog, const QString& text) {
    const auto labels = dialog->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel* label) { return label->isVisible() && label->text() == text; });
  }
};

// The dialogue asks anew after each button: the next look at it is taken once the one before is over.
TEST_F(TriggerWindow, ALevelIsDraggedScannedAndTheEndsAreKept) {
  OpenGraph();
  const auto keepEnds = [this](QWidget* dialog) {
    EXPECT_EQ(View().Cursors(), 51);
    EXPECT_TRUE(Tells(dialog, "51"));
    EXPECT_EQ(dialog->findChild<QTableView*>()->model()->rowCount(), 51);
    Shot(*graph, "trigger-scanned");
    Shot(*dialog, "trigger-form-scanned");
    person_.When("frmTrigger", [this](QWidget* again) {
      EXPECT_EQ(View().Cursors(), 2);
      ExpectSaveTo("walk.trg");
      person_.When("frmTrigger", [](QWidget* last) { Person::Press(last, "Exit"); });
      Person::Press(again, "Save");
    });
    Person::Press(dialog, "Keep First  Last");  // its ampersand is a sign, too
  };
  person_.When("frmTrigger", [&](QWidget* dialog) {
    auto* kinds = dialog->findChild<QComboBox*>("comType");
    kinds->setCurrentIndex(0);
    Q_EMIT kinds->activated(0);
    ASSERT_TRUE(View().Drawing().Preview.has_value());
    EXPECT_EQ(View().Drawing().Preview->Levels.front().y, 1);
    EXPECT_GT(View().Drawing().Preview->Hits.size(), 200U);  // while the foot is in the air
    const QPoint level = LevelPlace();
    ASSERT_FALSE(level.isNull());
    Drag(level, level - QPoint(0, 2 * plot->height() / 5));
    const double dragged = View().Drawing().Preview->Levels.front().y;
    EXPECT_GT(dragged, 270);  // the heel bounces below
    EXPECT_LT(dragged, 480);
    EXPECT_EQ(View().Drawing().Preview->Hits.size(), 51U);
    EXPECT_TRUE(Tells(dialog, "51 triggers"));
    EXPECT_EQ(dialog->findChild<QLineEdit*>("txtTrigLevel1")->text().toDouble(), dragged);
    // On a screen that has room for both.
    if (graph->width() + dialog->width() < graph->screen()->availableGeometry().width()) {
      const QRect shared = dialog->frameGeometry() & plot->rect().translated(plot->mapToGlobal(QPoint()));
      EXPECT_LT(shared.width(), plot->width() / 10) << "the dialogue is in the way";
    }
    Shot(*graph, "trigger-preview");
    Shot(*dialog, "trigger-form");
    // Nothing else outside the dialogue answers: no cursors, no other command, the graph stays.
    QTest::keyClick(plot, Qt::Key_2);
    QTest::mouseClick(plot, Qt::RightButton, {}, plot->rect().center());
    graph->close();
    window_->close();
    EXPECT_EQ(View().Cursors(), 0);
    EXPECT_TRUE(graph->isVisible());
    EXPECT_TRUE(window_->isVisible());
    person_.When("frmTrigger", keepEnds);
    Person::Press(dialog, "Scan");
  });
  QTest::keyClick(plot, Qt::Key_3);
  person_.Work();
  EXPECT_FALSE(View().Drawing().Preview.has_value());
  EXPECT_TRUE(std::filesystem::exists(Path("walk.trg")));
  QTest::keyClick(plot, Qt::Key_0);  // the graph has its keys back
  EXPECT_EQ(View().Cursors(), 0);
  EXPECT_EQ(window_->State().preferences.TriggerType, 0);
}

}  // namespace
}  // namespace velmora::test
