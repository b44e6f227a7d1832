#include "ui/recipes/recipe_dialog.hpp"

#include <QCloseEvent>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QThread>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace velmora::ui {
namespace {

enum FileColumn { kFile, kState, kMessage, kColumns };
constexpr int kPathRole = Qt::UserRole;
constexpr int kMessageRole = Qt::UserRole + 1;

QPushButton* NamedButton(const QString& caption, const char* name) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  return button;
}

// A line to type in, and the dialogue that finds what belongs there.
QWidget* Beside(QWidget* wide, QWidget* narrow) {
  auto* both = new QWidget;
  auto* row = new QHBoxLayout(both);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(wide, 1);
  row->addWidget(narrow);
  return both;
}

}  // namespace

RecipeDialog::RecipeDialog(const QString& directory, QWidget* parent)
    : QDialog(parent), directory_(directory), process_(this) {
  setObjectName(QStringLiteral("recipeDialog"));
  setWindowTitle(tr("Run a Recipe"));
  auto* all = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  form->addRow(tr("&Recipe"), RecipeRow());
  form->addRow(tr("Resu&lts go to"), ResultsRow());
  all->addLayout(form);
  all->addWidget(FilesRow(), 1);
  progress_ = new QProgressBar;
  progress_->setFormat(tr("%v of %m files"));
  all->addWidget(progress_);
  said_ = new QLabel;
  said_->setObjectName(QStringLiteral("said"));
  said_->setWordWrap(true);
  said_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  all->addWidget(said_);
  all->addWidget(LastRow());
  connect(&process_, &RecipeProcess::StepBegun, this, &RecipeDialog::ShowStep);
  connect(&process_, &RecipeProcess::FileEnded, this, &RecipeDialog::ShowOutcome);
  connect(&process_, &RecipeProcess::Ended, this, &RecipeDialog::ShowEnd);
  resize(820, 520);
  UpdateButtons();
}

QWidget* RecipeDialog::RecipeRow() {
  recipe_ = new QLineEdit;
  recipe_->setObjectName(QStringLiteral("recipe"));
  connect(recipe_, &QLineEdit::textChanged, this, &RecipeDialog::UpdateButtons);
  auto* browse = NamedButton(tr("&Browse..."), "browseRecipe");
  connect(browse, &QPushButton::clicked, this, &RecipeDialog::AskForRecipe);
  return Beside(recipe_, browse);
}

QWidget* RecipeDialog::ResultsRow() {
  results_ = new QLineEdit(QDir(directory_).filePath(QStringLiteral("results")));
  results_->setObjectName(QStringLiteral("results"));
  connect(results_, &QLineEdit::textChanged, this, &RecipeDialog::UpdateButtons);
  auto* browse = NamedButton(tr("Bro&wse..."), "browseResults");
  connect(browse, &QPushButton::clicked, this, &RecipeDialog::AskForResults);
  return Beside(results_, browse);
}

QWidget* RecipeDialog::FilesRow() {
  files_ = new QTreeWidget;
  files_->setObjectName(QStringLiteral("files"));
  files_->setColumnCount(kColumns);
  files_->setHeaderLabels({tr("File"), tr("State"), tr("Message")});
  files_->setRootIsDecorated(false);
  files_->setUniformRowHeights(true);
  files_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  files_->header()->resizeSection(kFile, 260);
  files_->header()->resizeSection(kState, 170);
  connect(files_, &QTreeWidget::itemActivated, this, &RecipeDialog::OpenRow);
  connect(files_, &QTreeWidget::itemSelectionChanged, this, &RecipeDialog::UpdateButtons);
  return files_;
}

QWidget* RecipeDialog::LastRow() {
  auto* widget = new QWidget;
  auto* row = new QHBoxLayout(widget);
  row->setContentsMargins(0, 0, 0, 0);
  add_ = NamedButton(tr("&Add files..."), "addFiles");
  connect(add_, &QPushButton::clicked, this, &RecipeDialog::AskForFiles);
  remove_ = NamedButton(tr("Re&move"), "removeFiles");
  connect(remove_, &QPushButton::clicked, this, &RecipeDialog::RemoveSelected);
  atOnce_ = new QSpinBox;
  atOnce_->setObjectName(QStringLiteral("atOnce"));
  atOnce_->setRange(1, 64);
  atOnce_->setValue(std::max(1, QThread::idealThreadCount() - 1));  // a core is the person's
  auto* label = new QLabel(tr("Files at a &time"));
  label->setBuddy(atOnce_);
  run_ = NamedButton(tr("R&un"), "run");
  run_->setDefault(true);
  connect(run_, &QPushButton::clicked, this, &RecipeDialog::RunOrCancel);
  auto* close = NamedButton(tr("Close"), "close");
  connect(close, &QPushButton::clicked, this, &RecipeDialog::reject);
  row->addWidget(add_);
  row->addWidget(remove_);
  row->addStretch(1);
  row->addWidget(label);
  row->addWidget(atOnce_);
  row->addWidget(run_);
  row->addWidget(close);
  return widget;
}

void RecipeDialog::SetRecipe(const QString& path) {
  recipe_->setText(path);
}

void RecipeDialog::AddFiles(const QStringList& files) {
  for (const QString& path : files) {
    bool listed = false;
    for (int k = 0; k < files_->topLevelItemCount(); ++k) {
      listed = listed || files_->topLevelItem(k)->data(kFile, kPathRole).toString() == path;
    }
    if (!listed) {
      auto* item = new QTreeWidgetItem(files_, {QFileInfo(path).fileName()});
      item->setData(kFile, kPathRole, path);
      item->setToolTip(kFile, path);
    }
  }
  UpdateButtons();
}

void RecipeDialog::AskForRecipe() {
  const QString path = QFileDialog::getOpenFileName(this, tr("Recipe"), directory_,
                                                    tr("Recipes (*.yaml *.yml *.json);;All files (*)"));
  if (!path.isEmpty()) {
    SetRecipe(path);
  }
}

void RecipeDialog::AskForFiles() {
  AddFiles(QFileDialog::getOpenFileNames(this, tr("Files to run the recipe over"), directory_));
}

void RecipeDialog::AskForResults() {
  const QString path = QFileDialog::getExistingDirectory(this, tr("Directory for results"), results_->text());
  if (!path.isEmpty()) {
    results_->setText(path);
  }
}

void RecipeDialog::RemoveSelected() {
  qDeleteAll(files_->selectedItems());
  UpdateButtons();
}

void RecipeDialog::RunOrCancel() {
  if (process_.IsRunning()) {
    cancelled_ = true;
    process_.Cancel();
  } else {
    Start();
  }
  UpdateButtons();
}

void RecipeDialog::Start() {
  RecipeOrder order{
      .recipe = recipe_->text(), .files = {}, .results = results_->text(), .atOnce = atOnce_->value()};
  for (int k = 0; k < files_->topLevelItemCount(); ++k) {
    QTreeWidgetItem* item = files_->topLevelItem(k);
    order.files.append(item->data(kFile, kPathRole).toString());
    item->setText(kState, tr("waiting"));
    item->setText(kMessage, {});
    item->setData(kFile, kMessageRole, {});
  }
  ended_ = 0;
  cancelled_ = false;
  progress_->setRange(0, static_cast<int>(order.files.size()));
  progress_->setValue(0);
  said_->clear();
  process_.Start(order);
}

void RecipeDialog::ShowStep(int file, const QString& action, int step) {
  if (QTreeWidgetItem* item = files_->topLevelItem(file)) {
    item->setText(kState, tr("step %1: %2").arg(step).arg(action));
  }
}

void RecipeDialog::ShowOutcome(int file, const QString& outcome, const QString& message) {
  QTreeWidgetItem* item = files_->topLevelItem(file);
  if (item == nullptr) {
    return;
  }
  const bool failed = outcome == QLatin1String("failed");
  item->setText(kState, failed ? tr("FAILED") : outcome);
  QString line = message;
  item->setText(kMessage, line.replace(QLatin1Char('\n'), QStringLiteral("; ")));
  item->setToolTip(kMessage, message);
  item->setData(kFile, kMessageRole, failed ? message : QString());
  progress_->setValue(++ended_);
}

void RecipeDialog::ShowEnd(const QString& said) {
  for (int k = 0; k < files_->topLevelItemCount(); ++k) {
    QTreeWidgetItem* item = files_->topLevelItem(k);
    if (item->text(kState) == tr("waiting")) {
      item->setText(kState, tr("not run"));
    }
  }
  // Of the closing table the last line has the counts; before anything ran there are none, and all is said.
  said_->setText(ended_ > 0 ? said.section(QLatin1Char('\n'), -1) : said);
  if (cancelled_) {
    said_->setText(tr("Cancelled: %1").arg(said_->text()));
  }
  UpdateButtons();
}

void RecipeDialog::OpenRow(QTreeWidgetItem* item) {
  const QString message = item->data(kFile, kMessageRole).toString();
  if (message.isEmpty()) {
    Q_EMIT TrialWanted(item->data(kFile, kPathRole).toString());
    return;
  }
  QMessageBox::warning(this, item->text(kFile), message);
}

void RecipeDialog::UpdateButtons() {
  if (run_ == nullptr) {
    return;
  }
  const bool running = process_.IsRunning();
  run_->setText(running ? tr("Cancel") : tr("R&un"));
  run_->setEnabled(running ? !cancelled_
                           : !recipe_->text().isEmpty() && !results_->text().isEmpty() &&
                                 files_->topLevelItemCount() > 0);
  add_->setEnabled(!running);
  remove_->setEnabled(!running && !files_->selectedItems().isEmpty());
}

bool RecipeDialog::IsRunning() const {
  return process_.IsRunning();
}

void RecipeDialog::Stop() {
  if (process_.IsRunning()) {
    cancelled_ = true;
    process_.Cancel();
    process_.WaitForEnd();
  }
}

// Nobody would see what becomes of a run whose window is gone.
void RecipeDialog::closeEvent(QCloseEvent* event) {
  if (process_.IsRunning()) {
    RunOrCancel();
    event->ignore();
    return;
  }
  QDialog::closeEvent(event);
}

void RecipeDialog::reject() {
  close();
}

}  // namespace velmora::ui
