#pragma once

#include <QMainWindow>

#include "core/workbench.hpp"

class QLabel;

namespace velmora::ui {

class SampleGrid;

/// The numbers of the trial in a window of their own, to stand beside the work. It shows the trial as it is;
/// what is changed in it, its owner does. Deletes itself when it is closed.
class DataWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// `walking`, Undo and Redo, are in its menu too.
  DataWindow(const Workbench& workbench, const QList<QAction*>& walking, QWidget* parent);

  [[nodiscard]] SampleGrid& Grid() { return *grid_; }
  /// The trial may be another; closes when there is none.
  void Refresh();

 Q_SIGNALS:
  void ChangeWanted();
  void PlaceWanted();
  void CopyWanted();

 private:
  void AddMenus(const QList<QAction*>& walking);
  void ShowPlace();

  const Workbench& workbench_;
  SampleGrid* grid_;
  QLabel* place_;
};

}  // namespace velmora::ui
