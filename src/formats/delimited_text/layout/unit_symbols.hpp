#pragma once

#include <string_view>

namespace velmora {

/// Whether a text is a unit as instruments write it: known symbols, with a prefix where the unit takes
/// one, joined by '.', '*', '/', '-', '^' and whole powers ("m/s^2", "kN.m", "uV", "deg/s").
bool IsUnitSymbol(std::string_view text);

}  // namespace velmora
