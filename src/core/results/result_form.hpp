#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/questions/form.hpp"
#include "core/results/result_file.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// What an analysis found, ready to be looked at, sent and saved.
struct Results {
  std::string name;   // of the view: "frmMaximums"
  std::string title;  // says what was computed, and by which definition where there are several
  ResultFileKind file;
  ResultHead head;
  std::vector<ResultTable> tables{};
  std::optional<FormGraph> graph{};
  std::string words{};  // the result in a sentence, shown above the first table
};

/// A view of results: tables, and a picture where there is one, which is shown with them or alone.
class ResultForm : public Form {
 public:
  ResultForm(Workbench& workbench, Results results);

 protected:
  /// A view that makes its tables and picture itself, and adds what buttons it has.
  ResultForm(Workbench& workbench, std::string name, std::string title);

  /// Shows these tables instead of those before, and keeps them for the info.
  void SetTables(std::vector<ResultTable> tables);
  /// Either the picture or the tables.
  void ShowTables(bool on);
  [[nodiscard]] bool TablesShown() const { return tablesShown_; }

  /// "&Save" under whatever caption: a file of the tables with this head.
  FormButton SaveButton(const char* caption, ResultFileKind kind, ResultHead head);
  /// "Send results to &Clipboard" under whatever caption.
  FormButton ClipboardButton(const char* caption);
  /// "E&xit" under whatever caption.
  static FormButton ExitButton(const char* caption);

  /// What the clipboard gets: title, then the tables as they are shown.
  [[nodiscard]] virtual std::string ClipboardText() const;

  Workbench& workbench_;

 private:
  void ToggleGraph();

  bool tablesShown_ = true;
};

/// Keeps the tables for the info and shows them until somebody leaves.
void ShowResults(Workbench& workbench, Results results);

}  // namespace velmora
