#pragma once

#include <memory>
#include <vector>

#include "core/form.hpp"
#include "core/workbench.hpp"
#include "ui/asking_dialog.hpp"
#include "ui/channel_table_view.hpp"
#include "ui/field_editor.hpp"
#include "ui/form_picture.hpp"

class QBoxLayout;
class QLabel;

namespace velmora::ui {

/// Draws any form: its fields by their kind, values per channel as one table, its buttons with their
/// mnemonics. A picture, if there is one, follows the fields.
class FormDialog : public AskingDialog {
  Q_OBJECT

 public:
  FormDialog(Form& form, const Workbench& workbench, FormPicture* picture, QWidget* parent);

 protected:
  void Refresh() override;

 private:
  QWidget* MakeFields();
  void AddTable(QBoxLayout* to);
  void AddResults(QBoxLayout* to);
  void AddButtons(QBoxLayout* to);
  void PressButton(const FormButton& button);
  void FieldsChanged();
  [[nodiscard]] ChannelColumn ColumnOf(const FormField& field);

  Form& form_;
  const Workbench& workbench_;
  FormPicture* picture_;
  std::vector<FieldEditor*> editors_;
  ChannelTableModel* model_ = nullptr;
  ChannelTableView* table_ = nullptr;
  QLabel* refusal_ = nullptr;
};

/// The dialogue for this form, with the picture that belongs to it.
std::unique_ptr<AskingDialog> MakeFormDialog(Form& form, Workbench& workbench, QWidget* parent);

}  // namespace velmora::ui
