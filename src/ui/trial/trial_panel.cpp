#include "ui/trial/trial_panel.hpp"

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>

#include "core/files/paths.hpp"
#include "core/results/trial_lines.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "formats/fixed_names.hpp"
#include "import/format_name.hpp"
#include "ui/elided_label.hpp"
#include "ui/main/theme.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kLeastRow = 30;
constexpr int kMostRow = 110;
constexpr int kExperimentLines = 4;  // what the experimenter wrote; behind it stand counts

// As many decimals as the range of the channel calls for, the pattern of data values at least.
QString Readable(double value, const Extremes& whole) {
  constexpr int kDecimals = 4;
  const double span = std::max(std::abs(double{whole.min}), std::abs(double{whole.max}));
  if (!std::isfinite(value) || !std::isfinite(span)) {
    return QStringLiteral("–");
  }
  if (span > 0 && (span < 1e-4 || span >= 1e9)) {
    return QString::number(value, 'g', kDecimals);
  }
  const int digits = span > 0 ? static_cast<int>(std::floor(std::log10(span))) : 0;
  return QString::number(value, 'f', std::clamp(kDecimals - digits, 0, 8));
}

QString TimeBaseMark(TimeBase base) {
  switch (base) {
    case TimeBase::Count:
      return QObject::tr("Sample count time base");
    case TimeBase::Percentage:
      return QObject::tr("Percentage time base");
    case TimeBase::UserUnits:
      return QObject::tr("User units time base");
    case TimeBase::Frames:
      return QObject::tr("Frames time base");
    case TimeBase::HhMmSs:
      return QObject::tr("HH:MM:SS time base");
    case TimeBase::Seconds:
      break;
  }
  return {};
}

// As wide as the panel, whatever it says.
ElidedLabel* Line(Qt::TextElideMode where) {
  auto* label = new ElidedLabel(where);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  return label;
}

ElidedLabel* QuietLine(Qt::TextElideMode where) {
  ElidedLabel* label = Line(where);
  SetTone(label, Tone::Quiet);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace

TrialPanel::TrialPanel(const Workbench& workbench, const ChannelTraces& traces, QWidget* parent)
    : QWidget(parent), workbench_(workbench), traces_(traces) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(14, 12, 14, 8);
  layout->setSpacing(3);
  auto* top = new QHBoxLayout;
  title_ = Line(Qt::ElideMiddle);
  title_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QFont font = title_->font();
  font.setPointSizeF(font.pointSizeF() * 1.55);
  font.setWeight(QFont::DemiBold);
  title_->setFont(font);
  top->addWidget(title_, 1);
  marks_ = new QHBoxLayout;
  marks_->setSpacing(6);
  top->addLayout(marks_);
  layout->addLayout(top);
  facts_ = QuietLine(Qt::ElideMiddle);
  layout->addWidget(facts_);
  header_ = QuietLine(Qt::ElideRight);
  layout->addWidget(header_);
  notice_ = Line(Qt::ElideRight);
  notice_->setObjectName(QStringLiteral("notice"));
  SetTone(notice_, Tone::Warning);
  layout->addWidget(notice_);
  layout->addSpacing(8);
  model_ = new ChannelTableModel(workbench, Columns(), this);
  table_ = new ChannelTableView(workbench, &traces, model_, this);
  table_->setObjectName(QStringLiteral("channels"));
  table_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(table_, &QTableView::customContextMenuRequested, this, [this](const QPoint& at) {
    const QModelIndex index = table_->indexAt(at);
    if (index.isValid()) {
      if (!table_->selectionModel()->isSelected(index)) {
        table_->selectRow(index.row());
      }
      Q_EMIT ChannelMenu(ChannelTableModel::ChannelOf(index), table_->viewport()->mapToGlobal(at));
    }
  });
  connect(table_, &ChannelTableView::Opened, this, &TrialPanel::ChannelWanted);
  layout->addWidget(table_, 1);
}

std::vector<ChannelColumn> TrialPanel::Columns() {
  ChannelColumn trace = TraceColumn();
  trace.tip = tr("A double click shows the channel in a window of its own");
  ChannelColumn label = LabelColumn(workbench_);
  label.edit = [this](int channel, const QString& typed) { Q_EMIT LabelTyped(channel, typed); };
  label.remark = [](const QString& typed) { return ToQt(NameRemark(ToStd(typed), Label::kLength)); };
  ChannelColumn units = UnitsColumn(workbench_);
  units.edit = [this](int channel, const QString& typed) { Q_EMIT UnitsTyped(channel, typed); };
  units.remark = [](const QString& typed) { return ToQt(NameRemark(ToStd(typed), Units::kLength)); };
  const auto number = [this](const QString& head, double (*of)(const ChannelTraces&, int)) {
    return ChannelColumn{.head = head, .kind = ChannelColumn::Kind::Number, .text = [this, of](int channel) {
                           const bool there = traces_.Has(channel) && !traces_.Whole(channel).Empty();
                           return there ? Readable(of(traces_, channel), traces_.Whole(channel)) : QString();
                         }};
  };
  return {
      SwatchColumn(),
      NumberColumn(),
      label,
      units,
      number(tr("Minimum"), [](const ChannelTraces& traces, int c) { return double{traces.Whole(c).min}; }),
      number(tr("Maximum"), [](const ChannelTraces& traces, int c) { return double{traces.Whole(c).max}; }),
      number(tr("Mean"), [](const ChannelTraces& traces, int c) { return traces.Mean(c); }),
      trace};
}

void TrialPanel::Refresh(const QString& file) {
  const Trial& trial = workbench_.trial;
  title_->setText(ToQt(TitleIsPath(trial) ? BaseName(trial.TrialTitle) : TitleOnOneLine(trial)));
  const QLocale locale(QLocale::English);
  facts_->setText(QStringLiteral("%1   ·   %2   ·   %3 × %4   ·   %5 Hz   ·   %6 s")
                      .arg(ToQt(FileNamePart(ToStd(file))), ToQt(FormatNameOf(trial)),
                           trial.NChan == 1 ? tr("1 channel") : tr("%1 channels").arg(trial.NChan),
                           tr("%1 samples").arg(locale.toString(trial.NData)),
                           ToQt(FormatNumber(trial.Rate, workbench_.patterns.RatePattern)),
                           ToQt(FormatNumber(trial.Duration, workbench_.patterns.TimePattern))));
  facts_->setToolTip(file);
  QStringList lines;
  for (int k = 1; k <= trial.HeaderLineCount; ++k) {
    lines << ToQt(TrimRight(trial.HeaderLines[k]));
  }
  QStringList experiment = lines.mid(0, kExperimentLines);
  experiment.removeAll(QString());
  header_->setText(experiment.join(QStringLiteral("   ·   ")));
  header_->setToolTip(lines.join('\n'));
  header_->setVisible(!experiment.isEmpty());
  ShowNotices();
  ShowMarks();
  if (file_ != file) {
    table_->clearSelection();  // it spoke of another trial
    file_ = file;
  }
  model_->Refresh();
  for (int k = 1; k + 1 < model_->columnCount({}); ++k) {
    table_->resizeColumnToContents(k);
    table_->horizontalHeader()->resizeSection(k, table_->horizontalHeader()->sectionSize(k) + 8);
  }
  FitRows();
}

// One line; the whole of it, a line each, under the mouse.
void TrialPanel::ShowNotices() {
  QStringList notices;
  for (const std::string& notice : workbench_.trial.Notices) {
    notices << ToQt(notice);
  }
  notice_->setText(notices.join(QStringLiteral("   ·   ")));
  notice_->setToolTip(notices.join('\n'));
  notice_->setVisible(!notices.isEmpty());
}

void TrialPanel::AddMark(const QString& text, bool warns) {
  auto* mark = new QLabel(text);
  SetTone(mark, warns ? Tone::WarningMark : Tone::Mark);
  marks_->addWidget(mark);
}

void TrialPanel::ShowMarks() {
  while (QLayoutItem* item = marks_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  const Trial& trial = workbench_.trial;
  if (trial.CursorLo > 1 || trial.CursorHi < trial.NData) {
    AddMark(tr("Cursors %1 to %2 s")
                .arg(ToQt(FormatNumber(PlaceOf(trial, trial.CursorLo), workbench_.patterns.TimePattern)),
                     ToQt(FormatNumber(PlaceOf(trial, trial.CursorHi), workbench_.patterns.TimePattern))),
            false);
  }
  if (trial.ForcesReduced) {
    AddMark(tr("Forces reduced"), false);
  }
  if (const QString base = TimeBaseMark(workbench_.time.Base); !base.isEmpty()) {
    AddMark(base, false);
  }
  if (trial.FileChanged) {
    AddMark(tr("Modified"), true);
  }
}

// Few channels get tall traces; many keep a line that can be read.
void TrialPanel::FitRows() {
  const int room = table_->height() - table_->horizontalHeader()->height() - 4;
  const int rows = std::max(1, model_->rowCount({}));
  table_->verticalHeader()->setDefaultSectionSize(std::clamp(room / rows, kLeastRow, kMostRow));
}

// Nothing selected: commands start as they do by themselves.
void TrialPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    table_->clearSelection();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void TrialPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitRows();
}

}  // namespace velmora::ui
