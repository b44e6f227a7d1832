#include "core/results/result_file.hpp"

#include <cstddef>
#include <variant>

#include "core/questions/result_table.hpp"
#include "core/results/send_results.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

std::string Named(const Trial& trial, int channel) {
  return ChannelNumber(channel) + " " + OneLine(Trim(trial.ChanLabel[channel].Text()));
}

struct ValueText {
  const Trial& trial;
  const FormField& field;

  std::string operator()(const bool* value) const { return *value ? "yes" : "no"; }
  std::string operator()(const std::int32_t* value) const {
    const auto index = static_cast<std::size_t>(*value);
    return index < field.choices.size() ? WithoutMnemonic(field.choices[index]) : std::to_string(*value);
  }
  std::string operator()(const double* value) const { return PlainNumber(*value); }
  std::string operator()(const std::string* value) const { return OneLine(*value); }
  std::string operator()(const ChannelNumbers* values) const {
    return Listed([&](int c) { return Named(trial, c) + " " + PlainNumber((*values)[c]); });
  }
  std::string operator()(const ChannelFlags* flags) const {
    return Listed([&](int c) { return (*flags)[c] ? Named(trial, c) : std::string(); });
  }

  template <typename Entry>
  [[nodiscard]] std::string Listed(const Entry& entryOf) const {
    std::string list;
    for (int c = 1; c <= trial.NChan; ++c) {
      const std::string entry = entryOf(c);
      list += entry.empty() ? "" : (list.empty() ? "" : "; ") + entry;
    }
    return list;
  }
};

std::string WithCarriageReturns(const std::string& text) {
  std::string lines;
  lines.reserve(text.size() + text.size() / 16);
  for (const char c : text) {
    lines += c == '\n' ? "\r\n" : std::string(1, c);
  }
  return lines;
}

}  // namespace

std::vector<ResultParameter> ParametersOf(const Trial& trial, const Form& form) {
  std::vector<ResultParameter> parameters;
  for (const FormField& field : form.Fields()) {
    if (!field.readOnly && !field.hidden && !field.notApplicable) {
      parameters.push_back({.name = field.name,
                            .value = std::visit(ValueText{trial, field}, field.target),
                            .caption = WithoutMnemonic(field.caption)});
    }
  }
  return parameters;
}

std::string ResultFileText(const Workbench& workbench, const ResultHead& head,
                           std::span<const ResultTable> tables) {
  std::string text = TrialLines(workbench);
  if (head.range) {
    text += "Range:\t" + std::to_string(head.range->lo) + "\t" + std::to_string(head.range->hi) + "\n";
  }
  for (const ResultParameter& of : head.parameters) {
    text += of.name + ":\t" + of.value + (of.caption.empty() ? "" : "\t" + OneLine(of.caption)) + "\n";
  }
  for (const ResultTable& table : tables) {
    text += "\n" + TableTextInFull(table);
  }
  return WithCarriageReturns(text);
}

std::string SaveResultFile(Workbench& workbench, const ResultFileKind& kind, const ResultHead& head,
                           std::span<const ResultTable> tables) {
  const std::string& extension = kind.extension;
  return SaveResults(
      workbench,
      {.title = "Save as " + ToUpper(extension) + " file",
       .defaultName = workbench.trial.TrialName + extension,
       .extension = extension,
       .filter = "Velmora2 " + kind.what + " (" + extension + ")|*" + extension +
                 (extension == ".txt" ? "" : "|Text file (.txt)|*.txt") + "|All files (*.*)|*.*"},
      [&] { return ResultFileText(workbench, head, tables); });
}

}  // namespace velmora
