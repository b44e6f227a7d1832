#pragma once

#include <QAction>
#include <QList>
#include <QWidget>

#include "run/history/history.hpp"

class QListWidget;

namespace velmora::ui {

/// What was done to the trial, in words. What was gone back behind stays in the list, grey, and a click on a
/// line goes there.
class HistoryPanel : public QWidget {
  Q_OBJECT

 public:
  explicit HistoryPanel(const History& history, QWidget* parent = nullptr);
  void Refresh();
  /// Undo and Redo, with their keys.
  [[nodiscard]] QList<QAction*> Walking() const { return {undo_, redo_}; }

 Q_SIGNALS:
  void RecipeWanted();
  /// To what the trial was after this line (from 0).
  void LineWanted(int line);

 private:
  void AddList();
  void AddButtons();
  QAction* AddStep(const QString& caption, const QList<QKeySequence>& keys, int lines);
  void Copy() const;

  const History& history_;
  QListWidget* list_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
};

}  // namespace velmora::ui
