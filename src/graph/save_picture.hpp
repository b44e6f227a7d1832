#pragma once

#include "core/workbench.hpp"
#include "graph/picture.hpp"

namespace velmora {

/// "Save picture": asks for a .png, .svg or .pdf file and writes it, drawn by the desktop's drawing. The
/// extension decides the order's format.
void SavePicture(Workbench& workbench, PictureOrder order);

}  // namespace velmora
