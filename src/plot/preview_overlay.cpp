#include "plot/preview_overlay.hpp"

#include <cmath>

#include "plot/plot_colours.hpp"

namespace velmora {

PreviewOverlay::PreviewOverlay(QCustomPlot* plot, QCPAxisRect* area)
    : QCPLayerable(plot, "overlay"), area_(area) {}

void PreviewOverlay::Show(const Graph* graph, Colour background) {
  graph_ = graph;
  background_ = background;
}

const GraphPreview* PreviewOverlay::Preview() const {
  return graph_ != nullptr && graph_->Preview ? &*graph_->Preview : nullptr;
}

double PreviewOverlay::Row(const GraphPreview::Level& level) const {
  return area_->axis(QCPAxis::atLeft)->coordToPixel(level.y);
}

QColor PreviewOverlay::LevelColour() const {
  return ToQColor(background_ == kWhite ? kBlue : kYellow);
}

void PreviewOverlay::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(false);
}

// One that is out of sight is taken by the edge it lies beyond.
int PreviewOverlay::LevelAt(const QPointF& place) const {
  constexpr double kReach = 6.0;
  const GraphPreview* preview = Preview();
  int hit = 0;
  double nearest = kReach;
  for (std::size_t k = 0; preview != nullptr && k < preview->Levels.size(); ++k) {
    const double row = std::clamp<double>(Row(preview->Levels[k]), area_->top(), area_->bottom());
    if (const double away = std::abs(place.y() - row); away <= nearest) {
      nearest = away;
      hit = static_cast<int>(k) + 1;
    }
  }
  return hit;
}

void PreviewOverlay::draw(QCPPainter* painter) {
  if (const GraphPreview* preview = Preview()) {
    DrawHits(*painter, *preview);
    for (const GraphPreview::Level& level : preview->Levels) {
      DrawLevel(*painter, level);
    }
  }
}

// A column of pixels is drawn once, however many fall into it.
void PreviewOverlay::DrawHits(QCPPainter& painter, const GraphPreview& preview) const {
  constexpr int kFaint = 120;
  constexpr int kFoot = 12;  // in full: a line along a steep trace is lost in it
  const QColor foot = LevelColour();
  QColor line = foot;
  line.setAlpha(kFaint);
  const QCPAxis& axis = *area_->axis(QCPAxis::atBottom);
  int last = area_->left() - 1;
  for (const double x : preview.Hits) {
    const double column = std::round(axis.coordToPixel(x));
    if (column > last && column <= area_->right() + 1) {
      last = static_cast<int>(column);
      painter.setPen(QPen(line, 1));
      painter.drawLine(QLineF(last, area_->top(), last, area_->bottom()));
      painter.setPen(QPen(foot, 3));
      painter.drawLine(QLineF(last, area_->bottom() - kFoot, last, area_->bottom()));
    }
  }
}

void PreviewOverlay::DrawLevel(QCPPainter& painter, const GraphPreview::Level& level) const {
  constexpr int kMargin = 6;
  const double row = std::clamp<double>(std::round(Row(level)), area_->top(), area_->bottom());
  painter.setPen(QPen(LevelColour(), 2, Qt::DashLine));
  painter.drawLine(QLineF(area_->left(), row, area_->right(), row));
  const QString text = QString::fromStdString(level.text);
  const QFontMetrics metrics(mParentPlot->font());
  QRectF room(area_->left() + kMargin, row - metrics.height() - 2,
              metrics.horizontalAdvance(text) + 2 * kMargin, metrics.height());
  if (room.top() < area_->top()) {
    room.moveTop(row + 3);
  }
  QColor ground = ToQColor(background_);
  ground.setAlpha(200);
  painter.fillRect(room, ground);
  painter.setFont(mParentPlot->font());
  painter.drawText(room, Qt::AlignCenter, text);
}

}  // namespace velmora
