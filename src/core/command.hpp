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
  std::string_view menu;     // path of menus, each with '&', separated by '/'; empty: in none of them
  Needs needs = Needs::Nothing;
  void (*run)(Workbench&) = nullptr;
  /// Why the entry is greyed although all it needs is there, as its tooltip says; returns nullptr when it is
  /// not. May be missing. The command refuses by itself.
  const char* (*whyNot)(const Workbench&) = nullptr;
  /// Whether its entry has a check mark now; nullptr: it never has one.
  bool (*checked)(const Workbench&) = nullptr;
};

}  // namespace velmora
