#pragma once

#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// What the first lines of a file tell of its columns beyond the rules of its dialect: the rate in
/// words, the lines that name the columns, a column named for times that rises like times, columns of
/// frame numbers or of nothing. `settings` are the ones the rules give; what is not found stays as it is
/// there. `rate` is the one known so far, in Hz, and becomes the stated one where none is known.
ParseSettings FindLayout(const TextHeader& header, const ParseSettings& settings, double& rate);

/// The lines right above the records that fit the columns, 0 for none: labels above units, or labels alone.
struct NameLines {
  int labels = 0;
  int units = 0;
};
NameLines FindNameLines(const TextHeader& header, const ParseSettings& settings);

/// Whether the lines that name the columns call this one times in seconds, unit and all: what rises by 1
/// is a counter otherwise.
bool NamesSeconds(const TextHeader& header, const ParseSettings& settings, int column);

}  // namespace velmora
