#include "ui/dialogs/result_table_view.hpp"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "core/text/numbers.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

class ResultTableView::Model : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Show(const ResultTable& table) {
    beginResetModel();
    table_ = table;
    endResetModel();
  }
  [[nodiscard]] const ResultTable& Table() const { return table_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(table_.rows.size());
  }
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(table_.columns.size());
  }
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
      return {};
    }
    return ToQt(table_.columns[static_cast<std::size_t>(section)]);
  }
  // A number's tip has all of its digits.
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    const auto row = static_cast<std::size_t>(index.row());
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::DisplayRole) {
      return ToQt(ShownCell(table_, row, column));
    }
    const double* number =
        column < table_.rows[row].size() ? std::get_if<double>(&table_.rows[row][column]) : nullptr;
    if (number == nullptr) {
      return {};
    }
    if (role == Qt::TextAlignmentRole) {
      return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    }
    return role == Qt::ToolTipRole ? QVariant(ToQt(PlainNumber(*number))) : QVariant();
  }

 private:
  ResultTable table_;
};

ResultTableView::ResultTableView(QWidget* parent) : QTableView(parent), model_(new Model(this)) {
  setModel(model_);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setResizeContentsPrecision(50);  // rows: enough to tell how wide a column is
  setWordWrap(false);
  setTabKeyNavigation(false);  // the next key is for what stands beside it: arrows go through the cells
  setMinimumSize(360, 220);
}

void ResultTableView::Show(const ResultTable& table) {
  const bool sameColumns = model_->Table().columns == table.columns;
  model_->Show(table);
  // A short table leaves its room to what stands beside it.
  constexpr int kLowest = 220;
  constexpr int kFewRows = 10;
  const int rows = model_->rowCount({});
  const int content = horizontalHeader()->sizeHint().height() + 2 * frameWidth() + 20 +
                      std::min(rows, kFewRows) * verticalHeader()->defaultSectionSize();
  setMinimumHeight(std::min(kLowest, content));
  setMaximumHeight(leavesRoom_ && rows <= kFewRows ? content : QWIDGETSIZE_MAX);
  if (!sameColumns) {
    ensurePolished();  // heads have their margins and letters from the style, which comes with the screen
                       // else
    horizontalHeader()->ensurePolished();
    resizeColumnsToContents();
    constexpr int kWidestTable = 1200;
    constexpr int kNarrowestTable = 360;
    const int width =
        horizontalHeader()->length() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    setMinimumWidth(std::clamp(width, kNarrowestTable, kWidestTable));
  }
}

void ResultTableView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    CopySelection();
    event->accept();
    return;
  }
  QTableView::keyPressEvent(event);
}

// By ranges, which the selection keeps: a hundred thousand rows are one of them.
void ResultTableView::CopySelection() const {
  const ResultTable& table = model_->Table();
  QString text;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    const auto cells = [&](const auto& cell) {
      for (int column = range.left(); column <= range.right(); ++column) {
        text += (column == range.left() ? QString() : QStringLiteral("\t")) +
                ToQt(cell(static_cast<std::size_t>(column)));
      }
      text += QLatin1Char('\n');
    };
    if (range.height() == model_->rowCount({})) {
      cells([&](std::size_t column) { return table.columns[column]; });
    }
    for (int row = range.top(); row <= range.bottom(); ++row) {
      cells([&](std::size_t column) { return ShownCell(table, static_cast<std::size_t>(row), column); });
    }
  }
  if (!text.isEmpty()) {
    QApplication::clipboard()->setText(text);
  }
}

}  // namespace velmora::ui
