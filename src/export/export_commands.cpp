#include "export/export_commands.hpp"

#include <array>

#include "export/save_data.hpp"

namespace velmora {
namespace {

template <SaveFormat format>
void Save(Workbench& workbench) {
  SaveData(workbench, format);
}

constexpr std::array kCommands = {
    Command{"save.vmb", "Velmora&2 Binary (.VMB) (default)", "&File/&Save", Needs::Data,
            Save<SaveFormat::NativeBinary>},
};

}  // namespace

std::span<const Command> ExportCommands() {
  return kCommands;
}

}  // namespace velmora
