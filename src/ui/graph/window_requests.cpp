#include "ui/graph/window_requests.hpp"

#include <QApplication>
#include <QScreen>

#include "core/trial/helpers.hpp"
#include "ui/desktop.hpp"

namespace velmora::ui {

void Obey(WindowRequest request, QWidget& window, Workbench& workbench) {
  const QRect room = window.screen()->availableGeometry();
  switch (request) {
    case WindowRequest::Beep:
      QApplication::beep();
      return;
    case WindowRequest::Maximise:
      window.showMaximized();
      return;
    case WindowRequest::Normal:
      window.showNormal();
      return;
    case WindowRequest::FullWidth:
      window.showNormal();
      window.setGeometry(room.left(), window.y(), room.width(), window.height());
      return;
    case WindowRequest::FullHeight:
      window.showNormal();
      window.setGeometry(window.x(), room.top(), window.width(), room.height());
      return;
    case WindowRequest::Calculator:
      if (!StartCalculator()) {
        ShowRefusal(workbench, {.title = "Calculator",
                                .text = "No calculator program was found on this computer.",
                                .icon = Icon::Information});
      }
      return;
  }
}

}  // namespace velmora::ui
