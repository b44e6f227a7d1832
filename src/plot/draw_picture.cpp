#include "plot/draw_picture.hpp"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <new>
#include <stdexcept>

#include "plot/graph_plot.hpp"
#include "plot/stack_plot.hpp"

namespace velmora {
namespace {

void PaintPlot(QCustomPlot& plot, QPaintDevice& device, const QSize& size, bool shapes) {
  QCPPainter painter;
  if (!painter.begin(&device)) {
    throw std::runtime_error("the picture cannot be painted");
  }
  painter.setMode(QCPPainter::pmVectorized, shapes);
  plot.toPainter(&painter, size.width(), size.height());
  painter.end();
}

void Prepare(DrawnPlot& plot, const PictureOrder& order, const QSize& size) {
  plot.SetTitle(QString::fromStdString(order.title));
  plot.SetPaper(order.paper);
  plot.setViewport(QRect(QPoint(0, 0), size));
  plot.Arrange();
}

void PaintOn(QPaintDevice& device, const PictureOrder& order, const QSize& size, bool shapes) {
  if (order.lanes.empty()) {
    GraphPlot plot;
    plot.SetGraph(&order.graph);
    Prepare(plot, order, size);
    PaintPlot(plot, device, size, shapes);
    return;
  }
  StackPlot plot;
  plot.SetLanes(order.lanes);
  plot.SetWhole(true);
  Prepare(plot, order, size);
  PaintPlot(plot, device, size, shapes);
}

void PaintPng(QBuffer& buffer, const PictureOrder& order, const QSize& size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) {
    throw std::bad_alloc();
  }
  PaintOn(image, order, size, false);
  const double dotsAMetre = kDotsAnInch / 0.0254;
  image.setDotsPerMeterX(static_cast<int>(dotsAMetre));
  image.setDotsPerMeterY(static_cast<int>(dotsAMetre));
  if (!image.save(&buffer, "PNG")) {
    throw std::runtime_error("the picture cannot be written as PNG");
  }
}

void PaintSvg(QBuffer& buffer, const PictureOrder& order, const QSize& size) {
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setResolution(kDotsAnInch);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setTitle(QString::fromStdString(order.title));
  generator.setDescription({});
  PaintOn(generator, order, size, true);
}

void PaintPdf(QBuffer& buffer, const PictureOrder& order, const QSize& size) {
  QPdfWriter writer(&buffer);
  writer.setResolution(kDotsAnInch);
  writer.setPageSize(QPageSize(QSizeF(size) / kDotsAnInch, QPageSize::Inch, {}, QPageSize::ExactMatch));
  writer.setPageMargins({});
  writer.setTitle(QString::fromStdString(order.title));
  writer.setCreator("Velmora2");
  PaintOn(writer, order, size, true);
}

}  // namespace

std::string DrawPicture(const PictureOrder& order) {
  const QSize size(order.width, order.height);
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  switch (order.format) {
    case PictureFormat::Png:
      PaintPng(buffer, order, size);
      break;
    case PictureFormat::Svg:
      PaintSvg(buffer, order, size);
      break;
    case PictureFormat::Pdf:
      PaintPdf(buffer, order, size);
      break;
  }
  return buffer.data().toStdString();
}

void PaintPicture(const PictureOrder& order, QPaintDevice& device) {
  PaintOn(device, order, {order.width, order.height}, true);
}

void PrintPicture(const PictureOrder& order, QPrinter& printer) {
  printer.setResolution(kDotsAnInch);  // text and lines as large as on the screen
  const QSizeF inches = printer.pageLayout().paintRect(QPageLayout::Inch).size();
  PaintOn(printer, order, (inches * kDotsAnInch).toSize(), true);
}

}  // namespace velmora
