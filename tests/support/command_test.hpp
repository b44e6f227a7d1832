#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/command_table.hpp"
#include "core/workbench.hpp"
#include "support/scripted_questions.hpp"
#include "support/trials.hpp"

namespace velmora::test {

using Samples = std::vector<float>;

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
};

}  // namespace velmora::test
