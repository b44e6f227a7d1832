#pragma once

#include <memory>
#include <optional>

#include "core/workbench.hpp"
#include "graph/picture.hpp"

class QMenu;
class QPrinter;
class QWidget;

namespace velmora {
class GraphPlot;
}  // namespace velmora

namespace velmora::ui {

/// Pictures of the graph in a window: as a file, for the clipboard, on paper.
class GraphPictures {
 public:
  /// Of what `plot`, which is a part of `window`, shows.
  GraphPictures(Workbench& workbench, QWidget* window, const GraphPlot& plot);
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
  const GraphPlot& plot_;
  bool whitePaper_ = true;
  std::unique_ptr<QPrinter> printer_;  // made when first wanted: asking for printers takes time
};

}  // namespace velmora::ui
