#pragma once

#include <string>

#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// Reads the keywords of dialect `code` from header.lines into the rest of the header.
void ReadKeywords(TextHeader& header, int code);

}  // namespace velmora
