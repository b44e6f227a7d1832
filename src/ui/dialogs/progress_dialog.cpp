#include "ui/dialogs/progress_dialog.hpp"

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

#include "core/questions/progress.hpp"
#include "ui/dialogs/result_table_view.hpp"
#include "ui/elided_label.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr qint64 kNoticeable = 250;  // ms until the panel appears
constexpr qint64 kTurnEvery = 40;    // ms between two turns of the window
constexpr int kBarSteps = 1000;

QLabel* Line(QVBoxLayout* layout) {
  auto* label = new ElidedLabel;
  layout->addWidget(label);
  return label;
}

}  // namespace

ProgressDialog::ProgressDialog(ProgressPanel& panel, QWidget* parent) : QDialog(parent), panel_(panel) {
  setWindowModality(Qt::ApplicationModal);
  setWindowTitle(ToQt(panel.Title().empty() ? "Velmora2" : panel.Title()));
  setObjectName(panel.PanelKind() == ProgressPanel::Kind::Loading ? QStringLiteral("frmLoading")
                                                                  : QStringLiteral("frmProcessing"));
  setMinimumWidth(460);
  auto* layout = new QVBoxLayout(this);
  name_ = Line(layout);
  QFont bold = name_->font();
  bold.setBold(true);
  name_->setFont(bold);
  format_ = Line(layout);
  status_ = Line(layout);
  bar_ = new QProgressBar;
  bar_->setTextVisible(false);
  layout->addWidget(bar_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  cancel_ = new QPushButton(tr("Cancel"));
  done_ = new QPushButton(QStringLiteral("&Done"));
  graphButton_ = new QPushButton(QStringLiteral("&Graph"));
  for (QPushButton* button : {graphButton_, done_, cancel_}) {
    buttons->addWidget(button);
  }
  layout->addLayout(buttons);
  connect(cancel_, &QPushButton::clicked, this, [this] { reject(); });
  connect(done_, &QPushButton::clicked, this, [this] { waiting_.quit(); });
  connect(graphButton_, &QPushButton::clicked, this, [this] {
    graph_ = true;
    waiting_.quit();
  });
  age_.start();
  sinceTurn_.start();
}

void ProgressDialog::Update() {
  if (sinceTurn_.elapsed() < kTurnEvery) {
    return;
  }
  if (!isVisible() && age_.elapsed() >= kNoticeable) {
    show();
  }
  if (isVisible()) {
    ShowState();
    QApplication::processEvents();
  } else {
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
  sinceTurn_.restart();
}

bool ProgressDialog::WaitForDone() {
  ShowState();
  show();
  done_->setDefault(true);
  done_->setFocus();
  waiting_.exec();
  return graph_;
}

void ProgressDialog::reject() {
  if (panel_.Finished()) {
    waiting_.quit();
  } else if (panel_.PanelKind() == ProgressPanel::Kind::Loading) {
    panel_.PressCancel();
    cancel_->setEnabled(false);
  }
}

void ProgressDialog::ShowState() {
  const bool loading = panel_.PanelKind() == ProgressPanel::Kind::Loading;
  const bool finished = panel_.Finished();
  name_->setText(ToQt(panel_.FileName()));
  format_->setText(ToQt(panel_.Format()));
  status_->setText(ToQt(panel_.Status()));
  name_->setVisible(loading);
  format_->setVisible(loading);
  cancel_->setVisible(loading && !finished);
  done_->setVisible(finished);
  graphButton_->setVisible(panel_.OffersGraph());
  ShowBar();
  if (panel_.Table() != nullptr) {
    ShowTable(*panel_.Table());
  }
}

// Grows row by row, the last one in sight.
void ProgressDialog::ShowTable(const ResultTable& table) {
  if (table_ == nullptr) {
    table_ = new ResultTableView;
    auto* rows = qobject_cast<QVBoxLayout*>(layout());
    rows->insertWidget(rows->indexOf(bar_) + 1, table_, 1);
    cancel_->setText(QStringLiteral("&Stop"));
  } else if (rowsShown_ == table.rows.size()) {
    return;
  }
  rowsShown_ = table.rows.size();
  table_->Show(table);
  table_->scrollToBottom();
}

void ProgressDialog::ShowBar() {
  if (panel_.PanelKind() == ProgressPanel::Kind::Processing) {
    bar_->setRange(0, 0);  // busy, no value
    return;
  }
  const double span = panel_.Highest() - panel_.Lowest();
  const double part = panel_.Finished() ? 1.0 : span > 0 ? (panel_.Value() - panel_.Lowest()) / span : 0.0;
  bar_->setRange(0, kBarSteps);
  bar_->setValue(static_cast<int>(part * kBarSteps));
}

}  // namespace velmora::ui
