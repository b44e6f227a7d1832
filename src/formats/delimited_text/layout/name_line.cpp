#include "formats/delimited_text/layout/name_line.hpp"

#include <algorithm>

#include "core/text/text.hpp"
#include "formats/delimited_text/layout/unit_symbols.hpp"

namespace velmora {
namespace {

constexpr std::string_view kPrefixEnd = ":=";

std::string WithoutQuotes(std::string_view field) {
  const std::string text = Trim(field);
  const bool quoted = text.size() >= 2 && text.front() == text.back() && (text[0] == '"' || text[0] == '\'');
  return quoted ? Trim(std::string_view(text).substr(1, text.size() - 2)) : text;
}

std::string BehindPrefix(const std::string& line) {
  return HasPrefix(line) ? Trim(line.substr(line.find(kPrefixEnd) + kPrefixEnd.size())) : line;
}

std::vector<std::string> NamedFields(const std::string& line) {
  const std::string text = BehindPrefix(line);
  const std::string_view separators = SeparatorsOf(text);
  std::vector<std::string> fields = SplitFields(text, separators);
  if (separators == " ") {
    std::erase(fields, "");
  }
  while (fields.size() > 1 && fields.back().empty()) {
    fields.pop_back();
  }
  return fields;
}

// The text in the bracket that ends `text`, and what stands before it.
LabelAndUnit SplitAtLast(const std::string& text, char open, char close) {
  const std::size_t bracket = text.rfind(open);
  if (bracket == std::string::npos || text.back() != close) {
    return {text, {}};
  }
  return {Trim(text.substr(0, bracket)), Trim(text.substr(bracket + 1, text.size() - bracket - 2))};
}

bool IsDigits(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::vector<std::string> SplitFields(std::string_view line, std::string_view separators) {
  std::vector<std::string> fields;
  std::string field;
  char quote = '\0';
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (quote == '\0' && separators.find(c) != std::string_view::npos) {
      fields.push_back(WithoutQuotes(field));
      field.clear();
      continue;
    }
    // One that no other closes is a sign of its own: the units of feet and inches.
    const bool opens = quote == '\0' && Trim(field).empty() && line.find(c, i + 1) != std::string_view::npos;
    if ((c == '"' || c == '\'') && (quote == c || opens)) {
      quote = quote == c ? '\0' : c;
    }
    field += c;
  }
  fields.push_back(WithoutQuotes(field));
  return fields;
}

std::string_view SeparatorsOf(std::string_view line) {
  for (const std::string_view separator : {"\t", ";", ","}) {
    if (line.find(separator) != std::string_view::npos) {
      return separator;
    }
  }
  return " ";
}

bool HasPrefix(std::string_view line) {
  return line.starts_with('#') && line.find(kPrefixEnd) != std::string_view::npos;
}

bool NamesColumns(const std::string& line, int columns, int filled, bool separated) {
  const bool letters = std::any_of(line.begin(), line.end(),
                                   [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
  if (!letters || (separated && columns > 1 && SeparatorsOf(line) == " ")) {
    return false;
  }
  const std::vector<std::string> fields = NamedFields(line);
  const auto count = static_cast<int>(fields.size());
  const bool namesAlone = count - std::count(fields.begin(), fields.end(), "") == columns;
  return (count >= filled && count <= columns) || namesAlone;
}

std::vector<std::string> NamesOfColumns(const std::string& line, int columns) {
  const auto wanted = static_cast<std::ptrdiff_t>(columns);
  const std::string text = BehindPrefix(line);
  if (columns == 1 && SeparatorsOf(text) == " ") {
    return {WithoutQuotes(text)};  // a name of several words
  }
  std::vector<std::string> fields = NamedFields(line);
  const auto size = static_cast<std::ptrdiff_t>(fields.size());
  if (size > wanted && size - std::count(fields.begin(), fields.end(), "") == wanted) {
    std::erase(fields, "");
  } else if (size == wanted + 1) {
    fields.erase(fields.begin());
  }
  return fields;
}

LabelAndUnit SplitAtBracket(const std::string& text) {
  const std::size_t bracket = text.find('[');
  if (bracket == std::string::npos) {
    return {Trim(text), {}};
  }
  std::string unit = text.substr(bracket + 1);
  if (!unit.empty() && unit.back() == ']') {
    unit.pop_back();
  }
  return {Trim(text.substr(0, bracket)), Trim(unit)};
}

LabelAndUnit SplitLabel(const std::string& text) {
  const LabelAndUnit square = SplitAtLast(text, '[', ']');
  if (!square.unit.empty()) {
    return IsDigits(square.unit) ? LabelAndUnit{text, {}} : square;
  }
  const LabelAndUnit round = SplitAtLast(text, '(', ')');
  return IsUnitSymbol(round.unit) ? round : LabelAndUnit{text, {}};
}

std::string UnitOf(const std::string& field) {
  const LabelAndUnit square = SplitAtLast(field, '[', ']');
  const LabelAndUnit round = SplitAtLast(field, '(', ')');
  if (!square.unit.empty()) {
    return square.unit;
  }
  const bool wrapped = !round.unit.empty() && (round.label.empty() || IsUnitSymbol(round.unit));
  return wrapped ? round.unit : field;
}

}  // namespace velmora
