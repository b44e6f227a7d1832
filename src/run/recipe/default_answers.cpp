#include "run/recipe/default_answers.hpp"

#include "core/questions/form.hpp"
#include "core/questions/picker.hpp"

namespace velmora {
namespace {

[[noreturn]] void NeedsRecipe(const std::string& question) {
  throw CommandAbandoned("this file needs a recipe with answers: " + question);
}

}  // namespace

Button DefaultAnswers::AskBox(const Box& box) {
  const std::string message = box.title.empty() ? box.text : box.title + ": " + box.text;
  if (box.buttons != std::vector{Button::OK}) {
    NeedsRecipe(message);
  }
  messages_(message);
  return Button::OK;
}

std::string DefaultAnswers::AskInput(const InputQuestion& question) {
  messages_(question.prompt + " (taken: " + question.defaultText + ")");
  return question.defaultText;
}

std::vector<std::string> DefaultAnswers::AskFile(const FileQuestion& question) {
  NeedsRecipe(question.title);
}

std::string DefaultAnswers::AskPick(ChannelPicker& picker) {
  NeedsRecipe(picker.Prompt());
}

std::string DefaultAnswers::AskForm(Form& form) {
  if (form.FindButton("OK") == nullptr || !accepted_.insert(form.Name()).second) {
    NeedsRecipe(form.Title());
  }
  return "OK";
}

}  // namespace velmora
