#include "export/export_commands.hpp"

#include <array>
#include <utility>

#include "export/save_data.hpp"
#include "export/save_list.hpp"

namespace velmora {
namespace {

// A save from the menu is attended, whatever the command before it left behind.
template <std::size_t row>
void Save(Workbench& workbench) {
  workbench.SaveQuietly = false;
  SaveData(workbench, kSaveList[row].format);
}

template <std::size_t... row>
constexpr std::array<Command, sizeof...(row)> Commands(std::index_sequence<row...> /*rows*/) {
  return {Command{kSaveList[row].id, kSaveList[row].caption, "&File/&Save", kSaveList[row].needs, Save<row>,
                  kSaveList[row].whyNot}...};
}

constexpr std::array kExportCommands = Commands(std::make_index_sequence<kSaveList.size()>());

}  // namespace

std::span<const Command> ExportCommands() {
  return kExportCommands;
}

}  // namespace velmora
