#pragma once

#include <functional>
#include <string>

#include "core/questions/form.hpp"
#include "core/results/send_results.hpp"
#include "core/workbench.hpp"

// What the buttons of result views do. Each works the same in the window and from a recipe.
namespace velmora {

/// Saves, then opens what was saved in "Notepad.exe", "QPW.exe" or "Excel.exe". `save` returns the path,
/// empty when there is none. Without a window nothing is started.
void SendToProgram(Workbench& workbench, const std::string& program,
                   const std::function<std::string()>& save);

/// "Save picture" of the form's graph.
void SaveGraphPicture(Workbench& workbench, const Form& form);

/// Prints the form's graph while it is shown, else its tables. Without a window nothing is printed, and a
/// warning says so.
void PrintResults(Workbench& workbench, const Form& form);

/// The rows for a form's `buttons_`: "Notepad", "Quattro Pro", "Excel", which save first.
std::vector<FormButton> ProgramButtons(Workbench& workbench, std::function<std::string()> save);
/// "Picture" and "Print".
std::vector<FormButton> PictureButtons(Workbench& workbench, const Form& form);

}  // namespace velmora
