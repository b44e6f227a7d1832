#include "ui/recipes/recipe_process.hpp"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velmora::ui {

RecipeProcess::RecipeProcess(QObject* parent) : QObject(parent) {
  connect(&process_, &QProcess::readyReadStandardOutput, this, &RecipeProcess::ReadLines);
  connect(&process_, &QProcess::finished, this, [this] {
    ReadLines();
    Q_EMIT Ended(QString::fromUtf8(process_.readAllStandardError()).trimmed());
  });
  connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) {
      Q_EMIT Ended(tr("velmora2-run, which lies beside this program, cannot be started: %1")
                       .arg(process_.errorString()));
    }
  });
}

// Paths go through a file: there may be more of them than a command line holds, with any character in them.
void RecipeProcess::Start(const RecipeOrder& order) {
  if (!list_.open()) {
    Q_EMIT Ended(list_.errorString());
    return;
  }
  list_.resize(0);
  list_.seek(0);
  for (const QString& file : order.files) {
    list_.write(QFile::encodeName(file));
    list_.putChar('\0');
  }
  list_.flush();
  process_.start(
      QCoreApplication::applicationDirPath() + QStringLiteral("/velmora2-run"),
      {order.recipe, QStringLiteral("--inputs"), list_.fileName(), QStringLiteral("--out"), order.results,
       QStringLiteral("--jobs"), QString::number(order.atOnce), QStringLiteral("--progress")});
}

void RecipeProcess::Cancel() {
  process_.terminate();
}

void RecipeProcess::WaitForEnd() {
  constexpr int kPatience = 30'000;  // ms; what does not end by then is killed with this object
  process_.waitForFinished(kPatience);
}

void RecipeProcess::ReadLines() {
  while (process_.canReadLine()) {
    ReadLine(process_.readLine());
  }
}

void RecipeProcess::ReadLine(const QByteArray& line) {
  const QJsonObject told = QJsonDocument::fromJson(line).object();
  const int file = told.value(QStringLiteral("input")).toInt(-1);
  const QString outcome = told.value(QStringLiteral("outcome")).toString();
  if (outcome.isEmpty()) {
    Q_EMIT StepBegun(file, told.value(QStringLiteral("action")).toString(),
                     told.value(QStringLiteral("step")).toInt());
    return;
  }
  QStringList message;
  for (const char* key : {"place", "why"}) {
    if (const QString text = told.value(QLatin1String(key)).toString(); !text.isEmpty()) {
      message.append(text);
    }
  }
  const QJsonArray warnings = told.value(QStringLiteral("warnings")).toArray();
  for (const auto& warning : warnings) {
    message.append(warning.toString());
  }
  Q_EMIT FileEnded(file, outcome, message.join(QLatin1Char('\n')));
}

}  // namespace velmora::ui
