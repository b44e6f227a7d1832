#include "run/recipe_questions.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "run/interrupt.hpp"

namespace velmora {
namespace {

struct NameKind {
  std::string operator()(const BoxAnswer& /*answer*/) const { return "box"; }
  std::string operator()(const InputAnswer& /*answer*/) const { return "input"; }
  std::string operator()(const FileAnswer& /*answer*/) const { return "file"; }
  std::string operator()(const PickAnswer& /*answer*/) const { return "pick"; }
  std::string operator()(const FormAnswer& /*answer*/) const { return "form"; }
};

std::string KindOf(const Answer& answer) {
  return std::visit(NameKind{}, answer.what);
}

void StopWhenInterrupted() {
  if (InterruptSignal() != 0) {
    throw CommandAbandoned("interrupted");
  }
}

std::string Quoted(std::string_view text) {
  std::string out = "\"" + std::string(text) + "\"";
  std::replace(out.begin(), out.end(), '\n', ' ');
  return out;
}

// A person sees at once what became of "2,5"; nobody looks at a recipe that multiplies by 2 instead.
std::string NoNumber(std::string_view text) {
  return IsNumber(text) ? std::string() : Quoted(text) + " is no number";
}

bool TakesNumbers(const FormField& field) {
  return std::holds_alternative<double*>(field.target) ||
         std::holds_alternative<ChannelNumbers*>(field.target) ||
         (std::holds_alternative<std::int32_t*>(field.target) && field.choices.empty());
}

template <typename Range, typename Name>
std::string Listed(const Range& range, Name name) {
  std::string list;
  for (const auto& item : range) {
    list += (list.empty() ? "" : ", ") + std::string(name(item));
  }
  return list.empty() ? "none" : list;
}

std::string ButtonList(const std::vector<Button>& buttons) {
  return Listed(buttons, ButtonCaption);
}

std::string ButtonList(const Form& form) {
  return Listed(form.Buttons(), [](const FormButton& button) { return WithoutMnemonic(button.caption); });
}

// What is wrong with an answer for this picker, empty when it fits.
std::string Misfit(const ChannelPicker& picker, const PickAnswer& answer) {
  if (answer.channels && !picker.Selects() && !picker.SelectsOne()) {
    return "channels cannot be selected here";
  }
  if (answer.channels && picker.SelectsOne() &&
      (answer.channels->all || answer.channels->channels.size() != 1)) {
    return "exactly one channel can be selected here";
  }
  if (!answer.values.empty() && !picker.HasValues()) {
    return "there is no column of values";
  }
  if (!answer.names.empty() && !picker.HasNames()) {
    return "there is no column of names";
  }
  for (const ChannelText& value : answer.values) {
    if (const std::string why = NoNumber(value.text); !why.empty()) {
      return "the value of channel " + std::to_string(value.channel) + ": " + why;
    }
  }
  for (const std::string& caption :
       {std::string("OK"), std::string("Cancel"), WithoutMnemonic(picker.ClosingCaption())}) {
    if (EqualNoCase(answer.press, caption)) {
      return {};
    }
  }
  return "there is no button " + Quoted(answer.press) + ", but " + WithoutMnemonic(picker.ClosingCaption()) +
         ", Cancel";
}

// Exactly this selection. It comes after the values, since typing a value selects its channel.
void SetSelection(ChannelPicker& picker, const ChannelChoice& choice) {
  if (picker.SelectsOne()) {
    picker.Choose(choice.channels.front());
    return;
  }
  picker.None();
  for (int c = 1; choice.all && c <= picker.Channels(); ++c) {
    picker.Select(c, true);
  }
  for (const int c : choice.channels) {
    picker.Select(c, true);
  }
}

void FillPicker(ChannelPicker& picker, const PickAnswer& answer) {
  for (const ChannelText& value : answer.values) {
    picker.SetValue(value.channel, value.text);
  }
  for (const ChannelText& name : answer.names) {
    picker.SetName(name.channel, name.text);
  }
  if (answer.channels) {
    SetSelection(picker, *answer.channels);
  }
}

// Sets a channel set of a form to exactly these channels.
void EditFlags(Form& form, const FormField& field, const ChannelChoice& choice, int channels) {
  const std::vector<int>& listed = choice.channels;
  for (int c = 1; c <= channels; ++c) {
    const bool on = choice.all || std::find(listed.begin(), listed.end(), c) != listed.end();
    form.Edit(field, c, on ? "true" : "false");
  }
}

}  // namespace

void RecipeQuestions::BeginStep(const std::vector<Answer>& answers, const Trial& trial) {
  answers_ = &answers;
  trial_ = &trial;
  next_ = 0;
}

std::string RecipeQuestions::UnusedAnswers() const {
  std::string unused;
  for (std::size_t i = next_; i < answers_->size(); ++i) {
    const Answer& answer = (*answers_)[i];
    if (!answer.optional) {
      unused += (unused.empty() ? "" : "; ") + std::string("nothing asked for the ") + KindOf(answer) +
                " answer of line " + std::to_string(answer.line);
    }
  }
  return unused;
}

void RecipeQuestions::Abandon(const Asked& asked, const std::string& why) {
  std::string what(asked.kind);
  if (!asked.title.empty()) {
    what += " " + Quoted(asked.title);
  }
  if (!asked.text.empty()) {
    what += " " + Quoted(asked.text);
  }
  throw CommandAbandoned(what + ": " + why);
}

template <typename T>
const T& RecipeQuestions::Take(const Asked& asked) {
  StopWhenInterrupted();
  std::string why = "there is no answer for it";
  for (; answers_ != nullptr && next_ < answers_->size(); ++next_) {
    const Answer& answer = (*answers_)[next_];
    const bool sameKind = std::holds_alternative<T>(answer.what);
    if (sameKind && (!answer.title || *answer.title == asked.title)) {
      ++next_;
      return std::get<T>(answer.what);
    }
    if (!answer.optional) {
      why = "the next answer, line " + std::to_string(answer.line) + ", is for " +
            (sameKind ? "the title " + Quoted(*answer.title) : "a question of kind " + KindOf(answer));
      break;
    }
  }
  Abandon(asked, why);
}

Button RecipeQuestions::AskBox(const Box& box) {
  StopWhenInterrupted();
  if (box.buttons == std::vector{Button::OK}) {
    return Button::OK;
  }
  const Asked asked{"box", box.title, box.text};
  const BoxAnswer& answer = Take<BoxAnswer>(asked);
  for (const Button button : box.buttons) {
    if (EqualNoCase(answer.button, ButtonCaption(button))) {
      return button;
    }
  }
  Abandon(asked, "there is no button " + Quoted(answer.button) + ", but " + ButtonList(box.buttons));
}

std::string RecipeQuestions::AskInput(const InputQuestion& question) {
  const Asked asked{"input", question.title, question.prompt};
  const std::string& text = Take<InputAnswer>(asked).text;
  if (question.isNumber && !text.empty()) {  // an empty one cancels
    if (const std::string why = NoNumber(text); !why.empty()) {
      Abandon(asked, why);
    }
  }
  return text;
}

std::vector<std::string> RecipeQuestions::AskFile(const FileQuestion& question) {
  const Asked asked{"file", question.title, question.defaultName};
  std::vector<std::string> paths = Take<FileAnswer>(asked).paths;
  if (paths.size() > 1 && !question.several) {
    Abandon(asked, "it takes one file");
  }
  std::erase(paths, "");  // cancel
  return paths;
}

std::string RecipeQuestions::AskPick(ChannelPicker& picker) {
  // The picker has no title, so its prompt is what an answer's title is checked against.
  const Asked asked{"pick", picker.Prompt(), ""};
  const PickAnswer& answer = Take<PickAnswer>(asked);
  if (const std::string misfit = Misfit(picker, answer); !misfit.empty()) {
    Abandon(asked, misfit);
  }
  try {
    FillPicker(picker, answer);
  } catch (const std::out_of_range& error) {
    Abandon(asked, error.what());
  }
  return answer.press;
}

std::string RecipeQuestions::AskForm(Form& form) {
  const Asked asked{"form", form.Title(), form.Name()};
  const FormAnswer& answer = Take<FormAnswer>(asked);
  if (form.FindButton(answer.press) == nullptr) {
    Abandon(asked, "there is no button " + Quoted(answer.press) + ", but " + ButtonList(form));
  }
  if (answer.found) {
    form.TakeFound();
  }
  for (const FieldAnswer& field : answer.fields) {
    try {
      EditField(asked, form, field);
    } catch (const std::invalid_argument& error) {
      Abandon(asked, error.what());
    }
  }
  return answer.press;
}

void RecipeQuestions::EditField(const Asked& asked, Form& form, const FieldAnswer& answer) const {
  const FormField* field = form.FindField(answer.name);
  if (field == nullptr) {
    const auto name = [](const FormField& offered) { return offered.name; };
    Abandon(asked, "there is no field " + Quoted(answer.name) + ", but " + Listed(form.Fields(), name));
  }
  if (const auto* texts = std::get_if<std::vector<ChannelText>>(&answer.value)) {
    for (const ChannelText& text : *texts) {
      if (text.channel > trial_->NChan) {
        Abandon(asked, "field " + field->name + ": there is no channel " + std::to_string(text.channel));
      }
      CheckNumber(asked, *field, text.text);
      form.Edit(*field, text.channel, text.text);
    }
    return;
  }
  const auto* choice = std::get_if<ChannelChoice>(&answer.value);
  const auto* text = std::get_if<std::string>(&answer.value);
  const bool flags = std::holds_alternative<ChannelFlags*>(field->target);
  if (choice != nullptr && !flags) {
    Abandon(asked, "field " + field->name + " is no set of channels");
  }
  if (choice != nullptr && !choice->channels.empty() &&
      *std::max_element(choice->channels.begin(), choice->channels.end()) > trial_->NChan) {
    Abandon(asked, "field " + field->name + ": there are no more than " + std::to_string(trial_->NChan) +
                       " channels");
  }
  if (choice != nullptr || (flags && EqualNoCase(*text, "all"))) {
    EditFlags(form, *field, choice != nullptr ? *choice : ChannelChoice{.all = true}, trial_->NChan);
    return;
  }
  CheckNumber(asked, *field, *text);
  form.Edit(*field, *text);
}

void RecipeQuestions::CheckNumber(const Asked& asked, const FormField& field, std::string_view text) {
  const bool kept = field.emptyKeeps && Trim(text).empty();
  const std::string why = TakesNumbers(field) && !kept ? NoNumber(text) : std::string();
  if (!why.empty()) {
    Abandon(asked, "field " + field.name + ": " + why);
  }
}

void RecipeQuestions::ShowProgress(ProgressPanel& /*panel*/) {
  StopWhenInterrupted();
}

void RecipeQuestions::EndProgress(ProgressPanel& /*panel*/) {}

}  // namespace velmora
