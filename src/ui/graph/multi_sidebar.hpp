#pragma once

#include <QListWidget>
#include <QStringList>
#include <optional>

#include "graph/multi/multi_view.hpp"

namespace velmora::ui {

/// Beside the stacked graphs: the lines of the view. Those of the current event stand at the head while
/// events are tracked, one a graph, under a line that folds them away by a click.
class MultiSidebar : public QListWidget {
  Q_OBJECT

 public:
  explicit MultiSidebar(QWidget* parent = nullptr);

  void Take(const MultiView& view, const Workbench& workbench);

 private:
  void SetLines(const QStringList& lines);
  /// What the lines of the event fold into.
  [[nodiscard]] QString Head() const;
  void HideFolded();

  QString eventHead_;
  int eventLines_ = 0;  // below their head
  bool folded_ = false;
  std::optional<Colour> background_;  // that the list is coloured for
};

}  // namespace velmora::ui
