// What is selected in the channel table is what commands start with.
#include "ui/story.hpp"
#include "ui/trial/channel_table_view.hpp"

namespace velmora::test {
namespace {

class SelectedChannels : public Story {
 protected:
  ui::ChannelTableView* Channels() { return Find<ui::ChannelTableView>("channels"); }
  void ClickRow(int row, Qt::KeyboardModifiers keys = {}) {
    const QRect cell = Channels()->visualRect(Channels()->model()->index(row, 1));
    QTest::mouseClick(Channels()->viewport(), Qt::LeftButton, keys, cell.center());
  }
  static QList<int> Ticked(QWidget* dialog) {
    const auto* model = dialog->findChild<ui::ChannelTableView*>()->model();
    QList<int> rows;
    for (int row = 0; row < model->rowCount(); ++row) {
      for (int column = 0; column < model->columnCount(); ++column) {
        if (model->index(row, column).data(Qt::CheckStateRole).toInt() == Qt::Checked) {
          rows << row;
        }
      }
    }
    return rows;
  }
};

TEST_F(SelectedChannels, AreWhatCommandsAndDialoguesStartWith) {
  OpenWalkAsExpert();
  ClickRow(0);
  ClickRow(2, Qt::ControlModifier);
  const QList<int> both = {0, 2};

  // A picker has them ticked; Reset returns to them; called off, nothing of them stays.
  person_.When("frmChoose", [&](QWidget* dialog) {
    EXPECT_EQ(Ticked(dialog), both);
    Person::Press(dialog, "All");
    Person::Press(dialog, "Reset");
    EXPECT_EQ(Ticked(dialog), both);
    Person::Press(dialog, "Cancel");
  });
  Choose("Absolute value (|X|)");
  EXPECT_FALSE(window_->State().chooser.ChanSelected[1]);
  const float before = Shown().Data(10, 2);
  person_.When("frmChoose", [&](QWidget* dialog) { Person::Press(dialog, "Process"); });
  Choose("Absolute value (|X|)");
  EXPECT_EQ(Shown().Data(10, 2), before);

  // So have the moving windows and the graph, whatever was chosen last.
  person_.When("frmSetEpochDuration", [&](QWidget* dialog) {
    EXPECT_EQ(Ticked(dialog), both);
    Person::Press(dialog, "OK");
  });
  Choose("Moving Average");
  ClickRow(1);
  person_.When("frmGraphChoose", [](QWidget* dialog) {
    EXPECT_EQ(Ticked(dialog), QList<int>({1}));
    Person::Press(dialog, "Cancel");
  });
  Choose("Select Channels for Single-Axis Graph");

  // A filter starts at the first of them, and what is typed is for all of them.
  ClickRow(0);
  ClickRow(2, Qt::ControlModifier);
  person_.When("frmButterworth", [](QWidget* dialog) {
    auto* table = dialog->findChild<ui::ChannelTableView*>();
    EXPECT_EQ(table->CurrentChannel(), 1);
    const QModelIndex cell = table->model()->index(0, 4);
    table->selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    table->setFocus();
    QTest::keyClick(table, Qt::Key_6);
    QLineEdit* editor = nullptr;
    ASSERT_TRUE(test::WaitFor([&] {
      editor = table->viewport()->findChild<QLineEdit*>();
      return editor != nullptr && editor->isVisible();
    }));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(test::WaitFor([&] { return cell.data().toDouble() == 6; }));
    EXPECT_EQ(table->model()->index(2, 4).data().toDouble(), 6);
    EXPECT_EQ(table->model()->index(1, 4).data().toDouble(), 0);
    Person::Press(dialog, "Filter");
  });
  Choose("Butterworth, Critically-damped, or Bessel");

  // A recipe of it makes the same bits, and a trial that is opened next starts with nothing selected.
  ExpectSaveTo("here.vmb");
  Choose("Velmora2 Binary (.VMB) (default)");
  RunRecipe(SavedRecipe());
  EXPECT_EQ(ReadFile(Path("again/here.vmb")), ReadFile(Path("here.vmb")));
  DoubleClickFile("here.vmb");
  EXPECT_TRUE(test::WaitFor([this] { return Channels()->selectionModel()->selectedRows().isEmpty(); }));
}

TEST_F(SelectedChannels, AreLetGoByEscAndFormatsThatCannotBeWrittenAreGrey) {
  OpenWalkAsExpert();
  ClickRow(1);
  QTest::keyClick(Channels(), Qt::Key_Escape);
  person_.When("frmChoose", [](QWidget* dialog) {
    EXPECT_EQ(Ticked(dialog), QList<int>());
    Person::Press(dialog, "Cancel");
  });
  Choose("Absolute value (|X|)");
  EXPECT_TRUE(Entry("Comma Separated Variable (.CSV)")->isEnabled());
  EXPECT_FALSE(Entry("Save Vicon AD file (.VAD)")->isEnabled());
}

}  // namespace
}  // namespace velmora::test
