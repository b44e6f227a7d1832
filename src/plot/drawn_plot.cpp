#include "plot/drawn_plot.hpp"

#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace velmora {

DrawnPlot::DrawnPlot(QWidget* parent) : QCustomPlot(parent) {
  setAutoAddPlottableToLegend(false);
  setInteractions(QCP::iNone);
}

void DrawnPlot::Redraw() {
  Arrange();
  replot(QCustomPlot::rpQueuedReplot);
}

void DrawnPlot::RedrawCursors() {
  CursorLayer()->replot();
}

void DrawnPlot::resizeEvent(QResizeEvent* event) {
  QCustomPlot::resizeEvent(event);
  Redraw();
}

bool DrawnPlot::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) {
    return QCustomPlot::event(event);
  }
  const auto& help = *static_cast<QHelpEvent*>(event);
  const int heading = 2 * fontMetrics().height();
  if (titleTip_.isEmpty() || Heading().isEmpty() || help.pos().y() > heading) {
    QToolTip::hideText();
    return QCustomPlot::event(event);
  }
  QToolTip::showText(help.globalPos(), titleTip_, this, QRect(0, 0, width(), heading));
  return true;
}

void DrawnPlot::ShowPointer(Qt::CursorShape shape) {
  if (cursor().shape() != shape) {
    setCursor(shape);
  }
}

Colour DrawnPlot::Background() const {
  return paper_.value_or(Lead() == nullptr ? kBlack : Lead()->Background);
}

QString DrawnPlot::Heading() const {
  return Lead() != nullptr && Lead()->TitleVisible ? title_ : QString();
}

std::optional<PictureOrder> DrawnPlot::Picture() const {
  if (Lead() == nullptr) {
    return std::nullopt;
  }
  return PictureOrder{.graph = *Lead(),
                      .title = title_.toStdString(),
                      .width = std::max(width(), PictureOrder::kSmallest),
                      .height = std::max(height(), PictureOrder::kSmallest)};
}

}  // namespace velmora
