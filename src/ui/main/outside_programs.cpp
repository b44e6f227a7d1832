#include "ui/main/outside_programs.hpp"

#include <QActionGroup>
#include <QFileInfo>
#include <QMenu>
#include <functional>

#include "browse/file_commands.hpp"
#include "core/files/paths.hpp"
#include "ui/desktop.hpp"
#include "ui/main/tell.hpp"
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

void OutsidePrograms::OpenText(const std::string& path) {
  const std::string why = OpenWith(OpeningOf(path, workbench_.preferences), path);
  if (!why.empty()) {
    Tell(person_, "Open Text File",
         FileNamePart(path) + " was not opened.\n\n" + why +
             "\nAnother one can be chosen in the Options menu.");
  }
}

void OutsidePrograms::AskAndOpenText(const std::string& path) {
  if (AskReadFile(workbench_, path)) {
    OpenText(path);
  }
}

void OutsidePrograms::OpenManual(const std::string& path) {
  if (!OpenDocument(path)) {
    Tell(person_, "Manuals", "No program was found on this computer that opens " + FileNamePart(path) + ".");
  }
}

void OutsidePrograms::StartFamilyProgram(const std::string& path) {
  if (!StartProgram(path)) {
    Tell(person_, "Programs", "The program " + path + " could not be started.");
  }
}

// Names of another system's programs stand for the desktop's own; what was chosen here follows them.
void OutsidePrograms::FillWithPrograms(QMenu* menu, ProgramKind kind) {
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
                                                               : QObject::tr("The desktop's own program"));
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, menu,
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
  QObject::connect(menu->addAction(QObject::tr("&Other program...")), &QAction::triggered, menu,
                   [this, kind] { Choose(kind); });
}

void OutsidePrograms::Choose(ProgramKind kind) {
  const std::vector<std::string> answer = person_.AskFile({.mode = FileQuestion::Mode::Open,
                                                           .title = NameOf(kind),
                                                           .filter = "All files (*.*)|*.*",
                                                           .directory = "/usr/bin"});
  if (answer.empty()) {
    return;
  }
  if (!QFileInfo(ToQt(answer.front())).isExecutable()) {
    Tell(person_, NameOf(kind), FileNamePart(answer.front()) + " is not a program.");
    return;
  }
  ProgramOf(workbench_.preferences, kind) = answer.front();
}

void OutsidePrograms::FillWithFamilyPrograms(QMenu* menu) {
  FillWithFiles(menu, FamilyPrograms(workbench_.preferences.ProgDir),
                [this](const std::string& path) { StartFamilyProgram(path); });
}

void OutsidePrograms::FillWithManuals(QMenu* menu) {
  FillWithFiles(menu, FamilyManuals(workbench_.preferences.ProgDir),
                [this](const std::string& path) { OpenManual(path); });
}

}  // namespace velmora::ui
