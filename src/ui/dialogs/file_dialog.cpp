#include "ui/dialogs/file_dialog.hpp"

#include <QFileDialog>
#include <QHeaderView>
#include <QTreeView>

#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// "Text (.TXT)|*.txt|All files (*.*)|*.*" as Qt wants it: "Text (*.txt)", "All files (*)".
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = ToQt(filter).split('|');
  QStringList names;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString caption = parts[i].section('(', 0, 0).trimmed();
    QString patterns = parts[i + 1];
    patterns.replace(';', ' ').replace(QStringLiteral("*.*"), QStringLiteral("*"));
    names << caption + QStringLiteral(" (") + patterns + QStringLiteral(")");
  }
  return names;
}

// Sizes and dates are read whole, and the name has the rest; what kind a file is, its extension says.
void ShowWholeColumns(const QFileDialog& dialog) {
  constexpr int kKind = 2;
  if (auto* list = dialog.findChild<QTreeView*>(QStringLiteral("treeView"))) {
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    list->setColumnHidden(kKind, true);
  }
}

}  // namespace

std::vector<std::string> ChooseFiles(const FileQuestion& question, QWidget& parent) {
  QFileDialog dialog(&parent, ToQt(question.title));
  const bool saves = question.mode == FileQuestion::Mode::Save;
  dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  if (question.mode == FileQuestion::Mode::Directory) {
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
  } else if (saves) {
    dialog.setFileMode(QFileDialog::AnyFile);
  } else {
    dialog.setFileMode(question.several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
  }
  if (!question.directory.empty()) {
    dialog.setDirectory(ToQt(question.directory));
  }
  const QStringList filters = NameFilters(question.filter);
  if (!filters.isEmpty()) {
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters.value(question.filterIndex - 1, filters.front()));
  }
  dialog.setDefaultSuffix(ToQt(question.extension).mid(1));
  dialog.selectFile(ToQt(question.defaultName));
  ShowWholeColumns(dialog);
  PlaceOver(dialog, parent);
  std::vector<std::string> paths;
  if (dialog.exec() == QDialog::Accepted) {
    for (const QString& path : dialog.selectedFiles()) {
      paths.push_back(ToStd(path));
    }
  }
  return paths;
}

}  // namespace velmora::ui
