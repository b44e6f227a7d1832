// The table of the trial's numbers as a person uses it. With VELMORA_SCREENSHOTS set to a directory it leaves
// pictures of what it saw there.
#include "ui/data/data_window.hpp"

#include <QClipboard>
#include <QScrollBar>

#include "ui/data/sample_grid.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

using ui::DataWindow;
using ui::GridCell;
using ui::SampleGrid;

class DataWindowTest : public Story {
 protected:
  static DataWindow* Table() { return VisibleWindows<DataWindow>().value(0); }
  SampleGrid& Grid() { return Table()->Grid(); }
  void OpenTable() {
    Choose("Data table");
    ASSERT_TRUE(test::WaitFor([] { return Table() != nullptr && Table()->isVisible(); }));
    ASSERT_TRUE(test::WaitForWindowActive(Table()));
  }
  void Click(const GridCell& cell, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(Grid().viewport(), Qt::LeftButton, keys, Grid().CellRect(cell).center());
  }
  /// Types into the box of this title, which `act` brings up, and presses a button; a refusal is read.
  template <typename Act>
  void Answer(const char* title, const char* typed, const char* button, const Act& act,
              bool refused = false) {
    person_.When(QString::fromUtf8(title), [=](QWidget* dialog) {
      auto* line = dialog->findChild<QLineEdit*>();
      line->selectAll();
      QTest::keyClicks(line, QString::fromUtf8(typed));
      Person::Press(dialog, QString::fromUtf8(button));
    });
    if (refused) {
      person_.When("Invalid Entry", [](QWidget* box) { Person::Press(box, "OK"); });
    }
    act();
    person_.Work();
  }
  /// Shortcuts are heard in the window that is active, which it is again some time after a dialogue.
  void Type(QWidget& to, Qt::Key key, Qt::KeyboardModifiers held = {}) {
    ASSERT_TRUE(test::WaitForWindowActive(Table()));
    QTest::keyClick(&to, key, held);
  }
  void GoTo(const char* typed, bool refused = false) {
    Answer(
        "Go to", typed, "OK", [this] { Type(*Table(), Qt::Key_G, Qt::ControlModifier); }, refused);
  }
  std::string Place() { return Table()->findChild<QLabel*>("place")->text().toStdString(); }
  int HistoryLength() { return Find<QListWidget>("historyList")->count(); }
};

TEST_F(DataWindowTest, ACellIsChangedByMouseOrKeysAndTakenBackAndTheRecipeMakesTheSameBits) {
  OpenWalkAsExpert();
  OpenTable();
  const float before = Shown().Data(3, 1);
  Answer("Change Value", "0.1", "OK", [this] {
    Click({3, 1});
    QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, Grid().CellRect({3, 1}).center());
  });
  EXPECT_EQ(Shown().Data(3, 1), 0.1F);
  EXPECT_TRUE(Shown().FileChanged);
  EXPECT_EQ(Grid().CellText({3, 1}), "0.1000");
  EXPECT_EQ(Place(), "Sample 3    00: Vastus lat    0.1 mV");

  Type(Grid(), Qt::Key_Down);
  Answer("Change Value", "-2", "OK", [this] { Type(Grid(), Qt::Key_Return); });
  EXPECT_EQ(Shown().Data(4, 1), -2.0F);
  EXPECT_TRUE(test::WaitFor([this] { return HistoryLength() == 3; }));
  EXPECT_EQ(Find<QListWidget>("historyList")->item(2)->text().section("  ", 1).left(14), "Sample 4 chang");

  // Called off, empty, or no number: nothing happens, or a box tells why.
  Answer("Change Value", "7", "Cancel", [this] { Type(*Table(), Qt::Key_F2); });
  for (const char* typed : {"seven", "1e39"}) {
    Answer(
        "Change Value", typed, "OK", [this] { Type(*Table(), Qt::Key_F2); }, true);
  }
  Click({5, 0});  // the abscissa counts seconds
  person_.When("Invalid Entry", [](QWidget* box) { Person::Press(box, "OK"); });
  Type(*Table(), Qt::Key_F2);
  person_.Work();
  EXPECT_EQ(Shown().Data(4, 1), -2.0F);
  EXPECT_EQ(HistoryLength(), 3);
  Shot(*Table(), "data-table");

  ExpectSaveTo("here.vmb");
  Choose("Velmora2 Binary (.VMB) (default)");
  RunRecipe(SavedRecipe());
  EXPECT_EQ(ReadFile(Path("again/here.vmb")), ReadFile(Path("here.vmb")));

  // Undo from the table itself: past the save, then one cell after the other.
  ASSERT_TRUE(test::WaitFor([this] { return HistoryLength() == 4; }));
  const auto undo = [this] {
    Table()->activateWindow();
    ASSERT_TRUE(test::WaitForWindowActive(Table()));
    Type(*Table(), Qt::Key_Z, Qt::ControlModifier);
  };
  undo();
  undo();
  EXPECT_TRUE(test::WaitFor([this] { return Shown().Data(4, 1) != -2.0F; }));
  EXPECT_EQ(Shown().Data(3, 1), 0.1F);
  undo();
  EXPECT_TRUE(test::WaitFor([this, before] { return Shown().Data(3, 1) == before; }));
}

TEST_F(DataWindowTest, GoesToASampleOrATimeSelectsAndCopiesAllDigits) {
  OpenWalkAsExpert();
  OpenTable();
  GoTo("4000");
  EXPECT_EQ(Grid().Current(), (GridCell{4000, 1}));
  EXPECT_TRUE(Grid().viewport()->rect().contains(Grid().CellRect({4000, 1})));
  GoTo("1.5 s");
  EXPECT_EQ(Grid().Current().sample, 1 + static_cast<int>(std::lround(1.5 * Shown().Rate)));
  const GridCell place = Grid().Current();
  for (const char* wrong : {"0", "6002", "100 s", "here"}) {
    GoTo(wrong, true);
    EXPECT_EQ(Grid().Current(), place);
  }

  Type(Grid(), Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(Grid().Current(), (GridCell{1, 0}));
  Click({2, 1});
  Click({3, 2}, Qt::ShiftModifier);
  EXPECT_EQ(Place(), "4 cells selected: samples 2 to 3, 2 columns");
  Type(*Table(), Qt::Key_C, Qt::ControlModifier);
  const QStringList rows = QApplication::clipboard()->text().split('\n');
  ASSERT_EQ(rows.size(), 3);
  for (int i = 0; i < 2; ++i) {
    for (int c = 0; c < 2; ++c) {
      EXPECT_EQ(rows[i].split('\t')[c].toFloat(), Shown().Data(i + 2, c + 1));
    }
  }
  // A channel by its head, everything by Ctrl+A.
  const QRect cell = Grid().CellRect({1, 2});
  QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, {cell.center().x(), 8});
  EXPECT_EQ(Place(), "6,001 cells selected: samples 1 to 6,001, 1 column");
  Type(*Table(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(Grid().Selected().Cells(), std::int64_t{6001} * (Shown().NChan + 1));
  Type(Grid(), Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(Grid().Current(), (GridCell{6001, Shown().NChan}));
  EXPECT_TRUE(Grid().viewport()->rect().contains(Grid().CellRect(Grid().Current())));
}

TEST_F(DataWindowTest, FollowsTheCursorsTheChannelsAndTheTrial) {
  OpenWalkAsExpert();
  OpenTable();
  const auto colourAt = [this](int sample) {
    const QRect cell = Grid().CellRect({sample, 3});
    return Grid().viewport()->grab(cell).toImage().pixel(1, 1);
  };
  Type(Grid(), Qt::Key_Down, Qt::ControlModifier);
  Type(Grid(), Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(colourAt(4), colourAt(5));
  Shown().CursorLo = 5;
  Shown().CursorHi = 8;
  Table()->Refresh();
  EXPECT_NE(colourAt(4), colourAt(5));
  EXPECT_EQ(colourAt(5), colourAt(8));
  EXPECT_EQ(colourAt(4), colourAt(9));
  Shown().Data(6, 1) = NAN;
  Shown().Data(7, 1) = -INFINITY;
  EXPECT_EQ(Grid().CellText({6, 1}), "nan");
  EXPECT_EQ(Grid().CellText({7, 1}), "-inf");
  Shot(*Table(), "data-table-cursors");

  // The last channel goes while its cell is the current one.
  const int channels = Shown().NChan;
  Type(Grid(), Qt::Key_End, Qt::ControlModifier);
  person_.When("frmChoose", [&](QWidget* dialog) {
    auto* table = dialog->findChild<QTableView*>();
    for (int column = 0; column < table->model()->columnCount(); ++column) {
      const QModelIndex cell = table->model()->index(channels - 1, column);
      if (cell.data(Qt::CheckStateRole).isValid()) {
        const QRect box = table->visualRect(cell);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, {box.left() + 12, box.center().y()});
      }
    }
    Person::Press(dialog, "Process");
  });
  person_.When("Erase Channels", [](QWidget* box) { Person::Press(box, "Yes"); });
  Choose("Erase channels");
  ASSERT_EQ(Shown().NChan, channels - 1);
  EXPECT_TRUE(test::WaitFor([&] { return Grid().Current() == GridCell{6001, channels - 1}; }));
  Type(*Table(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().toFloat(), Shown().Data(6001, channels - 1));

  // A shorter trial, then none.
  Shown().FileChanged = false;
  WriteTrialFile(Path("one.vmb"), [](Trial& trial) { SetChannels(trial, {{1.5F}}); });
  Entry("Refresh")->trigger();
  DoubleClickFile("one.vmb");
  ASSERT_EQ(Shown().NData, 1);
  EXPECT_TRUE(test::WaitFor([this] { return Grid().Current() == GridCell{1, 1}; }));
  EXPECT_EQ(Grid().CellText({1, 1}), "1.5000");
  EXPECT_EQ(Grid().verticalScrollBar()->maximum(), 0);
  Shown().DiscardData();
  Table()->repaint();
  EXPECT_EQ(Place(), "Sample 1    00:     1.5 V");  // until it is told
  Table()->Refresh();
  EXPECT_TRUE(test::WaitFor([] { return Table() == nullptr; }));
}

}  // namespace
}  // namespace velmora::test
