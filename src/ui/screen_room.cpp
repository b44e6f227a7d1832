#include "ui/screen_room.hpp"

#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace velmora::ui {

namespace {

QPoint Inside(const QRect& room, const QRect& place) {
  return {std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - place.width())),
          std::clamp(place.y(), room.top(), std::max(room.top(), room.bottom() - place.height()))};
}

constexpr QMargins kFrameRoom{4, 30, 4, 6};  // of the window manager, which tells only later

}  // namespace

QRect RoomOn(const QWidget& over) {
  return over.window()->screen()->availableGeometry().marginsRemoved(kFrameRoom);
}

void PlaceOver(QWidget& window, const QWidget& over) {
  const QRect room = RoomOn(over);
  window.ensurePolished();
  const QSize wanted = window.testAttribute(Qt::WA_Resized) ? window.size() : window.sizeHint();
  window.resize(wanted.boundedTo(room.size()));
  QRect place(QPoint(), window.size());
  place.moveCenter(over.window()->geometry().center());
  window.move(Inside(room, place) -
              QPoint(kFrameRoom.left(), kFrameRoom.top()));  // a move is one of the frame
}

void KeepOnScreen(QWidget& window) {
  const QPoint frame = window.geometry().topLeft() - window.frameGeometry().topLeft();
  window.move(Inside(RoomOn(window), window.geometry()) - frame);
}

void ComeForward(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace velmora::ui
