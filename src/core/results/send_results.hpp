#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/workbench.hpp"

// Where results go from every view, with a window and without one.
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

}  // namespace velmora
