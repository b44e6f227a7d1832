#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <cstdlib>

namespace velmora::bench {

/// Ends the program, without tidying up, when a window and everything in it has been painted once: all of
/// a window is painted in one go, and what is posted during it comes after it.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(QWidget& window) { window.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      QTimer::singleShot(0, qApp, [] { std::_Exit(0); });
    }
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace velmora::bench
