#include "ui/main/welcome_panel.hpp"

#include <QBoxLayout>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>

#include "ui/main/icons.hpp"
#include "ui/main/theme.hpp"

namespace velmora::ui {
namespace {

constexpr int kPanelWidth = 460;
constexpr int kBesideName = 60;  // icon and margins of a button

QLabel* Quiet(const QString& text) {
  auto* label = new QLabel(text);
  SetTone(label, Tone::Quiet);
  return label;
}

}  // namespace

WelcomePanel::WelcomePanel(QWidget* parent) : QWidget(parent) {
  auto* column = new QWidget;
  column->setMaximumWidth(kPanelWidth);
  auto* layout = new QVBoxLayout(column);
  layout->setSpacing(10);
  auto* sentence = new QLabel(tr("Open a trial to see its signals."));
  QFont font = sentence->font();
  font.setPointSizeF(font.pointSizeF() * 1.7);
  font.setWeight(QFont::DemiBold);
  sentence->setFont(font);
  sentence->setWordWrap(true);  // it sets no width on a small screen
  layout->addWidget(sentence);
  layout->addSpacing(6);
  layout->addWidget(Quiet(tr("Double-click a data file in the list on the left,")));
  layout->addWidget(Quiet(tr("drop a file anywhere in this window,")));
  auto* row = new QHBoxLayout;
  row->addWidget(Quiet(tr("or start with the")));
  auto* example = new QPushButton(IconOf(Glyph::Graph), tr("Open the &example trial"));
  example->setObjectName(QStringLiteral("openExample"));
  connect(example, &QPushButton::clicked, this, [this] { Q_EMIT ExampleWanted(); });
  row->addWidget(example);
  row->addStretch();
  layout->addLayout(row);
  layout->addSpacing(18);
  recent_ = new QVBoxLayout;
  recent_->setSpacing(2);
  layout->addLayout(recent_);
  auto* centre = new QGridLayout(this);
  centre->addWidget(column, 1, 1);
  centre->setRowStretch(0, 2);
  centre->setRowStretch(2, 3);
  centre->setColumnStretch(0, 1);
  centre->setColumnStretch(1, 100);  // up to its width
  centre->setColumnStretch(2, 1);
}

void WelcomePanel::ShowRecent(const QStringList& paths) {
  while (QLayoutItem* item = recent_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  if (!paths.isEmpty()) {
    recent_->addWidget(Quiet(tr("Recent files")));
  }
  for (const QString& path : paths) {
    const QString name =
        fontMetrics().elidedText(QFileInfo(path).fileName(), Qt::ElideMiddle, kPanelWidth - kBesideName);
    auto* button = new QPushButton(IconOf(Glyph::File), QString(name).replace('&', QStringLiteral("&&")));
    button->setFlat(true);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    button->setToolTip(path);
    button->setStyleSheet(QStringLiteral("text-align: left; padding: 5px;"));
    connect(button, &QPushButton::clicked, this, [this, path] { Q_EMIT FileWanted(path); });
    recent_->addWidget(button);
  }
}

}  // namespace velmora::ui
