#include "formats/delimited_text/dialogue/layout_memory.hpp"

#include <algorithm>
#include <array>

#include "core/files/paths.hpp"

namespace velmora {
namespace {

// The title and the number of records belong to one file.
constexpr std::array kFields = {"ParseSkip",       "ParseSemicolons", "ParseDecimalComma",    "Rate",
                                "ParseHasTime",    "ParseTimeColumn", "ParseSkipToEndOfLine", "ParseLeaveOut",
                                "ParseLabelsLine", "ParseUnitsLine"};

std::string KeyOf(const Trial& trial, const TextHeader& header, const ParseSettings& settings) {
  return DirectoryOf(FullPath(trial.FileName)) + "|" + std::to_string(trial.FileTypeCode) + "|" +
         std::to_string(settings.ParseSkip) + "|" + std::to_string(settings.columnsFound) + "|" +
         header.Line(settings.ParseSkip);
}

}  // namespace

LayoutMemory::LayoutMemory(Workbench& workbench, const TextHeader& header, const ParseSettings& settings)
    : memory_(workbench.texts), key_(KeyOf(workbench.trial, header, settings)) {}

TextMemory::Values LayoutMemory::Changed() const {
  const auto it = memory_.Layouts.find(key_);
  return it == memory_.Layouts.end() ? TextMemory::Values() : it->second;
}

void LayoutMemory::NoteOffered(const Form& form) {
  for (const char* name : kFields) {
    offered_[name] = Form::TextOf(*form.FindField(name));
  }
  for (const Form::FoundValue& found : form.Found()) {
    offered_[found.field->name] = found.text;
  }
}

void LayoutMemory::Keep(const Form& form) {
  if (!memory_.Remembers) {
    return;
  }
  TextMemory::Values changed;
  for (const auto& [name, text] : offered_) {
    if (const std::string now = Form::TextOf(*form.FindField(name)); now != text) {
      changed[name] = now;
    }
  }
  if (changed.empty()) {
    memory_.Layouts.erase(key_);
  } else {
    memory_.Layouts[key_] = std::move(changed);
  }
}

}  // namespace velmora
