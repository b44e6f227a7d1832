#include "ui/dialogs/plate_picture.hpp"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "forceplate/plate_geometry.hpp"
#include "forceplate/plate_types.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr std::array kKistlerNames = {"fx12", "fx34", "fy14", "fy23", "fz1", "fz2", "fz3", "fz4"};
constexpr std::array kAmtiNames = {"Fx", "Fy", "Fz", "Mx", "My", "Mz"};
constexpr int kFirstVertical = 5;  // fz1, among a plate's channels from 1

QPolygonF PolygonOf(const std::array<PlatePoint, 4>& corners) {
  QPolygonF polygon;
  for (const PlatePoint& corner : corners) {
    polygon << QPointF(corner.x, corner.y);
  }
  return polygon;
}

}  // namespace

PlatePicture::PlatePicture(const PlateForm& form, const Trial& trial) : form_(form), trial_(trial) {
  setMinimumSize(380, 560);
}

void PlatePicture::Show(int /*channel*/) {
  update();
}

// Where a third and a fourth plate are nobody says.
int PlatePicture::PlatesShown() const {
  return std::clamp(form_.PlatesInUse(), 1, 2);
}

QRectF PlatePicture::Extent(const PlateMemory& plates) const {
  QRectF all;
  for (int plate = 0; plate < PlatesShown(); ++plate) {
    for (const auto& corners : {OutlineOf(plates, plate), SensorsOf(plates, plate)}) {
      all = corners ? all.united(PolygonOf(*corners).boundingRect()) : all;
    }
  }
  return all;
}

void PlatePicture::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const PlateMemory plates = form_.Plates();
  const double facts = fontMetrics().lineSpacing() * 11.0;
  const QRectF room(0, 0, width(), height() - facts);
  const QRectF extent = Extent(plates);
  PaintFacts(painter, QRectF(0, room.bottom(), width(), facts), plates);
  if (!(extent.width() > 0) || !(extent.height() > 0) || !std::isfinite(extent.width() + extent.height())) {
    painter.setPen(QuietColour(palette()));
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Enter the distances of the sensors, or width and length, to see the plate."));
    return;
  }
  constexpr double margin = 34;  // for numerals and arrow heads
  const double scale =
      std::min((room.width() - 2 * margin) / extent.width(), (room.height() - 2 * margin) / extent.height());
  QTransform onScreen;
  onScreen.translate(room.center().x(), room.center().y());
  onScreen.scale(scale, -scale);
  onScreen.translate(-extent.center().x(), -extent.center().y());
  painter.setPen(Qt::NoPen);  // where one plate lies on another both outlines are to be seen
  painter.setBrush(palette().color(QPalette::AlternateBase));
  for (int plate = 0; plate < PlatesShown(); ++plate) {
    if (const auto corners = OutlineOf(plates, plate)) {
      painter.drawPolygon(onScreen.map(PolygonOf(*corners)));
    }
  }
  for (int plate = 0; plate < PlatesShown(); ++plate) {
    PaintPlate(painter, onScreen, plates, plate);
  }
  PaintAxes(painter, onScreen);
}

void PlatePicture::PaintPlate(QPainter& painter, const QTransform& onScreen, const PlateMemory& plates,
                              int plate) const {
  const QColor ink = palette().color(QPalette::WindowText);
  const bool shown = plate == form_.PlateShown();
  if (const auto corners = OutlineOf(plates, plate)) {
    painter.setPen(QPen(ink, shown ? 2.0 : 1.0));
    painter.setBrush(Qt::NoBrush);
    const QPolygonF outline = onScreen.map(PolygonOf(*corners));
    painter.drawPolygon(outline);
    painter.drawText(outline[1] + QPointF(6, 16 + plate * fontMetrics().lineSpacing()),
                     tr("Plate %1").arg(plate + 1));
  }
  const auto sensors = SensorsOf(plates, plate);
  if (!sensors) {
    return;
  }
  painter.setPen(QPen(QuietColour(palette()), 1.0, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolygon(onScreen.map(PolygonOf(*sensors)));
  painter.setPen(QPen(ink, 1.0));
  const std::int64_t base = BaseChannelOf(trial_, plates, plate);
  for (std::size_t k = 0; k < 4; ++k) {
    const PlatePoint& at = (*sensors)[k];
    const QPointF place = onScreen.map(QPointF(at.x, at.y));
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawEllipse(place, 5, 5);
    const std::string number = ChannelNumber(static_cast<int>(std::min<std::int64_t>(base, 1000)) +
                                             kFirstVertical + static_cast<int>(k));
    const QString text = ToQt(kKistlerNames.at(4 + k) + (" " + number));
    // Towards the middle of the plate, and apart where two sensors stand close together.
    const QPointF opposite = onScreen.map(QPointF((*sensors)[(k + 2U) % 4].x, (*sensors)[(k + 2U) % 4].y));
    const double across = fontMetrics().horizontalAdvance(text);
    const double apart = std::max(0.0, across + 6 - std::abs(opposite.x() - place.x())) / 2;
    const double outwards = place.x() < opposite.x() ? -apart : apart;
    const double inwards = place.y() < opposite.y() ? 8.0 + fontMetrics().ascent() : -10.0;
    painter.drawText(place + QPointF(outwards - across / 2, inwards), text);
  }
}

void PlatePicture::PaintAxes(QPainter& painter, const QTransform& onScreen) const {
  constexpr double length = 44;
  constexpr double head = 6;
  const QPointF centre = onScreen.map(QPointF(0, 0));
  painter.setPen(QPen(palette().color(QPalette::Link), 2.0));
  const QPointF x = centre + QPointF(length, 0);
  const QPointF y = centre - QPointF(0, length);
  painter.drawLine(centre, x);
  painter.drawPolyline(QPolygonF{x + QPointF(-head, -head), x, x + QPointF(-head, head)});
  painter.drawLine(centre, y);
  painter.drawPolyline(QPolygonF{y + QPointF(-head, head), y, y + QPointF(head, head)});
  painter.drawText(x + QPointF(5, 5), QStringLiteral("+X"));
  painter.drawText(y + QPointF(8, 4), QStringLiteral("+Y"));
}

QStringList PlatePicture::ChannelsOf(const PlateMemory& plates) const {
  const int shown = form_.PlateShown();
  const bool amti = FamilyOf(plates.PlateTable.at(static_cast<std::size_t>(shown))) == PlateFamily::Amti;
  const std::int64_t base = BaseChannelOf(trial_, plates, shown);
  QStringList lines;
  for (int k = 0; k < velmora::ChannelsOf(amti ? PlateFamily::Amti : PlateFamily::Kistler); ++k) {
    const std::int64_t c = base + 1 + k;
    const auto at = static_cast<std::size_t>(k);
    const QString channel = c <= trial_.NChan
                                ? ToQt(ChannelNumber(static_cast<int>(c)) + " " + trial_.ChanLabel[c].Text())
                                : tr("no such channel");
    lines << QStringLiteral("%1:  %2").arg(
        QLatin1String(amti ? kAmtiNames.at(std::min<std::size_t>(at, 5)) : kKistlerNames.at(at)), channel);
  }
  return lines;
}

QString PlatePicture::ForceOf(const PlateMemory& plates) const {
  const auto force = VerticalForceOf(trial_, plates, form_.PlateShown());
  if (!force || !std::isfinite(force->atFirst) || !std::isfinite(force->largest)) {
    return tr("Fz cannot be told: channels, ranges or sensitivities are missing.");
  }
  return tr("Fz would be %1 N at sample 1, %2 N at its largest.")
      .arg(ToQt(FormatNumber(force->atFirst, "0.0")), ToQt(FormatNumber(force->largest, "0.0")));
}

void PlatePicture::PaintFacts(QPainter& painter, const QRectF& room, const PlateMemory& plates) const {
  const double line = fontMetrics().lineSpacing();
  painter.setPen(palette().color(QPalette::WindowText));
  QRectF at(room.left(), room.top() + line / 2, room.width(), line);
  painter.drawText(at, Qt::AlignLeft, tr("Plate %1 in this trial:").arg(form_.PlateShown() + 1));
  const QStringList channels = ChannelsOf(plates);
  painter.setPen(QuietColour(palette()));
  for (qsizetype k = 0; k < channels.size(); ++k) {
    const bool second = k >= (channels.size() + 1) / 2;
    const auto row = static_cast<double>(second ? k - (channels.size() + 1) / 2 : k);
    const QRectF cell(room.left() + (second ? room.width() / 2 : 0), at.bottom() + row * line + 2,
                      room.width() / 2 - 8, line);
    painter.drawText(cell, Qt::AlignLeft,
                     fontMetrics().elidedText(channels[k], Qt::ElideRight, static_cast<int>(cell.width())));
  }
  painter.setPen(palette().color(QPalette::WindowText));
  const QRectF below(room.left(), at.bottom() + 4 * line + 8, room.width(), 5 * line);
  const bool amti =
      FamilyOf(plates.PlateTable.at(static_cast<std::size_t>(form_.PlateShown()))) == PlateFamily::Amti;
  painter.drawText(
      below, Qt::AlignLeft | Qt::TextWordWrap,
      ForceOf(plates) + QStringLiteral("\n") +
          (LoadsOfFile(trial_, plates, form_.PlateShown()) != nullptr
               ? tr("The file tells how its channels become newtons and newton metres.")
           : amti ? tr("Moments are taken as newton metres.")
                  : tr("Distances count as entered unless a unit is chosen: centimetres give Ax, Ay in "
                       "cm and Tz in N.m, millimetres do not.")));
}

}  // namespace velmora::ui
