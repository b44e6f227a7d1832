#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// What a person changed in the parser's dialogue against what it had found, for the next file of the
/// folder whose header has the same layout: dialect, lines above the data, columns and their names.
class LayoutMemory {
 public:
  LayoutMemory(Workbench& workbench, const TextHeader& header, const ParseSettings& settings);

  /// The texts by field of the last such file that differ from what was found; empty: there was none.
  [[nodiscard]] TextMemory::Values Changed() const;
  /// Notes what `form` holds together with what it has found, before Changed is added to that.
  void NoteOffered(const Form& form);
  /// Remembers what differs now from what was noted, where the program remembers at all.
  void Keep(const Form& form);

 private:
  TextMemory& memory_;
  std::string key_;
  TextMemory::Values offered_;
};

}  // namespace velmora
