#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/questions/form.hpp"
#include "core/workbench.hpp"

// What the buttons of result views do. Each works the same in the window and from a recipe.
namespace velmora {

/// Sends a text to the clipboard, keeps it for the info, and says "Results have been sent to the clipboard."
/// Without a window no desktop's clipboard is touched.
void SendToClipboard(Workbench& workbench, std::string text, std::string_view title = "Sent to Clipboard");

/// Asks for a name and writes the text there. Returns the path; empty after Cancel, or after a failure,
/// which ends a recipe's step.
enum class SaveTrouble { ShowBox, StaySilent };  // a window's silence is no recipe's: its step fails
std::string SaveResults(Workbench& workbench, const FileQuestion& question,
                        const std::function<std::string()>& text, SaveTrouble trouble = SaveTrouble::ShowBox);

/// Asks for a name and writes a table as tab-separated text, its title above it.
std::string SaveTable(Workbench& workbench, const ResultTable& table);

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
