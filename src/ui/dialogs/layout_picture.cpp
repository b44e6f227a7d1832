#include "ui/dialogs/layout_picture.hpp"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <set>

#include "core/text/text.hpp"
#include "graph/colours.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// As the graph begins: on black.
constexpr QRgb kLaneGround = 0xFF000000;
constexpr QRgb kLaneFrame = 0xFF707070;

QColor LaneColour(double index) {
  const auto k = static_cast<std::size_t>(std::clamp(std::lround(index), 1L, static_cast<long>(kColours)));
  const Colour colour = ColourTable[k];
  return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

}  // namespace

LayoutPicture::LayoutPicture(const MultiChooseForm& form, const Trial& trial) : form_(form), trial_(trial) {
  setMinimumSize(220, 240);
}

void LayoutPicture::Show(int /*channel*/) {
  graphs_ = form_.Assigned();
  update();
}

void LayoutPicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), QColor(kLaneGround));
  std::set<int> shown(graphs_.begin() + 1, graphs_.end());
  shown.erase(0);
  if (shown.empty()) {
    painter.setPen(QColor(kLaneFrame));
    painter.drawText(rect(), Qt::AlignCenter, tr("No channel is selected"));
    return;
  }
  const int graphs = static_cast<int>(shown.size());
  const int fits = std::max((this->height() - 4) / (fontMetrics().height() + 6), 1);
  const int lanes = std::min(graphs, fits);
  const double height = 1.0 * (this->height() - 4) / lanes;
  int k = 0;
  for (const int graph : shown) {
    const QRectF lane(4, 4 + height * k, width() - 8, height - 4);
    if (++k == lanes && graphs > lanes) {
      painter.setPen(QColor(kLaneFrame));
      painter.drawText(lane, Qt::AlignCenter, tr("and %1 more").arg(graphs - lanes + 1));
      return;
    }
    PaintLane(painter, lane, graph);
  }
}

void LayoutPicture::PaintLane(QPainter& painter, const QRectF& lane, int graph) const {
  painter.setPen(QPen(QColor(kLaneFrame), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(lane);
  const QFontMetrics metrics(font());
  double x = lane.left() + 5;
  const auto write = [&](const QString& text, const QColor& colour) {
    painter.setPen(colour);
    const QRectF room(x, lane.top(), lane.right() - x - 2, lane.height());
    painter.drawText(room, Qt::AlignVCenter,
                     metrics.elidedText(text, Qt::ElideRight, static_cast<int>(room.width())));
    x += metrics.horizontalAdvance(text) + 9;
  };
  write(QString::number(graph), QColor(kLaneFrame));
  for (int c = 1; c <= trial_.NChan && x < lane.right(); ++c) {
    if (graphs_[c] == graph) {
      write(ToQt(Trim(trial_.ChanLabel[c].Text())), LaneColour(form_.Colours()[c]));
    }
  }
}

}  // namespace velmora::ui
