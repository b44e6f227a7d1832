#include "ui/trial/history_panel.hpp"

#include <QBoxLayout>
#include <QListWidget>
#include <QPushButton>

#include "core/files/paths.hpp"
#include "ui/main/icons.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

QString LineOf(const RecordedStep& recorded) {
  const auto* command = std::get_if<CommandStep>(&recorded.step.what);
  if (command != nullptr && !command->file.empty()) {
    return QObject::tr("Open %1").arg(ToQt(FileNamePart(command->file)));
  }
  return ToQt(recorded.words);
}

}  // namespace

HistoryPanel::HistoryPanel(const History& history, QWidget* parent) : QWidget(parent), history_(history) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 6, 8, 8);
  list_ = new QListWidget;
  list_->setObjectName(QStringLiteral("historyList"));
  list_->setWordWrap(true);
  list_->setAlternatingRowColors(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setSpacing(2);
  layout->addWidget(list_, 1);
  back_ = new QPushButton(IconOf(Glyph::Back), tr("Go &back to here"));
  back_->setObjectName(QStringLiteral("goBack"));
  back_->setToolTip(tr("Reads the file again and repeats the steps down to the selected one"));
  auto* recipe = new QPushButton(IconOf(Glyph::Recipe), tr("Save as reci&pe"));
  recipe->setObjectName(QStringLiteral("saveRecipe"));
  recipe->setToolTip(
      tr("Writes these steps to a file that velmora2-run repeats, on this trial or on a thousand"));
  layout->addWidget(back_);
  layout->addWidget(recipe);
  connect(list_, &QListWidget::currentRowChanged, this,
          [this](int row) { back_->setEnabled(row >= 0 && row + 1 < list_->count()); });
  connect(back_, &QPushButton::clicked, this, [this] { Q_EMIT GoBackWanted(list_->currentRow()); });
  connect(recipe, &QPushButton::clicked, this, [this] { Q_EMIT RecipeWanted(); });
}

void HistoryPanel::Refresh() {
  list_->clear();
  int number = 0;
  for (const RecordedStep& recorded : history_.Steps()) {
    list_->addItem(QStringLiteral("%1  %2").arg(++number).arg(LineOf(recorded)));
    list_->item(number - 1)->setToolTip(LineOf(recorded));
  }
  list_->setCurrentRow(list_->count() - 1);
  list_->scrollToBottom();
}

}  // namespace velmora::ui
