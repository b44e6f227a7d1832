// The ways to a file, and what the window makes of its name.
#include "ui/browser/directory_tree.hpp"
#include "ui/story.hpp"
#include "ui/text.hpp"
#include "ui/trial/channel_table_view.hpp"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

class FindingFiles : public Story {
 protected:
  ui::FileListView* Files() { return Find<ui::FileListView>("dataFiles"); }
  QComboBox* Filter() {
    return qobject_cast<QComboBox*>(Files()->parentWidget()->layout()->itemAt(0)->widget());
  }
  bool Loads(const char* name) {
    return test::WaitFor([this, name] {
      return Shown().NData > 0 && window_->windowTitle().contains(QString::fromUtf8(name));
    });
  }
  /// The names in the list, in the order of its rows.
  QStringList Listed() {
    QStringList names;
    for (int row = 0; row < Files()->topLevelItemCount(); ++row) {
      names << Files()->topLevelItem(row)->text(0);
    }
    return names;
  }
  void TypePlace(const std::string& place) {
    QLineEdit* line = Find<QComboBox>("location")->lineEdit();
    QTest::mouseClick(line, Qt::LeftButton);
    line->selectAll();
    QTest::keyClicks(line, QString::fromStdString(place));
    QTest::keyClick(line, Qt::Key_Return);
  }
};

// The completer reads directories in its own time and shows its list when it has read one.
TEST_F(FindingFiles, NoListOfCompletionsComesUpOnceAPlaceIsEntered) {
  std::filesystem::create_directories(Path("deep/er/walks"));
  QCompleter* completer = Find<QComboBox>("location")->completer();
  auto* paths = qobject_cast<QFileSystemModel*>(completer->model());
  QStringList read;
  const auto noted = QObject::connect(paths, &QFileSystemModel::directoryLoaded,
                                      [&read](const QString& directory) { read << directory; });
  bool came = false;
  TypePlace(Path("deep/er"));
  paths->fetchMore(paths->index(QString::fromStdString(Path("deep"))));
  EXPECT_TRUE(test::WaitFor([&] {
    came = came || completer->popup()->isVisible();
    return read.contains(QString::fromStdString(Path("deep")));
  }));
  QApplication::processEvents();
  EXPECT_FALSE(came || completer->popup()->isVisible());
  QObject::disconnect(noted);
}

TEST_F(FindingFiles, RowsOfTheDirectoryTreeStayUnderThePointer) {
  // Not among the temporary ones, where other programs' directories come and go above the rows.
  const TemporaryDirectory sessions(before_);
  for (char name = 'a'; name <= 'z'; ++name) {
    fs::create_directories(sessions.Path(std::string("all/") + name + "/inner"));
  }
  auto* tree = Find<ui::DirectoryTree>("directories");
  TypePlace(sessions.Path("all"));
  const auto* model = qobject_cast<const QFileSystemModel*>(tree->model());
  const auto row = [tree, model, &sessions](const char* name) {
    return tree->visualRect(model->index(QString::fromStdString(sessions.Path(std::string("all/") + name))));
  };
  tree->setMinimumHeight(160);
  // The directories above are read one after the other, and their rows come in above.
  const auto allRead = [&] {
    for (QDir above(QString::fromStdString(sessions.Path("all")));;) {
      if (model->rowCount(model->index(above.path())) < above.entryList(model->filter()).size()) {
        return false;
      }
      if (!above.cdUp()) {
        return true;
      }
    }
  };
  ASSERT_TRUE(test::WaitFor(allRead));
  tree->collapse(model->index(QDir::tempPath()));
  ASSERT_TRUE(Rests([&] { return row("a"); }));
  // The last row that is half in sight is the one that a list likes to move.
  const QPoint at(row("a").left() + 5, tree->viewport()->height() - 2);
  const QModelIndex half = tree->indexAt(at);
  ASSERT_TRUE(half.isValid()) << at.x() << " " << at.y() << " " << row("a").top() << " " << row("z").top();
  const QString path = model->filePath(half);
  const QRect before = tree->visualRect(half);
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
  ASSERT_TRUE(test::WaitFor([&] { return window_->State().DataDir == path.toStdString() + "/"; }))
      << window_->State().DataDir;
  const auto place = [&] { return tree->visualRect(model->index(path)); };
  ASSERT_TRUE(Rests(place));  // what is read meanwhile must not move it either
  EXPECT_EQ(place(), before);
  EXPECT_EQ(tree->currentIndex(), model->index(path));
  EXPECT_FALSE(tree->isExpanded(model->index(path)));
  QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
  EXPECT_TRUE(test::WaitFor([&] { return tree->isExpanded(model->index(path)); }));
  ASSERT_TRUE(Rests(place));
  EXPECT_EQ(place(), before);
  EXPECT_EQ(window_->State().DataDir, path.toStdString() + "/");
}

TEST_F(FindingFiles, OpensAFileByDialogueByPathAndTheNextByKeys) {
  window_->State().UserLevel = UserLevelKind::Expert;
  WriteTrial("run.vmb", 2);
  WriteTrial("squat.vmb", 2);
  WriteFile(Path("notes.docx"), "x");
  WriteFile(Path("walk.vad"), "x");
  WriteFile(Path("walk.csv"), "t,Fz\n0,1\n1,2\n");
  Choose("Refresh");

  // The filter tells what it hides, and gives way.
  auto* hidden = Find<QPushButton>("hiddenDataFiles");
  EXPECT_EQ(hidden->text(), "2 files hidden by the filter: show them");  // the .csv and the .docx
  Filter()->setCurrentIndex(Filter()->findText("All files this program reads"));
  Q_EMIT Filter()->activated(Filter()->currentIndex());
  EXPECT_EQ(Listed(), QStringList({"run.vmb", "squat.vmb", "walk.csv", "walk.vmb"}));
  EXPECT_EQ(hidden->text(), "2 files hidden by the filter: show them");  // the .vad and the .docx
  QTest::mouseClick(hidden, Qt::LeftButton);
  EXPECT_EQ(Listed().size(), 6);
  EXPECT_FALSE(hidden->isVisible());
  EXPECT_EQ(Filter()->currentText(), "All Files (*.*)");

  // Load with nothing selected asks for a file, and so does Ctrl+O.
  const auto answer = [this](const char* name) {
    person_.WhenA<QFileDialog>([path = Path(name)](QWidget* dialog) {
      auto* line = dialog->findChild<QLineEdit*>("fileNameEdit");
      line->setText(QString::fromStdString(path));  // as pasted: typing brings up completions
      auto* open = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
      ASSERT_TRUE(test::WaitFor([open] { return open->isEnabled(); }));
      QTest::mouseClick(open, Qt::LeftButton);
    });
  };
  answer("run.vmb");
  Choose("Load selected file");
  EXPECT_TRUE(Loads("run.vmb"));

  // It is marked, and the keys go on from it.
  const auto marked = [this](const char* name) {
    return Files()->findItems(QString::fromUtf8(name), Qt::MatchExactly).value(0)->font(0).bold();
  };
  EXPECT_TRUE(marked("run.vmb"));
  EXPECT_EQ(Files()->currentItem()->text(0), "run.vmb");
  Files()->setFocus();
  QTest::keyClick(Files(), Qt::Key_Down);
  EXPECT_EQ(Find<QLabel>("selectedFile")->text(), "Selected: squat.vmb");
  QTest::keyClick(Files(), Qt::Key_Return);
  EXPECT_TRUE(Loads("squat.vmb"));
  EXPECT_TRUE(marked("squat.vmb"));
  EXPECT_FALSE(marked("run.vmb"));
  QTest::keyClick(Files(), Qt::Key_Down);
  QTest::keyClick(Files(), Qt::Key_Down);
  QTest::keyClick(Files(), Qt::Key_Down);
  EXPECT_EQ(Find<QLabel>("selectedFile")->text(), "Selected: walk.vmb");

  answer("run.vmb");
  window_->activateWindow();
  ASSERT_TRUE(test::WaitForWindowActive(window_.get()));
  QTest::keyClick(window_.get(), Qt::Key_O, Qt::ControlModifier);
  person_.Work();
  EXPECT_TRUE(Loads("run.vmb"));

  // Unsaved work and where it belongs are named before they are lost.
  Shown().FileChanged = true;
  person_.When("File Changed but Not Saved", [](QWidget* box) {
    EXPECT_TRUE(qobject_cast<QMessageBox*>(box)->text().startsWith("The data of run.vmb were modified"));
    Person::Press(box, "Cancel");
  });
  TypePlace("walk.vmb");
  person_.Work();
  EXPECT_TRUE(Loads("run.vmb"));
  Shown().FileChanged = false;

  // A path is typed: a file is loaded, a directory entered, and what is not there is told.
  TypePlace(Path("walk.vmb"));
  EXPECT_TRUE(Loads("walk.vmb"));
  EXPECT_TRUE(Find<ui::FileListView>("dataFiles")->hasFocus()) << "the keys go on among the files";
  EXPECT_EQ(Shown().FormatName, "Velmora2 binary analog") << "whatever its code becomes";
  fs::create_directories(Path("deeper"));
  TypePlace("deeper");
  EXPECT_EQ(window_->State().DataDir, fs::canonical(Path("deeper")).string() + "/");
  person_.When("Open Directory", [](QWidget* box) { Person::Press(box, "OK"); });
  TypePlace("/nowhere");
  person_.Work();
  auto* places = Find<QComboBox>("location");
  EXPECT_EQ(places->currentText().toStdString(), fs::canonical(Path("deeper")).string());
  QTest::mouseClick(Find<QToolButton>("home"), Qt::LeftButton);
  EXPECT_EQ(window_->State().DataDir, fs::canonical(ui::ToStd(QDir::homePath())).string() + "/");
  // Where files were opened is one choice away.
  const int recent = places->findText(QString::fromStdString(fs::canonical(Path("")).string()));
  ASSERT_GE(recent, 0);
  places->setCurrentIndex(recent);
  Q_EMIT places->activated(recent);
  EXPECT_EQ(window_->State().DataDir, fs::canonical(Path("")).string() + "/");
}

TEST_F(FindingFiles, ANameOf89LettersMakesNothingWider) {
  const std::string name = std::string(85, 'M') + ".vmb";
  WriteTrial(name.c_str(), kMaxChannels);
  Choose("Refresh");
  const QSize least = window_->minimumSizeHint();
  EXPECT_LE(least.width(), 800) << "half of 1600, for a screen at factor 2";
  EXPECT_LE(least.height(), 500 - 30) << "with a frame";
  window_->State().UserLevel = UserLevelKind::Expert;
  const QSize before = window_->size();
  DoubleClickFile(name.c_str());
  Shown().TrialTitle = std::string(100, 'W');
  Choose("Refresh");
  Person::TypeCell(Find<ui::ChannelTableView>("channels"), 0, 2, "Vastus");
  person_.Work();
  Shown().FileChanged = false;
  EXPECT_EQ(window_->size(), before);
  EXPECT_LE(window_->minimumSizeHint().width(), 800);
  EXPECT_LT(window_->windowTitle().size(), 150);
  window_->close();
  EXPECT_TRUE(test::WaitFor([this] { return !window_->isVisible(); }));
  Start();
  EXPECT_EQ(window_->size(), before);
  EXPECT_LE(window_->minimumSizeHint().width(), 800);
}

}  // namespace
}  // namespace velmora::test
