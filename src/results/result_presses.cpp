#include "results/result_presses.hpp"

#include <utility>

#include "core/trial/helpers.hpp"
#include "graph/drawn_form_graph.hpp"
#include "graph/save_picture.hpp"

namespace velmora {

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
    return StayButton(caption, [&workbench, program, save] { SendToProgram(workbench, program, save); });
  };
  return {button("&Notepad", "Notepad.exe"), button("&Quattro Pro", "QPW.exe"),
          button("&Excel", "Excel.exe")};
}

std::vector<FormButton> PictureButtons(Workbench& workbench, const Form& form) {
  return {StayButton("P&icture", [&workbench, &form] { SaveGraphPicture(workbench, form); }),
          StayButton("&Print", [&workbench, &form] { PrintResults(workbench, form); })};
}

}  // namespace velmora
