#include "ui/main/elided_label.hpp"

#include <QEvent>
#include <QHelpEvent>
#include <QToolTip>

namespace velmora::ui {

ElidedLabel::ElidedLabel(Qt::TextElideMode where, QWidget* parent) : QLabel(parent), where_(where) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLabel::ShowText(const QString& text) {
  full_ = text;
  Elide();
}

void ElidedLabel::Elide() {
  const QString shown = fontMetrics().elidedText(full_, where_, contentsRect().width());
  if (shown != text()) {
    setText(shown);
  }
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  Elide();
}

void ElidedLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    Elide();
  }
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && text() != full_) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), full_, this);
    return true;
  }
  return QLabel::event(event);
}

}  // namespace velmora::ui
