#pragma once

#include <QObject>
#include <QPainter>
#include <QPicture>
#include <QTextObjectInterface>

#include "plot/draw_picture.hpp"

namespace velmora {

/// A graph in a text, as wide as the page. An image in its place would be a bitmap, and a drawing read back
/// from SVG has outlines around its letters.
class PictureObject : public QObject, public QTextObjectInterface {
  Q_OBJECT
  Q_INTERFACES(QTextObjectInterface)

 public:
  static constexpr int kType = QTextFormat::UserObject + 1;

  PictureObject(const PictureOrder& order, qreal width)
      : size_(order.width, order.height), scale_(width / order.width) {
    PaintPicture(order, drawing_);
  }

  QSizeF intrinsicSize(QTextDocument* /*document*/, int /*at*/, const QTextFormat& /*format*/) override {
    return size_ * scale_;
  }
  void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* /*document*/, int /*at*/,
                  const QTextFormat& /*format*/) override {
    painter->save();
    painter->translate(rect.topLeft());
    painter->scale(scale_, scale_);
    painter->drawPicture(0, 0, drawing_);
    painter->restore();
  }

 private:
  QSizeF size_;
  qreal scale_;
  QPicture drawing_;
};

}  // namespace velmora
