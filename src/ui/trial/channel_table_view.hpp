#pragma once

#include <QTableView>

#include "ui/trial/channel_table_model.hpp"
#include "ui/trial/channel_traces.hpp"

namespace velmora::ui {

/// Shows a ChannelTableModel: swatches and traces are painted, cells are copied and pasted as a
/// spreadsheet does it, and a search text hides the channels that do not have it.
class ChannelTableView : public QTableView {
  Q_OBJECT

 public:
  /// `traces` may be nullptr when no column shows any.
  ChannelTableView(const Workbench& workbench, const ChannelTraces* traces, ChannelTableModel* model,
                   QWidget* parent = nullptr);

  /// Takes what is being typed: a button pressed by its key leaves the editor open.
  void FinishEditing();
  void ShowOnly(const QString& search);
  /// 0 when there is none.
  [[nodiscard]] int CurrentChannel() const;
  [[nodiscard]] ChannelFlags SelectedChannels() const;
  /// Selects these rows and goes to the first of them, in the column it is in. Nothing when there are none.
  void SelectChannels(const ChannelFlags& channels);

 Q_SIGNALS:
  /// Enter was pressed on a channel, or what is only shown of it was double-clicked.
  void Opened(int channel);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void CopyCells();
  void PasteCells();
  void ClearCells();
  void ToggleChecks();

  ChannelTableModel* channels_;
};

}  // namespace velmora::ui
