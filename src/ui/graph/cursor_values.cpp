#include "ui/graph/cursor_values.hpp"

#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

CursorValuesPanel::CursorValuesPanel(QWidget* parent)
    : QDialog(parent, Qt::Tool), sample_(new QLabel), time_(new QLabel), rows_(new QTreeWidget) {
  setObjectName(QStringLiteral("frmCursor"));
  setWindowTitle(tr("Values at Cursor"));
  auto* layout = new QFormLayout(this);
  layout->addRow(tr("Sample:"), sample_);
  layout->addRow(tr("Time:"), time_);
  layout->addRow(rows_);
  rows_->setColumnCount(2);
  rows_->setHeaderLabels({tr("Channel"), tr("Value")});
  rows_->setRootIsDecorated(false);
  rows_->setSelectionMode(QAbstractItemView::NoSelection);
  rows_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  rows_->header()->setStretchLastSection(false);
  resize(280, 360);
}

void CursorValuesPanel::Show(const std::optional<CursorValues>& values, const Workbench& workbench) {
  if (!values) {
    hide();
    return;
  }
  sample_->setText(ToQt(values->Sample));
  time_->setText(ToQt(values->Time));
  rows_->clear();
  for (const CursorValues::Row& row : values->Rows) {
    const std::string label = workbench.trial.ChanLabel[row.channel].Text();
    auto* item =
        new QTreeWidgetItem(rows_, {ToQt(ChannelNumber(row.channel) + "  " + Trim(label)), ToQt(row.value)});
    item->setTextAlignment(1, Qt::AlignRight);
  }
  if (!isVisible()) {
    show();
    parentWidget()->activateWindow();  // the keys stay with the graph
  }
}

void CursorValuesPanel::reject() {
  QDialog::reject();
  Q_EMIT Closed();
}

}  // namespace velmora::ui
