#pragma once

#include <string>

#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// What each channel gets before the numbers are read: "Chan. NN" where it has no label yet, rate,
/// gain, offset, number and colour. The units stay.
void SetParsedDefaults(Trial& trial);

/// What a person entered in the dialogue, which no line of the file replaces; empty: nothing.
struct EnteredNames {
  PerChannel<Label> labels;
  PerChannel<Units> units;
};

/// Puts them back. Channels that the dialect has removed meanwhile stood before all others.
void RestoreEntered(Trial& trial, const EnteredNames& entered, int removed);

/// Labels and units from the lines that the dialect or the dialogue names. Returns what has to be said
/// about names that did not fit, empty when all is well.
std::string ReadLabelsAndUnits(Trial& trial, const TextHeader& header, const ParseSettings& settings);

/// Labels from the fields of the line right before the data.
void ReadLabelsBeforeData(Trial& trial, const std::string& line, const ParseSettings& settings);

}  // namespace velmora
