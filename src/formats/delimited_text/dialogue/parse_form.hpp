#pragma once

#include <string>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"
#include "formats/delimited_text/dialogue/layout_memory.hpp"
#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// The dialogue "ASCII File Parser": what was found in the file, for a person or a recipe to correct.
class ParseForm : public Form {
 public:
  /// `settings` holds what the rules give and takes what is chosen; `remark`, on the start of the data, is
  /// shown in front of those on the columns. What else the first lines tell, and what a person changed
  /// in the last such file, is there to be taken.
  ParseForm(Workbench& workbench, const TextHeader& header, ParseSettings& settings, std::string remark);

  /// Whether the dialogue was left with "&Read".
  [[nodiscard]] bool Accepted() const { return accepted_; }

 protected:
  void FoundTaken() override;

 private:
  void AddGivenFields();
  void AddFurtherFields();
  void AddButtons();
  void AddFound();
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
  std::string startRemark_;
  std::string remark_;
  LayoutMemory memory_;
  bool startUnknown_;
  bool accepted_ = false;
};

}  // namespace velmora
