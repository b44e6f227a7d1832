#pragma once

#include <QWidget>

#include "run/history.hpp"

class QListWidget;
class QPushButton;

namespace velmora::ui {

/// The steps done to the trial, in words.
class HistoryPanel : public QWidget {
  Q_OBJECT

 public:
  explicit HistoryPanel(const History& history, QWidget* parent = nullptr);
  void Refresh();

 Q_SIGNALS:
  void RecipeWanted();
  /// Back to what the trial was after this step (from 0).
  void GoBackWanted(int step);

 private:
  const History& history_;
  QListWidget* list_;
  QPushButton* back_;
};

}  // namespace velmora::ui
