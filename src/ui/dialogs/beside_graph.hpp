#pragma once

#include <QObject>

class QDialog;
class QWidget;

namespace velmora::ui {

/// While a dialogue waits for an answer and is not modal, since a graph is worked on beside it: the mouse
/// reaches the plots of graphs, everything else it does outside the dialogue, and all keys, come to nothing.
/// The program is in the middle of a command and must not begin another.
class BesideGraph : public QObject {
  Q_OBJECT

 public:
  /// Lives as long as the dialogue, its parent, and holds while that is on the screen.
  explicit BesideGraph(QDialog* dialog);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] bool MayHave(const QObject* watched, const QEvent& event) const;
  void TakeKeysBack();

  QDialog* dialog_;
};

/// Puts the dialogue where the window of the graph stays in sight, for which that may move on its screen.
void PlaceBeside(QWidget& dialog, QWidget& graph);

}  // namespace velmora::ui
