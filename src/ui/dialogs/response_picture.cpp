#include "ui/dialogs/response_picture.hpp"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"
#include "ui/trial/channel_drawing.hpp"

namespace velmora::ui {
namespace {

constexpr double kDecadesBelow = 1.5;
constexpr double kHighestGain = 1.05;
constexpr double kHalfPower = 0.70710678118654752;

double GainAt(const RunningFilter& filter, double frequency) {
  const double once = std::abs(ResponseAt(filter.sections, frequency, filter.rate));
  return filter.zeroLag ? once * once : once;
}

QString TextAtEdge(double edge, double gain) {
  const QString frequency = ToQt(PlainNumber(edge));
  constexpr double kNear = 0.002;
  return std::abs(gain - kHalfPower) < kNear
             ? QObject::tr("half of the power at %1 Hz").arg(frequency)
             : QObject::tr("gain %1 at %2 Hz").arg(ToQt(FormatNumber(gain, "0.00")), frequency);
}

}  // namespace

ResponsePicture::ResponsePicture(const Form& form, const Workbench& workbench)
    : form_(form), workbench_(workbench) {
  setMinimumSize(380, 240);
}

void ResponsePicture::Show(int channel) {
  channel_ = std::max(1, channel);
  update();
}

QString ResponsePicture::Caption(const ShownFilter& shown) const {
  const QString label = ToQt(Trim(workbench_.trial.ChanLabel[channel_].Text()));
  const QString channel =
      tr("Channel %1, %2")
          .arg(ToQt(ChannelNumber(channel_)), fontMetrics().elidedText(label, Qt::ElideMiddle, width() / 3));
  if (shown.edges.empty()) {
    return tr("%1: not filtered").arg(channel);
  }
  if (!shown.Runs()) {
    return tr("%1: refused, %2").arg(channel, ToQt(shown.refusal).simplified());
  }
  QStringList edges;
  for (const double edge : shown.edges) {
    edges << TextAtEdge(edge, GainAt(shown.filter, edge));
  }
  return tr("%1: %2").arg(channel, edges.join(QStringLiteral(", ")));
}

void ResponsePicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double rate = workbench_.trial.Rate;
  const ShownFilter shown = FilterOf(form_, channel_, rate);
  const int line = fontMetrics().height();
  painter.setPen(shown.refusal.empty() ? palette().color(QPalette::WindowText) : WarningColour(palette()));
  // Read whole, in as many lines as it takes.
  QRectF caption;
  painter.drawText(QRectF(0, 4, width(), height()), Qt::AlignLeft | Qt::TextWordWrap, Caption(shown),
                   &caption);
  const double high = rate / 2;
  if (!(high > 0)) {
    return;
  }
  const double about = shown.Runs() ? *std::min_element(shown.edges.begin(), shown.edges.end()) : high / 10;
  const LineChart chart{.area = QRectF(rect()).adjusted(38, caption.bottom() + 10, -8, -line - 12),
                        .left = std::min(about / std::pow(10.0, kDecadesBelow), high / 100),
                        .right = high,
                        .top = kHighestGain,
                        .logarithmic = true};
  chart.PaintGrid(painter, palette(), QStringLiteral("Hz"));
  PaintCurve(painter, chart, shown);
}

void ResponsePicture::PaintCurve(QPainter& painter, const LineChart& chart, const ShownFilter& shown) const {
  QPolygonF curve;
  const int columns = static_cast<int>(chart.area.width());
  for (int column = 0; column <= columns; ++column) {
    const double frequency = chart.AbscissaAt(column);
    curve << chart.At(frequency, shown.Runs() ? GainAt(shown.filter, frequency) : 1.0);
  }
  painter.setClipRect(chart.area);
  if (!shown.Runs()) {
    painter.setPen(QPen(QuietColour(palette()), 1.4, Qt::DotLine));
    painter.drawPolyline(curve);
    return;
  }
  const QColor colour = ChannelColour(workbench_.trial.ChanColour[channel_], palette());
  painter.setPen(QPen(colour, 2.0));
  painter.drawPolyline(curve);
  for (const double edge : shown.edges) {
    const QPointF corner = chart.At(edge, GainAt(shown.filter, edge));
    painter.setPen(QPen(QuietColour(palette()), 1.0, Qt::DashLine));
    painter.drawLine(QPointF(corner.x(), chart.area.bottom()), corner);
    painter.drawLine(QPointF(chart.area.left(), corner.y()), corner);
    painter.setPen(QPen(colour, 2.0));
    painter.setBrush(colour);
    painter.drawEllipse(corner, 3.5, 3.5);
  }
}

}  // namespace velmora::ui
