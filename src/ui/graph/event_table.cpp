#include "ui/graph/event_table.hpp"

#include <QHeaderView>

#include "core/text/text.hpp"
#include "events/event_tracking.hpp"
#include "ui/graph/list_colours.hpp"
#include "ui/text.hpp"

namespace velmora::ui {

EventTable::EventTable(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("eventTable"));
  setAccessibleName(tr("Table of events"));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setFocusPolicy(Qt::NoFocus);  // the keys belong to the graph
  setFrameShape(NoFrame);
  setToolTip(tr("A click makes a record the current one"));
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::itemClicked, this,
          [this](QTreeWidgetItem* item) { Q_EMIT chosen(indexOfTopLevelItem(item) + 1); });
}

// The current record is what a selection shows.
void EventTable::TakeColours(Colour background) {
  if (background == background_) {
    return;
  }
  background_ = background;
  setStyleSheet(ListStyle(background));
}

bool EventTable::TakeColumns(const MultiView& view, const Trial& trial) {
  QStringList heads = {tr("Event")};
  channels_.clear();
  for (int c = 1; c <= trial.NChan; ++c) {
    if (view.GraphOf(c) > 0) {
      channels_.push_back(c);
      heads << ToQt(Trim(trial.ChanLabel[c].Text()));
    }
  }
  if (heads == heads_) {
    return false;
  }
  heads_ = heads;
  setColumnCount(static_cast<int>(heads.size()));
  setHeaderLabels(heads);
  return true;
}

void EventTable::FillRows() {
  const auto count = static_cast<int>(records_.size());
  while (topLevelItemCount() > count) {
    delete takeTopLevelItem(topLevelItemCount() - 1);
  }
  while (topLevelItemCount() < count) {
    addTopLevelItem(new QTreeWidgetItem({QString::number(topLevelItemCount() + 1)}));
  }
  for (int k = 0; k < count; ++k) {
    const EventRecord& record = records_[static_cast<std::size_t>(k)];
    for (std::size_t column = 0; column < channels_.size(); ++column) {
      topLevelItem(k)->setText(static_cast<int>(column) + 1, ToQt(SpanText(record[channels_[column]])));
    }
  }
}

// It is taken after everything that is done, and mostly nothing of it has changed.
void EventTable::Take(const MultiView& view, const Workbench& workbench) {
  const EventMemory& events = workbench.events;
  setVisible(events.EventTracking);
  TakeColours(view.Lead().Background);
  const bool others = TakeColumns(view, workbench.trial);
  if (others || records_ != events.ChannelEvents) {
    records_ = events.ChannelEvents;
    FillRows();
  }
  QTreeWidgetItem* current = topLevelItem(events.CurrentEvent - 1);
  if (current != nullptr && current != currentItem()) {
    setCurrentItem(current);
    scrollToItem(current);
  }
}

}  // namespace velmora::ui
