#pragma once

#include <QWidget>

#include "core/open_view.hpp"
#include "core/workbench.hpp"

namespace velmora::ui {

/// Does what a graph asks of the window that it is drawn in.
void Obey(WindowRequest request, QWidget& window, Workbench& workbench);

}  // namespace velmora::ui
