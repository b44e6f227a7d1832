#pragma once

#include "core/workbench.hpp"

namespace velmora {

/// The width of a window as a dialogue asks for it, in samples or in seconds; it is remembered between
/// dialogues.
struct WindowWidthEntry {
  explicit WindowWidthEntry(const Workbench& workbench);

  /// The unit was changed: the width offered is shown in the other one; a width that was typed is meant in
  /// the unit chosen. Returns whether the width is another number now, which a form notes as filled.
  bool UnitEdited(const Workbench& workbench);
  /// Keeps a width of 1 to NData-1 samples; refuses any other and returns false.
  bool Accept(Workbench& workbench) const;

  double width = 0.0;
  bool inSeconds = false;
  bool typed = false;
};

}  // namespace velmora
