#pragma once

#include <string_view>

namespace velmora {

struct Workbench;

/// What must be there before a command makes sense; the window greys the entry without it. The
/// command itself checks again, since recipes call it by id.
enum class Needs { Nothing, Data, TwoCursors, View };

/// One row of the command table: menus, recipes and tests find a command here.
struct Command {
  std::string_view id;       // "math.absolute"
  std::string_view caption;  // with '&'
  std::string_view menu;     // path of menus, each with '&', separated by '/'
  Needs needs = Needs::Nothing;
  void (*run)(Workbench&) = nullptr;
};

}  // namespace velmora
