#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/graph.hpp"

namespace velmora {

enum class PictureFormat { Png, Svg, Pdf };

/// By the extension of a file's name. Nothing when it is none of png, svg and pdf.
std::optional<PictureFormat> PictureFormatOf(std::string_view path);

/// One graph of a stack.
struct Lane {
  int number = 1;
  const Graph* graph = nullptr;
};

/// A picture of a graph as it stands, or of a stack of graphs with one abscissa.
struct PictureOrder {
  static constexpr int kSmallest = 100;  // pixels a side
  static constexpr int kLargest = 16384;

  const Graph& graph;
  std::string title;
  PictureFormat format = PictureFormat::Png;
  int width = 1600;  // pixels; of a PDF 96 an inch
  int height = 900;
  std::optional<Colour> paper{};  // in place of the graph's background
  std::vector<Lane> lanes{};      // from above; empty: of `graph` alone
};

/// A text on pages of A4, as a PDF file.
struct DocumentOrder {
  std::string html;                       // what QTextDocument understands of it
  const PictureOrder* picture = nullptr;  // in place of <img src="picture">
  std::string title;                      // of the document, and at the foot of each page
  std::int64_t time = 0;                  // seconds since 1970: when it was made, as the file tells
};

/// The procedures of the drawing module, which is a shared library so that a program may do without
/// it. They return true with the file's bytes in `answer`, or false with the reason. They never throw: the
/// two sides may have C++ libraries of their own.
extern "C" {
using DrawPictureProcedure = bool (*)(const PictureOrder& order, std::string& answer);
using DrawDocumentProcedure = bool (*)(const DocumentOrder& order, std::string& answer);
}
inline constexpr const char* kDrawPictureName = "VelmoraDrawPicture";
inline constexpr const char* kDrawDocumentName = "VelmoraDrawDocument";
inline constexpr const char* kDrawingModule = "velmora2-drawing.so";

}  // namespace velmora
