#include "ui/graph/multi_sidebar.hpp"

#include "ui/graph/list_colours.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

MultiSidebar::MultiSidebar(QWidget* parent) : QListWidget(parent) {
  setObjectName(QStringLiteral("txtInfo"));
  setAccessibleName(tr("Channel information area (sidebar)"));
  setFocusPolicy(Qt::NoFocus);  // the keys belong to the graph
  setSelectionMode(NoSelection);
  setFrameShape(NoFrame);
  setUniformItemSizes(true);
  connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* line) {
    if (eventLines_ > 0 && row(line) == 0) {
      folded_ = !folded_;
      line->setText(Head());
      HideFolded();
    }
  });
}

void MultiSidebar::Take(const MultiView& view, const Workbench& workbench) {
  if (const Colour background = view.Lead().Background; background != background_) {
    background_ = background;
    setStyleSheet(ListStyle(background) + QStringLiteral("QListView { padding: 6px; }"));
  }
  QStringList lines;
  for (const std::string& line : view.EventLines()) {
    lines << ToQt(line);
  }
  eventLines_ = static_cast<int>(lines.size());
  if (eventLines_ > 0) {
    const EventMemory& events = workbench.events;
    eventHead_ = tr("Event %1 of %2").arg(events.CurrentEvent).arg(events.NEvents());
    lines.prepend(Head());
  }
  for (const std::string& line : view.ReadOutLines()) {
    lines << ToQt(line);
  }
  // The lines of events are long, and their end is what changes.
  setWordWrap(eventLines_ > 0);
  setUniformItemSizes(eventLines_ == 0);
  SetLines(lines);
  HideFolded();
}

// Lines are written anew after every step of a cursor, and mostly few of them differ: the others stay.
void MultiSidebar::SetLines(const QStringList& lines) {
  while (count() > lines.size()) {
    delete takeItem(count() - 1);
  }
  for (int k = 0; k < lines.size(); ++k) {
    if (k >= count()) {
      addItem(lines[k]);
    } else if (item(k)->text() != lines[k]) {
      item(k)->setText(lines[k]);
    }
  }
}

QString MultiSidebar::Head() const {
  return (folded_ ? QStringLiteral("\u25B8 ") : QStringLiteral("\u25BE ")) + eventHead_;
}

void MultiSidebar::HideFolded() {
  for (int k = 0; k < count(); ++k) {
    setRowHidden(k, folded_ && k >= 1 && k <= eventLines_);
  }
}

}  // namespace velmora::ui
