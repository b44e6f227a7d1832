#include "ui/data/sample_grid.hpp"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "core/text/numbers.hpp"
#include "data/sample_cell.hpp"
#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr int kScrollEvery = 40;  // ms

}  // namespace

SampleGrid::SampleGrid(const Workbench& workbench, QWidget* parent)
    : QAbstractScrollArea(parent), workbench_(workbench) {
  setObjectName(QStringLiteral("samples"));
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  viewport()->setCursor(Qt::ArrowCursor);
  Measure();
}

// A command may be at work while the grid paints: the matrix itself says what there is.
std::int32_t SampleGrid::Samples() const {
  const Trial& trial = workbench_.trial;
  return static_cast<std::int32_t>(std::min<std::int64_t>(trial.NData, trial.matrix.Samples()));
}

int SampleGrid::Channels() const {
  const Trial& trial = workbench_.trial;
  return std::min<int>(trial.NChan, trial.matrix.Channels());
}

GridCell SampleGrid::Clamped(const GridCell& cell) const {
  return {std::clamp(cell.sample, 1, std::max(1, Samples())), std::clamp(cell.channel, 0, Channels())};
}

void SampleGrid::Refresh() {
  Measure();
  SetBars();
  anchor_ = Clamped(anchor_);
  current_ = Clamped(current_);
  viewport()->update();
  Q_EMIT Moved();
}

void SampleGrid::Measure() {
  const QFontMetrics metrics = fontMetrics();
  const auto widthOf = [&metrics](const std::string& text) {
    return metrics.horizontalAdvance(ToQt(text)) + 2 * kPad;
  };
  const std::string& pattern = workbench_.patterns.ValuePattern;
  rowHeight_ = metrics.height() + 6;
  headHeight_ = 2 * metrics.height() + 12;
  sampleWidth_ = std::max(widthOf(FormatCount(Samples())), widthOf("Sample"));
  const float last = Samples() > 0 ? workbench_.trial.matrix.At(Samples(), 0) : 0.0F;
  abscissaWidth_ = std::max(widthOf(ShownAbscissa(workbench_, last) + "00"), widthOf("00000.0000"));
  columnWidth_ = widthOf(ShownSample(-100000000.0F, pattern));
}

int SampleGrid::WholeRows() const {
  return std::max(1, (viewport()->height() - headHeight_) / rowHeight_);
}

int SampleGrid::WholeColumns() const {
  return std::max(1, (viewport()->width() - FrozenWidth()) / columnWidth_);
}

void SampleGrid::SetBars() {
  verticalScrollBar()->setRange(0, std::max(0, Samples() - WholeRows()));
  verticalScrollBar()->setPageStep(WholeRows());
  horizontalScrollBar()->setRange(0, std::max(0, Channels() - WholeColumns()));
  horizontalScrollBar()->setPageStep(WholeColumns());
}

int SampleGrid::ColumnLeft(int channel) const {
  return channel == 0 ? sampleWidth_
                      : FrozenWidth() + (channel - 1 - horizontalScrollBar()->value()) * columnWidth_;
}

QRect SampleGrid::CellRect(const GridCell& cell) const {
  const std::int64_t row = std::int64_t{cell.sample} - 1 - verticalScrollBar()->value();
  if (row < 0 || row > WholeRows() || (cell.channel > 0 && cell.channel <= horizontalScrollBar()->value())) {
    return {-1, -1, 0, 0};
  }
  return {ColumnLeft(cell.channel), headHeight_ + static_cast<int>(row) * rowHeight_,
          ColumnWidth(cell.channel), rowHeight_};
}

QString SampleGrid::CellText(const GridCell& cell) const {
  const float value = workbench_.trial.matrix.At(cell.sample, cell.channel);
  return ToQt(cell.channel == 0 ? ShownAbscissa(workbench_, value)
                                : ShownSample(value, workbench_.patterns.ValuePattern));
}

GridBlock SampleGrid::Selected() const {
  const GridCell a = Clamped(anchor_);
  const GridCell b = Clamped(current_);
  return {{std::min(a.sample, b.sample), std::min(a.channel, b.channel)},
          {std::max(a.sample, b.sample), std::max(a.channel, b.channel)}};
}

void SampleGrid::GoTo(GridCell cell, bool extend) {
  current_ = Clamped(cell);
  anchor_ = extend ? anchor_ : current_;
  QScrollBar* rows = verticalScrollBar();
  rows->setValue(std::clamp(rows->value(), current_.sample - WholeRows(), current_.sample - 1));
  if (current_.channel > 0) {
    QScrollBar* columns = horizontalScrollBar();
    columns->setValue(std::clamp(columns->value(), current_.channel - WholeColumns(), current_.channel - 1));
  }
  viewport()->update();
  Q_EMIT Moved();
}

void SampleGrid::SelectAll() {
  anchor_ = {1, 0};
  current_ = Clamped({Samples(), Channels()});
  viewport()->update();
  Q_EMIT Moved();
}

void SampleGrid::MoveBy(std::int64_t samples, int channels, bool extend) {
  const std::int64_t sample = std::clamp<std::int64_t>(current_.sample + samples, 1, std::max(1, Samples()));
  GoTo({static_cast<std::int32_t>(sample), current_.channel + channels}, extend);
}

void SampleGrid::keyPressEvent(QKeyEvent* event) {
  const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
  const bool far = event->modifiers().testFlag(Qt::ControlModifier);
  const std::int64_t all = Samples();
  switch (event->key()) {
    case Qt::Key_Up:
      return MoveBy(far ? -all : -1, 0, extend);
    case Qt::Key_Down:
      return MoveBy(far ? all : 1, 0, extend);
    case Qt::Key_Left:
      return MoveBy(0, far ? -kMaxChannels : -1, extend);
    case Qt::Key_Right:
      return MoveBy(0, far ? kMaxChannels : 1, extend);
    case Qt::Key_PageUp:
      return MoveBy(-WholeRows(), 0, extend);
    case Qt::Key_PageDown:
      return MoveBy(WholeRows(), 0, extend);
    case Qt::Key_Home:
      return MoveBy(far ? -all : 0, -kMaxChannels, extend);
    case Qt::Key_End:
      return MoveBy(far ? all : 0, kMaxChannels, extend);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Q_EMIT ChangeWanted();
      return;
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

SampleGrid::Hit SampleGrid::HitAt(const QPoint& at) const {
  const bool head = at.y() < headHeight_;
  const int row = (std::max(at.y(), headHeight_) - headHeight_) / rowHeight_;
  const std::int64_t sample = std::int64_t{verticalScrollBar()->value()} + 1 + row;
  int channel = 0;
  if (at.x() >= FrozenWidth()) {
    channel = horizontalScrollBar()->value() + 1 + (at.x() - FrozenWidth()) / columnWidth_;
  }
  const bool number = at.x() < sampleWidth_;
  return {.part = head     ? (number ? Part::Corner : Part::ColumnHead)
                  : number ? Part::RowHead
                           : Part::Cells,
          .cell = Clamped({static_cast<std::int32_t>(std::min<std::int64_t>(sample, Samples())), channel})};
}

// As in a spreadsheet: a head stands for its whole row or column, the corner for everything.
void SampleGrid::Drag(const QPoint& at) {
  const Hit hit = HitAt(at);
  if (pressed_.part == Part::ColumnHead) {
    anchor_ = {1, anchor_.channel};
    current_ = {std::max(1, Samples()), hit.cell.channel};
  } else if (pressed_.part == Part::RowHead) {
    anchor_ = {anchor_.sample, 0};
    current_ = {hit.cell.sample, Channels()};
  } else {
    GoTo(hit.cell, true);
  }
  viewport()->update();
  Q_EMIT Moved();
}

void SampleGrid::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || Samples() == 0) {
    return;
  }
  pressed_ = HitAt(event->position().toPoint());
  if (pressed_.part == Part::Corner) {
    SelectAll();
    return;
  }
  dragging_ = true;
  anchor_ = event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : pressed_.cell;
  Drag(event->position().toPoint());
}

void SampleGrid::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging_) {
    return;
  }
  const QPoint at = event->position().toPoint();
  const bool beyond = !viewport()->rect().adjusted(0, headHeight_, 0, 0).contains(at);
  if (beyond && pressed_.part == Part::Cells) {
    scrolling_.start(kScrollEvery, this);
  } else {
    scrolling_.stop();
  }
  Drag(at);
}

void SampleGrid::mouseReleaseEvent(QMouseEvent* /*event*/) {
  dragging_ = false;
  scrolling_.stop();
}

void SampleGrid::timerEvent(QTimerEvent* event) {
  if (event->timerId() != scrolling_.timerId()) {
    QAbstractScrollArea::timerEvent(event);
    return;
  }
  const QPoint at = viewport()->mapFromGlobal(QCursor::pos());
  const std::int64_t down = at.y() >= viewport()->height() ? 1 : at.y() < headHeight_ ? -1 : 0;
  const int right = at.x() >= viewport()->width() ? 1 : at.x() < FrozenWidth() ? -1 : 0;
  MoveBy(3 * down, right, true);
}

void SampleGrid::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && Samples() > 0 &&
      HitAt(event->position().toPoint()).part == Part::Cells) {
    Q_EMIT ChangeWanted();
  }
}

void SampleGrid::resizeEvent(QResizeEvent* /*event*/) {
  SetBars();
}

void SampleGrid::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    Measure();
    SetBars();
  }
}

// A tip has all digits of a sample, and the whole of a label.
bool SampleGrid::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip || Samples() == 0) {
    return QAbstractScrollArea::viewportEvent(event);
  }
  const auto* help = static_cast<QHelpEvent*>(event);
  const Hit hit = HitAt(help->pos());
  const Trial& trial = workbench_.trial;
  QToolTip::showText(help->globalPos(),
                     hit.part == Part::ColumnHead ? ToQt(ColumnName(trial, hit.cell.channel))
                     : hit.part == Part::Cells
                         ? ToQt(PlainNumber(trial.matrix.At(hit.cell.sample, hit.cell.channel)))
                         : QString(),
                     viewport());
  return true;
}

}  // namespace velmora::ui
