#pragma once

#include <string>

#include "graph/picture.hpp"

namespace velmora {

/// The bytes of a PDF file, the same whenever they are made of the same order. Text stays text and the
/// picture's lines stay lines. Needs a QApplication. Throws std::runtime_error when Qt cannot paint it.
std::string DrawDocument(const DocumentOrder& order);

}  // namespace velmora
