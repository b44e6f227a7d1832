#pragma once

#include <QWidget>

#include "core/questions/form.hpp"

namespace velmora::ui {

/// Draws one field of a form that is no value per channel: a check box, a list of choices, a line to
/// type in with its units behind it, or a text to read. What cannot be taken is told beside it.
class FieldEditor : public QWidget {
  Q_OBJECT

 public:
  FieldEditor(const FormField& field, QWidget* parent) : QWidget(parent), field_(field) {}

  /// Shows the field's value.
  virtual void Refresh() = 0;
  /// Gives the form what was typed and not yet taken. Returns false when it cannot be taken.
  virtual bool Commit() { return true; }
  /// Whether the caption stands in the editor itself.
  [[nodiscard]] virtual bool ShowsCaption() const { return false; }
  [[nodiscard]] const FormField& Field() const { return field_; }

 Q_SIGNALS:
  /// The field has a new value, and others may have one too.
  void Edited();

 protected:
  const FormField& field_;
};

FieldEditor* MakeFieldEditor(Form& form, const FormField& field, QWidget* parent);

/// A caption may say more than the name of its field: "Cutoff.  A zero cutoff means do NOT filter."
struct FieldCaption {
  QString name;  // with '&'
  QString remark;
};
FieldCaption SplitCaption(const FormField& field);

}  // namespace velmora::ui
