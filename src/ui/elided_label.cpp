#include "ui/elided_label.hpp"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextBoundaryFinder>
#include <QToolTip>

namespace velmora::ui {
namespace {

constexpr int kOrdinary = 72;  // letters
constexpr int kLeast = 6;

}  // namespace

ElidedLabel::ElidedLabel(Qt::TextElideMode where, QWidget* parent) : QLabel(parent), where_(where) {
  setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::sizeHint() const {
  const QSize whole = QLabel::sizeHint();
  return {std::min(whole.width(), kOrdinary * fontMetrics().averageCharWidth()), whole.height()};
}

QSize ElidedLabel::minimumSizeHint() const {
  const QSize whole = QLabel::minimumSizeHint();
  return {std::min(whole.width(), kLeast * fontMetrics().averageCharWidth()), whole.height()};
}

QString ElidedLabel::Shown() const {
  return fontMetrics().elidedText(text(), where_, contentsRect().width());
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                        Shown(), foregroundRole());
}

bool ElidedLabel::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && Shown() != text()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
    return true;
  }
  return QLabel::event(event);
}

QString ElideWords(const QString& text, const QFontMetrics& metrics, int width) {
  QString fits;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
  for (qsizetype from = 0; from < text.size();) {
    const qsizetype next = finder.toNextBoundary();
    const qsizetype to = next < 0 ? text.size() : next;
    const QString word = text.mid(from, to - from);
    fits +=
        metrics.horizontalAdvance(word) <= width ? word : metrics.elidedText(word, Qt::ElideMiddle, width);
    from = to;
  }
  return fits;
}

}  // namespace velmora::ui
