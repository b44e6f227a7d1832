#include "app/command_table.hpp"

#include <algorithm>
#include <span>

#include "dsp/math_commands.hpp"
#include "export/export_commands.hpp"
#include "import/import_commands.hpp"

namespace velmora {
namespace {

std::vector<Command> Assemble() {
  std::vector<Command> all;
  for (const std::span<const Command> folder : {ImportCommands(), ExportCommands(), MathCommands()}) {
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

}  // namespace velmora
