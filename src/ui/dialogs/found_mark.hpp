#pragma once

#include <QToolButton>

#include "core/questions/form.hpp"

namespace velmora::ui {

/// Stands beside a field that was filled in with what was found: one press takes it back, another one
/// takes it again. It goes out where somebody types something else.
class FoundMark : public QToolButton {
  Q_OBJECT

 public:
  /// `found` is one of the form's.
  FoundMark(Form& form, const Form::FoundValue& found);

  void Refresh();

 Q_SIGNALS:
  void Edited();

 private:
  const Form::FoundValue& found_;
};

}  // namespace velmora::ui
