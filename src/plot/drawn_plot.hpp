#pragma once

#include <qcustomplot.h>

#include <optional>

#include "graph/graph.hpp"
#include "graph/picture.hpp"

namespace velmora {

/// What the drawings of a graph and of a stack of graphs have in common. They show what their graphs hold at
/// the last Arrange; the graphs must outlive them or be replaced.
class DrawnPlot : public QCustomPlot {
 public:
  explicit DrawnPlot(QWidget* parent);

  /// Lets go of the graphs: an empty plot from the next Arrange on.
  virtual void Clear() = 0;
  /// The title with what a view adds to it.
  void SetTitle(const QString& title) { title_ = title; }
  /// What the mouse is told that rests on the title, which may be elided.
  void SetTitleTip(const QString& tip) { titleTip_ = tip; }
  /// Another background than the graphs' own.
  void SetPaper(std::optional<Colour> paper) { paper_ = paper; }

  /// Takes everything from the graphs; draws nothing yet.
  virtual void Arrange() = 0;
  /// Arranges, and draws before the next event; several calls in a row draw once.
  virtual void Redraw();
  /// Draws what lies above the traces anew, which is quick: cursors, lines and marks.
  void RedrawCursors();
  /// Ends what the mouse is doing, without effect. False when it did nothing.
  virtual bool CancelGesture() { return false; }

  [[nodiscard]] Colour Background() const;
  /// What stands above the axes; empty: nothing.
  [[nodiscard]] QString Heading() const;
  /// What is shown, as a picture of the same size; nothing without a graph.
  [[nodiscard]] virtual std::optional<PictureOrder> Picture() const;

 protected:
  /// The graph whose background and heading are those of all; nullptr: none is shown.
  [[nodiscard]] virtual const Graph* Lead() const = 0;
  /// The plot library's topmost layer, which can be drawn without the rest.
  [[nodiscard]] QCPLayer* CursorLayer() const { return layer("overlay"); }
  void ShowPointer(Qt::CursorShape shape);
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString title_;
  QString titleTip_;
  std::optional<Colour> paper_;
};

}  // namespace velmora
