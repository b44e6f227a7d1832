#pragma once

#include <optional>
#include <string_view>

#include "core/open_view.hpp"
#include "core/workbench.hpp"

namespace velmora {

// Keys, in upper case, that graphs of every kind have.

/// What a key asks of the window that the graph is drawn in.
std::optional<WindowRequest> WindowRequestOf(std::string_view key);
bool AsksForHelp(std::string_view key);

/// The box with the keys of a view.
void ShowKeys(Workbench& workbench, const char* list);

}  // namespace velmora
