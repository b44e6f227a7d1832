#pragma once

#include <QProxyStyle>

namespace velmora::ui {

/// Fusion, with boxes and round buttons that can be seen on dark ground as well.
class ThemeStyle : public QProxyStyle {
 public:
  ThemeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  /// The letter of a button is underlined while the button answers to it.
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

}  // namespace velmora::ui
