#include "run/recipe/recipe_questions.hpp"

#include <algorithm>
#include <stdexcept>

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "run/batch/interrupt.hpp"
#include "run/recipe/channel_name.hpp"
#include "run/recipe/closest_name.hpp"
#include "run/recipe/text_pattern.hpp"

namespace velmora {
namespace {

class NeverFits : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

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

/// "there is no field "x", but A, B; did you mean ...?"
std::string NoSuch(std::string_view what, std::string_view wrong, const std::vector<std::string>& names) {
  std::string list;
  for (const std::string& name : names) {
    list += (list.empty() ? "" : ", ") + name;
  }
  return "there is no " + std::string(what) + " " + Quoted(wrong) + ", but " +
         (list.empty() ? "none" : list) + DidYouMean(wrong, names);
}

template <typename Range, typename Name>
std::vector<std::string> NamesOf(const Range& range, Name name) {
  std::vector<std::string> names;
  names.reserve(range.size());
  for (const auto& item : range) {
    names.emplace_back(name(item));
  }
  return names;
}

std::vector<std::string> ButtonNames(const Form& form) {
  return NamesOf(form.Buttons(), [](const FormButton& button) { return WithoutMnemonic(button.caption); });
}

ChannelFlags FlagsOf(const ChannelChoice& choice, const Trial& trial) {
  ChannelFlags flags{};
  for (int c = 1; choice.all && c <= trial.NChan; ++c) {
    flags[c] = true;
  }
  for (const ChannelName& name : choice.channels) {
    for (const int c : ChannelsOf(name, trial)) {
      flags[c] = true;
    }
  }
  return flags;
}

// What is wrong with an answer for this picker, empty when it fits.
std::string WhyUnfit(const ChannelPicker& picker, const PickAnswer& answer) {
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
      return "the value of channel " + TextOf(value.channel) + ": " + why;
    }
  }
  const std::vector<std::string> buttons = {WithoutMnemonic(picker.ClosingCaption()), "Cancel"};
  const auto pressed = [&answer](const std::string& caption) { return EqualNoCase(answer.press, caption); };
  const bool known = pressed("OK") || std::any_of(buttons.begin(), buttons.end(), pressed);
  return known ? std::string() : NoSuch("button", answer.press, buttons);
}

// What to choose in a list of channels: a choice by its text or number as in any list, or a channel by its
// label.
std::string ChoiceText(const FormField& field, const std::string& text, const Trial& trial) {
  const bool number = text.find_first_not_of("0123456789") == std::string::npos;
  if (!field.channelsFrom || number || field.ChoiceCalled(text)) {
    return text;
  }
  return std::to_string(*field.channelsFrom + OneChannelOf(ReadChannelName(text), trial) - 1);
}

// One text for a set of channels: all, or those of one name.
ChannelChoice ChoiceOf(const std::string& text) {
  return EqualNoCase(text, "all") ? ChannelChoice{.all = true}
                                  : ChannelChoice{.channels = {ReadChannelName(text)}};
}

// Exactly this selection. It comes after the values, since typing a value selects its channel.
void SetSelection(ChannelPicker& picker, const ChannelChoice& choice, const Trial& trial) {
  if (picker.SelectsOne()) {
    picker.Choose(OneChannelOf(choice.channels.front(), trial));
    return;
  }
  const ChannelFlags chosen = FlagsOf(choice, trial);
  picker.None();
  for (int c = 1; c <= picker.Channels(); ++c) {
    picker.Select(c, chosen[c]);
  }
}

void FillPicker(ChannelPicker& picker, const PickAnswer& answer, const Trial& trial) {
  for (const ChannelText& value : answer.values) {
    for (const int c : ChannelsOf(value.channel, trial)) {
      picker.SetValue(c, value.text);
    }
  }
  for (const ChannelText& name : answer.names) {
    for (const int c : ChannelsOf(name.channel, trial)) {
      picker.SetName(c, name.text);
    }
  }
  if (answer.channels) {
    SetSelection(picker, *answer.channels, trial);
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
    if (sameKind && (!answer.title || FitsPattern(asked.title, *answer.title))) {
      ++next_;
      line_ = answer.line;
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
  Abandon(asked, NoSuch("button", answer.button, NamesOf(box.buttons, ButtonCaption)));
}

std::string RecipeQuestions::AskInput(const InputQuestion& question) {
  const Asked asked{"input", question.title, question.prompt};
  const std::string& text = Take<InputAnswer>(asked).text;
  if (question.isNumber && !text.empty()) {  // an empty one cancels
    if (const std::string why = NoNumber(text); !why.empty() && !PassOver(Misfit::Recipe, line_, why)) {
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
  if (const std::string misfit = WhyUnfit(picker, answer); !misfit.empty()) {
    static_cast<void>(PassOver(Misfit::Recipe, line_, misfit));  // there is no going on
    Abandon(asked, misfit);
  }
  try {
    FillPicker(picker, answer, *trial_);
  } catch (const ChannelNameError& error) {
    Abandon(asked, error.what());
  }
  return answer.press;
}

std::string RecipeQuestions::AskForm(Form& form) {
  const Asked asked{"form", form.Title(), form.Name()};
  const FormAnswer& answer = Take<FormAnswer>(asked);
  const std::string noButton = form.FindButton(answer.press) == nullptr
                                   ? NoSuch("button", answer.press, ButtonNames(form))
                                   : std::string();
  if (!noButton.empty() && !PassOver(Misfit::Recipe, line_, noButton)) {
    Abandon(asked, noButton);
  }
  if (answer.found) {
    form.TakeFound();
  }
  FillForm(asked, form, answer);
  if (!noButton.empty()) {
    Abandon(asked, noButton);
  }
  return answer.press;
}

void RecipeQuestions::FillForm(const Asked& asked, Form& form, const FormAnswer& answer) {
  const auto doesNotFit = [&](Misfit misfit, const FieldAnswer& field, const std::string& why) {
    if (!PassOver(misfit, field.line, why)) {
      Abandon(asked, why);
    }
  };
  for (const FieldAnswer& given : answer.fields) {
    const FormField* field = form.FindField(given.name);
    if (field == nullptr) {
      const auto name = [](const FormField& offered) { return offered.name; };
      doesNotFit(Misfit::Recipe, given, NoSuch("field", given.name, NamesOf(form.Fields(), name)));
      continue;
    }
    try {
      EditField(form, *field, given);
    } catch (const ChannelNameError& error) {
      doesNotFit(Misfit::Trial, given, "field " + given.name + ": " + error.what());
    } catch (const NeverFits& error) {
      doesNotFit(Misfit::Recipe, given, error.what());
    } catch (const std::invalid_argument& error) {
      doesNotFit(Misfit::Trial, given, error.what());
    }
  }
}

void RecipeQuestions::EditField(Form& form, const FormField& field, const FieldAnswer& answer) const {
  if (const auto* texts = std::get_if<std::vector<ChannelText>>(&answer.value)) {
    EditChannels(form, field, *texts);
    return;
  }
  const auto* choice = std::get_if<ChannelChoice>(&answer.value);
  const auto* text = std::get_if<std::string>(&answer.value);
  const bool flags = std::holds_alternative<ChannelFlags*>(field.target);
  if (choice != nullptr && !flags) {
    throw NeverFits("field " + field.name + " is no set of channels");
  }
  if (std::holds_alternative<ChannelNumbers*>(field.target)) {
    throw NeverFits("field " + field.name + " wants a value for each channel, as {1: 6, 2: 6}");
  }
  if (!flags) {
    CheckNumber(field, *text);
    form.Edit(field, ChoiceText(field, *text, *trial_));
    return;
  }
  const ChannelFlags chosen =
      choice != nullptr ? FlagsOf(*choice, *trial_) : FlagsOf(ChoiceOf(*text), *trial_);
  for (int c = 1; c <= trial_->NChan; ++c) {
    form.Edit(field, c, chosen[c] ? "true" : "false");
  }
}

void RecipeQuestions::EditChannels(Form& form, const FormField& field,
                                   const std::vector<ChannelText>& texts) const {
  const bool perChannel = std::holds_alternative<ChannelNumbers*>(field.target) ||
                          std::holds_alternative<ChannelFlags*>(field.target);
  if (!perChannel) {
    throw NeverFits("field " + field.name + " has one value for all channels");
  }
  for (const ChannelText& text : texts) {
    CheckNumber(field, text.text);
    for (const int c : ChannelsOf(text.channel, *trial_)) {
      form.Edit(field, c, text.text);
    }
  }
}

void RecipeQuestions::CheckNumber(const FormField& field, std::string_view text) {
  const bool kept = field.emptyKeeps && Trim(text).empty();
  const std::string why = TakesNumbers(field) && !kept ? NoNumber(text) : std::string();
  if (!why.empty()) {
    throw NeverFits("field " + field.name + ": " + why);
  }
}

void RecipeQuestions::ShowProgress(ProgressPanel& /*panel*/) {
  StopWhenInterrupted();
}

void RecipeQuestions::EndProgress(ProgressPanel& /*panel*/) {}

}  // namespace velmora
