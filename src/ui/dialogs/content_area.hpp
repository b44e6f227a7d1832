#pragma once

#include <QScrollArea>
#include <QScrollBar>

#include "ui/screen_room.hpp"

namespace velmora::ui {

/// Opens as large as what is in it, and scrolls on a screen that has less room.
class ContentArea : public QScrollArea {
 public:
  explicit ContentArea(QWidget* content) {
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
  }
  [[nodiscard]] QSize sizeHint() const override {
    constexpr int kBesides = 110;  // the buttons below, and the margins
    const QSize whole = widget()->sizeHint();
    const bool scrolls = whole.height() > RoomOn(*this).height() - kBesides;
    return whole + QSize(scrolls ? verticalScrollBar()->sizeHint().width() : 0, 0);
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return {240, 120}; }
};

}  // namespace velmora::ui
