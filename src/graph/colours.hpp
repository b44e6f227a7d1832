#pragma once

#include <array>
#include <cstdint>

#include "core/trial.hpp"

namespace velmora {

/// A colour with red in the low byte, then green, then blue.
using Colour = std::int32_t;

inline constexpr Colour kBlack = 0x000000;
inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kYellow = 0x00FFFF;
inline constexpr Colour kRed = 0x0000FF;
inline constexpr Colour kBlue = 0xFF0000;
inline constexpr Colour kGridGrey = 0x808080;
// Backgrounds beside black and white.
inline constexpr Colour kDarkGreen = 0x003000;
inline constexpr Colour kDarkGrey = 0x303030;
inline constexpr Colour kDarkBlue = 0x400000;

/// The colours of channels, from 1; index 0 is not used. Told apart with every kind of colour vision
/// (the sets of Okabe and Ito, 2008, and of Tol, 2021), on black and on white; 15 is white.
inline constexpr std::array<Colour, kColours + 1> ColourTable = {
    0x000000, 0xE9B456, 0x009FE6, 0x739E00, 0x42E4F0, 0xA779CC, 0x005ED5, 0xDDAA77,
    0x77CCDD, 0x99AA44, 0x776677, 0x88CCEE, 0xBB7744, 0x99DDAA, 0x6677CC, 0xFFFFFF};

}  // namespace velmora
