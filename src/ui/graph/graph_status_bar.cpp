#include "ui/graph/graph_status_bar.hpp"

#include <QLabel>

#include "core/text/numbers.hpp"
#include "core/trial/helpers.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

QString HintOf(TrackMode mode) {
  switch (mode) {
    case TrackMode::DragCursors:
      return QObject::tr("Drag a cursor; beside the cursors a drag pans");
    case TrackMode::ZoomArea:
      return QObject::tr("Drag a rectangle to zoom into it");
    case TrackMode::PanXAndY:
      return QObject::tr("Drag the traces");
    case TrackMode::PanX:
      return QObject::tr("Drag the traces sideways");
    case TrackMode::PanY:
      return QObject::tr("Drag the traces up and down");
    case TrackMode::None:
      break;
  }
  return QObject::tr("Wheel zooms, middle button pans");
}

GraphStatusBar::GraphStatusBar(QWidget* parent) : QStatusBar(parent), mode_(new QLabel), place_(new QLabel) {
  place_->setObjectName(QStringLiteral("place"));
  place_->setContentsMargins(0, 0, 8, 0);
  addWidget(mode_, 1);
  addPermanentWidget(place_);
  setSizeGripEnabled(false);
}

void GraphStatusBar::ShowMode(TrackMode mode) {
  mode_->setText(HintOf(mode));
}

void GraphStatusBar::ShowPlace(const QString& x, const QString& y) {
  ShowText(QStringLiteral("%1 : %2").arg(x, y));
}

void GraphStatusBar::ShowTimePlace(const Workbench& workbench, double x, double y) {
  ShowPlace(ToQt(AbscissaText(workbench, x, workbench.patterns.TimePattern)),
            ToQt(FormatNumber(y, workbench.patterns.ValuePattern)));
}

void GraphStatusBar::ShowText(const QString& text) {
  place_->setText(text);
}

}  // namespace velmora::ui
