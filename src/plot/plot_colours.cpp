#include "plot/plot_colours.hpp"

#include <algorithm>
#include <cmath>

namespace velmora {
namespace {

// Relative luminance and contrast as in the Web Content Accessibility Guidelines 2.1.
double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [low, high] = std::minmax({Luminance(a), Luminance(b)});
  return (high + 0.05) / (low + 0.05);
}

// Step by step towards black or white until it stands out; the hue stays.
QColor Legible(QColor colour, Colour background) {
  constexpr double kContrast = 2.0;
  constexpr double kStep = 0.2;
  const double target = IsLight(background) ? 0.0 : 1.0;
  const QColor behind = ToQColor(background);
  for (int step = 0; step < 10 && Contrast(colour, behind) < kContrast; ++step) {
    const auto towards = [target](double part) { return static_cast<float>(part + (target - part) * kStep); };
    colour = QColor::fromRgbF(towards(colour.redF()), towards(colour.greenF()), towards(colour.blueF()));
  }
  return colour;
}

}  // namespace

QColor ToQColor(Colour colour) {
  return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

bool IsLight(Colour background) {
  constexpr double kMiddle = 0.18;  // as far from black as from white
  return Luminance(ToQColor(background)) > kMiddle;
}

QColor Foreground(Colour background) {
  return IsLight(background) ? QColor(0x20, 0x20, 0x20) : QColor(0xD8, 0xD8, 0xD8);
}

QColor GridColour(const Axis& axis, Colour background) {
  QColor colour = ToQColor(axis.GridColor);
  colour.setAlphaF(IsLight(background) ? 0.35F : 0.4F);
  return colour;
}

QColor TraceColour(const Plot& plot, Colour background) {
  if (plot.LineColor == kWhite && IsLight(background)) {
    return Qt::black;
  }
  return Legible(ToQColor(plot.LineColor), background);
}

QColor CursorColour(const GraphCursor& cursor, Colour background) {
  if (cursor.Kind != CursorKind::Cursor) {
    return Legible(ToQColor(cursor.Color), background);
  }
  const bool lost = cursor.Color == kYellow && IsLight(background);
  return ToQColor(lost ? kBlue : cursor.Color);
}

}  // namespace velmora
