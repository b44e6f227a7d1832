#include "dsp/design/design_commands.hpp"

#include <array>

#include "dsp/design/filter_design_form.hpp"
#include "dsp/design/residuals_form.hpp"

namespace velmora {
namespace {

constexpr std::array kDesignCommands = {
    Command{"filter.design", "Digital filter &design", "&Analysis", Needs::Data, DesignDigitalFilter},
    Command{"filter.residuals", "C&ut-off by residual analysis", "&Analysis", Needs::Data,
            FindCutoffsByResiduals},
};

}  // namespace

std::span<const Command> DesignCommands() {
  return kDesignCommands;
}

}  // namespace velmora
