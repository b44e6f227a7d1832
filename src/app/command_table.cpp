#include "app/command_table.hpp"

#include <algorithm>
#include <exception>
#include <new>
#include <span>
#include <string>

#include "core/helpers.hpp"
#include "core/text.hpp"
#include "dsp/bias_commands.hpp"
#include "dsp/filter_commands.hpp"
#include "dsp/math_commands.hpp"
#include "dsp/smooth_commands.hpp"
#include "dsp/time_base_commands.hpp"
#include "edit/edit_commands.hpp"
#include "export/export_commands.hpp"
#include "import/import_commands.hpp"

namespace velmora {
namespace {

std::vector<Command> Assemble() {
  std::vector<Command> all;
  for (const std::span<const Command> folder :
       {ImportCommands(), ExportCommands(), EditCommands(), MathCommands(), FilterCommands(),
        SmoothCommands(), BiasCommands(), TimeBaseCommands()}) {
    all.insert(all.end(), folder.begin(), folder.end());
  }
  return all;
}

}  // namespace

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> all = Assemble();
  return all;
}

const Command* FindCommand(std::string_view id) {
  const auto it = std::find_if(AllCommands().begin(), AllCommands().end(),
                               [id](const Command& command) { return command.id == id; });
  return it == AllCommands().end() ? nullptr : &*it;
}

void RunCommand(Workbench& workbench, const Command& command) {
  std::string fault;
  try {
    command.run(workbench);
    return;
  } catch (const CommandAbandoned&) {
    throw;
  } catch (const std::bad_alloc&) {
    fault = "There is not enough memory.";
  } catch (const std::exception& error) {
    fault = error.what();
  }
  ShowFailure(workbench, {.title = WithoutMnemonic(command.caption), .text = fault, .icon = Icon::Stop});
}

}  // namespace velmora
