#pragma once

#include <span>
#include <string_view>

namespace velmora::ui {

/// A place in the main window's menus: the command that belongs there, or what stands there greyed while
/// the program has no such command.
struct MenuPlace {
  std::string_view id;
  std::string_view menu;          // path with '&', separated by '/'
  std::string_view caption = {};  // with '&', while there is no such command, which brings its own
  bool separatorBefore = false;
};

/// All places, in the order of the menus.
std::span<const MenuPlace> MenuPlaces();

}  // namespace velmora::ui
