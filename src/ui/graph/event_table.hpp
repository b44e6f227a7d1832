#pragma once

#include <QTreeWidget>

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
  void TakeColumns(const MultiView& view, const Trial& trial);

  std::vector<int> channels_;  // of the columns behind the first
};

}  // namespace velmora::ui
