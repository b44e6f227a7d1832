#include "results/result_presses.hpp"

#include <utility>

#include "core/files/files.hpp"
#include "core/trial/helpers.hpp"
#include "graph/drawn_form_graph.hpp"
#include "graph/save_picture.hpp"

namespace velmora {
namespace {

FormButton OpenButton(const char* caption, std::function<void()> press) {
  return {.caption = caption, .press = [press = std::move(press)] {
            press();
            return false;
          }};
}

}  // namespace

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

void SendToProgram(Workbench& workbench, const std::string& program,
                   const std::function<std::string()>& save) {
  const std::string path = save();
  if (path.empty() || !workbench.desktop.open) {
    return;
  }
  const std::string why = workbench.desktop.open(program, path);
  if (!why.empty()) {
    ShowRefusal(workbench, {.title = program, .text = why, .icon = Icon::Exclamation});
  }
}

void SaveGraphPicture(Workbench& workbench, const Form& form) {
  if (form.Graph()) {
    const DrawnFormGraph drawn(*form.Graph());
    SavePicture(workbench, {.graph = drawn.Drawing(), .title = form.Graph()->title});
  }
}

void PrintResults(Workbench& workbench, const Form& form) {
  const bool graph = form.Graph() && !form.Graph()->hidden;
  if (graph ? !workbench.desktop.printPicture : !workbench.desktop.printTable) {
    workbench.report.warnings.emplace_back("Nothing was printed: that needs the window.");
    return;
  }
  if (graph) {
    const DrawnFormGraph drawn(*form.Graph());
    workbench.desktop.printPicture({.graph = drawn.Drawing(), .title = form.Graph()->title, .paper = kWhite});
    return;
  }
  for (const ResultTable& table : form.Tables()) {
    workbench.desktop.printTable(table);
  }
}

std::vector<FormButton> ProgramButtons(Workbench& workbench, std::function<std::string()> save) {
  const auto button = [&](const char* caption, const char* program) {
    return OpenButton(caption, [&workbench, program, save] { SendToProgram(workbench, program, save); });
  };
  return {button("&Notepad", "Notepad.exe"), button("&Quattro Pro", "QPW.exe"),
          button("&Excel", "Excel.exe")};
}

std::vector<FormButton> PictureButtons(Workbench& workbench, const Form& form) {
  return {OpenButton("P&icture", [&workbench, &form] { SaveGraphPicture(workbench, form); }),
          OpenButton("&Print", [&workbench, &form] { PrintResults(workbench, form); })};
}

}  // namespace velmora
