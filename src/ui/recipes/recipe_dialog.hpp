#pragma once

#include <QDialog>
#include <QStringList>
#include <functional>
#include <string>

#include "ui/recipes/recipe_process.hpp"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTreeWidget;
class QTreeWidgetItem;

namespace velmora::ui {

/// A recipe, the files to run it over, and what comes of each. The main window stays usable beside it.
class RecipeDialog : public QDialog {
  Q_OBJECT

 public:
  /// Files are looked for in `directory` first.
  RecipeDialog(const QString& directory, QWidget* parent);

  void SetRecipe(const QString& path);
  /// Adds those that are not in the list.
  void AddFiles(const QStringList& files);

  [[nodiscard]] bool IsRunning() const;
  /// Ends a run as Cancel does, and waits until what it has done is written.
  void Stop();

 Q_SIGNALS:
  /// A row was chosen whose file is wanted as the trial.
  void TrialWanted(const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void reject() override;

 private:
  QWidget* RecipeRow();
  QWidget* FilesRow();
  QWidget* ResultsRow();
  QWidget* LastRow();
  void AskForRecipe();
  void AskForFiles();
  void AskForResults();
  void RemoveSelected();
  void RunOrCancel();
  void Start();
  void ShowStep(int file, const QString& action, int step);
  void ShowOutcome(int file, const QString& outcome, const QString& message);
  void ShowEnd(const QString& said);
  /// The trial of the row, or what was said of it.
  void OpenRow(QTreeWidgetItem* item);
  void UpdateButtons();

  QString directory_;
  RecipeProcess process_;
  bool cancelled_ = false;
  int ended_ = 0;
  QLineEdit* recipe_ = nullptr;
  QTreeWidget* files_ = nullptr;
  QLineEdit* results_ = nullptr;
  QSpinBox* atOnce_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* said_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* remove_ = nullptr;
  QPushButton* run_ = nullptr;
};

}  // namespace velmora::ui
