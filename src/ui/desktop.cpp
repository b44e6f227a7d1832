#include "ui/desktop.hpp"

#include <QDesktopServices>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include "ui/text.hpp"

namespace velmora::ui {

bool StartCalculator() {
  for (const char* name :
       {"gnome-calculator", "kcalc", "mate-calc", "galculator", "qalculate-gtk", "xcalc"}) {
    const QString program = QStandardPaths::findExecutable(QString::fromUtf8(name));
    if (!program.isEmpty()) {
      return QProcess::startDetached(program, {});
    }
  }
  return false;
}

bool ShowDirectory(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}

bool OpenText(const std::string& path, const std::string& program) {
  const QString found = QStandardPaths::findExecutable(ToQt(program));
  if (!found.isEmpty()) {
    return QProcess::startDetached(found, {ToQt(path)});
  }
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}

}  // namespace velmora::ui
