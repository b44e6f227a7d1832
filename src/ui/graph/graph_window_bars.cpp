// What lies around the plot: buttons, modes of the mouse, read-outs.
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>

#include "plot/graph_widget.hpp"
#include "ui/elided_label.hpp"
#include "ui/graph/graph_menus.hpp"
#include "ui/graph/graph_status_bar.hpp"
#include "ui/graph/graph_window.hpp"
#include "ui/graph/two_part_bar.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

// The style's own mark of a button that is on is lost on dark ground.
void Accent(QPushButton& button, bool on) {
  QPalette palette;
  if (on) {
    palette.setColor(QPalette::Button, palette.color(QPalette::Link));
    palette.setColor(QPalette::ButtonText, palette.color(QPalette::HighlightedText));
  }
  button.setPalette(palette);
}

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

struct GraphWindow::BarButton {
  const char* name;
  const char* caption;
  const char* id;  // nullptr: not there yet
  QString hint;
  const char* key = nullptr;     // the view's own that does the same
  const char* ownKey = nullptr;  // that does nothing in the view
};

QPushButton* GraphWindow::AddButton(QLayout& bar, const BarButton& button) {
  auto* push = new QPushButton;
  push->setObjectName(QString::fromLatin1(button.name));
  push->setFocusPolicy(Qt::NoFocus);  // the keys belong to the graph
  Caption(*push, QString::fromLatin1(button.caption));
  constexpr int kRoom = 22;
  push->setFixedWidth(push->fontMetrics().horizontalAdvance(QString(push->text()).remove('&')) + kRoom);
  const char* key = button.ownKey != nullptr ? button.ownKey : button.key;
  push->setToolTip(key == nullptr ? button.hint : button.hint + QStringLiteral("  (%1)").arg(key));
  bar.addWidget(push);
  if (button.ownKey != nullptr) {
    barKeys_.emplace(button.ownKey, push);
  }
  if (button.id != nullptr) {
    connect(push, &QPushButton::clicked, this, [this, id = button.id] { RunById(id); });
  } else {
    push->setEnabled(false);
  }
  return push;
}

// A letter that a menu answers to with Alt opens that menu: with two answers neither would come at the
// first press. Such a button has a key of its own.
void GraphWindow::Caption(QPushButton& button, const QString& caption) const {
  button.setText(caption);
  const QKeySequence alt = QKeySequence::mnemonic(caption);
  const QList<QAction*> menus = menuBar()->actions();
  const bool taken = std::any_of(menus.begin(), menus.end(), [&alt](const QAction* menu) {
    return QKeySequence::mnemonic(menu->text()) == alt;
  });
  if (taken) {
    button.setShortcut({});
  }
}

bool GraphWindow::PressBarKey(const KeyPress& key) {
  const auto button = barKeys_.find(key.name);
  if (button == barKeys_.end()) {
    return false;
  }
  button->second->click();
  return true;
}

void GraphWindow::AddModes(QLayout& bar) {
  struct Mode {
    TrackMode mode;
    const char* name;
    const char* caption;
    const char* id;
    const char* key;  // the view's
    const char* ownKey;
  };
  const Mode modes[] = {{TrackMode::None, "optNone", "&None", "zoom.disable", "Esc", nullptr},
                        {TrackMode::DragCursors, "optCursor", "&Cursor", "zoom.cursor", nullptr, "7"},
                        {TrackMode::ZoomArea, "optZoom", "&Zoom", "zoom.area", nullptr, "8"},
                        {TrackMode::PanXAndY, "optPan", "&Pan", "zoom.pan", nullptr, "9"}};
  bar.addWidget(new QLabel(tr("Mouse:")));
  for (const Mode& mode : modes) {
    QPushButton* button =
        AddButton(bar, {mode.name, mode.caption, mode.id, HintOf(mode.mode), mode.key, mode.ownKey});
    button->setCheckable(true);
    connect(button, &QPushButton::toggled, button, [button](bool on) { Accent(*button, on); });
    modes_.emplace_back(mode.mode, button);
  }
}

void GraphWindow::AddBar() {
  auto* strip = new TwoPartBar;
  QHBoxLayout* bar = &strip->First();
  AddButton(*bar, {"cmdExit", "E&xit", "view.exit", tr("Closes the graph")});
  AddButton(*bar, {"cmdSave", "Sa&ve to .VMB", "view.save", tr("Saves what the cursors select"), "F5"});
  AddButton(*bar, {"cmdStats", "&Stats", nullptr, tr("Not in this version yet")});
  AddButton(*bar, {"cmdSelect", "&Channels", "view.channels", tr("Selects the channels that are shown"),
                   nullptr, "F8"});
  windowButton_ = AddButton(*bar, {"cmdWindow", "&Window", "view.window",
                                   tr("Shows what lies between the cursors, or all of it again"), "W, F"});
  pointsButton_ = AddButton(
      *bar, {"cmdPoints", "&Points", "view.points", tr("Changes between lines and points"), nullptr, "F9"});
  AddButton(*bar, {"cmdReplot", "&Reset", "view.reset", tr("Draws the trial as at first"), "R"});
  bar->addStretch(1);
  bar = &strip->Second();
  AddModes(*bar);
  bar->addStretch(1);
  AddReadOuts(*bar);
  auto* tools = new QToolBar(tr("Graph"));
  tools->setObjectName(QStringLiteral("graphBar"));
  tools->setMovable(false);
  tools->setContextMenuPolicy(Qt::PreventContextMenu);
  tools->addWidget(strip);
  addToolBar(tools);
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
