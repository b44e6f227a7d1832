#include "plot/stack_plot.hpp"

#include <algorithm>
#include <cmath>

#include "plot/axes/arrange_axis.hpp"
#include "plot/axes/number_ticker.hpp"
#include "plot/plot_colours.hpp"
#include "plot/result_marks.hpp"
#include "plot/stack_overlay.hpp"

namespace velmora {
namespace {

constexpr int kLeastHeight = 38;  // pixels of a lane on the screen
constexpr int kLaneGap = 4;       // between lanes
constexpr int kRight = 14;
constexpr int kTop = 6;
constexpr int kLaneNumerals = 110;
constexpr int kLaneRows = 28;

/// Round numbers whose numerals keep clear of the lanes above and below.
class LaneTicker : public NumberTicker {
 public:
  LaneTicker(int height, int textHeight) : NumberTicker(false), height_(height), textHeight_(textHeight) {}

  // NOLINTNEXTLINE(readability-function-size): the plot library's signature
  void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                QVector<double>& ticks, QVector<double>* subTicks, QVector<QString>* tickLabels) override {
    NumberTicker::generate(range, locale, formatChar, precision, ticks, subTicks, tickLabels);
    const double margin = height_ > 0 ? range.size() * textHeight_ / 2 / height_ : 0.0;
    for (int k = 0; tickLabels != nullptr && k < tickLabels->size(); ++k) {
      if (ticks[k] < range.lower + margin || ticks[k] > range.upper - margin) {
        (*tickLabels)[k].clear();
      }
    }
  }

 private:
  int height_;
  int textHeight_;
};

}  // namespace

// The plot library's layouts and layers delete what is made here.
StackPlot::StackPlot(QWidget* parent) : DrawnPlot(parent) {
  plotLayout()->clear();
  inset_ = new QCPLayoutInset;
  plotLayout()->addElement(0, 0, inset_);
  plotLayout()->setMargins({});
  inset_->setMargins({});
  overlay_ = new StackOverlay(this);
  Arrange();
}

std::vector<Lane> StackPlot::Stacked() const {
  if (alone_ > 0) {
    for (const Lane& lane : lanes_) {
      if (lane.number == alone_) {
        return {lane};
      }
    }
  }
  return lanes_;
}

std::optional<PictureOrder> StackPlot::Picture() const {
  std::optional<PictureOrder> order = DrawnPlot::Picture();
  if (order) {
    order->lanes = Stacked();
  }
  return order;
}

int StackPlot::LeftMargin() const {
  const QFontMetrics metrics(font());
  const bool numerals = std::any_of(lanes_.begin(), lanes_.end(),
                                    [](const Lane& lane) { return lane.graph->Ordinate.LabelsVisible; });
  const bool captions = std::any_of(lanes_.begin(), lanes_.end(),
                                    [](const Lane& lane) { return lane.graph->Ordinate.CaptionVisible; });
  return 12 + (numerals ? metrics.horizontalAdvance(QStringLiteral("-0.00000")) : 0) +
         (captions ? metrics.height() + 6 : 0);
}

/// What lanes may fill: the title above, the abscissa's numerals and caption below.
QRect StackPlot::Room() const {
  const QFontMetrics metrics(font());
  const QRect all = viewport();
  if (lanes_.empty()) {
    return all;
  }
  const Graph& first = *lanes_.front().graph;
  const int top = !Heading().isEmpty() ? metrics.height() + 14 : kTop;
  const int bottom = 6 + (first.Abscissa.LabelsVisible ? metrics.height() + 8 : 0) +
                     (first.Abscissa.CaptionVisible ? metrics.height() + 4 : 0);
  return all.adjusted(LeftMargin(), top, -kRight, -bottom);
}

int StackPlot::FittingLanes() const {
  const int lanes = Lanes();
  return whole_ ? lanes
                : std::clamp((Room().height() + kLaneGap) / (kLeastHeight + kLaneGap), 1, std::max(lanes, 1));
}

void StackPlot::SetCount(std::size_t count) {
  while (drawn_.size() > count) {
    removePlottable(drawn_.back().traces);
    delete drawn_.back().marks;
    inset_->take(drawn_.back().rect);
    delete drawn_.back().rect;
    drawn_.pop_back();
  }
  while (drawn_.size() < count) {
    Drawn drawn;
    drawn.rect = new QCPAxisRect(this, false);
    drawn.rect->setAutoMargins(QCP::msNone);
    drawn.rect->setMargins({});
    drawn.rect->setMinimumMargins({});
    drawn.rect->setMinimumSize(1, 1);
    QCPAxis* x = drawn.rect->addAxis(QCPAxis::atBottom);
    QCPAxis* y = drawn.rect->addAxis(QCPAxis::atLeft);
    for (QCPAxis* axis : {x, y}) {
      axis->setLayer("axes");
      axis->grid()->setLayer("grid");
    }
    inset_->addElement(drawn.rect, QRectF());
    inset_->setInsetPlacement(inset_->elementCount() - 1, QCPLayoutInset::ipFree);
    drawn.traces = new TracePlottable(x, y);
    drawn.marks = new ResultMarks(this, drawn.rect);
    drawn_.push_back(drawn);
  }
}

// In parts of the whole, which the layout turns back into these pixels.
void StackPlot::Place(std::size_t k, const QRect& place) {
  constexpr double kInside = 0.25;
  const QRectF all = viewport();
  inset_->setInsetRect(static_cast<int>(k), QRectF((place.left() - all.left() + kInside) / all.width(),
                                                   (place.top() - all.top() + kInside) / all.height(),
                                                   (place.width() + kInside) / all.width(),
                                                   (place.height() + kInside) / all.height()));
  drawn_[k].rect->setOuterRect(place);
}

void StackPlot::Arrange() {
  const std::vector<Lane> stacked = Stacked();
  const int fits = stacked.empty() ? 0 : FittingLanes();
  first_ = std::clamp(first_, 0, std::max(static_cast<int>(stacked.size()) - fits, 0));
  setBackground(QBrush(ToQColor(Background())));
  SetCount(static_cast<std::size_t>(fits));
  shown_.clear();
  const QRect room = Room();
  const int gap = room.height() > fits * 3 * kLaneGap ? kLaneGap : 0;
  for (int k = 0; k < fits; ++k) {
    const auto edge = [&](int n) {
      return room.top() + static_cast<int>(std::lround(1.0 * n * (room.height() + gap) / fits));
    };
    const QRect place(room.left(), edge(k), room.width(), std::max(edge(k + 1) - gap - edge(k), 1));
    const auto at = static_cast<std::size_t>(k);
    Place(at, place);
    const Lane& lane = stacked[static_cast<std::size_t>(first_) + at];
    shown_.push_back({lane, drawn_[at].rect});
    ArrangeLane(drawn_[at], lane, k + 1 == fits);
  }
  overlay_->Show(Background());
}

void StackPlot::ArrangeLane(const Drawn& drawn, const Lane& lane, bool lowest) {
  constexpr double kLowLane = 2.2;  // text heights; below it numerals have no room
  const QFontMetrics metrics(font());
  const Graph& graph = *lane.graph;
  const AxisLook look{.font = font(), .background = Background()};
  const int height = drawn.rect->outerRect().height();
  drawn.traces->Show(&graph, look.background);
  drawn.marks->Show(&graph, look.background);
  QCPAxis& x = *drawn.rect->axis(QCPAxis::atBottom);
  QCPAxis& y = *drawn.rect->axis(QCPAxis::atLeft);
  ArrangeAxis(x, graph.Abscissa, look, viewport().width() / kLaneNumerals);
  ArrangeAxis(y, graph.Ordinate, look, height / kLaneRows);
  if (!lowest) {
    x.setBasePen(QPen(GridColour(graph.Abscissa, look.background), 1));
    x.setTickLabels(false);
    x.setLabel({});
    x.setTicks(height > kLowLane * metrics.height() && graph.Abscissa.LabelsVisible);
    x.setSubTicks(false);
  }
  if (!graph.Ordinate.Log) {
    const auto ticker = QSharedPointer<LaneTicker>::create(height, metrics.height());
    ticker->setTickCount(std::clamp(height / kLaneRows, 2, 8));
    y.setTicker(ticker);
  }
  const bool low = height < kLowLane * metrics.height();
  if (low) {
    y.setTickLabels(false);
    y.setTicks(false);
    y.setSubTicks(false);
    y.grid()->setVisible(false);
  }
  if (metrics.horizontalAdvance(y.label()) + 2 * kLaneGap > height) {
    y.setLabel({});
  }
}

const StackPlot::Shown* StackPlot::LaneAt(const QPointF& place) const {
  for (const Shown& shown : shown_) {
    const QRect rect = shown.rect->rect();
    if (place.y() >= rect.top() - kLaneGap / 2.0 && place.y() <= rect.bottom() + kLaneGap / 2.0 &&
        place.x() <= rect.right() + kRight) {
      return &shown;
    }
  }
  return nullptr;
}

const StackPlot::Shown* StackPlot::LaneOf(int graph) const {
  const auto shown = std::find_if(shown_.begin(), shown_.end(),
                                  [graph](const Shown& entry) { return entry.lane.number == graph; });
  return shown == shown_.end() ? nullptr : &*shown;
}

bool StackPlot::IsLabel(const Shown& shown, const QPointF& place) const {
  return place.x() < shown.rect->left() || overlay_->LabelPlace(shown).contains(place);
}

}  // namespace velmora
