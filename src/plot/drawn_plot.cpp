#include "plot/drawn_plot.hpp"

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
