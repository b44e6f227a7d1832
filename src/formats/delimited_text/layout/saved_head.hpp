#pragma once

#include <string>
#include <vector>

#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// Recognises the four lines with which this program's own .csv, .prn and .tab begin (title, "Rate="
/// with "Duration=", labels, units) and notes rate, title, time column and where the data start.
/// Other headers stay as they are.
void ReadSavedHead(TextHeader& header);

/// The labels or units of such a file, one for every column saved.
std::vector<std::string> NamesInSavedLine(const TextHeader& header, int line);

}  // namespace velmora
