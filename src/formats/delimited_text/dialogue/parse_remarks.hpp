#pragma once

#include <string>
#include <string_view>

#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// Appends to what the dialogue's message line says.
void AddRemark(std::string& remark, std::string_view more);

/// What a person may want to change although the columns were found: columns without data, a column
/// that may hold times, lines that may name the columns, a rate that the header states in passing.
std::string RemarkOnColumns(const TextHeader& header, const ParseSettings& settings);

/// A column's first records that are single digits, which are too short for lines of data. Empty when
/// none stands right above the records.
std::string RemarkOnDigitsAbove(const TextHeader& header, const ParseSettings& settings);

/// What to try where no line holds numbers alone.
std::string RemarkOnMissingStart(const TextHeader& header);

}  // namespace velmora
