#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/trial/trial.hpp"

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

/// A background as menus offer it.
struct BackgroundChoice {
  std::string_view id;  // of the command
  std::string_view caption;
  Colour colour;
};
inline constexpr std::array<BackgroundChoice, 5> kBackgrounds = {{{"background.black", "&Black", kBlack},
                                                                  {"background.white", "&White", kWhite},
                                                                  {"background.green", "&Green", kDarkGreen},
                                                                  {"background.grey", "G&rey", kDarkGrey},
                                                                  {"background.blue", "B&lue", kDarkBlue}}};

/// The colours of channels, from 1; index 0 is not used. Found by a search, from the sets of Okabe and Ito
/// (2008) and of Tol (2021), for colours that stay apart on black and on white with every kind of colour
/// vision. 15 is white.
inline constexpr std::array<Colour, kColours + 1> ColourTable = {
    0x000000, 0xE9B456, 0x0DB1FF, 0x0F34E1, 0x7EE4FF, 0xAAC1B8, 0xCB7650, 0x7E4E8D,
    0xD9E9C3, 0x6B7C87, 0xC29A25, 0x0000A9, 0xEA0259, 0x552288, 0xB03068, 0xFFFFFF};

/// The colours of time, from early (0) by blue and magenta to late (1), orange: apart on black and on white
/// and with every kind of colour vision.
constexpr Colour TimeColour(double part) {
  struct Stop {
    double red;
    double green;
    double blue;
  };
  constexpr std::array<Stop, 3> kStops = {{{0x3C, 0x82, 0xFF}, {0xC8, 0x50, 0xB4}, {0xFF, 0x8C, 0x14}}};
  const double at = part <= 0.5 ? part * 2 : part * 2 - 1;
  const Stop& from = kStops[part <= 0.5 ? 0 : 1];
  const Stop& to = kStops[part <= 0.5 ? 1 : 2];
  const auto mix = [at](double a, double b) { return static_cast<Colour>(a + at * (b - a)); };
  return mix(from.red, to.red) | mix(from.green, to.green) << 8 | mix(from.blue, to.blue) << 16;
}

}  // namespace velmora
