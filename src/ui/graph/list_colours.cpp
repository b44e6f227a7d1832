#include "ui/graph/list_colours.hpp"

#include "plot/plot_colours.hpp"

namespace velmora::ui {

QString ListStyle(Colour background) {
  const QColor ground = ToQColor(background);
  const QColor head = IsLight(background) ? ground.darker(106) : QColor(0x2A, 0x2A, 0x2A);
  return QStringLiteral(
             "QAbstractItemView { background: %1; color: %2; border: none; border-radius: 0; }"
             "QTreeView::item:selected { background: #3D8BE8; color: white; }"
             "QHeaderView { background: %3; }"
             "QHeaderView::section { background: %3; color: %2; border: none; padding: 3px; }")
      .arg(ground.name(), Foreground(background).name(), head.name());
}

}  // namespace velmora::ui
