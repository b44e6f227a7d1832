#pragma once

#include <QLabel>

namespace velmora::ui {

/// A line of text that gives way: what does not fit is left out, of its middle unless told otherwise, and
/// stands in its tip. It asks for no more room than a name of ordinary length.
class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(Qt::TextElideMode where = Qt::ElideMiddle, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  [[nodiscard]] QString Shown() const;

  Qt::TextElideMode where_;
};

/// The text with words that would not fit into `width` pixels cut in their middle.
QString ElideWords(const QString& text, const QFontMetrics& metrics, int width);

}  // namespace velmora::ui
