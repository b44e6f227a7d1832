#pragma once

#include <functional>
#include <string>

namespace velmora {

struct DocumentOrder;
struct PictureOrder;
struct ResultTable;

/// What lies outside the program and is not a question: the window sets all of it, the runner the drawing
/// alone, a test what it wants to see. What is empty is not there.
struct DesktopServices {
  /// The bytes of a picture. Throws std::runtime_error when it cannot be drawn.
  std::function<std::string(const PictureOrder&)> draw;
  /// The bytes of a PDF document. Throws std::runtime_error when it cannot be made.
  std::function<std::string(const DocumentOrder&)> drawDocument;
  std::function<void(const std::string& text)> copy;
  /// Opens a file in a program by name ("Excel.exe"). Returns why that was not possible, empty when it was.
  std::function<std::string(const std::string& program, const std::string& path)> open;
  std::function<void(const PictureOrder&)> printPicture;
  std::function<void(const ResultTable&)> printTable;
};

}  // namespace velmora
