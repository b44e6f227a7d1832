#include "ui/dialogs/file_dialog.hpp"

#include <QFileDialog>

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
