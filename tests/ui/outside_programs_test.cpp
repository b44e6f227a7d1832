// What the window hands to other programs: text files, workbooks, manuals.
#include "ui/story.hpp"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

/// A desktop whose own programs, and those of the tests, write down what they were started with.
class OutsidePrograms : public Story {
 protected:
  QByteArray path_ = qgetenv("PATH");
  QByteArray data_ = qgetenv("XDG_DATA_HOME");

  void SetUp() override {
    fs::create_directories(directory_.Path("bin"));
    fs::create_directories(directory_.Path("share/applications"));
    for (const char* name : {"desktop-editor", "desktop-sheet", "my editor", "my-sheet"}) {
      AddProgram(name);
    }
    WriteProgram("xdg-mime",
                 "case $3 in text/plain) echo editor.desktop;; *sheet) echo sheet.desktop;; esac");
    WriteEntry("editor", "desktop-editor --new \"%f\" %i");
    WriteEntry("sheet", "desktop-sheet %U");
    qputenv("PATH", QByteArray::fromStdString(Program("")) + ":/usr/bin:/bin");
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(directory_.Path("share")));
    Story::SetUp();
    window_->activateWindow();
    ASSERT_TRUE(test::WaitForWindowActive(window_.get()));
    auto* tabs = window_->findChild<QTabWidget*>()->tabBar();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
  }
  void TearDown() override {
    Story::TearDown();
    qputenv("PATH", path_);
    qputenv("XDG_DATA_HOME", data_);
  }

  [[nodiscard]] std::string Program(const std::string& name) const { return directory_.Path("bin/" + name); }
  void WriteProgram(const std::string& name, const std::string& script) const {
    WriteFile(Program(name), "#!/bin/sh\n" + script + "\n");
    fs::permissions(Program(name), fs::perms::owner_all);
  }
  void AddProgram(const std::string& name) const {
    const std::string log = directory_.Path(name + ".log");
    WriteProgram(name, "echo \"$*\" > '" + log + ".new' && /bin/mv '" + log + ".new' '" + log + "'");
  }
  void WriteEntry(const std::string& name, const std::string& command) const {
    WriteFile(directory_.Path("share/applications/" + name + ".desktop"),
              "[Desktop Action other]\nExec=false\n[Desktop Entry]\nType=Application\nExec=" + command +
                  "\n[Other]\nExec=false\n");
  }
  /// What a program was started with; it starts some time later, so it is waited for.
  std::string Started(const std::string& name) {
    const std::string log = directory_.Path(name + ".log");
    EXPECT_TRUE(test::WaitFor([&log] { return fs::exists(log); })) << name;
    std::string words = fs::exists(log) ? ReadFile(log) : std::string();
    fs::remove(log);
    return words;
  }
  void AddTexts(std::initializer_list<const char*> names) {
    for (const char* name : names) {
      WriteFile(Path(name), "1\t2\n");
    }
    Entry("Refresh")->trigger();
  }
  /// In the list of text files; outside of it when it is not there.
  QPoint PlaceOf(const char* name) {
    auto* files = Find<ui::FileListView>("textFiles");
    const QList<QTreeWidgetItem*> found = files->findItems(QString::fromUtf8(name), Qt::MatchExactly);
    return found.size() == 1 ? files->visualItemRect(found.front()).center() : QPoint(-1, -1);
  }
  void DoubleClickText(const char* name) {
    QWidget* list = Find<ui::FileListView>("textFiles")->viewport();
    ASSERT_TRUE(list->rect().contains(PlaceOf(name))) << name;
    QTest::mouseClick(list, Qt::LeftButton, {}, PlaceOf(name));
    QTest::mouseDClick(list, Qt::LeftButton, {}, PlaceOf(name));
    person_.Work();
  }
  void PressOpen() {
    QTest::mouseClick(Find<QPushButton>("openText"), Qt::LeftButton);
    person_.Work();
  }
  void ExpectBox(const QString& title, const char* text) {
    person_.WhenA<QMessageBox>([title, text](QWidget* box) {
      EXPECT_EQ(box->windowTitle(), title);
      EXPECT_EQ(qobject_cast<QMessageBox*>(box)->text().toStdString(), text);
      Person::Press(box, "OK");
    });
  }
  /// A menu of the bar by the mouse, then one in it by its letter.
  QMenu* OpenMenu(const char* top, Qt::Key key) {
    QMenuBar* bar = window_->menuBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(Entry(top)).center());
    if (!test::WaitFor([] { return QApplication::activePopupWidget() != nullptr; })) {
      throw std::runtime_error("the menu bar does not open");
    }
    QTest::keyClick(QApplication::activePopupWidget(), key);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) {
      throw std::runtime_error("the menu does not open");
    }
    return menu;
  }
  QMenu* OpenOptions(Qt::Key menu) { return OpenMenu("Options", menu); }
  static void CloseMenus() {
    while (QWidget* menu = QApplication::activePopupWidget()) {
      QTest::keyClick(menu, Qt::Key_Escape);
    }
  }
  static QStringList Marked(const QMenu* menu) {
    QStringList names;
    for (const QAction* action : menu->actions()) {
      if (action->isChecked()) {
        names << action->text();
      }
    }
    return names;
  }
  void ChooseProgram(Qt::Key menu, const std::string& path, const char* refusal = nullptr) {
    person_.WhenA<QFileDialog>([path](QWidget* dialog) { TypePath(dialog, path, "Open"); });
    if (refusal != nullptr) {
      ExpectBox("Text Viewer", refusal);
    }
    QTest::keyClick(OpenOptions(menu), Qt::Key_O);
    person_.Work();
  }
};

TEST_F(OutsidePrograms, TextFilesAndWorkbooksOpenInTheDesktopsProgramsOrInChosenOnes) {
  ExpectBox("Velmora2", "No output files in this directory.");
  PressOpen();
  AddTexts({"notes.txt", "table.csv", "a b.prn"});
  ExpectBox("Velmora2", "No output file was selected.");
  PressOpen();

  DoubleClickText("a b.prn");
  EXPECT_EQ(Started("desktop-editor"), "--new " + Path("a b.prn") + "\n");
  QTest::mouseClick(Find<ui::FileListView>("textFiles")->viewport(), Qt::LeftButton, {},
                    PlaceOf("table.csv"));
  PressOpen();
  EXPECT_EQ(Started("desktop-editor"), "--new " + Path("table.csv") + "\n");  // a table is no workbook
  window_->State().preferences.TextType = 2;
  AddTexts({"book 1.xls"});
  EXPECT_EQ(PlaceOf("notes.txt"), QPoint(-1, -1));
  DoubleClickText("book 1.xls");
  EXPECT_EQ(Started("desktop-sheet"), "file://" + directory_.Path("data/book%201.xls") + "\n");

  ASSERT_EQ(Marked(OpenOptions(Qt::Key_S)), QStringList{"Excel.exe"});
  CloseMenus();
  ChooseProgram(Qt::Key_S, Program("my-sheet"));
  window_->State().preferences.TextType = 6;
  AddTexts({"old.wk1"});
  for (const char* name : {"book 1.xls", "old.wk1"}) {
    DoubleClickText(name);
    EXPECT_EQ(Started("my-sheet"), Path(name) + "\n");
  }

  window_->State().preferences.TextType = 0;
  AddTexts({});
  ChooseProgram(Qt::Key_V, Path("notes.txt"), "notes.txt is not a program.");
  ChooseProgram(Qt::Key_V, Program("my editor"));
  QMenu* viewers = OpenOptions(Qt::Key_V);
  EXPECT_EQ(Marked(viewers), QStringList{"my editor"});
  EXPECT_FALSE(viewers->actions().first()->isEnabled());  // not on this computer
  CloseMenus();

  // The right mouse button asks first.
  person_.When("Read the File?", [](QWidget* box) { Person::Press(box, "OK"); });
  QWidget* list = Find<ui::FileListView>("textFiles")->viewport();
  QContextMenuEvent click(QContextMenuEvent::Mouse, PlaceOf("notes.txt"),
                          list->mapToGlobal(PlaceOf("notes.txt")));
  QApplication::sendEvent(list, &click);
  person_.Work();
  EXPECT_EQ(Started("my editor"), Path("notes.txt") + "\n");

  // A program that has gone is told; its successor of the next start is the usual one.
  fs::remove(Program("my editor"));
  const std::string gone = "notes.txt was not opened.\n\nThe program " + Program("my editor") +
                           " could not be started.\nAnother one can be chosen in the Options menu.";
  ExpectBox("Open Text File", gone.c_str());
  DoubleClickText("notes.txt");
  window_->close();
  ASSERT_TRUE(test::WaitFor([this] { return !window_->isVisible(); }));
  EXPECT_EQ(store_.Get("Velmora2", "Startup", "Viewer", ""), Program("my editor"));
  EXPECT_EQ(store_.Get("Velmora2", "Startup", "Spreadsheet", ""), Program("my-sheet"));
  fs::current_path(Path(""));
  Start();
  EXPECT_EQ(window_->State().preferences.Viewer, "Notepad.exe");
  EXPECT_EQ(window_->State().preferences.Spreadsheet, Program("my-sheet"));
}

TEST_F(OutsidePrograms, ADesktopWithoutProgramsIsToldAndTheFamilyIsOffered) {
  fs::remove(Program("xdg-mime"));
  qputenv("PATH", QByteArray::fromStdString(Program("")));
  AddTexts({"notes.txt"});
  ExpectBox("Open Text File",
            "notes.txt was not opened.\n\nNo program for text files was found on this computer.\nAnother one "
            "can be chosen in the Options menu.");
  DoubleClickText("notes.txt");

  fs::create_directories(Program("manuals"));
  WriteFile(Program("manuals/velmora2.pdf"), "%PDF");
  window_->State().preferences.ProgDir = Program("");
  QMenu* programs = OpenMenu("File", Qt::Key_P);
  ASSERT_EQ(programs->actions().size(), 4);
  programs->setActiveAction(programs->actions().last());
  QTest::keyClick(programs, Qt::Key_Return);
  EXPECT_EQ(Started("my-sheet"), "\n");
  ExpectBox("Manuals", "No program was found on this computer that opens velmora2.pdf.");
  QTest::keyClick(OpenMenu("Help", Qt::Key_M), Qt::Key_Return);
  person_.Work();
}

}  // namespace
}  // namespace velmora::test
