#include "core/results/result_form.hpp"

#include <utility>

#include "core/questions/result_table.hpp"
#include "core/results/send_results.hpp"

namespace velmora {

ResultForm::ResultForm(Workbench& workbench, Results results)
    : Form(std::move(results.name), std::move(results.title)), workbench_(workbench) {
  if (!results.words.empty() && !results.tables.empty()) {
    std::string& title = results.tables.front().title;
    title = results.words + (title.empty() ? "" : "\n" + title);
  }
  SetTables(std::move(results.tables));
  graph_ = std::move(results.graph);
  buttons_ = {SaveButton("&Save", std::move(results.file), std::move(results.head)),
              ClipboardButton("Send results to &Clipboard")};
  if (graph_) {
    buttons_.push_back(StayButton("&Graph", [this] { ToggleGraph(); }));
  }
  buttons_.push_back(ExitButton("E&xit"));
}

ResultForm::ResultForm(Workbench& workbench, std::string name, std::string title)
    : Form(std::move(name), std::move(title)), workbench_(workbench) {}

void ResultForm::SetTables(std::vector<ResultTable> tables) {
  for (const ResultTable& table : tables) {
    KeepTable(workbench_.results.ResultTables, table);
  }
  tables_ = std::move(tables);
}

void ResultForm::ShowTables(bool on) {
  tablesShown_ = on;
  for (ResultTable& table : tables_) {
    table.hidden = !on;
  }
  if (graph_) {
    graph_->hidden = on;
  }
}

// Both are seen, or the picture has all the room.
void ResultForm::ToggleGraph() {
  tablesShown_ = !tablesShown_;
  for (ResultTable& table : tables_) {
    table.hidden = !tablesShown_;
  }
}

FormButton ResultForm::SaveButton(const char* caption, ResultFileKind kind, ResultHead head) {
  return StayButton(caption, [this, kind = std::move(kind), head = std::move(head)] {
    SaveResultFile(workbench_, kind, head, tables_);
  });
}

FormButton ResultForm::ClipboardButton(const char* caption) {
  return StayButton(caption, [this] { SendToClipboard(workbench_, ClipboardText()); });
}

FormButton ResultForm::ExitButton(const char* caption) {
  return {caption, FormButton::Role::Accept, [] { return true; }};
}

std::string ResultForm::ClipboardText() const {
  std::string text = Title() + "\n";
  for (const ResultTable& table : tables_) {
    text += (&table == &tables_.front() ? "" : "\n") + TableText(table);
  }
  return text;
}

void ShowResults(Workbench& workbench, Results results) {
  ResultForm(workbench, std::move(results)).Show(workbench);
}

}  // namespace velmora
