#include "dsp/math_commands.hpp"

namespace velmora {

std::span<const Command> MathCommands() {
  return {};
}

}  // namespace velmora
