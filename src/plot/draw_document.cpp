#include "plot/draw_document.hpp"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QDateTime>
#include <QHashFunctions>
#include <QPainter>
#include <QPdfWriter>
#include <QTextCursor>
#include <QTextDocument>
#include <optional>
#include <stdexcept>

#include "plot/draw_picture.hpp"
#include "plot/picture_object.hpp"

namespace velmora {
namespace {

constexpr QMargins kPageMargins{18, 16, 18, 18};  // mm
constexpr int kFootHeight = 26;                   // dots, of the line at the foot of a page

/// While it lives, what Qt keeps in hash tables (the fonts of a document) has the same order in every run.
struct SameOrder {
  SameOrder() { QHashSeed::setDeterministicGlobalSeed(); }
  SameOrder(const SameOrder&) = delete;
  SameOrder& operator=(const SameOrder&) = delete;
  ~SameOrder() { QHashSeed::resetRandomGlobalSeed(); }
};

void PlacePicture(QTextDocument& document, PictureObject& picture) {
  document.documentLayout()->registerHandler(PictureObject::kType, &picture);
  QTextCursor at = document.find(QString(QChar::ObjectReplacementCharacter));
  if (!at.isNull()) {
    QTextCharFormat format;
    format.setObjectType(PictureObject::kType);
    at.insertText(QString(QChar::ObjectReplacementCharacter), format);
  }
}

void PaintPage(QPainter& painter, QTextDocument& document, int page, const QString& title) {
  const QSizeF size = document.pageSize();
  painter.save();
  painter.translate(0, -page * size.height());
  const QRectF seen(0, page * size.height(), size.width(), size.height());
  painter.setClipRect(seen);
  QAbstractTextDocumentLayout::PaintContext context;
  context.clip = seen;
  context.palette.setColor(QPalette::Text, Qt::black);  // whatever the theme of the window
  document.documentLayout()->draw(&painter, context);
  painter.restore();
  QFont small = document.defaultFont();
  small.setPointSizeF(8);
  painter.setFont(small);
  painter.setPen(QColor(0x5D6874));
  const QRectF foot(0, size.height(), size.width(), kFootHeight);
  const QString count = QStringLiteral("%1 / %2").arg(page + 1).arg(document.pageCount());
  painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom, count);
  const qreal room = size.width() - 2 * painter.fontMetrics().horizontalAdvance(count);
  painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom,
                   painter.fontMetrics().elidedText(title, Qt::ElideRight, static_cast<int>(room)));
}

// Qt writes the time of the day; all other bytes follow from what is painted.
void SetTime(QByteArray& pdf, std::int64_t time) {
  const QByteArray key = "/CreationDate (D:";
  const qsizetype at = pdf.indexOf(key);
  const qsizetype end = at < 0 ? -1 : pdf.indexOf(')', at);
  if (end < 0) {
    return;
  }
  const qsizetype from = at + key.size();
  const QDateTime made = QDateTime::fromSecsSinceEpoch(time, Qt::UTC);
  const QByteArray text = made.toString(QStringLiteral("yyyyMMddHHmmss")).toLatin1();
  const QByteArray zone = end - from > text.size() + 1 ? "+00'00'" : "Z";
  pdf.replace(from, end - from,
              (text + zone).leftJustified(end - from, ' ', true));  // offsets in the file stay
}

}  // namespace

std::string DrawDocument(const DocumentOrder& order) {
  const SameOrder sameOrder;
  QByteArray pdf;
  {
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(kDotsAnInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(kPageMargins, QPageLayout::Millimeter);
    writer.setTitle(QString::fromStdString(order.title));
    writer.setCreator(QStringLiteral("Velmora2"));
    const QSizeF paper = writer.pageLayout().paintRectPixels(kDotsAnInch).size();
    QTextDocument document;
    document.documentLayout()->setPaintDevice(&writer);
    document.setDocumentMargin(0);
    document.setPageSize({paper.width(), paper.height() - kFootHeight});
    document.setHtml(QString::fromStdString(order.html));
    std::optional<PictureObject> picture;
    if (order.picture != nullptr) {
      PlacePicture(document, picture.emplace(*order.picture, paper.width()));
    }
    QPainter painter;
    if (!painter.begin(&writer)) {
      throw std::runtime_error("the document cannot be painted");
    }
    for (int page = 0; page < document.pageCount(); ++page) {
      if (page > 0) {
        writer.newPage();
      }
      PaintPage(painter, document, page, QString::fromStdString(order.title));
    }
  }
  SetTime(pdf, order.time);
  return pdf.toStdString();
}

}  // namespace velmora
