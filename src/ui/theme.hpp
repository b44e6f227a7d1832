#pragma once

#include <QColor>
#include <QPalette>

class QApplication;

namespace velmora::ui {

enum class ThemeChoice { Desktop, Light, Dark };

/// Gives the program its looks: light or dark, as the desktop has it or as chosen. Follows the desktop
/// while it runs.
void ApplyTheme(QApplication& app, ThemeChoice choice);

/// For what is there and need not be read.
QColor QuietColour(const QPalette& palette);
/// For a reason why something is refused, and for marks that ask for attention.
QColor WarningColour(const QPalette& palette);

}  // namespace velmora::ui
