#pragma once

#include <QColor>
#include <QPalette>

class QApplication;
class QLabel;

namespace velmora::ui {

enum class ThemeChoice { Desktop, Light, Dark };

/// Sets the style of what is drawn: before there is a window, which takes longer to give one.
void PrepareTheme(QApplication& app);

/// Gives the program its looks: light or dark, as chosen or as the desktop has it, which is followed while
/// the program runs. May be called again; the open windows change at once.
/// The first time is best after the window was made and before it is shown: widgets that are put together
/// under a style sheet are styled at every step.
void ApplyTheme(QApplication& app, ThemeChoice choice);

enum class Tone { Plain, Quiet, Warning, Mark, WarningMark };

/// The colours of a label: of text beside the point, of a refusal, of a mark with its own ground.
void SetTone(QLabel* label, Tone tone);

/// For what is there and need not be read.
QColor QuietColour(const QPalette& palette);
/// For a reason why something is refused, and for marks that ask for attention.
QColor WarningColour(const QPalette& palette);

}  // namespace velmora::ui
