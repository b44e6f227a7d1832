// Commands that are reached without a trial all the same, by a recipe or a key.
#include "support/command_test.hpp"

namespace velmora::test {
namespace {

struct NoTrial : CommandTest {};

TEST_F(NoTrial, NoCommandThatNeedsOneAsksOrFails) {
  for (const Command& command : AllCommands()) {
    if (command.needs == Needs::Data || command.needs == Needs::TwoCursors) {
      SCOPED_TRACE(command.id);
      RunCommand(workbench, command);
      EXPECT_TRUE(workbench.report.failures.empty()) << workbench.report.failures.front();
      EXPECT_TRUE(questions.formNames.empty() && questions.pickPrompts.empty() && questions.inputs.empty());
      workbench.report = {};
      questions.formNames.clear();
    }
  }
}

}  // namespace
}  // namespace velmora::test
