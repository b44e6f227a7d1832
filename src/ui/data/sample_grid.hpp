#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <cstdint>

#include "core/workbench.hpp"

namespace velmora::ui {

/// A cell: a sample (from 1) of a channel, or of the abscissa (channel 0).
struct GridCell {
  std::int32_t sample = 1;
  int channel = 1;

  friend bool operator==(const GridCell&, const GridCell&) = default;
};

/// Cells from one corner to the other, both included.
struct GridBlock {
  GridCell first;
  GridCell last;

  [[nodiscard]] bool Holds(const GridCell& cell) const {
    return cell.sample >= first.sample && cell.sample <= last.sample && cell.channel >= first.channel &&
           cell.channel <= last.channel;
  }
  [[nodiscard]] std::int64_t Cells() const {
    return (std::int64_t{last.sample} - first.sample + 1) * (last.channel - first.channel + 1);
  }
};

/// The samples of the trial as a grid: sample number and abscissa stay in sight, a column a channel. Only the
/// rows in sight are made, when they are painted: Qt's own tables keep some bytes of every row, which for ten
/// million samples is more than a screen of them is worth, and takes as long.
class SampleGrid : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit SampleGrid(const Workbench& workbench, QWidget* parent = nullptr);

  /// The trial may be another, or have fewer samples and channels.
  void Refresh();

  [[nodiscard]] GridCell Current() const { return Clamped(current_); }
  [[nodiscard]] GridBlock Selected() const;
  /// Makes this the current cell and brings it into sight; the selection ends there, and begins there too
  /// unless it is extended.
  void GoTo(GridCell cell, bool extend = false);
  void SelectAll();

  /// Where a cell is painted, in the viewport; outside of it when it is not in sight.
  [[nodiscard]] QRect CellRect(const GridCell& cell) const;
  /// What stands in a cell.
  [[nodiscard]] QString CellText(const GridCell& cell) const;

 Q_SIGNALS:
  /// Another cell is current, or others are selected.
  void Moved();
  void ChangeWanted();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  static constexpr int kPad = 8;  // pixels to each side of a text

  enum class Part { Corner, ColumnHead, RowHead, Cells };
  struct Hit {
    Part part = Part::Cells;
    GridCell cell;
  };

  [[nodiscard]] std::int32_t Samples() const;
  [[nodiscard]] int Channels() const;
  [[nodiscard]] GridCell Clamped(const GridCell& cell) const;
  [[nodiscard]] int WholeRows() const;
  [[nodiscard]] int WholeColumns() const;
  [[nodiscard]] int FrozenWidth() const { return sampleWidth_ + abscissaWidth_; }
  [[nodiscard]] int ColumnLeft(int channel) const;
  [[nodiscard]] int ColumnWidth(int channel) const { return channel == 0 ? abscissaWidth_ : columnWidth_; }
  [[nodiscard]] Hit HitAt(const QPoint& at) const;
  void Measure();
  void SetBars();
  void MoveBy(std::int64_t samples, int channels, bool extend);
  void Drag(const QPoint& at);

  void PaintRow(QPainter& painter, std::int32_t sample, int lastChannel) const;
  void PaintCell(QPainter& painter, const GridCell& cell, bool tinted) const;
  void PaintHead(QPainter& painter, int channel) const;
  void PaintFrame(QPainter& painter, const GridCell& cell) const;

  const Workbench& workbench_;
  GridCell anchor_;   // where the selection began
  GridCell current_;  // and where it ends
  Hit pressed_;
  bool dragging_ = false;
  QBasicTimer scrolling_;  // while a drag is held beyond an edge
  int rowHeight_ = 1;
  int headHeight_ = 1;
  int sampleWidth_ = 1;
  int abscissaWidth_ = 1;
  int columnWidth_ = 1;
};

}  // namespace velmora::ui
