#include "ui/desktop.hpp"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kAnswersWithin = 2000;  // ms

/// What a desktop entry says about starting its program.
struct DesktopEntry {
  QString command;
  bool needsTerminal = false;
};

DesktopEntry ReadEntry(const QString& path) {
  DesktopEntry entry;
  QFile file(path);
  bool inEntry = false;
  if (!file.open(QIODevice::ReadOnly)) {
    return entry;
  }
  for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
    if (line.startsWith('[')) {
      inEntry = line.startsWith(QStringLiteral("[Desktop Entry]"));
    } else if (inEntry && line.startsWith(QStringLiteral("Exec="))) {
      entry.command = line.mid(5).trimmed();
    } else if (inEntry && line.startsWith(QStringLiteral("Terminal=true"))) {
      entry.needsTerminal = true;
    }
  }
  return entry;
}

// The words of an entry's command with the file in the place that it keeps for one.
QStringList WordsOf(const QString& command, const QString& path) {
  QStringList words;
  for (const QString& word : QProcess::splitCommand(command)) {
    if (word == QStringLiteral("%f") || word == QStringLiteral("%F")) {
      words << path;
    } else if (word == QStringLiteral("%u") || word == QStringLiteral("%U")) {
      words << QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    } else if (!(word.size() == 2 && word.startsWith('%'))) {
      words << word;
    }
  }
  return words;
}

// A table is a text although the desktop may take it for a spreadsheet's: so the program is asked for by
// what it is wanted for, not by the file.
bool OpenInDesktopProgram(ProgramKind kind, const QString& path) {
  QProcess ask;
  ask.start(QStringLiteral("xdg-mime"),
            {QStringLiteral("query"), QStringLiteral("default"),
             kind == ProgramKind::Viewer ? QStringLiteral("text/plain")
                                         : QStringLiteral("application/vnd.oasis.opendocument.spreadsheet")});
  if (!ask.waitForFinished(kAnswersWithin)) {
    return false;
  }
  const QString name = QString::fromUtf8(ask.readAllStandardOutput()).trimmed();
  if (name.isEmpty()) {
    return false;
  }
  const DesktopEntry entry = ReadEntry(QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name));
  QStringList words = WordsOf(entry.command, path);
  return !words.isEmpty() && !entry.needsTerminal && QProcess::startDetached(words.takeFirst(), words);
}

}  // namespace

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
  return OpenDocument(path);
}

bool OpenDocument(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}

bool StartProgram(const std::string& path) {
  return QProcess::startDetached(ToQt(path), {});
}

std::string OpenWith(const Opening& opening, const std::string& path) {
  for (const std::string& program : opening.programs) {
    const QString found = QStandardPaths::findExecutable(ToQt(program));
    if (!found.isEmpty() && QProcess::startDetached(found, {ToQt(path)})) {
      return {};
    }
    // The name of a program of another system stands for the desktop's own; a path was chosen here.
    if (!found.isEmpty() || QDir::isAbsolutePath(ToQt(program))) {
      return "The program " + program + " could not be started.";
    }
  }
  if (OpenInDesktopProgram(opening.kind, ToQt(path)) || OpenDocument(path)) {
    return {};
  }
  return opening.kind == ProgramKind::Viewer ? "No program for text files was found on this computer."
                                             : "No program for workbooks was found on this computer.";
}

}  // namespace velmora::ui
