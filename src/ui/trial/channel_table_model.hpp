#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <vector>

#include "core/workbench.hpp"

namespace velmora::ui {

/// One column of a table that has a row for every channel.
struct ChannelColumn {
  enum class Kind { Swatch, Text, Number, Colour, Check, Choice, Trace };

  QString head;
  Kind kind = Kind::Text;
  std::function<QString(int channel)> text;
  std::function<bool(int channel)> checked;
  /// Empty: the column is only shown. May say no by throwing std::invalid_argument.
  std::function<void(int channel, const QString& typed)> edit;
  std::function<void(int channel, bool on)> check;
  /// What the editor says of a text while it is typed; empty: nothing.
  std::function<QString(const QString& typed)> remark;
  QString tip;
  /// Where a value comes from that nobody has entered here; empty for those that somebody has.
  std::function<QString(int channel)> origin{};
};

/// Rows are channels, from 1; the columns are told by whoever shows the table.
class ChannelTableModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  ChannelTableModel(const Workbench& workbench, std::vector<ChannelColumn> columns, QObject* parent);

  [[nodiscard]] static int ChannelOf(const QModelIndex& index) { return index.row() + 1; }
  [[nodiscard]] const ChannelColumn& Column(int column) const {
    return columns_[static_cast<std::size_t>(column)];
  }
  void SetHead(int column, const QString& head);
  /// The number of channels or anything shown of them may have changed.
  void Refresh();

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  /// A channel was edited; other channels may show something else too.
  void Edited(int channel);
  void Refused(const QString& why);

 private:
  const Workbench& workbench_;
  std::vector<ChannelColumn> columns_;
  int rows_ = 0;
};

/// The columns that every table of channels begins with.
ChannelColumn SwatchColumn();
ChannelColumn NumberColumn();
ChannelColumn LabelColumn(const Workbench& workbench);
ChannelColumn UnitsColumn(const Workbench& workbench);
ChannelColumn TraceColumn();

}  // namespace velmora::ui
