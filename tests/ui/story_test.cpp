#include "ui/story.hpp"

#include <QClipboard>
#include <QMenuBar>
#include <QStatusBar>
#include <map>
#include <set>

#include "ui/dialogs/picker_dialog.hpp"
#include "ui/main/menu_list.hpp"
#include "ui/trial/channel_drawing.hpp"
#include "ui/trial/channel_table_view.hpp"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

/// Every entry of a menu and of the menus below it; two of one menu never read the same.
void CollectEntries(const QMenu* menu, std::multimap<std::string, const QAction*>& entries) {
  std::set<QString> captions;
  for (const QAction* action : menu->actions()) {
    if (action->isSeparator()) {
      continue;
    }
    EXPECT_FALSE(action->text().isEmpty()) << "in " << menu->title().toStdString();
    EXPECT_TRUE(captions.insert(action->text()).second) << action->text().toStdString();
    if (action->menu() != nullptr) {
      CollectEntries(action->menu(), entries);
    } else {
      entries.emplace(action->text().toStdString(), action);
    }
  }
}

TEST_F(Story, MenusHoldEveryCommandAndGreyWhatCannotBeDone) {
  std::multimap<std::string, const QAction*> entries;
  for (const QAction* top : window_->menuBar()->actions()) {
    CollectEntries(top->menu(), entries);
  }
  for (const Command& command : AllCommands()) {
    const std::string_view menu = command.menu;
    if (menu.empty() || menu.starts_with("&Single-axis graph") || menu.starts_with("&Multi-axis graph") ||
        menu.starts_with("&X-Y plot")) {
      continue;  // buttons lead there, or it is in the graph's own window
    }
    const auto [first, last] = entries.equal_range(std::string(command.caption));
    EXPECT_NE(first, last) << command.id;
    for (auto entry = first; entry != last; ++entry) {
      EXPECT_EQ(entry->second->isEnabled(), command.needs == Needs::Nothing)
          << command.id << ", no trial yet";
    }
  }
  for (const ui::MenuPlace& place : ui::MenuPlaces()) {
    if (FindCommand(place.id) != nullptr) {
      continue;
    }
    const auto notThereYet = entries.find(std::string(place.caption));
    ASSERT_NE(notThereYet, entries.end()) << place.id;
    EXPECT_FALSE(notThereYet->second->isEnabled()) << place.id;
  }
  // A letter is one entry's, but for those that were always so.
  QStringList doubled;
  for (const char* top : {"File", "Edit"}) {
    std::map<QString, QStringList> owners;
    for (const QAction* entry : Entry(top)->menu()->actions()) {
      owners[QKeySequence::mnemonic(entry->text()).toString()] << entry->text();
    }
    for (const auto& [key, captions] : owners) {
      doubled << (key.isEmpty() || captions.size() == 1 ? QStringList() : captions);
    }
  }
  EXPECT_EQ(doubled.join(", ").toStdString(),
            "&Remove the Current directory, &Refresh, &Save, Create a &Subdirectory");
}

// Whoever works in two windows keeps what either of them learned; what cannot be read is told, and kept.
TEST_F(Story, SettingsOutliveTwoWindowsAndDamage) {
  const auto learned = [this] { return std::as_const(window_->State().texts.Layouts); };
  window_->State().texts.Layouts = {{"old", {{"a", "1"}}}, {"gone", {{"a", "1"}}}};
  window_->close();
  ASSERT_TRUE(test::WaitFor([this] { return !window_->isVisible(); }));
  Start();
  const std::unique_ptr<ui::MainWindow> first = std::move(window_);
  Start();
  first->State().texts.Layouts["first"]["a"] = "2";
  first->State().texts.Layouts.erase("gone");
  window_->State().texts.Layouts["second"]["a"] = "3";
  for (ui::MainWindow* window : {first.get(), window_.get()}) {
    window->close();
    ASSERT_TRUE(test::WaitFor([window] { return !window->isVisible(); }));
  }
  Start();
  EXPECT_EQ(learned(), (std::map<std::string, TextMemory::Values>{
                           {"old", {{"a", "1"}}}, {"first", {{"a", "2"}}}, {"second", {{"a", "3"}}}}));

  const std::string file = directory_.Path("settings/velmora2/settings.json");
  std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
  const std::string damaged = ReadFile(file);
  window_ = std::make_unique<ui::MainWindow>(store_, std::vector<std::string>{";"}, examples::MakeEmgBursts);
  window_->show();
  person_.When("Settings", [&file](QWidget* box) {
    EXPECT_TRUE(qobject_cast<QMessageBox*>(box)->text().contains(QString::fromStdString(file)));
    Person::Press(box, "OK");
  });
  window_->Begin();
  person_.Work();
  window_->close();
  ASSERT_TRUE(test::WaitFor([this] { return !window_->isVisible(); }));
  EXPECT_EQ(ReadFile(file + ".broken"), damaged);
}

TEST_F(Story, OpensATrialFiltersAChannelSavesAndIsWarnedBeforeItLeavesUnsavedWork) {
  ExpectDone();
  DoubleClickFile("walk.vmb");
  ASSERT_EQ(Shown().NData, 6001);

  // A channel gets another name, in the table.
  auto* channels = Find<ui::ChannelTableView>("channels");
  Person::TypeCell(channels, 0, 2, "Vastus");
  person_.Work();
  EXPECT_TRUE(test::WaitFor([this] { return Shown().ChanLabel[1] == "Vastus"; }));
  EXPECT_TRUE(Shown().FileChanged);

  // One channel is filtered in the dialogue.
  person_.When("frmButterworth", [](QWidget* dialog) {
    auto* table = dialog->findChild<ui::ChannelTableView*>();
    Person::TypeCell(table, 0, 4, "6");
    Person::Press(dialog, "Critically-damped");
    Person::Press(dialog, "Filter");
  });
  Choose("Butterworth, Critically-damped, or Bessel");

  // It is saved under another name.
  ExpectSaveTo("walk-filtered.vmb");
  person_.When("QMessageBox", [](QWidget* box) { Person::Press(box, "OK"); });
  Choose("Velmora2 Binary (.VMB) (default)");
  ASSERT_TRUE(fs::exists(Path("walk-filtered.vmb")));
  EXPECT_TRUE(FileRow("walk-filtered.vmb").isValid()) << "listed at once";

  // The history of it is a recipe that makes the same file.
  RunRecipe(SavedRecipe());
  EXPECT_EQ(ReadFile(Path("again/walk-filtered.vmb")), ReadFile(Path("walk-filtered.vmb")));

  // More is done, and the window is closed with it unsaved: there is a way back, and a way out.
  person_.When("frmChoose", [](QWidget* dialog) {
    Person::Press(dialog, "All");
    Person::Press(dialog, "Process");
  });
  Choose("Absolute value (|X|)");
  person_.When("File Changed but Not Saved", [](QWidget* box) { Person::Press(box, "Cancel"); });
  window_->close();
  person_.Work();
  EXPECT_TRUE(window_->isVisible());
  person_.When("File Changed but Not Saved", [](QWidget* box) { Person::Press(box, "OK"); });
  window_->close();
  person_.Work();
  EXPECT_TRUE(test::WaitFor([this] { return !window_->isVisible(); }));
  EXPECT_EQ(store_.Get("Velmora2", "Startup", "Datadir", ""), fs::canonical(Path("")).string() + "/");

  // The next session shows the trial in the directory where somebody has gone since.
  const std::string left = fs::canonical(Path("again")).string() + "/";
  store_.Save("Velmora2", "Startup", {{"Datadir", left}, {"UserLevel", "1"}});
  person_.When("frmGraphChoose", [](QWidget* dialog) { Person::Press(dialog, "Cancel"); });
  Start({});
  person_.Work();
  EXPECT_EQ(Shown().NData, 6001);
  EXPECT_EQ(window_->State().DataDir, left);
  EXPECT_EQ(store_.Get("Velmora2", "Startup", "Datadir", ""), left);
  EXPECT_TRUE(FileRow("walk-filtered.vmb").isValid());
  EXPECT_FALSE(FileRow("walk.vmb").isValid());
}

TEST_F(Story, LooksAtSingleChannelsWhileTheTrialChanges) {
  OpenWalkAsExpert();
  auto* channels = Find<ui::ChannelTableView>("channels");
  const auto open = [] {
    QStringList titles;
    for (const QWidget* window : VisibleWindows("frmGraph1")) {
      titles << window->windowTitle();
    }
    titles.sort();
    return titles.join(QStringLiteral(", ")).toStdString();
  };
  const QModelIndex trace = channels->model()->index(0, channels->model()->columnCount() - 1);
  Person::DoubleClickCell(channels, trace);
  EXPECT_TRUE(Becomes(open, "Channel Vastus lat (mV)"));
  window_->activateWindow();
  QTest::keyClick(channels, Qt::Key_Down);
  QTest::keyClick(channels, Qt::Key_Return);
  EXPECT_TRUE(Becomes(open, "Channel Biceps fem (mV), Channel Vastus lat (mV)"));
  person_.When("QMenu", [](QWidget* menu) { QTest::keyClick(menu, Qt::Key_G); });
  QContextMenuEvent click(QContextMenuEvent::Mouse, channels->visualRect(trace).center(),
                          channels->viewport()->mapToGlobal(channels->visualRect(trace).center()));
  QApplication::sendEvent(channels->viewport(), &click);
  person_.Work();
  EXPECT_EQ(open(), "Channel Biceps fem (mV), Channel Vastus lat (mV)");  // it was open

  // To type a name opens none, and the window of the channel takes the name.
  Person::TypeCell(channels, 1, 2, "Hamstrings");
  person_.Work();
  EXPECT_TRUE(Becomes(open, "Channel Hamstrings (mV), Channel Vastus lat (mV)"));

  // The heads of the dialogue for all of them can be read.
  person_.When("frmGraphChoose", [](QWidget* dialog) {
    const auto* heads = dialog->findChild<QTableView*>()->horizontalHeader();
    for (int k = 0; k < heads->count(); ++k) {
      EXPECT_GE(heads->sectionSize(k), heads->model()->headerData(k, Qt::Horizontal).toString().isEmpty()
                                           ? 0
                                           : heads->sectionSizeHint(k))
          << k;
    }
    Person::Press(dialog, "Cancel");
  });
  Choose("Select Channels for Single-Axis Graph");

  // Another trial, with one channel.
  WriteTrial("short.vmb", 1);
  Entry("Refresh")->trigger();
  Shown().FileChanged = false;
  DoubleClickFile("short.vmb");
  EXPECT_TRUE(Becomes(open, "Channel Vastus lat (mV)"));
  Choose("Close selected file");
}

TEST_F(Story, TellsWhatAFileLacksAndWhatASaveWillLose) {
  fs::resize_file(Path("walk.vmb"), fs::file_size(Path("walk.vmb")) - 10000);
  OpenWalkAsExpert();
  auto* notice = Find<QLabel>("notice");
  EXPECT_TRUE(notice->isVisible());
  EXPECT_TRUE(notice->text().startsWith("The file ends after 3,501 of 6,001 samples of channel "));
  const int width = window_->minimumSizeHint().width();
  Shown().Notices.emplace_back(500, 'x');
  window_->resize(window_->size() + QSize(1, 0));
  EXPECT_EQ(window_->minimumSizeHint().width(), width) << "a long notice makes no wide window";

  // What the editor of the first channel's cell tells while this is typed; it is left with Escape.
  const auto type = [](QAbstractItemView* table, int column, const char* text) {
    const QModelIndex cell = table->model()->index(0, column);
    table->setCurrentIndex(cell);
    table->edit(cell);
    const QList<QLineEdit*> lines = table->viewport()->findChildren<QLineEdit*>();
    QLineEdit* editor = lines.isEmpty() ? nullptr : lines.back();  // those before it were left
    if (editor == nullptr || !test::WaitFor([editor] { return editor->isVisible(); })) {
      throw std::runtime_error("the cell cannot be edited");
    }
    QTest::keyClicks(editor, QString::fromUtf8(text));
    const QString told = QToolTip::text();
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_TRUE(test::WaitFor([] { return !QToolTip::isVisible(); }));
    return told.toStdString();
  };
  auto* channels = Find<ui::ChannelTableView>("channels");
  const std::string cut = ".vmb and .vma files keep 10 characters: \"Vastus lat\"";
  EXPECT_EQ(type(channels, 2, "Vastus lateralis"), cut);
  EXPECT_EQ(type(channels, 3, "newton metres"), "There is room for 10 characters: \"newton met\"");
  person_.When("frmChoose", [&](QWidget* dialog) {
    EXPECT_TRUE(test::WaitFor([dialog] { return dialog->isActiveWindow(); })) << "which hides tips";
    EXPECT_EQ(type(dialog->findChild<ui::ChannelTableView*>(), 5, "Vastus lateralis"), cut);
    Person::Press(dialog, "Cancel");
  });
  Choose("Labels");
}

TEST_F(Story, WalksBackAndOnAlongTheHistory) {
  OpenWalkAsExpert();
  const float before = Shown().Data(100, 1);
  person_.When("frmChoose", [](QWidget* dialog) {
    auto* table = dialog->findChild<ui::ChannelTableView*>();
    Person::TypeCell(table, 0, 5, "2");
    Person::Press(dialog, "Process");
  });
  Choose("Multiply by a Constant (sX)");
  ASSERT_EQ(Shown().Data(100, 1), 2 * before);
  auto* history = Find<QListWidget>("historyList");
  ASSERT_EQ(history->count(), 2);
  const QString line = history->item(1)->text();
  EXPECT_EQ(line, "2  Multiplied by 2: Vastus lat");
  const auto shows = [&](float factor, int row) {
    return test::WaitFor([&] {
      return Shown().Data(100, 1) == factor * before && history->currentRow() == row &&
             history->count() == 2 && history->item(1)->font().italic() == (row == 0);
    });
  };
  QTest::mouseClick(history->viewport(), Qt::LeftButton, {},
                    history->visualItemRect(history->item(0)).center());
  EXPECT_TRUE(shows(1, 0));
  EXPECT_EQ(history->item(1)->text(), line);
  window_->activateWindow();
  ASSERT_TRUE(test::WaitForWindowActive(window_.get()));
  QTest::keyClick(window_.get(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_TRUE(shows(2, 1));
  QTest::keyClick(window_.get(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(shows(1, 0));
  QTest::mouseClick(Find<QPushButton>("redo"), Qt::LeftButton);
  EXPECT_TRUE(shows(2, 1));
  QTest::mouseClick(Find<QPushButton>("copyHistory"), Qt::LeftButton);
  EXPECT_TRUE(QApplication::clipboard()->text().contains("2. Multiplied by 2: Vastus lat.\n"));

  // A recipe that was just saved is the one that is run.
  const std::string recipe = Path("double.yaml");
  person_.WhenA<QFileDialog>([recipe](QWidget* dialog) {
    EXPECT_TRUE(dialog->findChild<QTreeView*>("treeView")->isColumnHidden(2))
        << "sizes and dates have the room";
    TypePath(dialog, recipe, "Save");
  });
  QTest::mouseClick(Find<QPushButton>("saveRecipe"), Qt::LeftButton);
  person_.Work();
  Choose("Run a recipe...");
  EXPECT_EQ(Find<QLineEdit>("recipe")->text().toStdString(), recipe);
}

TEST_F(Story, AFileOfTheCommandLineThatCannotBeReadIsToldInABox) {
  fs::create_symlink("/proc/self/mem", Path("broken.vmb"));  // there, and every read of it fails
  std::string told;
  person_.When("QMessageBox", [&told](QWidget* box) {
    told = qobject_cast<QMessageBox*>(box)->text().toStdString();
    Person::Press(box, "OK");
  });
  Start({Path("broken.vmb")});
  person_.Work();
  EXPECT_TRUE(told.starts_with("Error reading file: " + Path("broken.vmb"))) << told;
  EXPECT_NE(told.find("Input/output error"), std::string::npos) << told;
  EXPECT_EQ(Shown().NData, 0);
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(Story, AFileOfTheCommandLineOffersItsGraphOnce) {
  window_.reset();
  person_.When("frmLoading", [](QWidget* panel) { Person::Press(panel, "Graph"); });
  person_.When("frmGraphChoose", [](QWidget* dialog) { Person::Press(dialog, "Cancel"); });
  Start({Path("walk.vmb")});
  person_.Work();
  EXPECT_EQ(window_->State().view, nullptr);
  // A picker that is left without a value closes like one that did its work: the status bar tells.
  person_.WhenA<ui::PickerDialog>([](QWidget* picker) { Person::Press(picker, "Process"); });
  Choose("High-pass Filter");
  EXPECT_EQ(window_->statusBar()->currentMessage().toStdString(), "High-pass Filter: nothing was changed");
}

TEST_F(Story, TypingReplacesWhatADialogueOffersAndNothingMoves) {
  OpenWalkAsExpert();
  const float before = Shown().Data(100, 1);
  person_.When("frmSetEpochDuration", [](QWidget* dialog) {
    auto* width = qobject_cast<QLineEdit*>(dialog->focusWidget());
    if (width == nullptr || !test::WaitFor([width] { return width->hasFocus(); })) {
      throw std::runtime_error("no field has the focus");
    }
    const QSize size = dialog->size();
    QTest::keyClick(width, Qt::Key_Backspace);  // an empty field is remarked upon
    QTest::keyClicks(width, "51");
    EXPECT_EQ(width->text(), "51");
    EXPECT_EQ(dialog->size(), size);
    auto* table = dialog->findChild<ui::ChannelTableView*>();
    const QRect cell = table->visualRect(table->model()->index(0, 4));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, {cell.left() + 12, cell.center().y()});
    Person::Press(dialog, "OK");
  });
  Choose("Moving Average");
  EXPECT_EQ(window_->State().smoothing.WindowWidth, 51);
  EXPECT_NE(Shown().Data(100, 1), before);
}

// The colour of a channel, chosen by sight in the dialogue of the graph.
TEST_F(Story, ChoosesAColourFromTheSwatchesOfTheGraphsDialogue) {
  OpenWalkAsExpert();
  person_.When("frmGraphChoose", [](QWidget* dialog) { Person::Press(dialog, "All"); });
  person_.When("frmGraphChoose", [](QWidget* dialog) {
    auto* table = dialog->findChild<ui::ChannelTableView*>();
    const QModelIndex cell = table->model()->index(1, table->model()->columnCount() - 1);
    ASSERT_EQ(table->model()->headerData(cell.column(), Qt::Horizontal).toString(), "Select colour");
    const auto shows = [table, cell](int colour) {
      const QImage picture = table->viewport()->grab(table->visualRect(cell)).toImage();
      const QRgb wanted = ui::ChannelColour(colour, table->palette()).rgb();
      for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixel(x, picture.height() / 2) == wanted) {
          return true;
        }
      }
      return false;
    };
    EXPECT_TRUE(shows(2));
    Person::DoubleClickCell(table, cell);
    auto* list = table->viewport()->findChild<QComboBox*>();
    ASSERT_NE(list, nullptr);
    ASSERT_TRUE(test::WaitFor([list] { return list->view()->isVisible(); }));
    const QModelIndex eleventh = list->model()->index(10, 0);
    QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, {},
                      list->view()->visualRect(eleventh).center(), 300);  // later than a double click
    ASSERT_TRUE(test::WaitFor([table, cell] { return table->model()->data(cell).toString() == "11"; }));
    ASSERT_TRUE(test::WaitFor([table] { return table->viewport()->findChild<QComboBox*>() == nullptr; }));
    EXPECT_TRUE(shows(11));
    EXPECT_FALSE(shows(2));
    // By its number, and taken by the button although the list is still open for it.
    const QModelIndex first = table->model()->index(0, cell.column());
    table->setCurrentIndex(first);
    QTest::keyClick(table, Qt::Key_7);
    ASSERT_TRUE(test::WaitFor([table] { return table->viewport()->findChild<QComboBox*>() != nullptr; }));
    for (auto* open : table->viewport()->findChildren<QComboBox*>()) {
      open->hidePopup();
    }
    Person::Press(dialog, "OK");
  });
  Choose("Select Channels for Single-Axis Graph");
  EXPECT_EQ(Shown().ChanColour[2], 11);
  EXPECT_EQ(Shown().ChanColour[1], 7);
}

TEST_F(Story, AFilterIsLookedAtBeforeThereAreData) {
  person_.When("frmFiltering", [](QWidget* dialog) {
    auto* picture = dialog->findChild<QWidget*>("picture");
    auto* cutoff = dialog->findChild<QLineEdit*>("FilterCutoff");
    const auto type = [cutoff](const char* text) {
      cutoff->setFocus();
      if (!test::WaitFor([cutoff] { return cutoff->hasFocus(); })) {
        throw std::runtime_error("the field has not the focus");
      }
      cutoff->selectAll();
      QTest::keyClicks(cutoff, text);
      QTest::keyClick(cutoff, Qt::Key_Tab);
    };
    const QImage before = picture->grab().toImage();
    type("3");
    const QImage lower = picture->grab().toImage();
    EXPECT_NE(lower, before);
    EXPECT_FALSE(dialog->findChildren<QTableView*>().isEmpty());
    type("5000");  // above half the sampling rate
    EXPECT_NE(picture->grab().toImage(), lower);
    EXPECT_TRUE(dialog->findChildren<QTableView*>().isEmpty());
    Person::Press(dialog, "Cancel");
  });
  Choose("Filter Testing");
}

TEST_F(Story, FillsInWhatATextTells) {
  window_->State().UserLevel = UserLevelKind::Expert;
  for (const char* name : {"one.tab", "two.tab"}) {
    test::WriteFile(Path(name),
                    "Devices\n2000\nFrame,Sub Frame,Fx,EMG 1\n,,N,V\n1,0,5,6\n1,1,7,8\n2,0,9,1\n");
  }
  Entry("Refresh")->trigger();
  person_.When("frmParse", [](QWidget* dialog) {
    auto* rate = dialog->findChild<QLineEdit*>("Rate");
    auto* mark = dialog->findChild<QToolButton*>("foundRate");
    EXPECT_EQ(rate->text(), "2000");
    EXPECT_TRUE(mark->isChecked());
    QTest::mouseClick(mark, Qt::LeftButton);
    EXPECT_EQ(rate->text(), "0");
    QTest::mouseClick(mark, Qt::LeftButton);
    EXPECT_EQ(rate->text(), "2000");
    auto* leftOut = dialog->findChild<QLineEdit*>("ParseLeaveOut");
    EXPECT_EQ(leftOut->text(), "1, 2");
    auto* heads = dialog->findChild<QTableWidget*>("firstLines")->horizontalHeader();
    QTest::mouseClick(heads->viewport(), Qt::LeftButton, {}, {heads->sectionViewportPosition(3) + 5, 5});
    EXPECT_EQ(leftOut->text(), "1, 2, 4");
    Person::Press(dialog, "Read");
  });
  DoubleClickFile("one.tab");
  EXPECT_EQ(Shown().ChanLabel[1], "Fx");
  EXPECT_EQ(Shown().ChanUnits[1], "N");
  EXPECT_EQ(Shown().NChan, 1);
  EXPECT_EQ(Shown().Rate, 2000.0);
  // The next file of the same layout is read as this one was, after a restart too.
  Shown().FileChanged = false;
  window_->close();
  ASSERT_TRUE(test::WaitFor([this] { return window_->isHidden(); }));
  window_.reset();
  std::filesystem::current_path(Path(""));
  Start();
  window_->State().UserLevel = UserLevelKind::Expert;
  person_.When("frmParse", [](QWidget* dialog) {
    EXPECT_EQ(dialog->findChild<QLineEdit*>("ParseLeaveOut")->text(), "1, 2, 4");
    EXPECT_TRUE(
        dialog->findChild<QToolButton*>("foundParseLeaveOut")->text().contains("as in the last file"));
    Person::Press(dialog, "Read");
  });
  DoubleClickFile("two.tab");
  EXPECT_EQ(Shown().NChan, 1);
}

TEST_F(Story, TakesAFileThatIsDroppedAndTellsWhatItCannotRead) {
  window_->State().UserLevel = UserLevelKind::Expert;
  const auto dropped = [this](const char* name) { DropFiles(window_.get(), {Path(name)}); };
  dropped("walk.vmb");
  EXPECT_TRUE(test::WaitFor([this] { return Shown().NData == 6001; }));

  // Of several files one is opened, and said before; a directory is where the browser goes.
  WriteTrial("other.vmb", 2);
  const auto several = [&](const char* button) {
    person_.When("Several Files", [this, button](QWidget* box) {
      EXPECT_THROW(DropFiles(window_.get(), {Path("walk.vmb")}), std::runtime_error) << "a box waits";
      Person::Press(box, button);
    });
    DropFiles(window_.get(), {Path("other.vmb"), Path("walk.vmb")});
    person_.Work();
  };
  several("Cancel");
  EXPECT_EQ(Shown().NChan, 3);
  several("OK");
  EXPECT_TRUE(test::WaitFor([this] { return Shown().NChan == 2; }));
  std::filesystem::create_directories(Path("inner"));
  dropped("inner");
  EXPECT_TRUE(test::WaitFor([this] { return window_->State().DataDir == Path("inner/"); }));
  EXPECT_EQ(Shown().NData, 6001) << "the trial stays";
  dropped("walk.vmb");
  EXPECT_TRUE(test::WaitFor([this] { return Shown().NChan == 3; }));

  // A saved spectrum is a trial of one channel, dropped or double-clicked.
  RunRecipe(
      "velmora2: 1\nsteps:\n  - do: file.load\n    file: \"${input}\"\n"
      "  - do: fourier.harmonic-regression\n    answers: [{pick: {values: {1: \"40\"}}}, "
      "{form: {press: Save}}, {file: \"${out}/walk.ftf\"}, {form: {press: Exit}}]\n",
      "");
  const auto agree = [this] {
    for (const char* question : {"Number of Harmonics", "Bias Level"}) {
      person_.When(question, [](QWidget* box) { Person::Press(box, "OK"); });
    }
  };
  agree();
  dropped("walk.ftf");
  person_.Work();
  EXPECT_TRUE(test::WaitFor([this] { return Shown().NChan == 1 && Shown().FileTypeCode == 8; }));
  DoubleClickFile("walk.vmb");
  ASSERT_EQ(Shown().FileTypeCode, 253);
  auto* filter = qobject_cast<QComboBox*>(
      Find<ui::FileListView>("dataFiles")->parentWidget()->layout()->itemAt(0)->widget());
  const int usual = filter->currentIndex();
  filter->setCurrentIndex(filter->findText("All files this program reads"));
  Q_EMIT filter->activated(filter->currentIndex());
  agree();
  DoubleClickFile("walk.ftf");
  EXPECT_EQ(Shown().FileTypeCode, 8);
  EXPECT_EQ(Shown().NChan, 1);
  filter->setCurrentIndex(usual);
  Q_EMIT filter->activated(usual);

  WriteFile(Path("gait.stm"), std::string("P\0", 2));
  Entry("Refresh")->trigger();
  person_.When("Format Not Read", [](QWidget* box) { Person::Press(box, "OK"); });
  DoubleClickFile("gait.stm");
  EXPECT_EQ(Shown().NData, 0);
  EXPECT_TRUE(Find<QPushButton>("openExample")->isVisible());

  test::WriteFile(Path("gait.tab"), "t\tFz\n0\t1\n1\t2\n2\t3\n");
  Entry("Refresh")->trigger();
  person_.When("frmParse", [](QWidget* dialog) {
    EXPECT_EQ(dialog->findChild<QLineEdit*>("ParseTimeColumn")->toolTip(),
              "Time Channel\nEnter channel number for time (usually 1, 0=none).");
    Person::Press(dialog, "Cancel");
  });
  DoubleClickFile("gait.tab");

  // A name that is not UTF-8, as other systems wrote it.
  WriteTrial("schw\xFCnge.vmb", 1);
  Entry("Refresh")->trigger();
  DoubleClickFile("schw\xFCnge.vmb");
  EXPECT_EQ(Shown().NData, 6001);
  auto* files = Find<ui::FileListView>("dataFiles");
  QTest::mouseClick(files->viewport(), Qt::LeftButton, {}, files->visualRect(FileRow("walk.vmb")).center());
  EXPECT_EQ(Find<QLabel>("selectedFile")->text(), "Selected: walk.vmb");
}

}  // namespace
}  // namespace velmora::test
