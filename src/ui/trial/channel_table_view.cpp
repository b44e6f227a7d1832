#include "ui/trial/channel_table_view.hpp"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <map>

#include "ui/trial/channel_drawing.hpp"

namespace velmora::ui {
namespace {

using Kind = ChannelColumn::Kind;

constexpr int kSwatch = 13;      // pixels
constexpr int kWidestText = 32;  // letters; longer names are elided

// Right under the cell, where the eyes are.
void RemarkWhileTyping(QLineEdit* editor, const ChannelColumn& column) {
  if (editor == nullptr || !column.remark) {
    return;
  }
  QObject::connect(editor, &QLineEdit::textEdited, editor, [editor, &column](const QString& typed) {
    QToolTip::showText(editor->mapToGlobal(QPoint(0, editor->height() / 2)), column.remark(typed), editor);
  });
}

/// Paints what is no text.
class ChannelDelegate : public QStyledItemDelegate {
 public:
  ChannelDelegate(const Workbench& workbench, const ChannelTraces* traces, ChannelTableView* view)
      : QStyledItemDelegate(view), workbench_(workbench), traces_(traces), view_(view) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Kind kind = KindOf(index);
    const int channel = ChannelTableModel::ChannelOf(index);
    if (kind == Kind::Choice) {
      PaintChoice(painter, option, index);
      return;
    }
    QStyledItemDelegate::paint(painter, option, index);
    const Trial& trial = workbench_.trial;
    if (kind == Kind::Swatch) {
      PaintSwatch(*painter, option.rect, ChannelColour(trial.ChanColour[channel], view_->palette()));
    } else if (kind == Kind::Trace && traces_ != nullptr) {
      PaintTrace(*painter, option.rect.adjusted(6, 0, -6, 0), trial, *traces_, channel, view_->palette());
    }
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (KindOf(index) == Kind::Colour) {
      option->features |= QStyleOptionViewItem::HasDecoration;
      option->icon = SwatchIcon(index.data().toInt(), view_->palette());
      option->decorationSize = QSize(kSwatch, kSwatch);
    }
  }

  // A colour is chosen by sight; its number can be typed as well.
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    if (KindOf(index) != Kind::Colour) {
      QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
      RemarkWhileTyping(qobject_cast<QLineEdit*>(editor), ColumnOf(index));
      return editor;
    }
    auto* list = new QComboBox(parent);
    list->setIconSize({kSwatch, kSwatch});
    for (int colour = 1; colour <= kColours; ++colour) {
      list->addItem(SwatchIcon(colour, view_->palette()), QString::number(colour));
    }
    list->setMaxVisibleItems(kColours);
    connect(list, &QComboBox::activated, view_, [this, list] {
      auto* self = const_cast<ChannelDelegate*>(this);
      Q_EMIT self->commitData(list);
      Q_EMIT self->closeEditor(list);
    });
    QMetaObject::invokeMethod(list, &QComboBox::showPopup, Qt::QueuedConnection);
    return list;
  }
  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    if (auto* list = qobject_cast<QComboBox*>(editor)) {
      list->setCurrentIndex(index.data().toInt() - 1);
    } else {
      QStyledItemDelegate::setEditorData(editor, index);
    }
  }
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
    if (const auto* list = qobject_cast<QComboBox*>(editor)) {
      model->setData(index, list->currentText(), Qt::EditRole);
    } else {
      QStyledItemDelegate::setModelData(editor, model, index);
    }
    CopyToSelected(model, index);
  }

 private:
  static const ChannelColumn& ColumnOf(const QModelIndex& index) {
    return static_cast<const ChannelTableModel*>(index.model())->Column(index.column());
  }

  // As a spreadsheet fills cells: a number typed while several rows are selected is for all of them.
  void CopyToSelected(QAbstractItemModel* model, const QModelIndex& index) const {
    const QModelIndexList rows = view_->selectionModel()->selectedRows();
    const bool among = std::any_of(rows.begin(), rows.end(),
                                   [&index](const QModelIndex& row) { return row.row() == index.row(); });
    if (KindOf(index) != Kind::Number || !among) {
      return;
    }
    for (const QModelIndex& row : rows) {
      if (row.row() != index.row()) {
        model->setData(row.siblingAtColumn(index.column()), index.data(Qt::EditRole), Qt::EditRole);
      }
    }
  }

  static Kind KindOf(const QModelIndex& index) { return ColumnOf(index).kind; }

  // A round button instead of a box: one of all channels.
  void PaintChoice(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const bool on = item.checkState == Qt::Checked;
    item.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    QStyle* style = view_->style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, view_);
    QStyleOptionButton button;
    button.state = QStyle::State_Enabled | (on ? QStyle::State_On : QStyle::State_Off);
    const QSize size = style->subElementRect(QStyle::SE_RadioButtonIndicator, &button, view_).size();
    button.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, option.rect);
    button.palette = view_->palette();
    style->drawPrimitive(QStyle::PE_IndicatorRadioButton, &button, painter, view_);
  }

  const Workbench& workbench_;
  const ChannelTraces* traces_;
  ChannelTableView* view_;
};

// Of a column that needs no more than a mark; 0 for those that hold or are headed by text.
int WidthOf(const ChannelColumn& column) {
  if (!column.head.isEmpty()) {
    return 0;
  }
  switch (column.kind) {
    case Kind::Swatch:
      return 26;
    case Kind::Check:
    case Kind::Choice:
      return 34;
    default:
      return 0;
  }
}

}  // namespace

ChannelTableView::ChannelTableView(const Workbench& workbench, const ChannelTraces* traces,
                                   ChannelTableModel* model, QWidget* parent)
    : QTableView(parent), channels_(model) {
  setModel(model);
  setItemDelegate(new ChannelDelegate(workbench, traces, this));
  setSelectionBehavior(SelectRows);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setAccessibleName(tr("Channels"));
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed | SelectedClicked);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 12);
  connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
    if (!index.flags().testAnyFlags(Qt::ItemIsEditable | Qt::ItemIsUserCheckable)) {
      Q_EMIT Opened(ChannelTableModel::ChannelOf(index));
    }
  });
  QHeaderView* head = horizontalHeader();
  head->setHighlightSections(false);
  head->setMinimumSectionSize(24);
  for (int k = 0; k < model->columnCount({}); ++k) {
    const Kind kind = model->Column(k).kind;
    if (const int width = WidthOf(model->Column(k)); width > 0) {
      head->setSectionResizeMode(k, QHeaderView::Fixed);
      head->resizeSection(k, width);
    } else if (kind == Kind::Trace) {
      head->setSectionResizeMode(k, QHeaderView::Stretch);
    } else {
      resizeColumnToContents(k);
      head->resizeSection(
          k, std::min(head->sectionSize(k) + 14, kWidestText * fontMetrics().averageCharWidth()));
    }
  }
}

void ChannelTableView::FinishEditing() {
  if (state() != EditingState) {
    return;
  }
  for (auto* editor : viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (qobject_cast<QLineEdit*>(editor) != nullptr || qobject_cast<QComboBox*>(editor) != nullptr) {
      commitData(editor);
      closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
  }
}

void ChannelTableView::ShowOnly(const QString& search) {
  for (int row = 0; row < channels_->rowCount({}); ++row) {
    bool found = search.isEmpty();
    for (int k = 0; k < channels_->columnCount({}) && !found; ++k) {
      found = channels_->index(row, k).data().toString().contains(search, Qt::CaseInsensitive);
    }
    setRowHidden(row, !found);
  }
}

int ChannelTableView::CurrentChannel() const {
  return currentIndex().isValid() ? ChannelTableModel::ChannelOf(currentIndex()) : 0;
}

ChannelFlags ChannelTableView::SelectedChannels() const {
  ChannelFlags channels{};
  for (const QModelIndex& row : selectionModel()->selectedRows()) {
    channels[ChannelTableModel::ChannelOf(row)] = true;
  }
  return channels;
}

void ChannelTableView::SelectChannels(const ChannelFlags& channels) {
  const int column = std::max(currentIndex().column(), 0);
  QItemSelection rows;
  for (int row = 0; row < channels_->rowCount({}); ++row) {
    const QModelIndex cell = channels_->index(row, column);
    if (!channels[ChannelTableModel::ChannelOf(cell)]) {
      continue;
    }
    if (rows.isEmpty()) {
      setCurrentIndex(cell);
    }
    rows.select(cell, cell);
  }
  if (!rows.isEmpty()) {
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
}

void ChannelTableView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && state() != EditingState) {
    event->ignore();  // whoever shows the table knows what it leaves
  } else if (event->matches(QKeySequence::Copy)) {
    CopyCells();
  } else if (event->matches(QKeySequence::Paste)) {
    PasteCells();
  } else if (event->key() == Qt::Key_Delete && state() != EditingState) {
    ClearCells();
  } else if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
    ToggleChecks();
  } else {
    const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enters && state() != EditingState && CurrentChannel() > 0) {
      Q_EMIT Opened(CurrentChannel());
    }
    QTableView::keyPressEvent(event);
  }
}

void ChannelTableView::CopyCells() {
  QStringList lines;
  QModelIndexList rows = selectionModel()->selectedRows();
  std::sort(rows.begin(), rows.end());
  for (const QModelIndex& row : rows) {
    QStringList cells;
    for (int k = 0; k < channels_->columnCount({}); ++k) {
      const ChannelColumn& column = channels_->Column(k);
      if (column.text) {
        cells << row.siblingAtColumn(k).data().toString();
      } else if (column.checked) {
        cells << (column.checked(ChannelTableModel::ChannelOf(row)) ? QStringLiteral("1")
                                                                    : QStringLiteral("0"));
      }
    }
    lines << cells.join('\t');
  }
  QApplication::clipboard()->setText(lines.join('\n'));
}

// Cells go to the columns that take them, from the current one on; rows of the clipboard to channels.
void ChannelTableView::PasteCells() {
  const QModelIndex from = currentIndex();
  QString text = QApplication::clipboard()->text();
  text.remove('\r');
  if (!from.isValid() || text.isEmpty()) {
    return;
  }
  if (text.endsWith('\n')) {
    text.chop(1);
  }
  std::vector<int> takers;
  for (int k = 0; k < channels_->columnCount({}); ++k) {
    if (k >= from.column() && (channels_->Column(k).edit || channels_->Column(k).check)) {
      takers.push_back(k);
    }
  }
  int row = from.row();
  for (const QString& line : text.split('\n')) {
    const QStringList cells = line.split('\t');
    for (std::size_t k = 0; k < takers.size() && k < static_cast<std::size_t>(cells.size()); ++k) {
      const QModelIndex cell = channels_->index(row, takers[k]);
      const QString typed = cells[static_cast<qsizetype>(k)].trimmed();
      if (!cell.isValid()) {
        continue;
      }
      if (channels_->Column(takers[k]).check) {
        channels_->setData(cell, typed.toDouble() != 0 ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
      } else {
        channels_->setData(cell, typed, Qt::EditRole);
      }
    }
    ++row;
  }
}

void ChannelTableView::ClearCells() {
  const QModelIndex current = currentIndex();
  if (!current.isValid() || channels_->Column(current.column()).kind != Kind::Number) {
    return;
  }
  for (const QModelIndex& row : selectionModel()->selectedRows()) {
    channels_->setData(row.siblingAtColumn(current.column()), QStringLiteral("0"), Qt::EditRole);
  }
}

void ChannelTableView::ToggleChecks() {
  for (int k = 0; k < channels_->columnCount({}); ++k) {
    const ChannelColumn& column = channels_->Column(k);
    if (!column.check) {
      continue;
    }
    const bool on = !column.checked(CurrentChannel());
    for (const QModelIndex& row : selectionModel()->selectedRows()) {
      channels_->setData(row.siblingAtColumn(k), on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    }
    return;
  }
}

}  // namespace velmora::ui
