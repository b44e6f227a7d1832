#pragma once

#include <QDialog>

#include "graph/single_view.hpp"

class QLabel;
class QTreeWidget;

namespace velmora::ui {

/// The read-out of values at the cursor, a small window that stays beside the graph.
class CursorValuesPanel : public QDialog {
  Q_OBJECT

 public:
  explicit CursorValuesPanel(QWidget* parent);

  /// Shows these values, or goes when there are none.
  void Show(const std::optional<CursorValues>& values, const Workbench& workbench);

 Q_SIGNALS:
  /// The person closed it.
  void Closed();

 protected:
  void reject() override;

 private:
  QLabel* sample_;
  QLabel* time_;
  QTreeWidget* rows_;
};

}  // namespace velmora::ui
