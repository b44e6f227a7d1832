// Result views in the window: a form with a graph and a long table, under mouse and keys.
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "support/command_test.hpp"
#include "support/sample_results.hpp"
#include "ui/dialogs/form_dialog.hpp"
#include "ui/waiting.hpp"

namespace velmora::ui {
namespace {

struct FormResults : test::CommandTest {
  void SetUp() override { test::SetChannels(trial, {{1, 2, 3}}); }

  // Acts on the dialogue while it asks, then leaves it.
  void WithDialog(Form& form, const std::function<void(QWidget&)>& act) {
    const auto dialog = MakeFormDialog(form, workbench, nullptr);
    QTimer::singleShot(0, dialog.get(), [&] {
      ASSERT_TRUE(test::WaitForWindowExposed(dialog.get()));
      act(*dialog);
      QTest::keyClick(dialog.get(), Qt::Key_Escape);
    });
    dialog->Ask();
  }
};

TEST_F(FormResults, TheGraphZoomsAndTellsWhatLiesUnderThePointer) {
  test::SampleResults form(workbench, 3);
  WithDialog(form, [](QWidget& dialog) {
    auto* graph = dialog.findChild<QWidget*>("graph");
    auto* place = dialog.findChild<QLabel*>("place");
    ASSERT_NE(graph, nullptr);
    const QPointF middle = QPointF(graph->rect().center());
    QTest::mouseMove(graph, middle.toPoint());
    EXPECT_TRUE(test::WaitFor([&] { return place->text().startsWith("at "); }));
    const QString before = place->text();
    EXPECT_GT(before.mid(3).toInt(), 5);
    EXPECT_LT(before.mid(3).toInt(), 15);
    const QImage whole = graph->grab().toImage();
    QWheelEvent wheel(middle, graph->mapToGlobal(middle), {}, {0, 360}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(graph, &wheel);
    QTest::mouseMove(graph, middle.toPoint() + QPoint(100, 0));
    EXPECT_TRUE(test::WaitFor([&] { return graph->grab().toImage() != whole; }));
    QTest::mouseDClick(graph, Qt::LeftButton, {}, middle.toPoint());
    EXPECT_TRUE(test::WaitFor([&] { return graph->grab().toImage() == whole; }));
  });
}

TEST_F(FormResults, ATableOfAHundredThousandRowsIsShownAndCopied) {
  test::SampleResults form(workbench, 100'000);
  WithDialog(form, [](QWidget& dialog) {
    auto* table = dialog.findChild<QTableView*>();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->model()->rowCount(), 100'000);
    EXPECT_LT(table->findChildren<QWidget*>().size(), 30);
    table->scrollToBottom();
    EXPECT_EQ(table->model()->index(99'999, 0).data().toString(), "row 99999");
    const auto select = [&](int top, int bottom) {
      table->selectionModel()->select({table->model()->index(top, 0), table->model()->index(bottom, 1)},
                                      QItemSelectionModel::ClearAndSelect);
      QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
      return QApplication::clipboard()->text();
    };
    EXPECT_EQ(select(1, 2), "row 1\t0.250\nrow 2\t0.200\n");
    const QString all = select(0, 99'999);
    EXPECT_TRUE(all.startsWith("Name\tPower\nrow 0\t0.333\n"));
    EXPECT_EQ(all.count('\n'), 100'001);
  });
}

}  // namespace
}  // namespace velmora::ui
