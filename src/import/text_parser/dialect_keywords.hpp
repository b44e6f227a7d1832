#pragma once

#include <string>

#include "import/text_parser/parse_settings.hpp"

namespace velmora {

/// Reads the keywords of dialect `code` from header.lines into the rest of the header.
void ReadKeywords(TextHeader& header, int code);

}  // namespace velmora
