#pragma once

#include <string>

#include "graph/picture.hpp"

namespace velmora {

/// Draws with the drawing module, which lies beside the program and is loaded at the first picture: the
/// program itself runs without Qt. Returns the bytes of the picture. Throws std::runtime_error when
/// there is no module, when it cannot be loaded, or when it cannot draw.
std::string LoadAndDraw(const PictureOrder& order);

/// The same for a document.
std::string LoadAndDrawDocument(const DocumentOrder& order);

}  // namespace velmora
