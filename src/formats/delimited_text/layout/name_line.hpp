#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Fields of a line, without the quotes around them; a separator inside quotes is part of its field.
std::vector<std::string> SplitFields(std::string_view line, std::string_view separators);

/// What separates the fields of a line that no dialect describes: what the line itself shows.
std::string_view SeparatorsOf(std::string_view line);

/// Whether the line is a comment that says something of the columns: "# Labels:= x y".
bool HasPrefix(std::string_view line);

/// Whether a line, which nobody pointed to, has a name for each of `columns`; the ones behind `filled` hold
/// nothing and may be without. `separated`: more than blanks part the numbers, and so the names.
bool NamesColumns(const std::string& line, int columns, int filled, bool separated);

/// The names of a labels line or units line, each at the place of its column: a prefix or a first word of the
/// line's own is left out, and so are empty fields where the names alone are as many as the columns.
std::vector<std::string> NamesOfColumns(const std::string& line, int columns);

struct LabelAndUnit {
  std::string label;
  std::string unit;
};

/// "Force [N]" as a dialect's labels line has it: the first bracket parts them.
LabelAndUnit SplitAtBracket(const std::string& text);

/// "Force [N]" or "m1_X (m)" of any labels line. Round brackets hold a unit only if it is a known one
/// ("Force (left)" is a label), square ones only at the end and not a number ("Mat[1][1]").
LabelAndUnit SplitLabel(const std::string& text);

/// The unit that a field of a units line means: "(N)", "[N]" and "Force[N]" are N.
std::string UnitOf(const std::string& field);

}  // namespace velmora
