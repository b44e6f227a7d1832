#include "import/text_parser/labels.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/numbers.hpp"
#include "core/text.hpp"

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

// One field per channel. A dialect's line starts with its keyword; a line that the user names may
// start with a word of its own too, and then has one field more than there are columns.
std::vector<std::string> ChannelFields(const std::string& line, bool named, int code,
                                       const ParseSettings& settings) {
  constexpr int kDelsys = 62;
  const std::string_view separators = named ? SeparatorsOf(line) : code == kDelsys ? "\t," : "\t";
  std::vector<std::string> fields = SplitFields(line, separators);
  if (named && separators == " ") {
    std::erase(fields, "");
  }
  while (named && fields.size() > 1 && fields.back().empty()) {
    fields.pop_back();
  }
  const bool keyword = !named || fields.size() == static_cast<std::size_t>(settings.columns) + 1;
  const auto time = static_cast<std::size_t>(settings.ParseTimeColumn);
  if (keyword) {
    fields.erase(fields.begin());
  } else if (settings.HasTime() && time <= fields.size()) {
    fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(time) - 1);
  }
  return fields;
}

// "Force [N]" is label and unit.
void SplitUnit(Trial& trial, int channel, std::string text) {
  const auto c = static_cast<std::size_t>(channel);
  const std::size_t bracket = text.find('[');
  if (bracket != std::string::npos) {
    std::string unit = text.substr(bracket + 1);
    if (!unit.empty() && unit.back() == ']') {
      unit.pop_back();
    }
    trial.ChanUnits[c] = Trim(unit);
    text.resize(bracket);
  }
  trial.ChanLabel[c] = Trim(text);
}

bool KeepsLabels(int code) {
  return code == 62 || code == 63;
}

void SetLabel(Trial& trial, int channel, const std::string& text) {
  if (text.empty()) {
    return;
  }
  if (KeepsLabels(trial.FileTypeCode)) {
    trial.ChanLabel[static_cast<std::size_t>(channel)] = text;
  } else {
    SplitUnit(trial, channel, text);
  }
}

struct FieldLine {
  int number;
  bool named;  // by the user, not by the dialect
};

std::vector<std::string> FieldsOf(const Trial& trial, const TextHeader& header, const ParseSettings& settings,
                                  FieldLine line, int markerLine) {
  std::vector<std::string> fields;
  if (line.number > 0) {
    fields = ChannelFields(header.Line(line.number), line.named, trial.FileTypeCode, settings);
  }
  if (markerLine > 0) {
    const std::vector<std::string> markers =
        ChannelFields(header.Line(markerLine), false, trial.FileTypeCode, settings);
    fields.insert(fields.end(), markers.begin(), markers.end());
  }
  fields.resize(std::min<std::size_t>(fields.size(), static_cast<std::size_t>(trial.NChan)));
  return fields;
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

}  // namespace

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

void ReadLabelsAndUnits(Trial& trial, const TextHeader& header, const ParseSettings& settings) {
  constexpr std::int16_t kVisual3D = 91;
  const FieldLine labelLine{settings.labelsLine, settings.labelsLine != header.labelsLine};
  const std::vector<std::string> labels =
      FieldsOf(trial, header, settings, labelLine, header.markerLabelsLine);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    SetLabel(trial, static_cast<int>(i) + 1, labels[i]);
  }
  const FieldLine unitLine{settings.unitsLine, settings.unitsLine != header.unitsLine};
  const std::vector<std::string> units = FieldsOf(trial, header, settings, unitLine, header.markerUnitsLine);
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (!units[i].empty()) {
      trial.ChanUnits[i + 1] = units[i];
    }
  }
  if (!header.timeLabel.empty()) {
    trial.ChanLabel[0] = header.timeLabel;
  }
  if (trial.FileTypeCode == kVisual3D) {
    FinishVisual3D(trial, header);
  }
}

void ReadLabelsBeforeData(Trial& trial, const std::string& line, const ParseSettings& settings) {
  std::vector<std::string> fields = SplitFields(line, SeparatorsOf(line));
  if (const auto time = static_cast<std::size_t>(settings.ParseTimeColumn);
      settings.HasTime() && time <= fields.size()) {
    fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(time) - 1);
  }
  for (std::size_t i = 0; i < fields.size() && static_cast<int>(i) < trial.NChan; ++i) {
    SetLabel(trial, static_cast<int>(i) + 1, fields[i]);
  }
}

}  // namespace velmora
