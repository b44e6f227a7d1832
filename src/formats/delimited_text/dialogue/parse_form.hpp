#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// The dialogue "ASCII File Parser": what was found in the file, for a person or a recipe to correct.
class ParseForm : public Form {
 public:
  /// `settings` holds what was found and takes what is chosen; `remark` is shown as it stands.
  ParseForm(Workbench& workbench, const TextHeader& header, ParseSettings& settings, std::string remark);

  /// Whether the dialogue was left with "&Read".
  [[nodiscard]] bool Accepted() const { return accepted_; }

 private:
  void AddGivenFields();
  void AddFurtherFields();
  void AddButtons();
  void ColumnsEdited();
  void SkipEdited();
  [[nodiscard]] bool Read();
  void EditLabels();
  void EditUnits();
  void EditTitle();
  void ShowHelp();

  Workbench& workbench_;
  const TextHeader& header_;
  ParseSettings& settings_;
  std::string remark_;
  bool startUnknown_;
  bool accepted_ = false;
};

}  // namespace velmora
