#pragma once

#include <QTreeWidget>
#include <optional>
#include <vector>

#include "graph/multi/multi_view.hpp"

namespace velmora::ui {

/// The table of events beside the graphs: a line a record, a column a channel that is shown. The current
/// record stands out.
class EventTable : public QTreeWidget {
  Q_OBJECT

 public:
  explicit EventTable(QWidget* parent = nullptr);

  /// Takes the table anew; nothing to show while there is none.
  void Take(const MultiView& view, const Workbench& workbench);

 Q_SIGNALS:
  /// Record `event` (from 1) was clicked.
  void chosen(int event);

 private:
  void TakeColours(Colour background);
  /// Returns whether they are others than before.
  bool TakeColumns(const MultiView& view, const Trial& trial);
  void FillRows();

  std::vector<int> channels_;         // of the columns behind the first
  std::vector<EventRecord> records_;  // that are shown
  QStringList heads_;
  std::optional<Colour> background_;  // that the table is coloured for
};

}  // namespace velmora::ui
