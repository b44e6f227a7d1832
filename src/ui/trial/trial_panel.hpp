#pragma once

#include <QWidget>

#include "core/workbench.hpp"
#include "ui/trial/channel_table_view.hpp"

class QBoxLayout;

namespace velmora::ui {

class ElidedLabel;

/// The trial: its title, what is known of it in one line, what its file lacks, marks for what is
/// unusual about it, and a table of its channels.
class TrialPanel : public QWidget {
  Q_OBJECT

 public:
  TrialPanel(const Workbench& workbench, const ChannelTraces& traces, QWidget* parent = nullptr);

  /// `file` is the one that was loaded.
  void Refresh(const QString& file);
  [[nodiscard]] ChannelTableView* Channels() const { return table_; }

 Q_SIGNALS:
  void LabelTyped(int channel, const QString& typed);
  void UnitsTyped(int channel, const QString& typed);
  void ChannelMenu(int channel, const QPoint& at);
  void ChannelWanted(int channel);  // to look at

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] std::vector<ChannelColumn> Columns();
  void AddMark(const QString& text, bool warns);
  void ShowNotices();
  void ShowMarks();
  void FitRows();

  const Workbench& workbench_;
  const ChannelTraces& traces_;
  QString file_;
  ElidedLabel* title_;
  ElidedLabel* facts_;
  ElidedLabel* header_;
  ElidedLabel* notice_;
  QBoxLayout* marks_;
  ChannelTableModel* model_;
  ChannelTableView* table_;
};

}  // namespace velmora::ui
