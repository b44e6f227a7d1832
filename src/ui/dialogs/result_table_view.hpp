#pragma once

#include <QTableView>

#include "core/questions/result_table.hpp"

namespace velmora::ui {

/// A table of results with as many rows as there may be: texts are made of the cells that are seen. Copying
/// takes the selected cells, apart by tabs, with the heads of their columns when all rows are selected.
class ResultTableView : public QTableView {
 public:
  explicit ResultTableView(QWidget* parent = nullptr);

  /// Whether what lies beside it has the room that a short table does not need; from the next Show on.
  void LeaveRoom(bool leaves) { leavesRoom_ = leaves; }
  void Show(const ResultTable& table);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  class Model;

  void CopySelection() const;

  Model* model_;  // a child
  bool leavesRoom_ = false;
};

}  // namespace velmora::ui
