#include "ui/dialogs/text_picture.hpp"

#include <QBoxLayout>
#include <QFontDatabase>
#include <QLabel>
#include <QTextBlock>

#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kNumberWidth = 5;  // of the line numbers in front

struct Span {
  int from = 0;
  int to = 0;
};

// The fields of a line as the eye sees them: between separators when there are any, else between blanks.
std::vector<Span> FieldsOf(const QString& line, bool semicolons, bool decimalComma) {
  const auto separates = [&](QChar c) {
    return c == '\t' || (c == ',' && !decimalComma) || (c == ';' && semicolons);
  };
  const bool separated = std::any_of(line.begin(), line.end(), separates);
  const auto ends = [&](QChar c) { return separated ? separates(c) : c == ' '; };
  std::vector<Span> fields;
  const int size = static_cast<int>(line.size());
  for (int at = 0; at < size || (separated && at == size);) {
    int end = at;
    while (end < size && !ends(line[end])) {
      ++end;
    }
    if (separated || end > at) {
      fields.push_back({at, end});
    }
    at = end + 1;
  }
  return fields;
}

}  // namespace

TextPicture::TextPicture(const Form& form, const Workbench& workbench) : form_(form), workbench_(workbench) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  AddLegend(layout);
  text_ = new QPlainTextEdit;
  text_->setReadOnly(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setTabStopDistance(text_->fontMetrics().horizontalAdvance(' ') * 12);
  text_->setMinimumSize(560, 420);
  layout->addWidget(text_, 1);
  QStringList numbered;
  const Trial& trial = workbench.trial;
  for (int k = 1; k <= trial.HeaderLineCount; ++k) {
    lines_ << ToQt(trial.HeaderLines[k]);
    numbered << QStringLiteral("%1  ").arg(k, kNumberWidth - 2) + lines_.constLast();
  }
  text_->setPlainText(numbered.join('\n'));
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

TextPicture::Part TextPicture::PartOfColumn(int column) const {
  if (column > ValueOf<std::int32_t>(form_, "NChan")) {
    return Part::Unread;
  }
  if (ValueOf<bool>(form_, "ParseHasTime") && column == ValueOf<std::int32_t>(form_, "ParseTimeColumn")) {
    return Part::Time;
  }
  return column % 2 == 0 ? Part::Data : Part::OtherData;
}

void TextPicture::Show(int /*channel*/) {
  QList<QTextEdit::ExtraSelection> marks;
  for (int number = 1; number <= lines_.size(); ++number) {
    MarkLine(number, marks);
  }
  text_->setExtraSelections(marks);
}

void TextPicture::MarkLine(int number, QList<QTextEdit::ExtraSelection>& marks) const {
  const QString& line = lines_[number - 1];
  if (number > ValueOf<std::int32_t>(form_, "ParseSkip")) {
    int column = 0;
    for (const Span& field :
         FieldsOf(line, ValueOf<bool>(form_, "ParseSemicolons"), ValueOf<bool>(form_, "ParseDecimalComma"))) {
      Mark(number, field.from, field.to, PartOfColumn(++column), marks);
    }
    return;
  }
  const Part part = number == ValueOf<std::int32_t>(form_, "ParseLabelsLine")  ? Part::Labels
                    : number == ValueOf<std::int32_t>(form_, "ParseUnitsLine") ? Part::Units
                                                                               : Part::Skipped;
  if (part != Part::Skipped) {
    for (const Span& field : FieldsOf(line, ValueOf<bool>(form_, "ParseSemicolons"), false)) {
      Mark(number, field.from, field.to, part, marks);
    }
  } else {
    Mark(number, 0, static_cast<int>(line.size()), part, marks);
  }
}

void TextPicture::Mark(int number, int from, int to, Part part,
                       QList<QTextEdit::ExtraSelection>& marks) const {
  QTextCursor cursor(text_->document()->findBlockByNumber(number - 1));
  const int start = cursor.position() + kNumberWidth;
  cursor.setPosition(start + from);
  cursor.setPosition(start + to, QTextCursor::KeepAnchor);
  QTextEdit::ExtraSelection mark;
  mark.cursor = cursor;
  if (part == Part::Skipped || part == Part::Unread) {
    mark.format.setForeground(QuietColour(palette()));
  }
  if (part != Part::Skipped) {
    mark.format.setBackground(Ground(part));
  }
  marks << mark;
}

}  // namespace velmora::ui
