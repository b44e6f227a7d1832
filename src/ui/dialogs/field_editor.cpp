#include "ui/dialogs/field_editor.hpp"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardItemModel>
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "ui/dialogs/file_dialog.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"
#include "ui/trial/channel_drawing.hpp"

namespace velmora::ui {
namespace {

bool CanBeChosen(const FormField& field, int choice) {
  const auto& disabled = field.disabledChoices;
  return !field.readOnly && std::find(disabled.begin(), disabled.end(), choice) == disabled.end();
}

class CheckEditor : public FieldEditor {
 public:
  CheckEditor(Form& form, const FormField& field, QWidget* parent) : FieldEditor(field, parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    box_ = new QCheckBox(ToQt(field.caption));
    box_->setObjectName(ToQt(field.name));
    box_->setEnabled(!field.readOnly);
    layout->addWidget(box_);
    setFocusProxy(box_);
    connect(box_, &QCheckBox::clicked, this, [this, &form](bool on) {
      form.Edit(field_, on ? "true" : "false");
      Q_EMIT Edited();
    });
  }
  void Refresh() override { box_->setChecked(*std::get<bool*>(field_.target)); }
  [[nodiscard]] bool ShowsCaption() const override { return true; }

 private:
  QCheckBox* box_;
};

class RadioEditor : public FieldEditor {
 public:
  RadioEditor(Form& form, const FormField& field, QWidget* parent) : FieldEditor(field, parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 2, 0, 2);
    layout->setSpacing(3);
    group_ = new QButtonGroup(this);
    for (const std::string& choice : field.choices) {
      auto* button = new QRadioButton(ToQt(choice));
      group_->addButton(button, static_cast<int>(group_->buttons().size()));
      layout->addWidget(button);
    }
    setFocusProxy(group_->button(0));
    connect(group_, &QButtonGroup::idClicked, this, [this, &form](int choice) {
      form.Edit(field_, std::to_string(choice));
      Q_EMIT Edited();
    });
  }
  // A choice that is not made yet counts as the first.
  void Refresh() override {
    const int choice = std::max(0, *std::get<std::int32_t*>(field_.target));
    if (QAbstractButton* button = group_->button(choice)) {
      button->setChecked(true);
    }
    for (QAbstractButton* button : group_->buttons()) {
      button->setEnabled(CanBeChosen(field_, group_->id(button)));
    }
  }

 private:
  QButtonGroup* group_;
};

class ListEditor : public FieldEditor {
 public:
  ListEditor(Form& form, const FormField& field, QWidget* parent) : FieldEditor(field, parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    list_ = new QComboBox;
    list_->setObjectName(ToQt(field.name));
    list_->setEnabled(!field.readOnly);
    list_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    layout->addWidget(list_);
    layout->addStretch();
    setFocusProxy(list_);
    connect(list_, &QComboBox::activated, this, [this, &form](int choice) {
      form.Edit(field_, std::to_string(choice));
      Q_EMIT Edited();
    });
  }
  void Refresh() override {
    QStringList choices;
    for (const std::string& choice : field_.choices) {
      choices << ToQt(WithoutMnemonic(choice));
    }
    if (choices != listed_) {
      listed_ = choices;
      list_->clear();
      list_->addItems(choices);
      for (int k = 1; field_.isColour && k < list_->count(); ++k) {  // the first is no colour
        list_->setItemIcon(k, SwatchIcon(k, palette()));
      }
    }
    list_->setCurrentIndex(*std::get<std::int32_t*>(field_.target));
    auto* items = qobject_cast<QStandardItemModel*>(list_->model());
    for (int k = 0; k < items->rowCount(); ++k) {
      items->item(k)->setEnabled(CanBeChosen(field_, k));
    }
  }

 private:
  QComboBox* list_;
  QStringList listed_;
};

struct ShowValue {
  const FormField& field;

  std::string operator()(const std::int32_t* value) const { return std::to_string(*value); }
  std::string operator()(const double* value) const {
    return field.pattern.empty() ? PlainNumber(*value) : FormatNumber(*value, field.pattern);
  }
  std::string operator()(const std::string* value) const { return *value; }
  template <typename Other>
  std::string operator()(const Other* /*value*/) const {
    return {};
  }
};

QString ValueText(const FormField& field) {
  return field.notApplicable ? QStringLiteral("n.a.") : ToQt(std::visit(ShowValue{field}, field.target));
}

QString Limits(const FormField& field) {
  const bool bounded = field.highest < std::numeric_limits<double>::infinity();
  const QString low = ToQt(PlainNumber(field.lowest));
  return bounded ? QObject::tr("from %1 to %2").arg(low, ToQt(PlainNumber(field.highest)))
                 : QObject::tr("at least %1").arg(low);
}

QString ReadAs(double value) {
  return QObject::tr("is read as %1").arg(ToQt(PlainNumber(value)));
}

class LineEditor : public FieldEditor {
 public:
  LineEditor(Form& form, const FormField& field, QWidget* parent)
      : FieldEditor(field, parent), form_(form), text_(std::holds_alternative<std::string*>(field.target)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    line_ = new QLineEdit;
    line_->setObjectName(ToQt(field.name));
    line_->setToolTip(ToQt(Tip()));
    if (!text_) {
      line_->setFixedWidth(line_->fontMetrics().horizontalAdvance('0') * 14);
    } else {
      line_->setMinimumWidth(line_->fontMetrics().horizontalAdvance('0') * 34);
    }
    layout->addWidget(line_, text_ ? 1 : 0);
    if (!field.units.empty()) {
      layout->addWidget(new QLabel(ToQt(field.units)));
    }
    if (field.asksByFile) {
      AddFileButton(layout);
    }
    remark_ = new QLabel;
    remark_->setTextFormat(Qt::PlainText);
    if (!text_) {  // what is said of a number while it is typed has its room
      const bool limited = field.lowest > -std::numeric_limits<double>::infinity();
      remark_->setMinimumWidth(remark_->fontMetrics().horizontalAdvance(limited ? Limits(field) : ReadAs(0)));
    }
    layout->addWidget(remark_, 1);
    setFocusProxy(line_);
    connect(line_, &QLineEdit::editingFinished, this, [this] { Commit(); });
    connect(line_, &QLineEdit::textEdited, this, [this] { Typed(); });
    if (field.asksByInput) {
      line_->installEventFilter(this);
    }
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::MouseButtonDblClick) {
      return FieldEditor::eventFilter(watched, event);
    }
    QMetaObject::invokeMethod(
        this, [this] { AskInBox(); }, Qt::QueuedConnection);
    return true;
  }

  void Refresh() override {
    if (choose_ != nullptr) {
      choose_->setEnabled(!field_.readOnly);
    }
    const QString value = ValueText(field_);
    if (line_->hasFocus() && !text_ && Val(ToStd(line_->text())) == Val(ToStd(value))) {
      shown_ = line_->text();
      return;  // still being typed
    }
    if (value != shown_ || line_->text() != value) {
      shown_ = value;
      line_->setText(value);
      line_->setCursorPosition(0);
    }
    line_->setEnabled(!field_.readOnly && !field_.notApplicable);
    if (!field_.pattern.empty()) {  // the value behind what is shown of it
      line_->setToolTip(ToQt((field_.tip.empty() ? field_.prompt : field_.tip) + "\n" +
                             PlainNumber(*std::get<double*>(field_.target))));
    }
    remark_->clear();
  }

  bool Commit() override {
    if (line_->text() == shown_) {
      return true;
    }
    if (!Judge()) {
      return false;
    }
    shown_ = line_->text();
    form_.Edit(field_, ToStd(line_->text()));
    Q_EMIT Edited();
    return true;
  }

 private:
  [[nodiscard]] std::string Tip() const {
    if (!field_.tip.empty()) {
      return field_.tip;
    }
    return field_.title.empty() ? field_.prompt : field_.title + "\n" + field_.prompt;
  }

  // The pattern, unless it hides digits.
  [[nodiscard]] QString OfferedText() const {
    const double* const* number = std::get_if<double*>(&field_.target);
    if (number == nullptr || field_.inputPattern.empty()) {
      return line_->text();
    }
    const std::string text = FormatNumber(**number, field_.inputPattern);
    return Val(text) == **number ? ToQt(text) : line_->text();
  }

  void AddFileButton(QBoxLayout* layout) {
    choose_ = new QPushButton;
    choose_->setText(tr("Browse\u2026"));
    choose_->setAutoDefault(false);
    choose_->setToolTip(ToQt(field_.asksByFile->title));
    layout->addWidget(choose_);
    connect(choose_, &QPushButton::clicked, this, [this] {
      FileQuestion question = *field_.asksByFile;
      question.defaultName = ToStd(line_->text());
      if (const std::vector<std::string> path = ChooseFiles(question, *window()); !path.empty()) {
        line_->setText(ToQt(path.front()));
        Commit();
      }
    });
  }

  void AskInBox() {
    const std::string title = field_.title.empty() ? WithoutMnemonic(field_.caption) : field_.title;
    bool accepted = false;
    const QString typed = QInputDialog::getText(this, ToQt(title), ToQt(field_.prompt), QLineEdit::Normal,
                                                OfferedText(), &accepted);
    if (accepted && !typed.isEmpty()) {
      line_->setText(typed);
      Commit();
    }
  }

  // A number that nothing follows from is taken as it is typed, so that pictures follow it.
  void Typed() {
    if (Judge() && !text_ && (!field_.edited || field_.followsTyping)) {
      Commit();
    }
  }

  // Tells at once what will not be taken, or not as it was meant. Returns whether it can be taken.
  bool Judge() {
    remark_->clear();
    if (text_) {
      return true;
    }
    const std::string typed = ToStd(line_->text().trimmed());
    if (typed.empty() && field_.emptyKeeps) {
      return true;
    }
    const double value = Val(typed);
    if (value < field_.lowest || value > field_.highest) {
      Remark(Limits(field_), true);
      return false;
    }
    bool number = false;
    line_->text().trimmed().toDouble(&number);
    if (!number) {
      Remark(ReadAs(value), false);
    }
    return true;
  }

  void Remark(const QString& text, bool refused) {
    remark_->setText(text);
    SetTone(remark_, refused ? Tone::Warning : Tone::Quiet);
  }

  Form& form_;
  bool text_;
  QLineEdit* line_;
  QPushButton* choose_ = nullptr;  // of a file
  QLabel* remark_;
  QString shown_;
};

class NoteEditor : public FieldEditor {
 public:
  NoteEditor(const FormField& field, QWidget* parent) : FieldEditor(field, parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    label_ = new QLabel;
    label_->setTextFormat(Qt::PlainText);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(label_);
  }
  // A number as somebody reads it; its tip has all of it.
  void Refresh() override {
    constexpr int kDigits = 7;
    const double* const* number = std::get_if<double*>(&field_.target);
    const QString units = field_.units.empty() ? QString() : QStringLiteral(" ") + ToQt(field_.units);
    if (number == nullptr) {
      constexpr int kShort = 45;  // characters: one line
      const QString text = ValueText(field_) + units;
      label_->setWordWrap(text.size() > kShort);
      label_->setMinimumWidth(text.size() > kShort ? 300 : 0);
      label_->setText(text);
      return;
    }
    const QString shown =
        field_.pattern.empty() ? QString::number(**number, 'g', kDigits) : ValueText(field_);
    label_->setText(shown + units);
    label_->setToolTip(ToQt(PlainNumber(**number)));
  }

 private:
  QLabel* label_;
};

}  // namespace

FieldEditor* MakeFieldEditor(Form& form, const FormField& field, QWidget* parent) {
  if (std::holds_alternative<bool*>(field.target)) {
    return new CheckEditor(form, field, parent);
  }
  if (field.isList) {
    return new ListEditor(form, field, parent);
  }
  if (!field.choices.empty()) {
    constexpr std::size_t kFew = 4;
    // Letters to press work only where every choice is seen.
    const bool lettered = std::any_of(field.choices.begin(), field.choices.end(), [](const auto& choice) {
      return choice.find('&') != std::string::npos;
    });
    if (lettered || field.choices.size() <= kFew) {
      return new RadioEditor(form, field, parent);
    }
    return new ListEditor(form, field, parent);
  }
  if (field.readOnly) {
    return new NoteEditor(field, parent);
  }
  return new LineEditor(form, field, parent);
}

FieldCaption SplitCaption(const FormField& field) {
  const QString caption = ToQt(field.caption);
  const qsizetype end = caption.indexOf(QStringLiteral(".  "));
  if (end < 0) {
    return {caption, {}};
  }
  return {caption.left(end), caption.mid(end + 3)};
}

}  // namespace velmora::ui
