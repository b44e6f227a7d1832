#include "core/results/send_results.hpp"

#include <utility>

#include "core/files/files.hpp"
#include "core/questions/result_table.hpp"
#include "core/trial/helpers.hpp"

namespace velmora {

void SendToClipboard(Workbench& workbench, std::string text, std::string_view title) {
  if (workbench.desktop.copy) {
    workbench.desktop.copy(text);
  }
  workbench.results.Clipboard = std::move(text);
  workbench.questions.AskBox({.title = std::string(title),
                              .text = "Results have been sent to the clipboard.",
                              .icon = Icon::Information});
}

std::string SaveResults(Workbench& workbench, const FileQuestion& question,
                        const std::function<std::string()>& text, SaveTrouble trouble) {
  if (!AskSaveName(workbench, question)) {
    return {};
  }
  try {
    OutputFile file(workbench.OutputFileName);
    file.Write(text());
    CommitSave(workbench, file);
    return workbench.OutputFileName;
  } catch (const FileError& error) {
    if (trouble == SaveTrouble::ShowBox) {
      ShowSaveFailure(workbench, error.what());
    } else {
      workbench.report.failures.push_back("cannot write " + workbench.OutputFileName + ": " + error.what());
    }
    return {};
  }
}

std::string SaveTable(Workbench& workbench, const ResultTable& table) {
  return SaveResults(workbench,
                     {.title = "Save results",
                      .defaultName = workbench.trial.TrialName + ".txt",
                      .extension = ".txt",
                      .filter = "Text, tab-separated (.txt)|*.txt|All files (*.*)|*.*"},
                     [&] { return table.title + "\n" + TableText(table); });
}

}  // namespace velmora
