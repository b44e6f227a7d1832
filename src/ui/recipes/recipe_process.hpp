#pragma once

#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QTemporaryFile>

namespace velmora::ui {

/// What is to be run: as a person enters it.
struct RecipeOrder {
  QString recipe;
  QStringList files;
  QString results;  // the directory
  int atOnce = 1;
};

/// velmora2-run at work beside the window, which stays alive whatever a trial does to it.
class RecipeProcess : public QObject {
  Q_OBJECT

 public:
  explicit RecipeProcess(QObject* parent = nullptr);

  void Start(const RecipeOrder& order);
  /// Inputs at work end; what is done stays.
  void Cancel();
  /// Returns when what Cancel left to do is done.
  void WaitForEnd();
  [[nodiscard]] bool IsRunning() const { return process_.state() != QProcess::NotRunning; }

 Q_SIGNALS:
  void StepBegun(int file, const QString& action, int step);
  /// `outcome` is "done", "failed" or "interrupted"; `message` what there is to say of it, with line breaks.
  void FileEnded(int file, const QString& outcome, const QString& message);
  /// All is over. `said` is what the program told of itself: the counts, or why nothing ran.
  void Ended(const QString& said);

 private:
  void ReadLines();
  void ReadLine(const QByteArray& line);

  QProcess process_;
  QTemporaryFile list_;
};

}  // namespace velmora::ui
