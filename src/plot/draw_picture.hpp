#pragma once

#include <QPrinter>
#include <string>

#include "graph/picture.hpp"

namespace velmora {

inline constexpr int kDotsAnInch = 96;  // of pictures and pages: text and lines as large as on the screen

/// The bytes of the file. In SVG and PDF lines stay lines and text stays text. Needs a QApplication.
/// Throws std::bad_alloc, std::runtime_error when Qt cannot paint it.
std::string DrawPicture(const PictureOrder& order);

/// The same on any device, as lines and texts, from its upper left corner on, a pixel of the order to a dot.
void PaintPicture(const PictureOrder& order, QPaintDevice& device);

/// On one page of a printer, as large as fits; `order` gives the graph, title and paper alone.
void PrintPicture(const PictureOrder& order, QPrinter& printer);

}  // namespace velmora
