#pragma once

#include "core/workbench.hpp"
#include "graph/picture.hpp"

namespace velmora {

/// The graph that is open as it stands, as a PNG of 1600 x 900. Throws std::runtime_error when none is.
PictureOrder PictureOfView(Workbench& workbench);

/// "Save picture": asks for a .png, .svg or .pdf file and writes it, drawn by the desktop's drawing. The
/// extension decides the order's format.
void SavePicture(Workbench& workbench, PictureOrder order);

}  // namespace velmora
