#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/command_table.hpp"
#include "core/workbench.hpp"
#include "support/scripted_questions.hpp"
#include "support/trials.hpp"

namespace velmora::test {

using Samples = std::vector<float>;
using Edits = std::vector<std::pair<std::string, std::string>>;  // "Field" or "Field 3", and the text

/// A workbench whose questions are answered from a script, and commands run by id as the window and
/// recipes run them.
struct CommandTest : testing::Test {
  ScriptedQuestions questions;
  Workbench workbench{questions};
  Trial& trial = workbench.trial;

  void Run(const char* id) {
    const Command* command = FindCommand(id);
    ASSERT_NE(command, nullptr) << "no command " << id;
    RunCommand(workbench, *command);
  }

  static void Type(Form& form, const Edits& edits) {
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
  /// The next form is filled in so, and left by this button: unless said otherwise, that of the filters.
  void AnswerForm(const Edits& edits, const std::string& press = "Filter") {
    questions.formAnswers.emplace_back([edits, press](Form& form) {
      Type(form, edits);
      return press;
    });
  }
};

}  // namespace velmora::test
