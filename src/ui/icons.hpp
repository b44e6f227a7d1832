#pragma once

#include <QIcon>
#include <QPalette>

namespace velmora::ui {

enum class Glyph { Open, Save, Graph, Filter, Scale, Units, Refresh, Manual, Recipe, Back, File, Exit };

/// Drawn in the palette's text colour: the icons of a desktop's theme need not be visible on a ground
/// that is dark by our choice, and differ in style among themselves.
QIcon IconOf(Glyph glyph, const QPalette& palette);

}  // namespace velmora::ui
