#pragma once

class QWidget;

namespace velmora::ui {

/// Shows the about panel until it is closed.
void ShowAbout(QWidget* parent);

}  // namespace velmora::ui
