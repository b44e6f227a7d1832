#include "ui/response_picture.hpp"

#include <QPainter>
#include <cmath>

#include "core/numbers.hpp"
#include "core/text.hpp"
#include "dsp/biquads.hpp"
#include "ui/channel_drawing.hpp"
#include "ui/text.hpp"
#include "ui/theme.hpp"

namespace velmora::ui {
namespace {

constexpr double kDecadesBelow = 1.5;
constexpr double kHighestGain = 1.05;
constexpr double kHalfPower = 0.70710678118654752;

Biquad BiquadOf(PassType type, const FilterSection& section) {
  const double a0 = section.a0;
  return {.b0 = a0,
          .b1 = type == PassType::Low ? 2 * a0 : -2 * a0,
          .b2 = a0,
          .a1 = -double{section.b1},
          .a2 = -double{section.b2}};
}

}  // namespace

ResponsePicture::ResponsePicture(const Form& form, const Workbench& workbench)
    : form_(form), workbench_(workbench) {
  setMinimumSize(460, 220);
}

void ResponsePicture::Show(int channel) {
  channel_ = std::max(1, channel);
  update();
}

ResponsePicture::Response ResponsePicture::Current() const {
  const bool zeroLag = ValueOf<ChannelFlags>(form_, "ZeroLag")[channel_];
  const auto passes = static_cast<std::int16_t>(ValueOf<ChannelNumbers>(form_, "Passes")[channel_]);
  const FilterDesign designs[] = {FilterDesign::Butterworth, FilterDesign::CriticallyDamped,
                                  FilterDesign::Bessel};
  const int design = std::clamp(ValueOf<std::int32_t>(form_, "optFilter"), 0, 2);
  Response response;
  response.type = ValueOf<std::int32_t>(form_, "optPassType") == 0 ? PassType::Low : PassType::High;
  response.cutoff = ValueOf<ChannelNumbers>(form_, "FilterCutoffs")[channel_];
  response.runs = zeroLag ? 2 * passes : passes;
  response.designed = DesignSection(response.type, designs[design], static_cast<float>(response.cutoff),
                                    workbench_.trial.Rate, passes, zeroLag);
  return response;
}

QString ResponsePicture::Caption(const Response& response) const {
  const QString channel =
      tr("Channel %1, %2")
          .arg(ToQt(ChannelNumber(channel_)), ToQt(Trim(workbench_.trial.ChanLabel[channel_].Text())));
  if (response.cutoff <= 0) {
    return tr("%1: not filtered").arg(channel);
  }
  if (!response.designed.verdict.Accepted()) {
    const double limit = response.designed.verdict.limit;
    return limit > 0 ? tr("%1: refused, the limit is %2").arg(channel, ToQt(FormatNumber(limit, "0.00")))
                     : tr("%1: refused").arg(channel);
  }
  return tr("%1: half of the power at %2 Hz").arg(channel, ToQt(PlainNumber(response.cutoff)));
}

void ResponsePicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Response response = Current();
  const bool runs = response.cutoff > 0 && response.designed.verdict.Accepted();
  const int line = fontMetrics().height();
  painter.setPen(runs || response.cutoff <= 0 ? palette().color(QPalette::WindowText)
                                              : WarningColour(palette()));
  painter.drawText(QRectF(0, 4, width(), line), Qt::AlignLeft, Caption(response));
  const double high = workbench_.trial.Rate / 2;
  if (!(high > 0)) {
    return;
  }
  const double about = runs ? response.cutoff : high / 10;
  const LineChart chart{.area = QRectF(rect()).adjusted(38, line + 14, -8, -line - 12),
                        .left = std::min(about / std::pow(10.0, kDecadesBelow), high / 100),
                        .right = high,
                        .top = kHighestGain,
                        .logarithmic = true};
  chart.PaintGrid(painter, palette(), QStringLiteral("Hz"));
  PaintCurve(painter, chart, response);
}

void ResponsePicture::PaintCurve(QPainter& painter, const LineChart& chart, const Response& response) const {
  const bool runs = response.cutoff > 0 && response.designed.verdict.Accepted();
  const Biquads sections = {BiquadOf(response.type, response.designed.section)};
  const auto gain = [&](double frequency) {
    return runs ? std::pow(std::abs(ResponseAt(sections, frequency, workbench_.trial.Rate)), response.runs)
                : 1.0;
  };
  QPolygonF curve;
  const int columns = static_cast<int>(chart.area.width());
  for (int column = 0; column <= columns; ++column) {
    const double frequency = chart.AbscissaAt(column);
    curve << chart.At(frequency, gain(frequency));
  }
  const QColor colour = ChannelColour(workbench_.trial.ChanColour[channel_], palette());
  painter.setClipRect(chart.area);
  if (runs) {
    const QPointF corner = chart.At(response.cutoff, kHalfPower);
    painter.setPen(QPen(QuietColour(palette()), 1.0, Qt::DashLine));
    painter.drawLine(QPointF(corner.x(), chart.area.bottom()), corner);
    painter.drawLine(QPointF(chart.area.left(), corner.y()), corner);
    painter.setPen(QPen(colour, 2.0));
    painter.drawPolyline(curve);
    painter.setBrush(colour);
    painter.drawEllipse(corner, 3.5, 3.5);
  } else {
    painter.setPen(QPen(QuietColour(palette()), 1.4, Qt::DotLine));
    painter.drawPolyline(curve);
  }
}

}  // namespace velmora::ui
