// Instruments' files in the window: a double click, one question where there is one, and the trial is there.
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include "support/instrument_files/c3d_file.hpp"
#include "ui/shot.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

using RecordingWindow = Story;

TEST_F(RecordingWindow, AFileOfManyChannelsAsksWhichAndShowsThem) {
  C3dFile file;
  file.channels = 100;
  file.frames = 500;
  std::vector<std::string> labels;
  for (int c = 0; c < 100; ++c) {
    labels.push_back("EMG " + std::to_string(c + 1));
  }
  file.AddGroup(1, "ANALOG");
  file.AddTexts(1, "LABELS", 8, labels);
  file.AddTexts(1, "UNITS", 2, std::vector<std::string>(100, "uV"));
  WriteFile(Path("gait.c3d"), file.Bytes());
  Entry("Refresh")->trigger();
  window_->State().UserLevel = UserLevelKind::Expert;
  person_.When("frmChooseChannels", [](QWidget* dialog) {
    auto* line = dialog->findChild<QLineEdit*>("ChannelsToRead");
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), "1-64");
    auto* list = dialog->findChild<QTableView*>();
    ASSERT_NE(list, nullptr);
    EXPECT_GE(list->visibleRegion().boundingRect().height(), 200) << "the list of channels is in view";
    Shot(*dialog, "choose-channels");
    line->selectAll();
    QTest::keyClicks(line, "1-8, 99");
    Person::Press(dialog, "Read");
  });
  DoubleClickFile("gait.c3d");
  EXPECT_EQ(Shown().NChan, 9);
  EXPECT_EQ(Shown().ChanLabel[9], "EMG 99");
  EXPECT_EQ(Shown().NData, 2000);
  Shot(*window_, "c3d-loaded");
  person_.When("frmChooseChannels", [](QWidget* dialog) { Person::Press(dialog, "Cancel"); });
  DoubleClickFile("gait.c3d");
  EXPECT_EQ(Shown().NData, 0);
}

}  // namespace
}  // namespace velmora::test
