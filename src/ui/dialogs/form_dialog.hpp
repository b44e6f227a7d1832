#pragma once

#include <map>
#include <memory>
#include <vector>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "ui/dialogs/asking_dialog.hpp"
#include "ui/dialogs/field_editor.hpp"
#include "ui/dialogs/form_picture.hpp"
#include "ui/dialogs/left_values.hpp"
#include "ui/trial/channel_table_view.hpp"

class QBoxLayout;
class QFormLayout;
class QHBoxLayout;
class QLabel;
class QMenu;
class QPushButton;
class QScrollArea;

namespace velmora::ui {

class FormGraphPanel;
class FoundMark;
class ResultTableView;

/// Draws any form: its fields by their kind, values per channel as one table, its buttons with their
/// mnemonics. A picture, if there is one, follows the fields.
class FormDialog : public AskingDialog {
  Q_OBJECT

 public:
  FormDialog(Form& form, const Workbench& workbench, FormPicture* picture, QWidget* parent);
  ~FormDialog() override { form_.onChanged = nullptr; }

 protected:
  void Refresh() override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  static constexpr int kNarrow = 360;  // pixels, of what stands beside a graph

  QWidget* MakeFields();
  QWidget* WithMark(FieldEditor* editor);
  QWidget* MakeGroups();
  static QFormLayout* MakeRows(QWidget* on);
  void AddField(const FormField& field, QFormLayout* rows);
  void AddTable(QBoxLayout* to);
  void ShowResults();
  void TakeRoom();
  void Shown() override;
  [[nodiscard]] const FormButton* FileButton() const;
  void ShowFields();
  static void ShowCaption(QWidget& widget, const QString& given);
  static void NameEditor(FieldEditor& editor);
  void GiveLetters();
  void ShowColumns();
  void AddButtons(QBoxLayout* to);
  /// The button that opens the menu of this entry, nullptr when there is one already.
  QPushButton* AddToMenu(const FormButton& button);
  QPushButton* MakeButton(const FormButton& button);
  QWidget* MakeButtonRows();
  void ShowButtons();
  /// Returns the last row.
  QHBoxLayout* AddInRows(const std::vector<QPushButton*>& buttons, QBoxLayout* to) const;
  void PressButton(const FormButton& button);
  void FieldsChanged();
  [[nodiscard]] ChannelColumn ColumnOf(const FormField& field);

  Form& form_;
  const Workbench& workbench_;
  FormPicture* picture_;
  /// A field as it is drawn, with what stands beside and below it (nullptr: nothing).
  struct FieldRow {
    FieldEditor* editor;
    QLabel* caption;
    QLabel* remark;
  };
  std::vector<FieldRow> rows_;
  std::vector<FoundMark*> marks_;
  std::vector<QPushButton*> pushes_;  // as the form has its buttons
  struct FieldColumn {
    const FormField* field;
    int column;
  };
  std::vector<FieldColumn> columns_;               // of the table of channels
  std::vector<std::unique_ptr<LeftValues>> left_;  // of columns that may hold such
  struct TitledTable {
    QLabel* title;
    ResultTableView* view;
  };
  std::vector<TitledTable> tables_;
  struct MenuEntry {
    const FormButton* button;
    QAction* action;
  };
  std::vector<MenuEntry> entries_;
  std::map<std::string, QMenu*> menus_;
  std::vector<bool> parts_;  // of the results: which are in sight
  QWidget* results_ = nullptr;
  QScrollArea* content_ = nullptr;
  FormGraphPanel* graph_ = nullptr;
  ChannelTableModel* model_ = nullptr;
  ChannelTableView* table_ = nullptr;
  QLabel* refusal_ = nullptr;
};

/// The dialogue for this form, with the picture that belongs to it.
std::unique_ptr<AskingDialog> MakeFormDialog(Form& form, Workbench& workbench, QWidget* parent);

}  // namespace velmora::ui
