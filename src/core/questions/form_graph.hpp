#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace velmora {

/// The graph of a result view as data: the window draws it with the plot of the other graphs, a picture is
/// made of it without a window, and a transcript lists it without its values. Colours are those of the
/// channels, 1 to 15; 0 is the colour of the axes.
struct FormGraph {
  struct Axis {
    double minimum = 0.0;
    double maximum = 1.0;
    bool log = false;
    std::string caption;
  };
  enum class Shape { Line, Bars, Points };
  enum class Background : std::int32_t { Black, White };  // as menus number them

  /// Values against places of the abscissa, as many of each. What is not finite, or cannot be shown by the
  /// logarithm of its axis, leaves a gap.
  struct Plot {
    std::string name;  // in the legend, which is there as soon as there are two plots
    int colour = 1;
    Shape shape = Shape::Line;
    std::vector<double> x;
    std::vector<double> y;
    double width = 1.0;  // of the line, in pixels
  };
  /// A line upright through the whole graph with a text at its head.
  struct Mark {
    double x = 0.0;
    std::string text;
    int colour = 0;
    double strength = 1.0;  // down to 0: how much of its colour it shows
  };
  /// A shaded part of the abscissa.
  struct Band {
    double from = 0.0;
    double to = 0.0;
    std::string text{};
    int colour = 0;
    double strength = 1.0;
    bool above = false;  // the text stands at the top
  };
  /// A point with a text beside it.
  struct Point {
    double x = 0.0;
    double y = 0.0;
    std::string text;
    int colour = 0;
  };

  /// An ellipse about a point.
  struct Ellipse {
    double x = 0.0;
    double y = 0.0;
    double major = 0.0;  // semi-axes, in units of the axes
    double minor = 0.0;
    double angle = 0.0;  // of the major axis from the abscissa, counter-clockwise; degrees
    int colour = 0;
  };

  std::string title{};  // above the graph, also of a picture
  Axis x{};
  Axis y{};
  Background background = Background::Black;
  std::vector<Plot> plots{};
  std::vector<Mark> marks{};
  std::vector<Band> bands{};
  std::vector<Point> points{};
  std::vector<Ellipse> ellipses{};
  /// A unit is as long up as it is across, whatever the shape of the picture: `x` and `y` are what is shown
  /// at least.
  bool equalScales = false;
  /// What is told of the place under the pointer; without it the two numbers.
  std::function<std::string(double x, double y)> readOut{};
  /// Not shown for now.
  bool hidden = false;
  /// Counted up to show the ranges of `x` and `y` again, whatever a person has zoomed to since. Other
  /// ranges than before are shown at once in any case.
  int resets = 0;
};

}  // namespace velmora
