#pragma once

#include <span>

#include "core/command.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// The menu of mathematical functions by its index, 0 to 15: asks for channels or constants, then
/// works in place. Throws ArithmeticFault where a result is no number that data can hold.
void MathFunction(Workbench& workbench, int index);

/// The mathematical functions and Scaling.
std::span<const Command> MathCommands();

}  // namespace velmora
