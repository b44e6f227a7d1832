#include "ui/trial/history_panel.hpp"

#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

#include "ui/main/icons.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

/// A button that looks like the others of the panel and follows an action.
QPushButton* ButtonFor(QAction* action, const char* name) {
  auto* button = new QPushButton(action->icon(), action->text());
  button->setObjectName(QString::fromUtf8(name));
  const auto follow = [action, button] {
    button->setEnabled(action->isEnabled());
    button->setToolTip(action->toolTip());
  };
  QObject::connect(action, &QAction::changed, button, follow);
  QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
  return button;
}

QListWidgetItem* ItemOf(const HistoryLine& line, int number) {
  auto* item = new QListWidgetItem(QStringLiteral("%1  %2").arg(number).arg(ToQt(line.words)));
  QString tip = ToQt(line.inFull);
  if (line.undone) {
    item->setForeground(QApplication::palette().brush(QPalette::Disabled, QPalette::Text));
    QFont font = item->font();
    font.setItalic(true);
    item->setFont(font);
    tip += QStringLiteral("\n") + QObject::tr("Undone. A click does it again.");
  }
  item->setToolTip(tip);
  return item;
}

}  // namespace

HistoryPanel::HistoryPanel(const History& history, QWidget* parent) : QWidget(parent), history_(history) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 6, 8, 8);
  undo_ = AddStep(tr("U&ndo"), {QKeySequence(tr("Ctrl+Z"))}, -1);
  undo_->setIcon(IconOf(Glyph::Undo));
  redo_ = AddStep(tr("Re&do"), {QKeySequence(tr("Ctrl+Y")), QKeySequence(tr("Ctrl+Shift+Z"))}, 1);
  redo_->setIcon(IconOf(Glyph::Redo));
  AddList();
  AddButtons();
  Refresh();
}

QAction* HistoryPanel::AddStep(const QString& caption, const QList<QKeySequence>& keys, int lines) {
  auto* action = new QAction(caption, this);
  action->setShortcuts(keys);
  action->setIconVisibleInMenu(false);
  connect(action, &QAction::triggered, this, [this, lines] { Q_EMIT LineWanted(history_.Place() + lines); });
  return action;
}

void HistoryPanel::AddList() {
  list_ = new QListWidget;
  list_->setObjectName(QStringLiteral("historyList"));
  list_->setAccessibleName(tr("History"));
  list_->setWordWrap(true);
  list_->setAlternatingRowColors(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setSpacing(2);
  layout()->addWidget(list_);
  const auto goTo = [this](const QListWidgetItem* item) { Q_EMIT LineWanted(list_->row(item)); };
  connect(list_, &QListWidget::itemClicked, this, goTo);
  connect(list_, &QListWidget::itemActivated, this, goTo);  // Enter
  auto* copy = new QShortcut(QKeySequence::Copy, list_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, [this] { Copy(); });
}

void HistoryPanel::AddButtons() {
  auto* walking = new QHBoxLayout;
  walking->addWidget(ButtonFor(undo_, "undo"));
  walking->addWidget(ButtonFor(redo_, "redo"));
  auto* copy = new QPushButton(IconOf(Glyph::Copy), tr("Cop&y"));
  copy->setObjectName(QStringLiteral("copyHistory"));
  copy->setToolTip(
      tr("Copies what was done as text, with the version of the program, for a methods section"));
  connect(copy, &QPushButton::clicked, this, [this] { Copy(); });
  auto* recipe = new QPushButton(IconOf(Glyph::Recipe), tr("Save as reci&pe"));
  recipe->setObjectName(QStringLiteral("saveRecipe"));
  recipe->setToolTip(
      tr("Writes these steps to a file that velmora2-run repeats, on this trial or on a thousand"));
  connect(recipe, &QPushButton::clicked, this, [this] { Q_EMIT RecipeWanted(); });
  auto* all = qobject_cast<QVBoxLayout*>(layout());
  all->addLayout(walking);
  all->addWidget(copy);
  all->addWidget(recipe);
}

void HistoryPanel::Copy() const {
  QApplication::clipboard()->setText(ToQt(history_.Text()));
}

void HistoryPanel::Refresh() {
  const std::vector<HistoryLine> lines = history_.Lines();
  const int place = history_.Place();
  list_->clear();
  int number = 0;
  for (const HistoryLine& line : lines) {
    list_->addItem(ItemOf(line, ++number));
  }
  list_->setCurrentRow(place);
  list_->scrollToItem(list_->item(place));
  const auto offer = [&lines](QAction* action, int line, int to, const QString& tip) {
    const bool possible = line >= 0 && line < static_cast<int>(lines.size()) && to >= 0;
    action->setEnabled(possible);
    action->setToolTip(possible ? tip.arg(ToQt(lines[static_cast<std::size_t>(line)].words)) : QString());
    action->setStatusTip(action->toolTip());
  };
  offer(undo_, place, place - 1, tr("Takes back: %1"));
  offer(redo_, place + 1, place + 1, tr("Does again: %1"));
}

}  // namespace velmora::ui
