#include "ui/main/icons.hpp"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

namespace velmora::ui {
namespace {

// Strokes on a field of 24 x 24.
const char* PathOf(Glyph glyph) {
  switch (glyph) {
    case Glyph::Open:
      return "M3 7v11a2 2 0 0 0 2 2h13l3-9H8l-3 7M3 7a2 2 0 0 1 2-2h4l2 2h6a2 2 0 0 1 2 2v2";
    case Glyph::Save:
      return "M5 3h11l5 5v11a2 2 0 0 1-2 2H5a2 2 0 0 1-2-2V5a2 2 0 0 1 2-2zM7 3v5h8V3M7 21v-7h10v7";
    case Glyph::Graph:
      return "M3 3v18h18M6 14l3-6 4 9 3-7 2 3h3";
    case Glyph::Filter:
      return "M3 5v14h18M3 9h7c4 0 4 8 8 8h3";
    case Glyph::Scale:
      return "M7 20V4M4 7l3-3 3 3M4 17l3 3 3-3M14 6h6M14 12h4M14 18h6";
    case Glyph::Units:
      return "M3 12l9-9h9v9l-9 9zM16.5 7.5v.01";
    case Glyph::Refresh:
      return "M20 11a8 8 0 0 0-14.5-4L3 9.500M3 4v5.500h5.500M4 13a8 8 0 0 0 14.500 4l2.500-2.500M21 "
             "20v-5.500h-5.500";
    case Glyph::Manual:
      return "M12 6c-2-2-5-2-9-2v14c4 0 7 0 9 2 2-2 5-2 9-2V4c-4 0-7 0-9 2zM12 6v14";
    case Glyph::Recipe:
      return "M6 3h9l4 4v14H6zM14 3v5h5M9 12h7M9 15h7M9 18h4";
    case Glyph::Undo:
      return "M9 4L4 9l5 5M4 9h10a5.500 5.500 0 0 1 0 11h-4";
    case Glyph::Redo:
      return "M15 4l5 5-5 5M20 9H10a5.500 5.500 0 0 0 0 11h4";
    case Glyph::Copy:
      return "M9 9h11v11H9zM5 15H4V4h11v1";
    case Glyph::File:
      return "M6 3h9l4 4v14H6zM14 3v5h5";
    case Glyph::Home:
      return "M3 11l9-8 9 8M5 9.500V21h5v-6h4v6h5V9.500";
    case Glyph::Exit:
      return "M10 4H5v16h5M15 8l4 4-4 4M19 12H9";
  }
  return "";
}

/// Draws when it is asked to, so in the colours that the program has then.
class GlyphEngine : public QIconEngine {
 public:
  explicit GlyphEngine(Glyph glyph) : glyph_(glyph) {}

  void paint(QPainter* painter, const QRect& area, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor colour = QApplication::palette().color(group, QPalette::WindowText);
    const QString svg =
        QStringLiteral(
            "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 24 24' fill='none' stroke='%1' "
            "stroke-width='1.7' stroke-linecap='round' stroke-linejoin='round'><path d='%2'/></svg>")
            .arg(colour.name(), QString::fromUtf8(PathOf(glyph_)));
    QSvgRenderer(svg.toUtf8()).render(painter, area);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }
  [[nodiscard]] QIconEngine* clone() const override { return new GlyphEngine(glyph_); }

 private:
  Glyph glyph_;
};

}  // namespace

QIcon IconOf(Glyph glyph) {
  return QIcon(new GlyphEngine(glyph));
}

}  // namespace velmora::ui
