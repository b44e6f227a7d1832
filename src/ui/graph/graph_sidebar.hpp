#pragma once

#include <QTreeWidget>
#include <optional>
#include <vector>

#include "graph/single_view.hpp"

namespace velmora::ui {

/// Beside the graph: the channels in their colours, and for each its value at the first two cursors and
/// the difference; above them sample and time, and the reciprocal of the time between.
class GraphSidebar : public QTreeWidget {
  Q_OBJECT

 public:
  explicit GraphSidebar(QWidget* parent = nullptr);

  /// Takes channels and colours anew.
  void Rebuild(const SingleView& view, const Workbench& workbench);
  /// Fills in the values at the cursors.
  void Update(const SingleView& view, const Workbench& workbench);
  /// In pixels, of all that is shown; a name longer than most counts as a long one.
  [[nodiscard]] int NeededWidth() const;

 private:
  void TakeColours(Colour background);
  void FillTimes(const SingleView& view, const Workbench& workbench);

  struct ChannelRow {
    int channel;
    QTreeWidgetItem* item;
  };
  QTreeWidgetItem* sample_ = nullptr;
  QTreeWidgetItem* time_ = nullptr;
  QTreeWidgetItem* reciprocal_ = nullptr;
  std::vector<ChannelRow> channels_;
  std::optional<Colour> background_;  // that the list is coloured for
};

}  // namespace velmora::ui
