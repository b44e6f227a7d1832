#include "commands/random_answers.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "commands/breach.hpp"
#include "core/text/text.hpp"

namespace velmora::fuzz {
namespace {

// Exceptions of libraries are no messages.
void WantPlainWords(const std::string& text) {
  for (const char* inner :
       {"std::", "::_M_", "vector::", "basic_string", "map::at", "bad_", "stoi", "stod"}) {
    if (text.find(inner) != std::string::npos) {
      Breach("a box says: " + text);
    }
  }
}

bool Fits(const std::string& path, const std::string& extension) {
  return ToLower(path).ends_with(ToLower(extension));
}

}  // namespace

bool RandomAnswers::IsTooMuch(const std::string& question) {
  constexpr int much = 40;
  constexpr int endless = 3000;
  if (++asked_ > endless) {
    Breach("endless questions: " + question);
  }
  return asked_ > much;
}

std::string RandomAnswers::Number() {
  static constexpr std::array kUsual = {"1",  "2",   "0.5", "5", "10", "20",
                                        "50", "100", "0.1", "3", "25", "1000"};
  static constexpr std::array kAwkward = {"0",  "-1",    "1e30", "nan", "",     "x",     "2,5",
                                          "-0", "1e-30", "65",   "64",  "1e-5", "-1e30", "-0.5"};
  return choices_.OneIn(4) ? choices_.Of(kAwkward) : choices_.Of(kUsual);
}

// None of them leads out of a directory.
std::string RandomAnswers::Text() {
  static constexpr std::array kTexts = {"EMG 1",
                                        "x",
                                        "µV",
                                        "N.m",
                                        "",
                                        " ",
                                        "*.vmb",
                                        "\"quoted\", and",
                                        "label:1",
                                        "${input}",
                                        "N",
                                        "deg",
                                        "trial 1.vmb",
                                        "12 of them",
                                        "äöüäöüäöüäöüäöüäöüäöüäöüäöüäöüäöüäöü",
                                        "1-3",
                                        "a: b # c"};
  return choices_.Of(kTexts);
}

std::string RandomAnswers::AnyFile(const std::string& extension) {
  const std::vector<std::string> all = place_.Files();
  std::vector<std::string> fitting = all;
  std::erase_if(fitting, [&](const std::string& path) { return !Fits(path, extension); });
  if (choices_.OneIn(16)) {
    return place_.Path("missing" + extension);
  }
  return choices_.Of(fitting.empty() || choices_.OneIn(8) ? all : fitting);
}

// Files that are there may be what a history goes back to.
std::string RandomAnswers::NewFile(const std::string& extension) {
  return place_.Path("made-" + std::to_string(++made_) + extension);
}

Button RandomAnswers::AskBox(const Box& box) {
  Trail("  box: " + box.title + ": " + box.text);
  WantPlainWords(box.title + ": " + box.text);
  if (IsTooMuch(box.text)) {
    return box.buttons[static_cast<std::size_t>(asked_ / 10) % box.buttons.size()];  // which of them ends it?
  }
  if (box.title == "Large Trial") {
    return Button::No;  // the time that it takes is what is asked about
  }
  const bool asks = box.buttons.size() > 1 && choices_.OneIn(3);
  const Button button = asks ? choices_.Of(box.buttons) : box.buttons.front();
  Trail(std::string("    ") + ButtonCaption(button));
  return button;
}

std::string RandomAnswers::AskInput(const InputQuestion& question) {
  std::string text;
  if (!IsTooMuch(question.prompt) && !choices_.OneIn(10)) {
    const bool keeps = !question.defaultText.empty() && choices_.OneIn(3);
    text = keeps ? question.defaultText : question.isNumber ? Number() : Text();
  }
  Trail("  input: " + question.title + ": " + question.prompt + "\n    " + text);
  return text;
}

std::vector<std::string> RandomAnswers::AskFile(const FileQuestion& question) {
  std::vector<std::string> paths;
  if (!IsTooMuch(question.title) && !choices_.OneIn(10)) {
    if (question.mode == FileQuestion::Mode::Directory) {
      paths = {place_.Path("")};
    } else if (question.mode == FileQuestion::Mode::Save) {
      paths = {NewFile(question.extension)};
    } else {
      const std::string extension = question.extension.empty() ? ".vmb" : question.extension;
      paths.resize(question.several ? 1 + choices_.Below(3) : 1);
      std::generate(paths.begin(), paths.end(), [&] { return AnyFile(extension); });
    }
  }
  Trail("  file: " + question.title + "\n    " + (paths.empty() ? "" : paths.front()));
  return paths;
}

std::string RandomAnswers::AskPick(ChannelPicker& picker) {
  if (IsTooMuch(picker.Prompt())) {
    return "Cancel";
  }
  const bool all = choices_.OneIn(3);
  std::string picked;
  for (int c = 1; c <= picker.Channels(); ++c) {
    if (!all && choices_.OneIn(2)) {
      continue;
    }
    picked += " " + std::to_string(c);
    if (picker.SelectsOne()) {
      picker.Choose(c);
    } else if (picker.Selects()) {
      picker.Select(c, true);
    }
    if (picker.HasValues()) {
      picker.SetValue(c, Number());
      picked += "=" + std::to_string(picker.Value(c));
    } else if (picker.HasNames()) {
      picker.SetName(c, Text());
    }
  }
  std::string press = choices_.OneIn(10) ? "Cancel" : "OK";
  Trail("  pick: " + picker.Prompt() + "\n   " + picked + " " + press);
  return press;
}

std::string RandomAnswers::TextFor(const FormField& field) {
  if (std::holds_alternative<bool*>(field.target) || std::holds_alternative<ChannelFlags*>(field.target)) {
    return choices_.OneIn(3) ? "false" : "true";
  }
  if (!field.choices.empty()) {
    const auto choice = static_cast<std::int32_t>(choices_.Below(field.choices.size()));
    const auto& closed = field.disabledChoices;
    return std::find(closed.begin(), closed.end(), choice) == closed.end() ? std::to_string(choice) : "";
  }
  if (!std::holds_alternative<std::string*>(field.target)) {
    return Number();
  }
  if (field.asksByFile && !choices_.OneIn(8)) {
    const std::string& extension = field.asksByFile->extension;
    return field.asksByFile->mode == FileQuestion::Mode::Save ? NewFile(extension) : AnyFile(extension);
  }
  return choices_.OneIn(2) ? Number() : Text();
}

void RandomAnswers::FillField(Form& form, const FormField& field) {
  const bool perChannel = std::holds_alternative<ChannelFlags*>(field.target) ||
                          std::holds_alternative<ChannelNumbers*>(field.target);
  const int last = perChannel ? choices_.From(1, trial_->NChan) : 0;
  for (int channel = perChannel ? 1 : 0; channel <= last; ++channel) {
    const std::string text = TextFor(field);
    Trail("    " + field.name + (perChannel ? " " + std::to_string(channel) : "") + ": " + text);
    try {
      if (perChannel) {
        form.Edit(field, channel, text);
      } else {
        form.Edit(field, text);
      }
    } catch (const std::invalid_argument& refused) {
      Trail(std::string("      ") + refused.what());
    }
  }
}

std::string RandomAnswers::CancelOf(const Form& form) const {
  const auto& buttons = form.Buttons();
  const auto cancel = std::find_if(buttons.begin(), buttons.end(), [](const FormButton& button) {
    return button.role == FormButton::Role::Cancel;
  });
  const std::size_t any = static_cast<std::size_t>(asked_ / 10) % buttons.size();
  return WithoutMnemonic(cancel != buttons.end() ? cancel->caption : buttons[any].caption);
}

std::string RandomAnswers::ButtonOf(const Form& form) {
  std::vector<std::string> useful;  // of a row of steps, the next; otherwise whatever accepts
  std::vector<std::string> all;
  for (const FormButton& button : form.Buttons()) {
    all.push_back(WithoutMnemonic(button.caption));
    if (button.whyNot.empty() && (button.next || button.role == FormButton::Role::Accept)) {
      useful.push_back(all.back());
    }
  }
  return choices_.Of(useful.empty() || choices_.OneIn(3) ? all : useful);
}

std::string RandomAnswers::AskForm(Form& form) {
  Trail("  form: " + form.Name() + ": " + form.Title());
  if (IsTooMuch(form.Title())) {
    return CancelOf(form);
  }
  if (!form.Found().empty() && choices_.OneIn(2)) {
    form.TakeFound();
  }
  for (std::size_t k = 0; k < form.Fields().size(); ++k) {
    const FormField& field = form.Fields()[k];
    const bool closed = field.readOnly || field.notApplicable || field.hidden;
    if (!closed && choices_.Below(field.isSelection ? 2 : 5) == 1) {
      FillField(form, field);
    }
  }
  std::string press = ButtonOf(form);
  Trail("    press " + press);
  return press;
}

}  // namespace velmora::fuzz
