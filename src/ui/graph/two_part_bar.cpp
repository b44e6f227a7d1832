#include "ui/graph/two_part_bar.hpp"

#include <QBoxLayout>
#include <QEvent>

namespace velmora::ui {

TwoPartBar::TwoPartBar()
    : parts_(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      first_(new QHBoxLayout),
      second_(new QHBoxLayout) {
  constexpr int kBetween = 4;
  parts_->setContentsMargins(6, 3, 10, 3);
  parts_->setSpacing(kBetween);
  parts_->setSizeConstraint(QLayout::SetNoConstraint);
  first_->setSpacing(kBetween);
  second_->setSpacing(kBetween);
  parts_->addLayout(first_);
  parts_->addLayout(second_, 1);
}

// The width of the narrow form and the height of the one that is shown.
QSize TwoPartBar::minimumSizeHint() const {
  const QMargins margins = parts_->contentsMargins();
  const int widest = std::max(first_->minimumSize().width(), second_->minimumSize().width());
  return {widest + margins.left() + margins.right(), parts_->minimumSize().height()};
}

void TwoPartBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}

bool TwoPartBar::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  if (event->type() == QEvent::LayoutRequest) {
    Arrange();
  }
  return handled;
}

void TwoPartBar::Arrange() {
  const QMargins margins = parts_->contentsMargins();
  const int both = first_->minimumSize().width() + parts_->spacing() + second_->minimumSize().width() +
                   margins.left() + margins.right();
  const QBoxLayout::Direction wanted = both <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
  if (parts_->direction() != wanted) {
    parts_->setDirection(wanted);
    updateGeometry();
  }
}

}  // namespace velmora::ui
