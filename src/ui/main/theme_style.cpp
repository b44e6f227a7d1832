#include "ui/main/theme_style.hpp"

#include <QAbstractButton>
#include <QPainter>
#include <QStyleOption>

#include "ui/main/theme.hpp"

namespace velmora::ui {
namespace {

struct BoxTones {
  QColor line;
  QColor ground;
  bool on;
};

BoxTones BoxTonesOf(const QStyleOption& option) {
  const QPalette& palette = option.palette;
  const bool enabled = (option.state & QStyle::State_Enabled) != 0;
  const bool on = (option.state & QStyle::State_On) != 0;
  const QColor accent = enabled ? palette.color(QPalette::Link) : palette.color(QPalette::Mid);
  const bool marked = on || (option.state & QStyle::State_HasFocus) != 0;
  return {.line = marked ? accent : QuietColour(palette),
          .ground = on ? accent : palette.color(QPalette::Base),
          .on = on};
}

void DrawCheckBox(const QStyleOption& option, QPainter& painter) {
  const BoxTones tones = BoxTonesOf(option);
  const QRectF box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(QPen(tones.line, 1.2));
  painter.setBrush(tones.ground);
  painter.drawRoundedRect(box, 3, 3);
  if (tones.on) {
    const double unit = box.width() / 13;
    const QPointF corner = box.topLeft();
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({corner + QPointF(3.0, 6.7) * unit, corner + QPointF(5.5, 9.3) * unit,
                                    corner + QPointF(10.0, 3.9) * unit}));
  }
}

void DrawRadioButton(const QStyleOption& option, QPainter& painter) {
  const BoxTones tones = BoxTonesOf(option);
  const QRectF disc = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(QPen(tones.line, 1.2));
  painter.setBrush(tones.ground);
  painter.drawEllipse(disc);
  if (tones.on) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(disc.center(), disc.width() * 0.2, disc.width() * 0.2);
  }
}

}  // namespace

int ThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returned) const {
  const auto* button = hint == SH_UnderlineShortcut ? qobject_cast<const QAbstractButton*>(widget) : nullptr;
  if (button != nullptr && button->shortcut().isEmpty()) {
    return 0;
  }
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck;
  if (!box && element != PE_IndicatorRadioButton) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  box ? DrawCheckBox(*option, *painter) : DrawRadioButton(*option, *painter);
  painter->restore();
}

}  // namespace velmora::ui
