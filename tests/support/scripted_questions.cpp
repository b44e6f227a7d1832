#include "support/scripted_questions.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace velmora::test {
namespace {

template <typename T>
T Next(std::deque<T>& answers, const std::string& question) {
  if (answers.empty()) {
    ADD_FAILURE() << "no answer for: " << question;  // of what was thrown a command makes a box
    throw std::runtime_error("no answer for: " + question);
  }
  T answer = std::move(answers.front());
  answers.pop_front();
  return answer;
}

}  // namespace

Edits WithChannels(int last, Edits edits) {
  for (int c = 1; c <= last; ++c) {
    edits.emplace_back("channels " + std::to_string(c), "yes");
  }
  return edits;
}

void Type(Form& form, const Edits& edits) {
  for (const auto& [name, text] : edits) {
    const std::size_t blank = name.find(' ');
    const FormField& field = *form.FindField(name.substr(0, blank));
    if (blank == std::string::npos) {
      form.Edit(field, text);
    } else {
      form.Edit(field, std::stoi(name.substr(blank)), text);
    }
  }
}

void ScriptedQuestions::PickChannels(std::vector<int> channels) {
  pickAnswers.emplace_back([channels = std::move(channels)](ChannelPicker& picker) {
    for (const int c : channels) {
      if (picker.SelectsOne()) {
        picker.Choose(c);
      } else {
        picker.Select(c, true);
      }
    }
    return std::string("Process");
  });
}

void ScriptedQuestions::PickValues(std::vector<std::pair<int, std::string>> values) {
  pickAnswers.emplace_back([values = std::move(values)](ChannelPicker& picker) {
    for (const auto& [channel, value] : values) {
      picker.SetValue(channel, value);
    }
    return std::string("Process");
  });
}

void ScriptedQuestions::PickNames(std::vector<std::pair<int, std::string>> names) {
  pickAnswers.emplace_back([names = std::move(names)](ChannelPicker& picker) {
    for (const auto& [channel, name] : names) {
      picker.SetName(channel, name);
    }
    return std::string("Save");
  });
}

void ScriptedQuestions::PickCancel() {
  pickAnswers.emplace_back([](ChannelPicker&) { return std::string("Cancel"); });
}

void ScriptedQuestions::FillForm(const Edits& edits, const std::string& press) {
  formAnswers.emplace_back([edits, press](Form& form) {
    Type(form, edits);
    return press;
  });
}

void ScriptedQuestions::CancelAt(const std::string& status) {
  onProgress = [status](ProgressPanel& panel) {
    if (panel.Status() == status) {
      panel.PressCancel();
    }
  };
}

Button ScriptedQuestions::AskBox(const Box& box) {
  boxes.push_back(box);
  if (box.buttons == std::vector{Button::OK}) {
    return Button::OK;
  }
  return Next(boxAnswers, box.title + ": " + box.text);
}

std::string ScriptedQuestions::AskInput(const InputQuestion& question) {
  inputs.push_back(question);
  return Next(inputAnswers, question.title + ": " + question.prompt);
}

std::vector<std::string> ScriptedQuestions::AskFile(const FileQuestion& question) {
  files.push_back(question);
  return Next(fileAnswers, question.title);
}

std::string ScriptedQuestions::AskPick(ChannelPicker& picker) {
  pickPrompts.push_back(picker.Prompt());
  return Next(pickAnswers, picker.Prompt())(picker);
}

std::string ScriptedQuestions::AskForm(Form& form) {
  formNames.push_back(form.Name());
  return Next(formAnswers, form.Name())(form);
}

void ScriptedQuestions::ShowProgress(ProgressPanel& panel) {
  if (statuses.empty() || statuses.back() != panel.Status()) {
    statuses.push_back(panel.Status());
  }
  if (onProgress) {
    onProgress(panel);
  }
}

void ScriptedQuestions::EndProgress(ProgressPanel& panel) {
  panels.push_back({panel.Format(), panel.Status()});
}

}  // namespace velmora::test
