#pragma once

#include <QRect>

class QWidget;

namespace velmora::ui {

/// What a window with a frame may take of the screen that `over` is on.
QRect RoomOn(const QWidget& over);

/// Before a window is shown: on the screen of `over` and over its middle, no larger than the screen.
/// Under a window manager a window without a place of its own comes up in a corner while its parent is
/// not yet placed, and on whichever screen the pointer is.
void PlaceOver(QWidget& window, const QWidget& over);

/// Moves a window that has grown back onto its screen.
void KeepOnScreen(QWidget& window);

/// Shows a window that may be minimised or behind others, and gives it the keys.
void ComeForward(QWidget& window);

}  // namespace velmora::ui
