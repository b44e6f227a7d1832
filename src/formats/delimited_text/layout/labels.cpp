#include "formats/delimited_text/layout/labels.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/saved_head.hpp"

namespace velmora {
namespace {

std::string WithoutQuotes(std::string_view field) {
  const std::string text = Trim(field);
  const bool quoted = text.size() >= 2 && text.front() == text.back() && (text[0] == '"' || text[0] == '\'');
  return quoted ? Trim(std::string_view(text).substr(1, text.size() - 2)) : text;
}

// Fields of a line; a separator inside quotes is part of its field.
std::vector<std::string> SplitFields(std::string_view line, std::string_view separators) {
  std::vector<std::string> fields;
  std::string field;
  char quote = '\0';
  for (const char c : line) {
    if (quote == '\0' && separators.find(c) != std::string_view::npos) {
      fields.push_back(WithoutQuotes(field));
      field.clear();
      continue;
    }
    if ((c == '"' || c == '\'') && (quote == c || (quote == '\0' && Trim(field).empty()))) {
      quote = quote == c ? '\0' : c;
    }
    field += c;
  }
  fields.push_back(WithoutQuotes(field));
  return fields;
}

// What separates the fields of a line that the user has named: what the line itself shows.
std::string_view SeparatorsOf(std::string_view line) {
  for (const std::string_view separator : {"\t", ";", ","}) {
    if (line.find(separator) != std::string_view::npos) {
      return separator;
    }
  }
  return " ";
}

// Fields of a line that the user has named.
std::vector<std::string> NamedFields(const std::string& line) {
  const std::string_view separators = SeparatorsOf(line);
  std::vector<std::string> fields = SplitFields(line, separators);
  if (separators == " ") {
    std::erase(fields, "");
  }
  while (fields.size() > 1 && fields.back().empty()) {
    fields.pop_back();
  }
  return fields;
}

void EraseTimeField(std::vector<std::string>& fields, const ParseSettings& settings) {
  const auto time = static_cast<std::size_t>(settings.ParseTimeColumn);
  if (settings.HasTime() && time <= fields.size()) {
    fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(time) - 1);
  }
}

// A dialect's line starts with its keyword; a line that the user names may start with a word of its own
// too, and then has one field more than there are columns.
std::vector<std::string> FieldsBehindKeyword(const std::string& line, bool named, int code,
                                             const ParseSettings& settings) {
  constexpr int kDelsys = 62;
  std::vector<std::string> fields =
      named ? NamedFields(line) : SplitFields(line, code == kDelsys ? "\t," : "\t");
  if (!named || fields.size() == static_cast<std::size_t>(settings.columns) + 1) {
    fields.erase(fields.begin());
  }
  return fields;
}

// "Force [N]" is label and unit.
void SplitUnit(Trial& trial, int channel, std::string text) {
  const std::size_t bracket = text.find('[');
  if (bracket != std::string::npos) {
    std::string unit = text.substr(bracket + 1);
    if (!unit.empty() && unit.back() == ']') {
      unit.pop_back();
    }
    trial.ChanUnits[channel] = Trim(unit);
    text.resize(bracket);
  }
  trial.ChanLabel[channel] = Trim(text);
}

bool KeepsLabels(int code) {
  return code == 62 || code == 63;
}

void SetLabel(Trial& trial, int channel, const std::string& text) {
  if (text.empty()) {
    return;
  }
  if (KeepsLabels(trial.FileTypeCode)) {
    trial.ChanLabel[channel] = text;
  } else {
    SplitUnit(trial, channel, text);
  }
}

struct FieldLine {
  bool named;  // by the user, not by the dialect
  std::vector<std::string> fields;
};

FieldLine FieldsOf(const Trial& trial, const TextHeader& header, const ParseSettings& settings, int number,
                   bool named, int markerLine) {
  FieldLine line{named && number > 0, {}};
  const auto add = [&](int from, bool byUser) {
    const std::vector<std::string> more =
        FieldsBehindKeyword(header.Line(from), byUser, trial.FileTypeCode, settings);
    line.fields.insert(line.fields.end(), more.begin(), more.end());
  };
  if (number > 0) {
    add(number, named);
  }
  if (markerLine > 0) {
    add(markerLine, false);
  }
  return line;
}

// What the user names has a field for every column. A dialect's lines may name the time column too:
// then one of them has a name for every column.
void EraseTimeNames(FieldLine& labels, FieldLine& units, const TextHeader& header,
                    const ParseSettings& settings) {
  const auto columns = static_cast<std::size_t>(settings.columns);
  const auto namesAll = [columns](const FieldLine& line) {
    return line.fields.size() == columns && !line.fields.back().empty();
  };
  const bool timeNamed = !header.keywordNamesTime && (namesAll(labels) || namesAll(units));
  for (FieldLine* line : {&labels, &units}) {
    if (line->named || (timeNamed && line->fields.size() >= columns)) {
      EraseTimeField(line->fields, settings);
    }
  }
}

// Visual3D: the plate's name completes the label, and the quantity gives the unit.
void FinishVisual3D(Trial& trial, const TextHeader& header) {
  const std::vector<std::string> plates = SplitFields(header.Line(header.platesLine), "\t");
  for (int c = 1; c <= trial.NChan; ++c) {
    const auto i = static_cast<std::size_t>(c);
    std::string label = trial.ChanLabel[i].Text();
    if (header.platesLine > 0 && i < plates.size() && !plates[i].empty()) {
      label += " " + plates[i];
    }
    const std::string upper = ToUpper(label);
    if (upper.find("FREEMOMENT") != std::string::npos) {
      trial.ChanUnits[i] = "N.m";
    } else if (upper.find("FORCE") != std::string::npos) {
      trial.ChanUnits[i] = "N";
    }
    trial.ChanLabel[i] = Trim(label);
  }
}

// A table that this program saved: its names are taken as they stand, the abscissa's too.
std::string ReadSavedNames(Trial& trial, const TextHeader& header, const ParseSettings& settings) {
  const auto columns = static_cast<std::size_t>(settings.columns);
  const auto time = static_cast<std::size_t>(settings.ParseTimeColumn);
  const std::vector<std::string> labels = SavedNames(header, header.labelsLine);
  const std::vector<std::string> units = SavedNames(header, header.unitsLine);
  if (labels.size() != columns || units.size() != columns) {
    return "Lines " + std::to_string(header.labelsLine) + " and " + std::to_string(header.unitsLine) +
           " name " + std::to_string(labels.size()) + " labels and " + std::to_string(units.size()) +
           " units for " + std::to_string(columns) + " columns: they were left out.";
  }
  std::size_t channel = 1;
  for (std::size_t k = 0; k < columns; ++k) {
    const std::size_t c = settings.HasTime() && k + 1 == time ? 0 : channel++;
    trial.ChanLabel[c] = labels[k].empty() ? trial.ChanLabel[c] : Label(labels[k]);
    trial.ChanUnits[c] = units[k];
  }
  return {};
}

}  // namespace

int CountNames(const std::string& line) {
  return static_cast<int>(NamedFields(line).size());
}

void SetParsedDefaults(Trial& trial) {
  constexpr std::int16_t kDelsys = 62;
  trial.ChanLabel[0] = "Time";
  trial.ChanUnits[0] = "s";
  trial.ChanRate[0] = trial.Rate;
  for (int c = 1; c <= trial.NChan; ++c) {
    const auto i = static_cast<std::size_t>(c);
    const Label label = trial.ChanLabel[i];
    const Units units = trial.ChanUnits[i];
    trial.SetChannelDefaults(c);
    trial.ChanLabel[i] = label.empty() ? Label("Chan. " + FormatNumber(c, "00")) : label;
    trial.ChanUnits[i] = units.empty() && trial.FileTypeCode == kDelsys ? Units("V") : units;
    trial.ChanColour[i] = static_cast<std::int16_t>(c % kColours + 1);
  }
}

void RestoreEntered(Trial& trial, const EnteredNames& entered, int removed) {
  for (int c = 1; c <= trial.NChan; ++c) {
    const int before = c + removed;
    trial.ChanLabel[c] = entered.labels[before].empty() ? trial.ChanLabel[c] : entered.labels[before];
    trial.ChanUnits[c] = entered.units[before].empty() ? trial.ChanUnits[c] : entered.units[before];
  }
}

std::string ReadLabelsAndUnits(Trial& trial, const TextHeader& header, const ParseSettings& settings) {
  constexpr std::int16_t kVisual3D = 91;
  if (!header.savedSeparator.empty() && settings.labelsLine == header.labelsLine &&
      settings.unitsLine == header.unitsLine) {
    return ReadSavedNames(trial, header, settings);
  }
  FieldLine labels = FieldsOf(trial, header, settings, settings.labelsLine,
                              settings.labelsLine != header.labelsLine, header.markerLabelsLine);
  FieldLine units = FieldsOf(trial, header, settings, settings.unitsLine,
                             settings.unitsLine != header.unitsLine, header.markerUnitsLine);
  EraseTimeNames(labels, units, header, settings);
  const auto channels = static_cast<std::size_t>(trial.NChan);
  for (std::size_t i = 0; i < std::min(labels.fields.size(), channels); ++i) {
    SetLabel(trial, static_cast<int>(i) + 1, labels.fields[i]);
  }
  for (std::size_t i = 0; i < std::min(units.fields.size(), channels); ++i) {
    if (!units.fields[i].empty()) {
      trial.ChanUnits[i + 1] = units.fields[i];
    }
  }
  if (!header.timeLabel.empty()) {
    trial.ChanLabel[0] = header.timeLabel;
  }
  if (trial.FileTypeCode == kVisual3D) {
    FinishVisual3D(trial, header);
  }
  return {};
}

void ReadLabelsBeforeData(Trial& trial, const std::string& line, const ParseSettings& settings) {
  std::vector<std::string> fields = SplitFields(line, SeparatorsOf(line));
  EraseTimeField(fields, settings);
  for (std::size_t i = 0; i < fields.size() && static_cast<int>(i) < trial.NChan; ++i) {
    SetLabel(trial, static_cast<int>(i) + 1, fields[i]);
  }
}

}  // namespace velmora
