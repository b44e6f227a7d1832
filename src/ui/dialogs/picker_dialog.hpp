#pragma once

#include <functional>

#include "core/questions/picker.hpp"
#include "core/workbench.hpp"
#include "ui/dialogs/asking_dialog.hpp"
#include "ui/dialogs/left_values.hpp"
#include "ui/trial/channel_table_view.hpp"

class QBoxLayout;
class QLabel;
class QLineEdit;

namespace velmora::ui {

class FormGraphPanel;

/// Draws the channel picker: one scrolling list with the trace, the check box and the value of every
/// channel. Pages are places in the list.
class PickerDialog : public AskingDialog {
  Q_OBJECT

 public:
  PickerDialog(ChannelPicker& picker, const Workbench& workbench, const ChannelTraces& traces,
               QWidget* parent);

 protected:
  void Refresh() override;

 private:
  [[nodiscard]] std::vector<ChannelColumn> Columns();
  void AddHead(QBoxLayout* to);
  void AddCommands(QBoxLayout* to);
  void AddPreview(QBoxLayout* to);
  void AddClosing(QBoxLayout* to);
  void Command(QBoxLayout* to, const char* caption, const std::function<void(ChannelPicker&)>& procedure);
  void ShowPage();
  [[nodiscard]] int FirstSelected() const;
  void SetCurrent(int channel);
  void ShowPreview();

  ChannelPicker& picker_;
  const Workbench& workbench_;
  LeftValues left_;
  ChannelTableModel* model_;
  ChannelTableView* table_;
  QLabel* count_;
  FormGraphPanel* preview_ = nullptr;
};

}  // namespace velmora::ui
