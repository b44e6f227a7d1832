#pragma once

#include <array>

namespace velmora {

/// The channels of an eight-channel plate in the order of the maker's files.
inline constexpr std::array kPlateSensors = {"Fx12", "Fx34", "Fy14", "Fy23", "Fz1", "Fz2", "Fz3", "Fz4"};

}  // namespace velmora
