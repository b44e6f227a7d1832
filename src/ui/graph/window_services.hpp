#pragma once

#include "core/desktop_services.hpp"

class QWidget;

namespace velmora::ui {

/// Drawing, clipboard, programs and printer of the desktop that the window is on.
DesktopServices WindowServices(QWidget* window);

}  // namespace velmora::ui
