#include "run/step_words.hpp"

#include <map>
#include <vector>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

std::string Caption(std::string_view caption) {
  return Trim(WithoutMnemonic(caption));
}

std::string Channels(const std::vector<int>& channels, int all) {
  if (static_cast<int>(channels.size()) == all && all > 2) {
    return "all channels";
  }
  std::string text = channels.size() == 1 ? "channel " : "channels ";
  for (std::size_t k = 0; k < channels.size(); ++k) {
    text += k == 0 ? "" : k + 1 == channels.size() ? " and " : ", ";
    text += ChannelNumber(channels[k]);
  }
  return text;
}

void AppendWords(std::string& text, const std::string& more) {
  text += (text.empty() || more.empty() ? "" : ", ") + more;
}

/// Values and the channels that have them: "6 Hz, channels 00 and 01".
std::string Grouped(const std::map<std::string, std::vector<int>>& byValue, const std::string& units,
                    int all) {
  std::string text;
  const std::string behind = (units.empty() ? "" : " " + units) + ", ";
  for (const auto& [value, channels] : byValue) {
    std::string words = value;
    words.append(behind).append(Channels(channels, all));
    AppendWords(text, words);
  }
  return text;
}

struct ActionWords {
  std::string operator()(const Command* command) const {
    // Its caption lists what its dialogue offers, and the answers say which it was.
    return command->id == "smooth.butterworth" ? "Filter" : Caption(command->caption);
  }
  std::string operator()(const KeyPress& key) const {
    return std::string("Key ") + (key.ctrl ? "Ctrl+" : "") + (key.shift ? "Shift+" : "") +
           (key.alt ? "Alt+" : "") + key.name;
  }
  std::string operator()(const CursorMove& move) const {
    return "Cursor " + std::to_string(move.cursor) + " at " + FormatNumber(move.x, "0.000");
  }
  std::string operator()(const GraphClick& click) const {
    return (click.how == Clicked::Once    ? "Click on graph "
            : click.how == Clicked::Twice ? "Double click on graph "
                                          : "Right click on graph ") +
           std::to_string(click.graph);
  }
};

/// The value of an edited field; nothing for one that is told per channel.
struct FieldWords {
  const FormField& field;
  const std::vector<int>& edited;
  int all;

  std::string operator()(const bool* value) const { return Name() + (*value ? "" : ": no"); }
  std::string operator()(const std::int32_t* value) const {
    const auto choice = static_cast<std::size_t>(*value);
    return choice < field.choices.size() ? Caption(field.choices[choice])
                                         : Name() + " " + std::to_string(*value) + Units();
  }
  std::string operator()(const double* value) const { return Name() + " " + PlainNumber(*value) + Units(); }
  std::string operator()(const std::string* value) const { return Name() + " \"" + *value + "\""; }
  std::string operator()(const ChannelNumbers* values) const {
    std::map<std::string, std::vector<int>> byValue;
    for (const int c : edited) {
      byValue[PlainNumber((*values)[c])].push_back(c);
    }
    return Name() + " " + Grouped(byValue, field.units, all);
  }
  std::string operator()(const ChannelFlags* flags) const {
    std::vector<int> on;
    for (int c = 1; c <= all; ++c) {
      if ((*flags)[c]) {
        on.push_back(c);
      }
    }
    return on.empty() ? Name() + ": none" : Channels(on, all);
  }

 private:
  // Captions may go on to explain the field.
  [[nodiscard]] std::string Name() const {
    const std::string caption = Caption(field.caption);
    return caption.substr(0, std::min(caption.find(".  "), caption.find(':')));
  }
  [[nodiscard]] std::string Units() const { return field.units.empty() ? "" : " " + field.units; }
};

}  // namespace

std::string WordsOf(const Action& action) {
  return std::visit(ActionWords{}, action);
}

std::string WordsOf(const ChannelPicker& picker) {
  std::vector<int> selected;
  std::map<std::string, std::vector<int>> byValue;
  for (int c = 1; c <= picker.Channels(); ++c) {
    const bool marked = picker.IsSelected(c);
    if (marked) {
      selected.push_back(c);
    }
    if (picker.HasValues() && (picker.Selects() ? marked : picker.Value(c) != 0.0F)) {
      byValue[PlainNumber(picker.Value(c))].push_back(c);
    }
  }
  if (!byValue.empty()) {
    return Grouped(byValue, "", picker.Channels());
  }
  return selected.empty() ? std::string() : Channels(selected, picker.Channels());
}

std::string WordsOf(const Form& form, int channels) {
  std::string words;
  // What kind of filter it was is worth telling also when it is the usual one.
  for (const char* name : {"optFilter", "optPassType"}) {
    const FormField* field = form.FindField(name);
    std::int32_t* const* choice = field != nullptr ? std::get_if<std::int32_t*>(&field->target) : nullptr;
    if (choice != nullptr) {
      AppendWords(words, Caption(field->choices[static_cast<std::size_t>(std::max(0, **choice))]));
    }
  }
  std::vector<const FormField*> told;
  for (const Form::EditMade& edit : form.Edits()) {
    const bool toldAbove = edit.field->name == "optFilter" || edit.field->name == "optPassType";
    if (toldAbove || std::find(told.begin(), told.end(), edit.field) != told.end()) {
      continue;
    }
    told.push_back(edit.field);
    std::vector<int> edited;
    for (const Form::EditMade& other : form.Edits()) {
      if (other.field == edit.field && other.channel > 0 && other.channel <= channels) {
        edited.push_back(other.channel);
      }
    }
    std::sort(edited.begin(), edited.end());
    AppendWords(words, std::visit(FieldWords{*edit.field, edited, channels}, edit.field->target));
  }
  return words;
}

}  // namespace velmora
