#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "core/workbench.hpp"
#include "graph/picture.hpp"

class QMenu;
class QPrinter;
class QWidget;

namespace velmora::ui {

/// Pictures of the graph in a window: as a file, for the clipboard, on paper.
class GraphPictures {
 public:
  /// Nothing while there is nothing to show.
  using Shown = std::function<std::optional<PictureOrder>()>;
  /// Of what `window` shows in its plot.
  GraphPictures(Workbench& workbench, QWidget* window, Shown shown);
  ~GraphPictures();

  void AddEntries(QMenu* menu);

 private:
  [[nodiscard]] std::optional<PictureOrder> Order() const;
  void Save();
  void Copy();
  void Print();
  void SetUpPrinter();
  QPrinter& Printer();

  Workbench& workbench_;
  QWidget* window_;
  Shown shown_;
  bool whitePaper_ = true;
  std::unique_ptr<QPrinter> printer_;  // made when first wanted: asking for printers takes time
};

}  // namespace velmora::ui
