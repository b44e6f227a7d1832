// The style file: one line an item, its numbers separated by blanks.
#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>

#include "core/text/numbers.hpp"
#include "graph/graph.hpp"

namespace velmora {
namespace {

constexpr const char* kFirstLine = "velmora2 graph style 1";
constexpr double kWidest = 100.0;

void WriteAxis(std::ostream& out, const char* name, const Axis& axis) {
  out << name << ' ' << axis.Log << ' ' << axis.CaptionVisible << ' ' << axis.LabelsVisible << ' '
      << axis.MajorGrid << ' ' << axis.ZeroLine << ' ' << axis.GridColor << '\n';
}

[[noreturn]] void Refuse(const std::string& line) {
  throw std::invalid_argument("this is no line of a graph style: " + line);
}

Colour ReadColour(std::istream& in) {
  Colour colour = -1;
  in >> colour;
  if (colour < kBlack || colour > kWhite) {
    in.setstate(std::ios::failbit);
  }
  return colour;
}

void ReadAxis(std::istream& in, Axis& axis) {
  in >> axis.Log >> axis.CaptionVisible >> axis.LabelsVisible >> axis.MajorGrid >> axis.ZeroLine;
  axis.GridColor = ReadColour(in);
}

template <typename Style>
Style ReadChoice(std::istream& in, Style last) {
  int choice = -1;
  in >> choice;
  if (choice < 0 || choice > static_cast<int>(last)) {
    in.setstate(std::ios::failbit);
    return last;
  }
  return static_cast<Style>(choice);
}

void ReadPlot(std::istream& in, std::vector<Plot>& plots) {
  int channel = 0;
  Plot style;
  in >> channel;
  style.Line = ReadChoice(in, LineStyle::DashDotDot);
  style.Point = ReadChoice(in, PointStyle::Diamond);
  in >> style.LineWidth;
  if (channel < 1 || channel > kMaxChannels || !(style.LineWidth > 0 && style.LineWidth <= kWidest)) {
    in.setstate(std::ios::failbit);
  }
  if (!in || channel > static_cast<int>(plots.size())) {
    return;
  }
  Plot& plot = plots[static_cast<std::size_t>(channel - 1)];
  plot.Line = style.Line;
  plot.Point = style.Point;
  plot.LineWidth = style.LineWidth;
}

}  // namespace

std::string Graph::StyleText() const {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  out << kFirstLine << '\n';
  out << "graph " << Background << ' ' << TitleVisible << ' ' << SidebarVisible << '\n';
  WriteAxis(out, "abscissa", Abscissa);
  WriteAxis(out, "ordinate", Ordinate);
  for (const Plot& plot : Plots) {
    out << "plot " << plot.Channel << ' ' << static_cast<int>(plot.Line) << ' '
        << static_cast<int>(plot.Point) << ' ' << PlainNumber(plot.LineWidth) << '\n';
  }
  return out.str();
}

void Graph::ReadStyle(const std::string& text) {
  std::istringstream lines(text);
  std::string line;
  if (!std::getline(lines, line) || line != kFirstLine) {
    throw std::invalid_argument("this is no graph style");
  }
  Colour background = Background;
  bool title = TitleVisible;
  bool sidebar = SidebarVisible;
  Axis abscissa = Abscissa;
  Axis ordinate = Ordinate;
  std::vector<Plot> plots = Plots;
  while (std::getline(lines, line)) {
    std::istringstream in(line);
    in.imbue(std::locale::classic());
    std::string item;
    in >> item;
    if (item == "graph") {
      background = ReadColour(in);
      in >> title >> sidebar;
    } else if (item == "abscissa" || item == "ordinate") {
      ReadAxis(in, item == "abscissa" ? abscissa : ordinate);
    } else if (item == "plot") {
      ReadPlot(in, plots);
    } else {
      Refuse(line);
    }
    if (!in) {
      Refuse(line);
    }
  }
  Background = background;
  TitleVisible = title;
  SidebarVisible = sidebar;
  Abscissa = abscissa;
  Ordinate = ordinate;
  Plots = plots;
}

}  // namespace velmora
