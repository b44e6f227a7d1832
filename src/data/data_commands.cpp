#include "data/data_commands.hpp"

#include <array>
#include <string_view>

#include "core/workbench.hpp"
#include "data/data_form.hpp"
#include "data/header_view.hpp"

namespace velmora {
namespace {

constexpr std::string_view kViewMenu = "&View";

template <void (*procedure)(Workbench&)>
void WithData(Workbench& workbench) {
  if (workbench.trial.NData > 0) {
    procedure(workbench);
  }
}

constexpr std::array kDataCommands = {
    Command{"data.table", "Data &table", kViewMenu, Needs::Data, WithData<ShowDataForm>},
    Command{"data.header", "&Header", kViewMenu, Needs::Data, WithData<ShowHeader>},
};

}  // namespace

std::span<const Command> DataCommands() {
  return kDataCommands;
}

}  // namespace velmora
