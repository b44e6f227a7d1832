#include "core/questions/form.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

#include "core/questions/questions.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/workbench.hpp"

namespace velmora {
namespace {

[[noreturn]] void Refuse(const FormField& field, const std::string& why) {
  throw std::invalid_argument("field " + field.name + ": " + why);
}

void RefuseReadOnly(const FormField& field) {
  if (field.readOnly) {
    Refuse(field, "is shown and cannot be set");
  }
  if (field.notApplicable) {
    Refuse(field, "does not apply here and cannot be set");
  }
}

std::optional<bool> YesNo(std::string_view text) {
  for (const char* yes : {"true", "yes", "-1", "1"}) {
    if (EqualNoCase(text, yes)) {
      return true;
    }
  }
  for (const char* no : {"false", "no", "0"}) {
    if (EqualNoCase(text, no)) {
      return false;
    }
  }
  return std::nullopt;
}

bool YesNoOf(const FormField& field, std::string_view text) {
  const std::optional<bool> value = YesNo(text);
  if (!value) {
    Refuse(field, "\"" + std::string(text) + "\" is neither yes nor no");
  }
  return *value;
}

double Limited(const FormField& field, double value) {
  if (value < field.lowest || value > field.highest) {
    Refuse(field, PlainNumber(value) + " lies outside " + PlainNumber(field.lowest) + " to " +
                      PlainNumber(field.highest));
  }
  return value;
}

std::int32_t ChoiceOf(const FormField& field, std::string_view text) {
  if (const std::optional<std::int32_t> called = field.ChoiceCalled(text)) {
    return *called;
  }
  const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
  const double index = digits ? Val(text) : -1;
  if (index < 0 || index >= static_cast<double>(field.choices.size())) {
    Refuse(field, "there is no choice \"" + std::string(text) + "\"");
  }
  return static_cast<std::int32_t>(index);
}

struct EditOne {
  const FormField& field;
  std::string_view text;

  void operator()(bool* target) const { *target = YesNoOf(field, text); }
  void operator()(std::int32_t* target) const {
    *target = field.choices.empty() ? RoundHalfEven32(Limited(field, Val(text))) : ChoiceOf(field, text);
  }
  void operator()(double* target) const { *target = Limited(field, Val(text)); }
  void operator()(std::string* target) const { *target = text; }
  void operator()(ChannelNumbers* /*target*/) const { Refuse(field, "wants a value for each channel"); }
  void operator()(ChannelFlags* /*target*/) const { Refuse(field, "wants a value for each channel"); }
};

struct ShowValue {
  std::string operator()(const bool* value) const { return *value ? "true" : "false"; }
  std::string operator()(const std::int32_t* value) const { return std::to_string(*value); }
  std::string operator()(const double* value) const { return PlainNumber(*value); }
  std::string operator()(const std::string* value) const { return *value; }
  template <typename PerChannel>
  std::string operator()(const PerChannel* /*values*/) const {
    return {};
  }
};

}  // namespace

std::optional<std::int32_t> FormField::ChoiceCalled(std::string_view text) const {
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (EqualNoCase(WithoutMnemonic(choices[i]), text)) {
      return static_cast<std::int32_t>(i);
    }
  }
  return std::nullopt;
}

FormButton StayButton(std::string caption, std::function<void()> press) {
  return {.caption = std::move(caption), .press = [press = std::move(press)] {
            press();
            return false;
          }};
}

const FormField* Form::FindField(std::string_view name) const {
  const auto it = std::find_if(fields_.begin(), fields_.end(),
                               [name](const FormField& field) { return EqualNoCase(field.name, name); });
  return it == fields_.end() ? nullptr : &*it;
}

const FormButton* Form::FindButton(std::string_view caption) const {
  auto it = std::find_if(buttons_.begin(), buttons_.end(), [caption](const FormButton& button) {
    return EqualNoCase(WithoutMnemonic(button.caption), caption);
  });
  if (it == buttons_.end() && EqualNoCase(caption, "OK")) {
    it = std::find_if(buttons_.begin(), buttons_.end(),
                      [](const FormButton& button) { return button.role == FormButton::Role::Accept; });
  }
  return it == buttons_.end() ? nullptr : &*it;
}

void Form::Edit(const FormField& field, std::string_view text) {
  RefuseReadOnly(field);
  if (field.emptyKeeps && Trim(text).empty()) {
    return;
  }
  std::visit(EditOne{field, text}, field.target);
  NoteEdit(field, 0);
  if (field.edited) {
    field.edited();
  }
}

void Form::Edit(const FormField& field, int channel, std::string_view text) {
  RefuseReadOnly(field);
  if (channel < 1 || channel > kMaxChannels) {
    Refuse(field, "there is no channel " + std::to_string(channel));
  }
  if (ChannelNumbers* const* numbers = std::get_if<ChannelNumbers*>(&field.target)) {
    (**numbers)[channel] = Limited(field, Val(text));
  } else if (ChannelFlags* const* flags = std::get_if<ChannelFlags*>(&field.target)) {
    (**flags)[channel] = YesNoOf(field, text);
  } else {
    Refuse(field, "is not a value per channel");
  }
  editedChannel_ = channel;
  NoteEdit(field, channel);
  if (field.edited) {
    field.edited();
  }
}

std::string Form::TextOf(const FormField& field) {
  return std::visit(ShowValue{}, field.target);
}

void Form::TakeFound() {
  for (FoundValue& found : found_) {
    found.before = TextOf(*found.field);
    Edit(*found.field, found.text);
  }
  FoundTaken();
}

void Form::TakeFound(const FoundValue& found, bool take) {
  Edit(*found.field, take ? found.text : found.before);
  FoundTaken();
}

void Form::NoteFilled(std::string_view field) {
  if (const FormField* filled = FindField(field)) {
    NoteEdit(*filled, 0);
  }
}

void Form::NoteEdit(const FormField& field, int channel) {
  std::erase_if(edits_,
                [&](const EditMade& edit) { return edit.field == &field && edit.channel == channel; });
  edits_.push_back({&field, channel});
}

void Form::Show(Workbench& workbench) {
  struct Closing {
    Questions& questions;
    Form& form;
    ~Closing() { questions.EndForm(form); }
  } const closing{workbench.questions, *this};
  bool open = true;
  while (open) {
    edits_.clear();
    const std::string caption = workbench.questions.AskForm(*this);
    showsAnother_ = false;
    const FormButton* button = FindButton(caption);
    if (button == nullptr) {
      throw std::invalid_argument("form " + name_ + " has no button \"" + caption + "\"");
    }
    if (!button->whyNot.empty()) {
      workbench.report.warnings.push_back(title_ + ": \"" + WithoutMnemonic(button->caption) +
                                          "\" cannot be pressed now. " + button->whyNot);
      continue;
    }
    open = !(button->press && button->press());
  }
}

}  // namespace velmora
