#include "ui/dialogs/beside_graph.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <algorithm>

#include "ui/screen_room.hpp"

namespace velmora::ui {
namespace {

bool IsMouse(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
      return true;
    default:
      return false;
  }
}

// What somebody does, as against what the program needs to draw itself.
bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
      return true;
    default:
      return IsMouse(type);
  }
}

}  // namespace

BesideGraph::BesideGraph(QDialog* dialog) : QObject(dialog), dialog_(dialog) {
  qApp->installEventFilter(this);
}

bool BesideGraph::MayHave(const QObject* watched, const QEvent& event) const {
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr) {
    return true;  // asked over the dialogue, or one of its lists
  }
  for (const QObject* above = watched; above != nullptr; above = above->parent()) {
    if (above == dialog_) {
      return true;
    }
  }
  return IsMouse(event.type()) && watched->inherits("velmora::GraphWidget");
}

bool BesideGraph::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (!dialog_->isVisible() || !IsInput(type) || watched->isWindowType()) {
    return false;
  }
  const bool allowed = MayHave(watched, *event);
  if (type == QEvent::MouseButtonRelease && !dialog_->isAncestorOf(qobject_cast<QWidget*>(watched))) {
    TakeKeysBack();
  }
  if (allowed) {
    return false;
  }
  if (type == QEvent::MouseButtonPress) {
    TakeKeysBack();
    QApplication::beep();
  }
  event->setAccepted(type != QEvent::Close);
  return true;
}

// A click on another window made that the active one.
void BesideGraph::TakeKeysBack() {
  if (QApplication::activeModalWidget() == nullptr && QApplication::activePopupWidget() == nullptr) {
    dialog_->raise();
    dialog_->activateWindow();
  }
}

void PlaceBeside(QWidget& dialog, QWidget& graph) {
  const QRect room = RoomOn(graph);
  dialog.ensurePolished();
  dialog.resize(dialog.sizeHint().boundedTo(room.size()));
  constexpr int kGap = 8;  // frames
  QRect window = graph.geometry();
  const int free = room.right() - window.right() - kGap;
  if (free < dialog.width() && !graph.isMaximized() && !graph.isFullScreen()) {
    window.moveLeft(std::max(room.left(), window.left() - (dialog.width() - free)));
    graph.move(window.topLeft());
  }
  const int left = std::min(window.right() + kGap, room.right() - dialog.width());
  const int top = std::clamp(window.top(), room.top(), std::max(room.top(), room.bottom() - dialog.height()));
  dialog.move(left, top);
}

}  // namespace velmora::ui
