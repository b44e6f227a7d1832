#include "formats/delimited_text/layout/labels.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "formats/delimited_text/layout/saved_head.hpp"

namespace velmora {
namespace {

constexpr int kDelsys = 62;
constexpr int kDelsysPoints = 63;
constexpr int kVisual3D = 91;

// A line of names, a field for each of the trial's channels once KeepChannels has been here.
struct NameLine {
  int number = 0;  // 0: there is none
  /// The fields stand over the columns, from the first one: the user says so, or the dialect.
  bool byPlace = false;
  /// Read by another rule than the dialect's, so that a misfit has to be told.
  bool guessed = false;
  std::vector<std::string> fields;
};

// The fields behind the dialect's keyword. Where the line lacks what separates them in this dialect, it
// is split at what it shows.
void AddDialectFields(NameLine& line, const std::string& text, int code, int columns) {
  const std::string_view own = code == kDelsys ? "\t," : "\t";
  const bool guessed = text.find_first_of(own) == std::string::npos;
  const std::string_view separators = guessed ? SeparatorsOf(text) : own;
  std::vector<std::string> fields = SplitFields(text, separators);
  if (separators == " ") {
    std::erase(fields, "");
    const int names = static_cast<int>(fields.size()) - 1;
    fields.resize(names == columns || names == columns - 1 ? fields.size() : 1);  // else it is a sentence
  }
  if (!line.byPlace) {
    fields.erase(fields.begin());
  }
  line.guessed = line.guessed || guessed;
  line.fields.insert(line.fields.end(), fields.begin(), fields.end());
}

// `own` is the line that the dialect marks, `marker` its second one.
NameLine ReadNameLine(const Trial& trial, const TextHeader& header, const ParseSettings& settings, int number,
                      int own, int marker) {
  NameLine line{.number = number};
  const std::string text = header.Line(number);
  if (number > 0 && number != own) {
    line.byPlace = line.guessed = true;
    line.fields = NamesOfColumns(text, settings.columns);
    if (HasPrefix(text) && line.fields.size() == 1) {  // "# Units:= mV"
      line.fields.resize(static_cast<std::size_t>(settings.columns), line.fields[0]);
    }
  } else if (number > 0) {
    line.byPlace = trial.FileTypeCode == kVisual3D;  // its keyword stands over the counter
    AddDialectFields(line, text, trial.FileTypeCode, settings.columns);
  }
  if (marker > 0) {
    AddDialectFields(line, header.Line(marker), trial.FileTypeCode, settings.columns);
  }
  return line;
}

bool NamesAll(const NameLine& line, int columns) {
  return line.fields.size() == static_cast<std::size_t>(columns) && !line.fields.back().empty();
}

// Leaves the fields of the channels, in order. `timeNamed`: the time column has a field too.
void KeepChannels(NameLine& line, const ParseSettings& settings, bool timeNamed) {
  const std::vector<int> channels = settings.ChannelColumns();
  const int unnamed = settings.HasTime() && !timeNamed ? settings.ParseTimeColumn : settings.columns + 1;
  std::vector<std::string> kept;
  for (const int column : channels) {
    const auto field = static_cast<std::size_t>(column) - (column > unnamed ? 2 : 1);
    kept.push_back(field < line.fields.size() ? line.fields[field] : "");
  }
  line.fields = std::move(kept);
}

// What the user names has a field for every column. A dialect's lines may name the time column too:
// then one of them has a name for every column.
void KeepChannels(NameLine& labels, NameLine& units, const TextHeader& header,
                  const ParseSettings& settings) {
  const bool timeNamed =
      !header.keywordNamesTime && (NamesAll(labels, settings.columns) || NamesAll(units, settings.columns));
  const auto columns = static_cast<std::size_t>(settings.columns);
  for (NameLine* line : {&labels, &units}) {
    KeepChannels(*line, settings, line->byPlace || (timeNamed && line->fields.size() >= columns));
  }
}

void SetLabel(Trial& trial, int channel, const std::string& text, bool byDialect) {
  if (text.empty()) {
    return;
  }
  if (trial.FileTypeCode == kDelsys || trial.FileTypeCode == kDelsysPoints) {
    trial.ChanLabel[channel] = text;
    return;
  }
  const LabelAndUnit split = byDialect ? SplitAtBracket(text) : SplitLabel(text);
  trial.ChanLabel[channel] = split.label.empty() ? trial.ChanLabel[channel] : Label(split.label);
  trial.ChanUnits[channel] = split.unit.empty() ? trial.ChanUnits[channel] : Units(split.unit);
}

// What the dialogue showed as labels line and nobody would find in the labels.
std::string NoteOnNames(const NameLine& labels) {
  const auto empty = std::count(labels.fields.begin(), labels.fields.end(), "");
  const auto all = static_cast<std::ptrdiff_t>(labels.fields.size());
  if (labels.number == 0 || empty == 0 || (empty < all && !labels.guessed)) {
    return {};
  }
  const std::string line = "Line " + std::to_string(labels.number);
  return empty == all ? line + ", the labels line, names no channel."
                      : line + ", the labels line, names " + std::to_string(all - empty) + " of " +
                            std::to_string(all) + " channels.";
}

// Visual3D: the plate's name completes the label, and the quantity gives the unit.
void FinishVisual3D(Trial& trial, const TextHeader& header, const ParseSettings& settings) {
  NameLine plates{.fields = SplitFields(header.Line(header.platesLine), "\t")};
  KeepChannels(plates, settings, true);
  for (int c = 1; c <= trial.NChan; ++c) {
    const auto i = static_cast<std::size_t>(c);
    std::string label = trial.ChanLabel[i].Text();
    if (header.platesLine > 0 && !plates.fields[i - 1].empty()) {
      label += " " + plates.fields[i - 1];
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
  const std::vector<std::string> labels = NamesInSavedLine(header, header.labelsLine);
  const std::vector<std::string> units = NamesInSavedLine(header, header.unitsLine);
  if (labels.size() != columns || units.size() != columns) {
    return "Lines " + std::to_string(header.labelsLine) + " and " + std::to_string(header.unitsLine) +
           " name " + std::to_string(labels.size()) + " labels and " + std::to_string(units.size()) +
           " units for " + std::to_string(columns) + " columns: they were left out.";
  }
  const auto name = [&](int channel, int column) {
    const auto k = static_cast<std::size_t>(column) - 1;
    trial.ChanLabel[channel] = labels[k].empty() ? trial.ChanLabel[channel] : Label(labels[k]);
    trial.ChanUnits[channel] = units[k];
  };
  if (settings.HasTime()) {
    name(0, settings.ParseTimeColumn);
  }
  int channel = 0;
  for (const int column : settings.ChannelColumns()) {
    name(++channel, column);
  }
  return {};
}

}  // namespace

void SetParsedDefaults(Trial& trial) {
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
  if (!header.savedSeparator.empty() && settings.labelsLine == header.labelsLine &&
      settings.unitsLine == header.unitsLine) {
    return ReadSavedNames(trial, header, settings);
  }
  NameLine labels =
      ReadNameLine(trial, header, settings, settings.labelsLine, header.labelsLine, header.markerLabelsLine);
  NameLine units =
      ReadNameLine(trial, header, settings, settings.unitsLine, header.unitsLine, header.markerUnitsLine);
  const bool dialectNames = settings.labelsLine == header.labelsLine;
  KeepChannels(labels, units, header, settings);
  for (int c = 1; c <= trial.NChan; ++c) {
    const auto i = static_cast<std::size_t>(c) - 1;
    SetLabel(trial, c, labels.fields[i], dialectNames);
    if (!units.fields[i].empty()) {
      trial.ChanUnits[c] = units.guessed ? UnitOf(units.fields[i]) : units.fields[i];
    }
  }
  if (!header.timeLabel.empty()) {
    trial.ChanLabel[0] = header.timeLabel;
  }
  if (trial.FileTypeCode == kVisual3D) {
    FinishVisual3D(trial, header, settings);
  }
  return NoteOnNames(labels);
}

void ReadLabelsBeforeData(Trial& trial, const std::string& line, const ParseSettings& settings) {
  NameLine labels{.fields = SplitFields(line, SeparatorsOf(line))};
  KeepChannels(labels, settings, true);
  for (int c = 1; c <= trial.NChan; ++c) {
    SetLabel(trial, c, labels.fields[static_cast<std::size_t>(c) - 1], true);
  }
}

}  // namespace velmora
