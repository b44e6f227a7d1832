#include "run/history/answer_record.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

// A button by its caption; the accepting one by the word that means it in every dialogue.
std::string PressOf(const Form& form, std::string_view press) {
  const FormButton* button = form.FindButton(press);
  return button != nullptr ? WithoutMnemonic(button->caption) : std::string(press);
}

std::string YesNoText(bool value) {
  return value ? "true" : "false";
}

/// The value of a field in a recipe; `edited` are the channels that were, in order.
struct ValueOf {
  const FormField& field;
  int channels;
  const std::vector<int>& edited;
  const ChannelNamer& named;

  using Value = decltype(FieldAnswer::value);

  Value operator()(const bool* value) const { return YesNoText(*value); }
  Value operator()(const std::int32_t* value) const {
    const std::string number = std::to_string(*value);
    if (!field.channelsFrom || *value < *field.channelsFrom) {
      return number;
    }
    const ChannelName name = named(*value - *field.channelsFrom + 1);
    if (name.number > 0) {
      return number;
    }
    const std::string text = TextOf(name);
    return field.ChoiceCalled(text) ? "label:" + name.label : text;  // of "(none)", or as the abscissa
  }
  Value operator()(const double* value) const { return PlainNumber(*value); }
  Value operator()(const std::string* value) const { return *value; }
  Value operator()(const ChannelNumbers* values) const {
    std::vector<ChannelText> texts;
    for (const int c : Order()) {
      texts.push_back({named(c), PlainNumber((*values)[c])});
    }
    return texts;
  }
  Value operator()(const ChannelFlags* flags) const {
    if (field.edited) {  // what an edit brings about depends on which came last
      std::vector<ChannelText> texts;
      for (const int c : Order()) {
        texts.push_back({named(c), YesNoText((*flags)[c])});
      }
      return texts;
    }
    ChannelChoice choice;
    for (int c = 1; c <= channels; ++c) {
      if ((*flags)[c]) {
        choice.channels.push_back(named(c));
      }
    }
    return choice;
  }

 private:
  /// All channels, those that were edited last.
  [[nodiscard]] std::vector<int> Order() const {
    std::vector<int> order;
    for (int c = 1; c <= channels; ++c) {
      if (std::find(edited.begin(), edited.end(), c) == edited.end()) {
        order.push_back(c);
      }
    }
    order.insert(order.end(), edited.begin(), edited.end());
    return order;
  }
};

/// What the form would refuse if it were typed: a choice not made yet, a value outside its limits.
struct Repeatable {
  const FormField& field;
  int channels;

  bool operator()(const std::int32_t* value) const {
    return field.choices.empty() ? Fits(*value)
                                 : *value >= 0 && *value < static_cast<std::int32_t>(field.choices.size());
  }
  bool operator()(const double* value) const { return Fits(*value); }
  bool operator()(const ChannelNumbers* values) const {
    return std::all_of(values->begin() + 1, values->begin() + 1 + channels,
                       [this](double v) { return Fits(v); });
  }
  template <typename Other>
  bool operator()(const Other* /*value*/) const {
    return true;
  }

 private:
  [[nodiscard]] bool Fits(double value) const { return value >= field.lowest && value <= field.highest; }
};

}  // namespace

PickAnswer RecordPick(const ChannelPicker& picker, std::string_view press, const ChannelNamer& named) {
  PickAnswer answer;
  if (EqualNoCase(press, "Cancel")) {
    answer.press = "Cancel";
    return answer;
  }
  answer.press = WithoutMnemonic(picker.ClosingCaption());
  ChannelChoice selected;
  for (int c = 1; c <= picker.Channels(); ++c) {
    const bool marked = picker.IsSelected(c);
    if (marked) {
      selected.channels.push_back(named(c));
    }
    // What is no number was not typed, but offered, and will be again.
    const bool number = std::isfinite(picker.Value(c));
    if (picker.HasValues() && number && (marked || !picker.Selects())) {
      answer.values.push_back({named(c), PlainNumber(picker.Value(c))});
    }
    if (picker.HasNames()) {
      answer.names.push_back({named(c), picker.ValueText(c)});
    }
  }
  const bool chose = !picker.SelectsOne() || !selected.channels.empty();
  if ((picker.Selects() || picker.SelectsOne()) && chose) {
    answer.channels = selected;
  }
  return answer;
}

std::vector<const FormField*> IdleFields(const Form& form) {
  std::vector<const FormField*> idle;
  for (const FormField& field : form.Fields()) {
    if (field.notApplicable) {
      idle.push_back(&field);
    }
  }
  return idle;
}

FormAnswer RecordForm(const Form& form, std::string_view press, int channels, bool firstTime,
                      const std::vector<const FormField*>& idle, const ChannelNamer& named) {
  FormAnswer answer;
  answer.press = PressOf(form, press);
  const std::vector<Form::EditMade>& edits = form.Edits();
  const auto wasEdited = [&edits](const FormField& field) {
    return std::any_of(edits.begin(), edits.end(),
                       [&field](const auto& edit) { return edit.field == &field; });
  };
  firstTime = firstTime || form.ShowsAnother();
  std::vector<const FormField*> order;
  std::vector<const FormField*> freed;  // by an edit: only behind it can they be filled
  for (const FormField& field : form.Fields()) {
    if (firstTime && !field.readOnly && !wasEdited(field) &&
        std::visit(Repeatable{field, channels}, field.target)) {
      const bool late = std::find(idle.begin(), idle.end(), &field) != idle.end();
      (late ? freed : order).push_back(&field);
    }
  }
  for (const Form::EditMade& edit : edits) {
    std::erase(order, edit.field);
    order.push_back(edit.field);
  }
  order.insert(order.end(), freed.begin(), freed.end());
  std::erase_if(order, [](const FormField* field) { return field->notApplicable; });
  for (const FormField* field : order) {
    std::vector<int> edited;
    for (const Form::EditMade& edit : edits) {
      if (edit.field == field && edit.channel > 0 && edit.channel <= channels) {
        edited.push_back(edit.channel);
      }
    }
    answer.fields.push_back(
        {.name = field->name,
         .value = std::visit(ValueOf{*field, channels, edited, named}, field->target),
         .savesFile = field->asksByFile && field->asksByFile->mode == FileQuestion::Mode::Save});
  }
  return answer;
}

}  // namespace velmora
