#include "ui/dialogs/text_picture.hpp"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QStyleOption>
#include <QTableWidget>

#include "formats/delimited_text/layout/column_list.hpp"
#include "formats/delimited_text/layout/name_line.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kMostColumns = kMaxChannels + 1;  // one more shows that there are more
constexpr qsizetype kLongest = 400;             // characters of a line without columns

// The fields of a record as they are read: between separators when there are any, else between blanks.
QStringList FieldsOf(const QString& line, const NumberLayout& layout) {
  const auto separates = [&layout](QChar c) {
    return c == '\t' || (c == ',' && !layout.decimalComma) || (c == ';' && layout.semicolons);
  };
  const bool separated = std::any_of(line.begin(), line.end(), separates);
  QStringList fields;
  QString field;
  for (const QChar c : line) {
    if (separated ? separates(c) : c == ' ') {
      fields << field.trimmed();
      field.clear();
    } else {
      field += c;
    }
  }
  fields << field.trimmed();
  if (!separated) {
    fields.removeAll(QString());
  }
  return fields.mid(0, kMostColumns);
}

// A tick as the style draws it, for a place that has no room for a box of its own.
QIcon TickIcon(const QWidget& widget, bool on) {
  const int size = widget.style()->pixelMetric(QStyle::PM_IndicatorWidth);
  const qreal ratio = widget.devicePixelRatioF();
  QPixmap pixmap(QSize(size, size) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QStyleOptionButton option;
  option.initFrom(&widget);
  option.rect = QRect(0, 0, size, size);
  option.state = QStyle::State_Enabled | (on ? QStyle::State_On : QStyle::State_Off);
  widget.style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, &widget);
  return pixmap;
}

}  // namespace

TextPicture::TextPicture(Form& form, const Workbench& workbench) : form_(form) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  AddLegend(layout);
  const Trial& trial = workbench.trial;
  for (int k = 1; k <= trial.HeaderLineCount; ++k) {
    lines_ << ToQt(trial.HeaderLines[k]);
  }
  table_ = new QTableWidget(static_cast<int>(lines_.size()), 1);
  table_->setObjectName(QStringLiteral("firstLines"));
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setFocusPolicy(Qt::NoFocus);
  table_->setSelectionMode(QAbstractItemView::NoSelection);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 8);
  table_->horizontalHeader()->setSectionsClickable(true);
  table_->horizontalHeader()->setHighlightSections(false);
  table_->setMinimumSize(560, 420);
  connect(table_->horizontalHeader(), &QHeaderView::sectionClicked, this,
          [this](int section) { ToggleColumn(section + 1); });
  layout->addWidget(table_, 1);
}

void TextPicture::AddLegend(QBoxLayout* to) {
  auto* row = new QHBoxLayout;
  row->setSpacing(6);
  const std::pair<Part, QString> parts[] = {{Part::Labels, tr("Labels")},
                                            {Part::Units, tr("Units")},
                                            {Part::Time, tr("Time")},
                                            {Part::Data, tr("Channels")},
                                            {Part::Unread, tr("Not read")}};
  for (const auto& [part, name] : parts) {
    auto* chip = new QLabel(name);
    chip->setStyleSheet(QStringLiteral("background: %1; border-radius: 7px; padding: 2px 9px;")
                            .arg(Ground(part).name(QColor::HexArgb)));
    row->addWidget(chip);
  }
  row->addStretch();
  to->addLayout(row);
}

QColor TextPicture::Ground(Part part) const {
  const auto tint = [](QRgb colour, float alpha) {
    QColor ground(colour);
    ground.setAlphaF(alpha);
    return ground;
  };
  switch (part) {
    case Part::Labels:
      return tint(0xE69F00, 0.35F);
    case Part::Units:
      return tint(0xCC79A7, 0.32F);
    case Part::Time:
      return tint(0x009E73, 0.32F);
    case Part::Data:
      return tint(0x0072B2, 0.30F);
    case Part::OtherData:
      return tint(0x56B4E9, 0.26F);
    case Part::Skipped:
    case Part::Unread:
      break;
  }
  return tint(0x808080, 0.16F);
}

void TextPicture::changeEvent(QEvent* event) {
  FormPicture::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    Show(0);
  }
}

ParseSettings TextPicture::Settings() const {
  ParseSettings settings;
  settings.columns = ValueOf<std::int32_t>(form_, "NChan");
  settings.ParseSkip = ValueOf<std::int32_t>(form_, "ParseSkip");
  settings.ParseHasTime = ValueOf<bool>(form_, "ParseHasTime");
  settings.ParseTimeColumn = ValueOf<std::int32_t>(form_, "ParseTimeColumn");
  settings.layout = {ValueOf<bool>(form_, "ParseSemicolons"), ValueOf<bool>(form_, "ParseDecimalComma")};
  settings.labelsLine = ValueOf<std::int32_t>(form_, "ParseLabelsLine");
  settings.unitsLine = ValueOf<std::int32_t>(form_, "ParseUnitsLine");
  settings.ParseLeaveOut = ValueOf<std::string>(form_, "ParseLeaveOut");
  return settings;
}

TextPicture::Part TextPicture::PartOfColumn(int column) const {
  if (settings_.IsTime(column)) {
    return column <= settings_.columns ? Part::Time : Part::Unread;
  }
  const std::vector<int> channels = settings_.ChannelColumns();
  if (!std::binary_search(channels.begin(), channels.end(), column)) {
    return Part::Unread;
  }
  return column % 2 == 0 ? Part::Data : Part::OtherData;
}

TextPicture::Part TextPicture::PartOfLine(int number) const {
  return number > settings_.ParseSkip     ? Part::Data
         : number == settings_.labelsLine ? Part::Labels
         : number == settings_.unitsLine  ? Part::Units
                                          : Part::Skipped;
}

void TextPicture::Show(int /*channel*/) {
  settings_ = Settings();
  table_->clear();
  table_->clearSpans();
  table_->setColumnCount(std::clamp(settings_.columns, 1, kMostColumns));
  for (int number = 1; number <= lines_.size(); ++number) {
    ShowLine(number);
  }
  ShowHeads();
  constexpr int kWidest = 150;
  table_->resizeColumnsToContents();
  for (int k = 0; k < table_->columnCount(); ++k) {
    table_->setColumnWidth(k, std::min(table_->columnWidth(k), kWidest));
  }
}

void TextPicture::ShowHeads() {
  const QIcon on = TickIcon(*table_, true);
  const QIcon off = TickIcon(*table_, false);
  for (int k = 0; k < table_->columnCount(); ++k) {
    auto* head = new QTableWidgetItem(QString::number(k + 1));
    const Part part = PartOfColumn(k + 1);
    if (part == Part::Time) {
      head->setText(tr("%1 time").arg(k + 1));
    } else {
      head->setIcon(part == Part::Unread ? off : on);
      head->setToolTip(part == Part::Unread
                           ? tr("Column %1 is left out: click to read it").arg(k + 1)
                           : tr("Column %1 becomes a channel: click to leave it out").arg(k + 1));
    }
    table_->setHorizontalHeaderItem(k, head);
  }
}

void TextPicture::ShowLine(int number) {
  const QString& line = lines_[number - 1];
  const Part part = PartOfLine(number);
  if (part == Part::Skipped) {
    QString text = line.left(kLongest);
    SetCell(number, 0, text.replace('\t', QStringLiteral("   ")), part);
    if (table_->columnCount() > 1) {
      table_->setSpan(number - 1, 0, 1, table_->columnCount());
    }
    return;
  }
  QStringList fields;
  if (part == Part::Data) {
    fields = FieldsOf(line, settings_.layout);
  } else {
    for (const std::string& name : NamesOfColumns(ToStd(line), settings_.columns)) {
      fields << ToQt(name);
    }
  }
  table_->setColumnCount(std::max(table_->columnCount(), static_cast<int>(fields.size())));
  for (int column = 1; column <= fields.size(); ++column) {
    SetCell(number, column - 1, fields[column - 1], part == Part::Data ? PartOfColumn(column) : part);
  }
}

void TextPicture::SetCell(int number, int column, const QString& text, Part part) {
  auto* item = new QTableWidgetItem(text);
  item->setFlags(Qt::ItemIsEnabled);
  const bool quiet = part == Part::Skipped || part == Part::Unread;
  if (quiet) {
    item->setForeground(QuietColour(palette()));
  }
  if (part != Part::Skipped) {
    item->setBackground(Ground(part));
    item->setToolTip(text);
  }
  if (number > settings_.ParseSkip) {
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  table_->setItem(number - 1, column, item);
}

void TextPicture::ToggleColumn(int column) {
  if (settings_.IsTime(column) || column > settings_.columns) {
    return;
  }
  std::vector<int> leftOut = ReadColumnList(settings_.ParseLeaveOut).value_or(std::vector<int>());
  const auto at = std::lower_bound(leftOut.begin(), leftOut.end(), column);
  if (at != leftOut.end() && *at == column) {
    leftOut.erase(at);
  } else {
    leftOut.insert(at, column);
  }
  form_.Edit(*form_.FindField("ParseLeaveOut"), ColumnListText(leftOut));
  onEdited();
}

}  // namespace velmora::ui
