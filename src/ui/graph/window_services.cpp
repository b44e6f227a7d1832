#include "ui/graph/window_services.hpp"

#include <QApplication>
#include <QClipboard>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>

#include "browse/programs.hpp"
#include "core/questions/result_table.hpp"
#include "plot/draw_document.hpp"
#include "plot/draw_picture.hpp"
#include "ui/desktop.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

QWidget* Front(QWidget* window) {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : window;
}

bool ChoosePrinter(QPrinter& printer, QWidget* window) {
  printer.setPageOrientation(QPageLayout::Landscape);
  return QPrintDialog(&printer, Front(window)).exec() == QDialog::Accepted;
}

std::string Open(const std::string& program, const std::string& path) {
  const ProgramKind kind = program == "Notepad.exe" ? ProgramKind::Viewer : ProgramKind::Spreadsheet;
  return OpenWith({.kind = kind, .programs = {program}}, path);
}

QString Html(const ResultTable& table) {
  const auto row = [&](const char* tag, const auto& cell) {
    QString text = QStringLiteral("<tr>");
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
      text +=
          QStringLiteral("<%1 align=right>%2</%1>").arg(QLatin1String(tag), ToQt(cell(k)).toHtmlEscaped());
    }
    return text + QStringLiteral("</tr>");
  };
  QString html = QStringLiteral("<h3>") + ToQt(table.title).toHtmlEscaped() +
                 QStringLiteral("</h3><table cellspacing=0 cellpadding=3 border=1>");
  html += row("th", [&](std::size_t k) { return table.columns[k]; });
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    html += row("td", [&](std::size_t k) { return ShownCell(table, i, k); });
  }
  return html + QStringLiteral("</table>");
}

}  // namespace

DesktopServices WindowServices(QWidget* window) {
  return {.draw = DrawPicture,
          .drawDocument = DrawDocument,
          .copy = [](const std::string& text) { QApplication::clipboard()->setText(ToQt(text)); },
          .open = Open,
          .printPicture =
              [window](const PictureOrder& order) {
                QPrinter printer;
                if (ChoosePrinter(printer, window)) {
                  PrintPicture(order, printer);
                }
              },
          .printTable =
              [window](const ResultTable& table) {
                QPrinter printer;
                if (ChoosePrinter(printer, window)) {
                  QTextDocument document;
                  document.setHtml(Html(table));
                  document.print(&printer);
                }
              }};
}

}  // namespace velmora::ui
