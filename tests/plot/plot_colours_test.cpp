// Colours as people with each kind of colour vision see them: the simulation of Machado, Oliveira and
// Fernandes (2009) for full dichromacy, distances in Ottosson's OKLab (2020), of which black and white are
// 100 apart.
#include "plot/plot_colours.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace velmora {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr Matrix kVisions[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}};
constexpr Matrix kCones = {{{0.4122214708, 0.5363325363, 0.0514459929},
                            {0.2119034982, 0.6806995451, 0.1073969566},
                            {0.0883024619, 0.2817188376, 0.6299787005}}};
constexpr Matrix kLab = {{{0.2104542553, 0.7936177850, -0.0040720468},
                          {1.9779984951, -2.4285922050, 0.4505937099},
                          {0.0259040371, 0.7827717662, -0.8086757660}}};

Triple Times(const Matrix& matrix, const Triple& of) {
  Triple result{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      result[i] += matrix[i][j] * of[j];
    }
  }
  return result;
}

Triple Seen(const QColor& colour, const Matrix& vision) {
  const auto linear = [](double x) { return x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4); };
  Triple light = Times(vision, {linear(colour.redF()), linear(colour.greenF()), linear(colour.blueF())});
  for (double& part : light) {
    part = std::clamp(part, 0.0, 1.0);
  }
  Triple cones = Times(kCones, light);
  for (double& cone : cones) {
    cone = std::cbrt(cone);
  }
  return Times(kLab, cones);
}

double Distance(const Triple& a, const Triple& b) {
  return 100 * std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

TEST(PlotColours, ChannelsAreToldApartByEverybodyOnBlackAndOnWhite) {
  for (const Colour background : {kBlack, kWhite}) {
    for (const Matrix& vision : kVisions) {
      std::vector<Triple> seen = {Seen(ToQColor(background), vision)};
      for (int k = 1; k <= kColours; ++k) {
        const Plot plot{.ColourIndex = k, .LineColor = ColourTable[static_cast<std::size_t>(k)]};
        seen.push_back(Seen(TraceColour(plot, background), vision));
        for (std::size_t other = 0; other + 1 < seen.size(); ++other) {
          EXPECT_GT(Distance(seen.back(), seen[other]), 8.0) << k << " and " << other;
        }
      }
    }
  }
}

TEST(PlotColours, NothingIsLostOnAnyBackground) {
  for (const Colour background : {kBlack, kWhite, kDarkGreen, kDarkGrey, kDarkBlue}) {
    const Triple behind = Seen(ToQColor(background), kVisions[0]);
    EXPECT_GT(Distance(Seen(Foreground(background), kVisions[0]), behind), 40);
    for (const Colour colour : ColourTable) {
      const Plot plot{.LineColor = colour};
      EXPECT_GT(Distance(Seen(TraceColour(plot, background), kVisions[0]), behind), 15)
          << std::hex << colour << " on " << background;
    }
    const GraphCursor yellow;
    EXPECT_GT(Distance(Seen(CursorColour(yellow, background), kVisions[0]), behind), 30);
  }
}

}  // namespace
}  // namespace velmora
