#include "ui/trial/channel_table_model.hpp"

#include <QFont>
#include <stdexcept>
#include <utility>

#include "core/text/numbers.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

QString OriginOf(const ChannelColumn& column, int channel) {
  return column.origin ? column.origin(channel) : QString();
}

}  // namespace

ChannelTableModel::ChannelTableModel(const Workbench& workbench, std::vector<ChannelColumn> columns,
                                     QObject* parent)
    : QAbstractTableModel(parent), workbench_(workbench), columns_(std::move(columns)) {
  rows_ = workbench_.trial.NChan;
}

void ChannelTableModel::SetHead(int column, const QString& head) {
  QString& shown = columns_[static_cast<std::size_t>(column)].head;
  if (shown != head) {
    shown = head;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
  }
}

void ChannelTableModel::Refresh() {
  if (rows_ != workbench_.trial.NChan) {
    beginResetModel();
    rows_ = workbench_.trial.NChan;
    endResetModel();
  } else if (rows_ > 0) {
    Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columnCount({}) - 1));
  }
}

int ChannelTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int ChannelTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ChannelTableModel::data(const QModelIndex& index, int role) const {
  const ChannelColumn& column = Column(index.column());
  const int channel = ChannelOf(index);
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return column.text ? QVariant(column.text(channel)) : QVariant();
    case Qt::CheckStateRole:
      return column.checked ? QVariant(column.checked(channel) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::TextAlignmentRole:
      return column.kind == ChannelColumn::Kind::Number ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                                        : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ToolTipRole:
      if (const QString origin = OriginOf(column, channel); !origin.isEmpty()) {
        return origin;
      }
      return column.tip.isEmpty() ? QVariant() : QVariant(column.tip);
    case Qt::FontRole: {
      QFont font;
      font.setItalic(true);
      return OriginOf(column, channel).isEmpty() ? QVariant() : QVariant(font);
    }
    default:
      return {};
  }
}

QVariant ChannelTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) {
    return {};
  }
  if (role == Qt::DisplayRole) {
    return Column(section).head;
  }
  if (role == Qt::TextAlignmentRole) {
    return Column(section).kind == ChannelColumn::Kind::Number ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                                               : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  }
  return {};
}

Qt::ItemFlags ChannelTableModel::flags(const QModelIndex& index) const {
  const ChannelColumn& column = Column(index.column());
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (column.edit) {
    flags |= Qt::ItemIsEditable;
  }
  if (column.check) {
    flags |= Qt::ItemIsUserCheckable;
  }
  return flags;
}

bool ChannelTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const ChannelColumn& column = Column(index.column());
  const int channel = ChannelOf(index);
  try {
    if (role == Qt::CheckStateRole && column.check) {
      column.check(channel, value.toInt() == Qt::Checked);
    } else if (role == Qt::EditRole && column.edit) {
      if (value.toString() == column.text(channel)) {
        return true;
      }
      column.edit(channel, value.toString());
    } else {
      return false;
    }
  } catch (const std::invalid_argument& error) {
    Q_EMIT Refused(ToQt(error.what()));
    return false;
  }
  Refresh();
  Q_EMIT Edited(channel);
  return true;
}

ChannelColumn SwatchColumn() {
  return {.head = QString(), .kind = ChannelColumn::Kind::Swatch};
}

ChannelColumn NumberColumn() {
  return {.head = QStringLiteral("No."), .text = [](int channel) { return ToQt(ChannelNumber(channel)); }};
}

ChannelColumn LabelColumn(const Workbench& workbench) {
  return {.head = QStringLiteral("Label"), .text = [&workbench](int channel) {
            return ToQt(Trim(workbench.trial.ChanLabel[channel].Text()));
          }};
}

ChannelColumn UnitsColumn(const Workbench& workbench) {
  return {.head = QStringLiteral("Units"), .text = [&workbench](int channel) {
            return ToQt(Trim(workbench.trial.ChanUnits[channel].Text()));
          }};
}

ChannelColumn TraceColumn() {
  return {.head = QStringLiteral("Signal"), .kind = ChannelColumn::Kind::Trace};
}

}  // namespace velmora::ui
