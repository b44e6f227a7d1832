#include "ui/dialogs/form_dialog.hpp"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <map>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "forceplate/plate_form.hpp"
#include "ui/dialogs/content_area.hpp"
#include "ui/dialogs/filter_test_picture.hpp"
#include "ui/dialogs/found_mark.hpp"
#include "ui/dialogs/layout_picture.hpp"
#include "ui/dialogs/own_letters.hpp"
#include "ui/dialogs/plate_picture.hpp"
#include "ui/dialogs/response_picture.hpp"
#include "ui/dialogs/result_table_view.hpp"
#include "ui/dialogs/text_picture.hpp"
#include "ui/graph/form_graph_panel.hpp"
#include "ui/main/theme.hpp"
#include "ui/screen_room.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr std::size_t kFieldsThatFit = 20;  // in a column

bool IsPerChannel(const FormField& field) {
  return std::holds_alternative<ChannelNumbers*>(field.target) ||
         std::holds_alternative<ChannelFlags*>(field.target);
}

QLabel* RemarkLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  SetTone(label, Tone::Quiet);
  return label;
}

QString HeadOf(const FormField& field) {
  const QString name = ToQt(WithoutMnemonic(ToStd(SplitCaption(field).name)));
  const QString units = QStringLiteral("(") + ToQt(field.units) + QStringLiteral(")");
  return field.units.empty() || name.endsWith(units) ? name : name + QStringLiteral(" ") + units;
}

constexpr const char* kGivenCaption = "givenCaption";

}  // namespace

void FormDialog::ShowCaption(QWidget& widget, const QString& given) {
  if (widget.property(kGivenCaption).toString() != given) {
    widget.setProperty(kGivenCaption, given);
    widget.setProperty("text", given);
  }
}

FormDialog::FormDialog(Form& form, const Workbench& workbench, FormPicture* picture, QWidget* parent)
    : AskingDialog(parent), form_(form), workbench_(workbench), picture_(picture) {
  setObjectName(ToQt(form.Name()));
  setWindowTitle(ToQt(form.Title()));
  auto* layout = new QVBoxLayout(this);
  layout->setSpacing(14);
  auto* content = new QWidget;
  // Beside a graph a narrow dialogue is out of the way; a single field beside results would take their width.
  const bool above = form_.StandsBesideGraph() || (form_.Graph() && form_.Fields().size() <= 1);
  auto* sides = new QBoxLayout(above ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, content);
  sides->setContentsMargins(0, 0, 0, 0);
  sides->setSpacing(18);
  for (const FormButton& button : form_.Buttons()) {
    pushes_.push_back(button.menu.empty() ? MakeButton(button) : nullptr);  // an entry has none
  }
  auto* left = new QVBoxLayout;
  if (QWidget* fields = MakeFields()) {
    left->addWidget(fields);
  }
  if (QWidget* steps = MakeButtonRows()) {
    left->addWidget(steps);
  }
  if (left->count() > 0) {
    left->addStretch();
    sides->addLayout(left);
  } else {
    delete left;
  }
  auto* wide = new QVBoxLayout;
  AddTable(wide);
  if (picture_ != nullptr) {
    picture_->setObjectName(QStringLiteral("picture"));
    picture_->onEdited = [this] { FieldsChanged(); };
    wide->addWidget(picture_, 1);
  }
  if (form_.Graph()) {
    graph_ = new FormGraphPanel;
    wide->addWidget(graph_, 1);
  }
  const bool shows = wide->count() > 0 || !form_.Tables().empty();
  results_ = new QWidget;
  (new QVBoxLayout(results_))->setContentsMargins(0, 0, 0, 0);
  wide->addWidget(results_, 1);
  sides->addLayout(wide, shows ? 1 : 0);
  content_ = new ContentArea(content);
  layout->addWidget(content_, 1);
  AddButtons(layout);
  form_.onChanged = [this] { FieldsChanged(); };
}

QFormLayout* FormDialog::MakeRows(QWidget* on) {
  auto* rows = new QFormLayout(on);
  rows->setRowWrapPolicy(QFormLayout::DontWrapRows);
  rows->setVerticalSpacing(9);
  rows->setHorizontalSpacing(14);
  rows->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
  return rows;
}

// For whoever has the dialogue read aloud: a label's buddy is the editor, and the keys go to what is in it.
// Buttons say what they are.
void FormDialog::NameEditor(FieldEditor& editor) {
  const QString name = ToQt(WithoutMnemonic(ToStd(SplitCaption(editor.Field()).name)));
  QWidget* inner = editor.focusProxy();
  const bool saysItself = inner == nullptr || qobject_cast<QAbstractButton*>(inner) != nullptr;
  (saysItself ? &editor : inner)->setAccessibleName(name);
}

// Alt and a letter press one thing. Cancel has Esc, so its letter goes to others first.
void FormDialog::GiveLetters() {
  QList<QWidget*> captioned;
  QList<QWidget*> last;
  for (auto* push : findChildren<QPushButton*>()) {
    const auto of = std::find(pushes_.begin(), pushes_.end(), push);
    const bool cancels =
        of != pushes_.end() &&
        form_.Buttons()[static_cast<std::size_t>(of - pushes_.begin())].role == FormButton::Role::Cancel;
    (cancels ? last : captioned) << push;
  }
  for (auto* button : findChildren<QAbstractButton*>()) {
    if (qobject_cast<QPushButton*>(button) == nullptr) {
      captioned << button;
    }
  }
  for (const FieldRow& row : rows_) {
    if (row.caption != nullptr) {
      captioned << row.caption;
    }
  }
  captioned << last;
  QStringList given;
  for (QWidget* widget : captioned) {
    const QVariant caption = widget->property(kGivenCaption);
    given << (caption.isValid() ? caption : widget->property("text")).toString();
    widget->setProperty(kGivenCaption, given.last());
  }
  const QStringList captions = WithLettersOfTheirOwn(given);
  for (qsizetype k = 0; k < captioned.size(); ++k) {
    if (captioned[k]->property("text").toString() != captions[k]) {
      captioned[k]->setProperty("text", captions[k]);
    }
  }
}

void FormDialog::AddField(const FormField& field, QFormLayout* rows) {
  FieldEditor* editor = MakeFieldEditor(form_, field, rows->parentWidget());
  connect(editor, &FieldEditor::Edited, this, [this] { FieldsChanged(); });
  const FieldCaption caption = SplitCaption(field);
  QLabel* label = nullptr;
  if (editor->ShowsCaption() || caption.name.isEmpty()) {
    rows->addRow(WithMark(editor));
  } else {
    label = new QLabel(caption.name);
    label->setBuddy(editor);
    label->setWordWrap(caption.name.size() > 30);
    rows->addRow(label, WithMark(editor));
  }
  QLabel* remark = nullptr;
  if (!caption.remark.isEmpty()) {
    remark = RemarkLabel(caption.remark);
    rows->addRow(QString(), remark);
  }
  rows_.push_back({editor, label, remark});
}

QWidget* FormDialog::MakeFields() {
  const std::vector<FormField>& all = form_.Fields();
  if (std::any_of(all.begin(), all.end(), [](const FormField& field) { return !field.group.empty(); })) {
    return MakeGroups();
  }
  auto* fields = new QWidget;
  QFormLayout* rows = MakeRows(fields);
  rows->setContentsMargins(0, 0, 0, 0);
  for (const FormField& field : all) {
    if (!IsPerChannel(field)) {
      AddField(field, rows);
    }
  }
  if (rows_.empty()) {
    delete fields;
    return nullptr;
  }
  return fields;
}

// A field that something was found for has a mark beside it.
QWidget* FormDialog::WithMark(FieldEditor* editor) {
  const auto& found = form_.Found();
  const auto it = std::find_if(found.begin(), found.end(),
                               [editor](const auto& one) { return one.field == &editor->Field(); });
  if (it == found.end()) {
    return editor;
  }
  auto* both = new QWidget;
  auto* layout = new QHBoxLayout(both);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(editor);
  auto* mark = new FoundMark(form_, *it);
  connect(mark, &FoundMark::Edited, this, [this] { FieldsChanged(); });
  marks_.push_back(mark);
  layout->addWidget(mark, 0, Qt::AlignVCenter);
  layout->addStretch(1);
  return both;
}

// A group is a box; boxes stand one below the other as long as there is room, then in another column.
QWidget* FormDialog::MakeGroups() {
  auto* fields = new QWidget;
  auto* columns = new QHBoxLayout(fields);
  columns->setContentsMargins(0, 0, 0, 0);
  std::vector<std::string> names;
  std::map<std::string, std::vector<const FormField*>> groups;
  for (const FormField& field : form_.Fields()) {
    if (groups[field.group].empty()) {
      names.push_back(field.group);
    }
    groups[field.group].push_back(&field);
  }
  QVBoxLayout* column = nullptr;
  std::size_t used = 0;
  for (const std::string& name : names) {
    used += groups[name].size();
    if (column == nullptr || used > kFieldsThatFit) {
      column = new QVBoxLayout;
      columns->addLayout(column);
      used = groups[name].size();
    }
    auto* box = new QGroupBox(ToQt(name));
    QFormLayout* rows = MakeRows(box);
    rows->setVerticalSpacing(4);
    for (const FormField* field : groups[name]) {
      AddField(*field, rows);
    }
    column->addWidget(box, 0, Qt::AlignTop);
  }
  return fields;
}

ChannelColumn FormDialog::ColumnOf(const FormField& field) {
  ChannelColumn column;
  column.head = HeadOf(field);
  column.tip = SplitCaption(field).remark;
  const FormField* target = &field;
  if (ChannelFlags* const* flags = std::get_if<ChannelFlags*>(&field.target)) {
    column.kind = ChannelColumn::Kind::Check;
    column.checked = [values = *flags](int channel) { return (*values)[channel]; };
    if (!field.readOnly) {
      column.check = [this, target](int channel, bool on) {
        form_.Edit(*target, channel, on ? "true" : "false");
      };
    }
    return column;
  }
  column.kind = field.isColour ? ChannelColumn::Kind::Colour : ChannelColumn::Kind::Number;
  ChannelNumbers* values = std::get<ChannelNumbers*>(field.target);
  column.text = [values](int channel) { return ToQt(PlainNumber((*values)[channel])); };
  if (field.valuesOf != nullptr) {
    left_.push_back(std::make_unique<LeftValues>(*field.valuesOf, workbench_, 0.0,
                                                 [values](int channel) { return (*values)[channel]; }));
    column.origin = [left = left_.back().get()](int channel) { return left->Hint(channel); };
  }
  if (!field.readOnly) {
    column.edit = [this, target](int channel, const QString& typed) {
      form_.Edit(*target, channel, ToStd(typed));
    };
  }
  return column;
}

void FormDialog::AddTable(QBoxLayout* to) {
  std::vector<ChannelColumn> columns = {NumberColumn(), LabelColumn(workbench_), UnitsColumn(workbench_)};
  // A form that is about the colours shows its own.
  if (std::none_of(form_.Fields().begin(), form_.Fields().end(),
                   [](const FormField& field) { return field.isColour; })) {
    columns.insert(columns.begin(), SwatchColumn());
  }
  const std::size_t given = columns.size();
  for (const FormField& field : form_.Fields()) {
    if (IsPerChannel(field)) {
      columns_.push_back({&field, static_cast<int>(columns.size())});
      columns.push_back(ColumnOf(field));
    }
  }
  if (columns.size() == given) {
    return;
  }
  model_ = new ChannelTableModel(workbench_, std::move(columns), this);
  table_ = new ChannelTableView(workbench_, nullptr, model_, this);
  int width = 24;
  for (int k = 0; k < model_->columnCount({}); ++k) {
    width += table_->horizontalHeader()->sectionSize(k);
  }
  table_->setMinimumSize(std::max(width, 420), 240);
  table_->horizontalHeader()->setStretchLastSection(true);
  connect(model_, &ChannelTableModel::Edited, this, [this] { FieldsChanged(); });
  connect(model_, &ChannelTableModel::Refused, this, [this](const QString& why) { refusal_->setText(why); });
  connect(table_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
    if (picture_ != nullptr) {
      picture_->Show(table_->CurrentChannel());
    }
  });
  to->addWidget(table_, 2);
  for (const FormField& field : form_.Fields()) {
    const FieldCaption caption = SplitCaption(field);
    if (IsPerChannel(field) && !caption.remark.isEmpty()) {
      to->addWidget(RemarkLabel(caption.name + QStringLiteral(": ") + caption.remark));
    }
  }
  for (const std::unique_ptr<LeftValues>& left : left_) {
    if (const QString remark = left->Remark(); !remark.isEmpty()) {
      to->addWidget(RemarkLabel(remark));
    }
  }
}

// A form that shows tables may have others after an edit or a button.
void FormDialog::ShowResults() {
  const std::vector<ResultTable>& tables = form_.Tables();
  results_->setVisible(
      std::any_of(tables.begin(), tables.end(), [](const auto& one) { return !one.hidden; }));
  while (tables_.size() > tables.size()) {
    delete tables_.back().title;
    delete tables_.back().view;
    tables_.pop_back();
  }
  while (tables_.size() < tables.size()) {
    tables_.push_back({new QLabel, new ResultTableView});
    tables_.back().title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    results_->layout()->addWidget(tables_.back().title);
    results_->layout()->addWidget(tables_.back().view);
  }
  for (std::size_t k = 0; k < tables.size(); ++k) {
    tables_[k].title->setText(ToQt(tables[k].title));
    tables_[k].view->setAccessibleName(ToQt(tables[k].title.empty() ? "Results" : tables[k].title));
    tables_[k].view->LeaveRoom(graph_ != nullptr && !form_.Graph()->hidden);
    tables_[k].view->Show(tables[k]);
    if (form_.StandsBesideGraph()) {
      tables_[k].view->setMinimumWidth(kNarrow);
    }
    // Said aloud: else they would count only once the dialogue is on the screen, too late for its size.
    tables_[k].title->setVisible(!tables[k].hidden);
    tables_[k].view->setVisible(!tables[k].hidden);
  }
  if (graph_ != nullptr) {
    graph_->setVisible(!form_.Graph()->hidden);
    graph_->Show(*form_.Graph());
  }
  TakeRoom();
}

// What comes into view has its room, as far as the screen has; a size that a person chose stays otherwise.
void FormDialog::TakeRoom() {
  std::vector<bool> parts = {graph_ != nullptr && !form_.Graph()->hidden};
  for (const ResultTable& table : form_.Tables()) {
    parts.push_back(!table.hidden);
  }
  for (const FormField& field : form_.Fields()) {
    parts.push_back(!field.hidden);
  }
  if (std::exchange(parts_, parts) == parts) {
    return;
  }
  // The scrolling area hears of its content's size by events, which come after a size was chosen.
  for (QWidget* widget = results_; widget != this; widget = widget->parentWidget()) {
    widget->updateGeometry();
    if (QLayout* layout = widget->layout()) {
      layout->activate();  // layouts inside it are asked anew as well
    }
  }
  if (isVisible()) {
    resize(sizeHint().expandedTo(size()).boundedTo(RoomOn(*this).size()));
    KeepOnScreen(*this);
  }
}

// Some parts know what they need only once the style has reached them, on the screen: without this a few
// pixels would bring up both scroll bars.
void FormDialog::Shown() {
  QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  const QSize lacks = content_->widget()->minimumSizeHint() - content_->maximumViewportSize();
  if (lacks.width() > 0 || lacks.height() > 0) {
    resize((size() + lacks.expandedTo({0, 0})).boundedTo(RoomOn(*this).size()));
    KeepOnScreen(*this);
  }
}

// An edit of one field may hide others, name them anew or take choices from them.
void FormDialog::ShowFields() {
  for (const FieldRow& row : rows_) {
    const FormField& field = row.editor->Field();
    row.editor->setVisible(!field.hidden);
    row.editor->Refresh();
    if (row.caption != nullptr) {
      row.caption->setVisible(!field.hidden);
      ShowCaption(*row.caption, SplitCaption(field).name);
    }
    NameEditor(*row.editor);
    if (row.remark != nullptr) {
      row.remark->setVisible(!field.hidden);
    }
  }
}

void FormDialog::ShowColumns() {
  QHeaderView* heads = table_->horizontalHeader();
  for (const FieldColumn& shown : columns_) {
    table_->setColumnHidden(shown.column, shown.field->hidden);
    model_->SetHead(shown.column, HeadOf(*shown.field));
    if (!shown.field->hidden) {  // whatever the head is now, it can be read
      heads->resizeSection(shown.column,
                           std::max(heads->sectionSize(shown.column), heads->sectionSizeHint(shown.column)));
    }
  }
  model_->Refresh();
}

void FormDialog::PressButton(const FormButton& button) {
  if (button.role != FormButton::Role::Cancel) {
    if (table_ != nullptr) {
      table_->FinishEditing();
    }
    for (const FieldRow& row : rows_) {
      if (!row.editor->Commit()) {
        row.editor->setFocus();
        return;
      }
    }
  }
  Press(WithoutMnemonic(button.caption));
}

void FormDialog::Refresh() {
  FieldsChanged();
}

void FormDialog::FieldsChanged() {
  refusal_->clear();
  ShowFields();
  ShowButtons();
  GiveLetters();
  for (FoundMark* mark : marks_) {
    mark->Refresh();
  }
  for (const MenuEntry& entry : entries_) {
    if (entry.button->checked) {
      entry.action->setChecked(entry.button->checked());
    }
  }
  if (model_ != nullptr) {
    ShowColumns();
  }
  ShowResults();
  if (picture_ != nullptr) {
    picture_->Show(table_ != nullptr ? table_->CurrentChannel() : 0);
  }
}

std::unique_ptr<AskingDialog> MakeFormDialog(Form& form, Workbench& workbench, QWidget* parent) {
  FormPicture* picture = nullptr;
  if (ShowsFilter(form)) {
    picture = new ResponsePicture(form, workbench);
  } else if (form.Name() == "frmParse") {
    picture = new TextPicture(form, workbench);
  } else if (form.Name() == "frmFiltering") {
    picture = new FilterTestPicture(form);
  } else if (const auto* plates = dynamic_cast<const PlateForm*>(&form);
             plates != nullptr && form.FindField("a") != nullptr) {
    picture = new PlatePicture(*plates, workbench.trial);
  } else if (const auto* graphs = dynamic_cast<const MultiChooseForm*>(&form)) {
    picture = new LayoutPicture(*graphs, workbench.trial);
  }
  return std::make_unique<FormDialog>(form, workbench, picture, parent);
}

}  // namespace velmora::ui
