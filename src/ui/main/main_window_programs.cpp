// The programs and documents outside this program that the window starts.
#include <QActionGroup>
#include <QFileInfo>

#include "browse/file_commands.hpp"
#include "core/files/paths.hpp"
#include "ui/browser/browser_panel.hpp"
#include "ui/desktop.hpp"
#include "ui/main/main_window.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

const char* NameOf(ProgramKind kind) {
  return kind == ProgramKind::Viewer ? "Text Viewer" : "Spreadsheet";
}

// The entry that a start falls back to stays; another one is there to choose when its file is.
bool CanBeChosen(ProgramKind kind, std::string_view program) {
  return program == ProgramOf(Preferences{}, kind) || FileExists("", program);
}

void FillWithFiles(QMenu* menu, const std::vector<std::string>& paths,
                   const std::function<void(const std::string&)>& open) {
  menu->clear();
  for (const std::string& path : paths) {
    QAction* action = menu->addAction(ToQt(FileNamePart(path)));
    action->setStatusTip(ToQt(path));
    QObject::connect(action, &QAction::triggered, menu, [open, path] { open(path); });
  }
  if (menu->isEmpty()) {
    menu->addAction(QObject::tr("None"))->setEnabled(false);
  }
}

}  // namespace

void MainWindow::ConnectTextFiles() {
  FileListView* files = browser_->TextFiles();
  connect(files, &FileListView::Opened, this, &MainWindow::OpenText);
  connect(files, &FileListView::RightClicked, this, [this](const std::string& path) {
    if (AskReadFile(workbench_, path)) {
      OpenText(path);
    }
  });
  connect(files, &FileListView::EmptyClicked, this, &MainWindow::OpenSelectedText);
  connect(browser_, &BrowserPanel::TextWanted, this, &MainWindow::OpenSelectedText);
}

void MainWindow::OpenText(const std::string& path) {
  const std::string why = OpenWith(OpeningOf(path, workbench_.preferences), path);
  if (!why.empty()) {
    Tell("Open Text File", FileNamePart(path) + " was not opened.\n\n" + why +
                               "\nAnother one can be chosen in the Options menu.");
  }
}

void MainWindow::OpenSelectedText() {
  const FileListView* files = browser_->TextFiles();
  if (files->topLevelItemCount() == 0) {
    Tell("", "No output files in this directory.");
  } else if (files->SelectedPath().empty()) {
    Tell("", "No output file was selected.");
  } else {
    OpenText(files->SelectedPath());
  }
}

void MainWindow::OpenManual(const std::string& path) {
  if (!OpenDocument(path)) {
    Tell("Manuals", "No program was found on this computer that opens " + FileNamePart(path) + ".");
  }
}

void MainWindow::AddProgramMenu(QMenu* menu, ProgramKind kind) {
  connect(menu, &QMenu::aboutToShow, this, [this, menu, kind] { FillProgramMenu(menu, kind); });
}

// Names of another system's programs stand for the desktop's own; what was chosen here follows them.
void MainWindow::FillProgramMenu(QMenu* menu, ProgramKind kind) {
  menu->clear();
  delete menu->findChild<QActionGroup*>();
  auto* group = new QActionGroup(menu);
  const std::string& chosen = ProgramOf(workbench_.preferences, kind);
  const auto add = [&](const std::string& program, const QString& caption, bool isChosen) {
    QAction* action = menu->addAction(caption);
    action->setCheckable(true);
    action->setChecked(isChosen);
    action->setEnabled(isChosen || CanBeChosen(kind, program));
    action->setStatusTip(QFileInfo(ToQt(program)).isAbsolute() ? ToQt(program)
                                                               : tr("The desktop's own program"));
    group->addAction(action);
    connect(action, &QAction::triggered, this,
            [this, kind, program] { ProgramOf(workbench_.preferences, kind) = program; });
  };
  const int row = ProgramRow(kind, chosen);
  int entry = 0;
  for (const std::string_view known : KnownPrograms(kind)) {
    const bool isChosen = entry++ == row;
    add(isChosen ? chosen : std::string(known), ToQt(known), isChosen);
  }
  menu->addSeparator();
  if (row < 0) {
    add(chosen, ToQt(FileNamePart(chosen)), true);
  }
  connect(menu->addAction(tr("&Other program...")), &QAction::triggered, this,
          [this, kind] { ChooseProgram(kind); });
}

void MainWindow::ChooseProgram(ProgramKind kind) {
  const std::vector<std::string> answer = person_.AskFile({.mode = FileQuestion::Mode::Open,
                                                           .title = NameOf(kind),
                                                           .filter = "All files (*.*)|*.*",
                                                           .directory = "/usr/bin"});
  if (answer.empty()) {
    return;
  }
  if (!QFileInfo(ToQt(answer.front())).isExecutable()) {
    Tell(NameOf(kind), FileNamePart(answer.front()) + " is not a program.");
    return;
  }
  ProgramOf(workbench_.preferences, kind) = answer.front();
}

void MainWindow::AddFamilyMenus() {
  auto* programs = new QMenu(tr("&Programs"), this);
  menus_->Top("&File")->insertMenu(menus_->Of("file.refresh"), programs);
  connect(programs, &QMenu::aboutToShow, this, [this, programs] {
    FillWithFiles(programs, FamilyPrograms(workbench_.preferences.ProgDir), [this](const std::string& path) {
      if (!StartProgram(path)) {
        Tell("Programs", "The program " + path + " could not be started.");
      }
    });
  });
  QMenu* manuals = menus_->Top("&Help")->addMenu(QStringLiteral("&Manuals"));
  connect(manuals, &QMenu::aboutToShow, this, [this, manuals] {
    FillWithFiles(manuals, FamilyManuals(workbench_.preferences.ProgDir),
                  [this](const std::string& path) { OpenManual(path); });
  });
}

}  // namespace velmora::ui
