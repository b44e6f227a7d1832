#include "ui/data/data_window.hpp"

#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>

#include "core/files/paths.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/helpers.hpp"
#include "data/sample_cell.hpp"
#include "ui/data/sample_grid.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

DataWindow::DataWindow(const Workbench& workbench, const QList<QAction*>& walking, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      workbench_(workbench),
      grid_(new SampleGrid(workbench)),
      place_(new QLabel) {
  constexpr QSize kFirstSize{1000, 640};
  setObjectName(QStringLiteral("frmData"));
  setAttribute(Qt::WA_DeleteOnClose);
  setCentralWidget(grid_);
  AddMenus(walking);
  place_->setObjectName(QStringLiteral("place"));
  place_->setTextFormat(Qt::PlainText);
  place_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  place_->setContentsMargins(8, 0, 8, 0);
  statusBar()->addWidget(place_, 1);
  auto* keys = new QLabel(tr("Ctrl+G goes to a sample or a time, Enter changes a value"));
  SetTone(keys, Tone::Quiet);
  keys->setContentsMargins(8, 0, 8, 0);
  statusBar()->addPermanentWidget(keys);
  connect(grid_, &SampleGrid::Moved, this, &DataWindow::ShowPlace);
  connect(grid_, &SampleGrid::ChangeWanted, this, &DataWindow::ChangeWanted);
  resize(kFirstSize);
  grid_->setFocus();
  Refresh();
}

void DataWindow::AddMenus(const QList<QAction*>& walking) {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  connect(file->addAction(QStringLiteral("E&xit"), QKeySequence::Close), &QAction::triggered, this,
          &QWidget::close);
  QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
  edit->addActions(walking);
  edit->addSeparator();
  connect(edit->addAction(tr("&Change value\u2026"), Qt::Key_F2), &QAction::triggered, this,
          &DataWindow::ChangeWanted);
  edit->addSeparator();
  connect(edit->addAction(tr("C&opy"), QKeySequence::Copy), &QAction::triggered, this,
          &DataWindow::CopyWanted);
  connect(edit->addAction(tr("Select &all"), QKeySequence::SelectAll), &QAction::triggered, grid_,
          &SampleGrid::SelectAll);
  edit->addSeparator();
  connect(edit->addAction(tr("&Go to\u2026"), Qt::CTRL | Qt::Key_G), &QAction::triggered, this,
          &DataWindow::PlaceWanted);
}

void DataWindow::Refresh() {
  if (workbench_.trial.NData < 1) {
    close();
    return;
  }
  setWindowTitle(tr("Data table - %1").arg(ToQt(FileNamePart(workbench_.LoadedFile))));
  grid_->Refresh();
}

// The current cell with all its digits, or how much is selected.
void DataWindow::ShowPlace() {
  const Trial& trial = workbench_.trial;
  const GridBlock block = grid_->Selected();
  const GridCell cell = grid_->Current();
  if (block.Cells() > 1) {
    place_->setText(tr("%1 cells selected: samples %2 to %3, %4")
                        .arg(ToQt(FormatCount(block.Cells())), ToQt(FormatCount(block.first.sample)),
                             ToQt(FormatCount(block.last.sample)),
                             ToQt(CountOf(block.last.channel - block.first.channel + 1, "column"))));
    return;
  }
  const std::string units =
      cell.channel == 0 ? AbscissaUnits(workbench_) : trial.ChanUnits[cell.channel].Text();
  place_->setText(tr("Sample %1    %2    %3 %4")
                      .arg(ToQt(FormatCount(cell.sample)), ToQt(ColumnName(trial, cell.channel)),
                           ToQt(PlainNumber(trial.Data(cell.sample, cell.channel))),
                           ToQt(OneLine(Trim(units)))));
}

}  // namespace velmora::ui
