#include "ui/graph/graph_bar.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <algorithm>

#include "ui/graph/graph_status_bar.hpp"
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

}  // namespace

GraphBar::GraphBar(QMainWindow& window, RunById run)
    : window_(window), run_(std::move(run)), strip_(new TwoPartBar) {
  auto* tools = new QToolBar(QObject::tr("Graph"));
  tools->setObjectName(QStringLiteral("graphBar"));
  tools->setMovable(false);
  tools->setContextMenuPolicy(Qt::PreventContextMenu);
  tools->addWidget(strip_);
  window.addToolBar(tools);
}

QHBoxLayout& GraphBar::First() const {
  return strip_->First();
}

QHBoxLayout& GraphBar::Second() const {
  return strip_->Second();
}

QPushButton* GraphBar::Add(QLayout& bar, const Button& button) {
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
    keys_.emplace(button.ownKey, push);
  }
  if (button.id != nullptr) {
    QObject::connect(push, &QPushButton::clicked, &window_, [this, id = button.id] { run_(id); });
  } else {
    push->setEnabled(false);
  }
  return push;
}

void GraphBar::AddWindow(QLayout& bar) {
  windowButton_ = Add(bar, {"cmdWindow", "&Window", "view.window",
                            QObject::tr("Shows what lies between the cursors, or all of it again"), "W, F"});
}

// A letter that a menu answers to with Alt opens that menu: with two answers neither would come at the
// first press. Such a button has a key of its own.
void GraphBar::Caption(QPushButton& button, const QString& caption) const {
  button.setText(caption);
  const QKeySequence alt = QKeySequence::mnemonic(caption);
  const QList<QAction*> menus = window_.menuBar()->actions();
  const bool taken = std::any_of(menus.begin(), menus.end(), [&alt](const QAction* menu) {
    return QKeySequence::mnemonic(menu->text()) == alt;
  });
  if (taken) {
    button.setShortcut({});
  }
}

bool GraphBar::PressKey(const KeyPress& key) const {
  const auto button = keys_.find(key.name);
  if (button == keys_.end()) {
    return false;
  }
  button->second->click();
  return true;
}

void GraphBar::AddModes(QLayout& bar, bool cursors) {
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
  bar.addWidget(new QLabel(QObject::tr("Mouse:")));
  for (const Mode& mode : modes) {
    if (mode.mode == TrackMode::DragCursors && !cursors) {
      continue;
    }
    QPushButton* button =
        Add(bar, {mode.name, mode.caption, mode.id, HintOf(mode.mode), mode.key, mode.ownKey});
    button->setCheckable(true);
    QObject::connect(button, &QPushButton::toggled, button, [button](bool on) { Accent(*button, on); });
    modes_.emplace_back(mode.mode, button);
  }
}

void GraphBar::Show(const GraphView& view) const {
  Caption(*windowButton_, ToQt(view.WindowCaption()));
  for (const auto& [mode, button] : modes_) {
    button->setChecked(view.Lead().Track == mode);
  }
}

}  // namespace velmora::ui
