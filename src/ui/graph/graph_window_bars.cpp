// What lies around the plot: buttons, modes of the mouse, read-outs.
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "ui/elided_label.hpp"
#include "ui/graph/graph_window.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

QLabel* Value(QLabel* label, const char* name) {
  label->setObjectName(QString::fromLatin1(name));
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setFocusPolicy(Qt::NoFocus);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

}  // namespace

void GraphWindow::AddBar() {
  QHBoxLayout& bar = bar_.First();
  bar_.Add(bar, {"cmdExit", "E&xit", "view.exit", tr("Closes the graph")});
  bar_.Add(bar, {"cmdSave", "Sa&ve to .VMB", "view.save", tr("Saves what the cursors select"), "F5"});
  bar_.Add(bar, {"cmdStats", "&Stats", nullptr, tr("Not in this version yet")});
  bar_.Add(bar, {"cmdSelect", "&Channels", "view.channels", tr("Selects the channels that are shown"),
                 nullptr, "F8"});
  bar_.AddWindow(bar);
  pointsButton_ = bar_.Add(
      bar, {"cmdPoints", "&Points", "view.points", tr("Changes between lines and points"), nullptr, "F9"});
  bar_.Add(bar, {"cmdReplot", "&Reset", "view.reset", tr("Draws the trial as at first"), "R"});
  bar.addStretch(1);
  bar_.AddModes(bar_.Second(), true);
  bar_.Second().addStretch(1);
  AddReadOuts(bar_.Second());
}

void GraphWindow::AddReadOuts(QHBoxLayout& bar) {
  trial_ = Value(new ElidedLabel, "trial");
  count_ = Value(new QLabel, "count");
  interval_ = Value(new QLabel, "interval");
  countCaption_ = new QLabel;
  intervalCaption_ = new QLabel;
  for (QLabel* label : {trial_, countCaption_, count_, intervalCaption_, interval_}) {
    bar.addWidget(label);
    if (label != countCaption_ && label != intervalCaption_) {
      bar.addSpacing(8);
    }
  }
}

}  // namespace velmora::ui
