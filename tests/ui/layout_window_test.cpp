#include "graph/multi/multi_view.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

/// The dialogue that lays the channels out on graphs.
struct LayoutWindowTest : Story {
  static void Tick(QWidget* dialog, const char* name) {
    auto* box = dialog->findChild<QCheckBox*>(QString::fromLatin1(name));
    ASSERT_NE(box, nullptr) << name;
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
  }
  static QImage Sketch(QWidget* dialog) {
    auto* picture = dialog->findChild<QWidget*>("picture");
    return picture != nullptr && picture->isVisible() ? picture->grab().toImage() : QImage();
  }
  std::vector<int> Graphs() {
    std::vector<int> graphs;
    const MultiView& view = OpenMultiView(window_->State());
    for (int c = 1; c <= Shown().NChan; ++c) {
      graphs.push_back(view.GraphOf(c));
    }
    return graphs;
  }
};

TEST_F(LayoutWindowTest, TheSketchFollowsTheLayoutAndTheStackIsThatOfTheSketch) {
  OpenWalkAsExpert();
  ASSERT_EQ(Shown().NChan, 3);
  QImage none;
  QImage oneByOne;
  person_.When("frmGraph2Choose", [&](QWidget* dialog) {
    none = Sketch(dialog);
    Person::Press(dialog, "All");
  });
  person_.When("frmGraph2Choose", [&](QWidget* dialog) {
    oneByOne = Sketch(dialog);
    Tick(dialog, "chkPaired");
    const QImage paired = Sketch(dialog);
    EXPECT_FALSE(none.isNull());
    EXPECT_NE(none, oneByOne);
    EXPECT_NE(oneByOne, paired);
    Tick(dialog, "chkPaired");
    EXPECT_EQ(Sketch(dialog), oneByOne);
    Tick(dialog, "chkAB");
    Person::Press(dialog, "OK");
  });
  Choose("Select Channels for Multiaxis Graph");
  EXPECT_EQ(Graphs(), (std::vector{1, 2, 1}));
  EXPECT_FALSE(Shown().PairedGraphs);

  // By numbers, with a gap: graph 2 is left out.
  person_.When("frmGraph2Choose", [](QWidget* dialog) {
    Tick(dialog, "chkAB");
    Tick(dialog, "chkCombinations");
    auto* table = dialog->findChild<QTableView*>();
    const int numbers = table->model()->columnCount() - 1;
    for (const auto& [row, graph] : {std::pair{0, "3"}, {1, "1"}, {2, "3"}}) {
      Person::TypeCell(table, row, numbers, graph);
    }
    Shot(*dialog, "layout-by-numbers");
    Person::Press(dialog, "OK");
  });
  Choose("Select Channels for Multiaxis Graph");
  EXPECT_EQ(Graphs(), (std::vector{3, 1, 3}));
  EXPECT_EQ(Shown().ChanGraphSlot[3], 3);
}

}  // namespace
}  // namespace velmora::test
