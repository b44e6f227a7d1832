#pragma once

#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>

#include "core/questions/form.hpp"

namespace velmora::ui {

/// What a form shows beside its fields in the window: a drawing of what its values would do.
class FormPicture : public QWidget {
 public:
  using QWidget::QWidget;
  /// The fields changed, or another channel (0: none) is the current one.
  virtual void Show(int channel) = 0;

  /// To be called after an edit of the form that was made in the picture.
  std::function<void()> onEdited;
};

/// The value of a form's field by its name. The form must have it, with this type.
template <typename T>
const T& ValueOf(const Form& form, const char* name) {
  const FormField* field = form.FindField(name);
  if (field == nullptr) {
    throw std::logic_error("form " + form.Name() + " has no field " + name);
  }
  return *std::get<T*>(field->target);
}

}  // namespace velmora::ui
