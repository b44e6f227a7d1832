#pragma once

#include <QIcon>

namespace velmora::ui {

enum class Glyph {
  Open,
  Save,
  Graph,
  Filter,
  Scale,
  Units,
  Refresh,
  Manual,
  Recipe,
  Undo,
  Redo,
  Copy,
  File,
  Home,
  Exit
};

/// Drawn in the text colour that the program has at the time: the icons of a desktop's theme need not be
/// visible on a ground that is dark by our choice, and differ in style among themselves.
QIcon IconOf(Glyph glyph);

}  // namespace velmora::ui
