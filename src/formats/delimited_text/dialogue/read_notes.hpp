#pragma once

#include <cstdint>
#include <string>

#include "formats/delimited_text/layout/parse_settings.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"

namespace velmora {

/// What a person should know before trusting the numbers just read, a line each, with what to change
/// in the dialogue; empty when all is well.
std::string NotesOnRead(const ScanFaults& faults, std::int64_t rows, const ParseSettings& settings,
                        const TextHeader& header);

/// What the header says of the rate when the rate found is another one; empty otherwise.
std::string NoteOnRate(const TextHeader& header, double rate, bool hasTime);

/// Whether so little of the text was numbers that the parameters must be wrong.
bool IsMostlyText(const ScanFaults& faults, std::int64_t rows, const ParseSettings& settings);

}  // namespace velmora
