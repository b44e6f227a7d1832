#include "ui/dialogs/filter_test_picture.hpp"

#include <QPainter>
#include <algorithm>

#include "ui/dialogs/line_chart.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// Of the form's tables.
constexpr std::size_t kResponse = 0;
constexpr std::size_t kStep = 1;
constexpr std::size_t kGainColumn = 1;
constexpr std::size_t kPhaseColumn = 3;
constexpr std::size_t kStepColumn = 1;

}  // namespace

FilterTestPicture::FilterTestPicture(const Form& form) : form_(form) {
  setMinimumSize(620, 200);
}

void FilterTestPicture::Show(int /*channel*/) {
  update();
}

FilterTestPicture::Curve FilterTestPicture::CurveOf(std::size_t table, std::size_t column) const {
  const ResultTable& results = form_.Tables()[table];
  Curve curve{.caption = ToQt(results.columns[column]),
              .units = table == kStep ? QStringLiteral("s") : QStringLiteral("Hz"),
              .logarithmic = table == kResponse};
  for (const std::vector<ResultTable::Cell>& row : results.rows) {
    const double x = std::get<double>(row[0]);
    if (x > 0 || !curve.logarithmic) {
      curve.points.emplace_back(x, std::get<double>(row[column]));
    }
  }
  return curve;
}

void FilterTestPicture::paintEvent(QPaintEvent* /*event*/) {
  if (form_.Tables().size() <= kStep) {
    return;  // there is no such filter
  }
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Curve curves[] = {CurveOf(kResponse, kGainColumn), CurveOf(kResponse, kPhaseColumn),
                          CurveOf(kStep, kStepColumn)};
  double left = 0;
  for (const Curve& curve : curves) {
    Paint(painter, {left, 0, width() / 3.0, static_cast<double>(height())}, curve);
    left += width() / 3.0;
  }
}

void FilterTestPicture::Paint(QPainter& painter, const QRectF& room, const Curve& curve) const {
  if (curve.points.size() < 2) {
    return;
  }
  const double line = fontMetrics().height();
  const auto [lowest, highest] =
      std::minmax_element(curve.points.begin(), curve.points.end(),
                          [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
  const double least = std::min(lowest->y(), 0.0);
  const double most = std::max(highest->y(), 0.0);
  const double margin = 0.05 * std::max(most - least, 1e-6);
  const LineChart chart{.area = room.adjusted(46, line + 12, -12, -line - 10),
                        .left = curve.points.front().x(),
                        .right = curve.points.back().x(),
                        .bottom = least < 0 ? least - margin : 0.0,
                        .top = most + margin,
                        .logarithmic = curve.logarithmic};
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(QRectF(chart.area.left(), 2, chart.area.width(), line), Qt::AlignLeft, curve.caption);
  chart.PaintGrid(painter, palette(), curve.units);
  QPolygonF polygon;
  for (const QPointF& point : curve.points) {
    polygon << chart.At(point.x(), point.y());
  }
  painter.setPen(QPen(palette().color(QPalette::Link), 1.8));
  painter.drawPolyline(polygon);
}

}  // namespace velmora::ui
