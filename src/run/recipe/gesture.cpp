#include "run/recipe/gesture.hpp"

#include "core/files/files.hpp"
#include "core/trial/helpers.hpp"
#include "graph/save_picture.hpp"
#include "run/report/drawing.hpp"

namespace velmora {
namespace {

struct Gesture {
  Workbench& workbench;

  void operator()(const CloseGesture& /*close*/) const { LeaveView(workbench); }
  void operator()(const KeyPress& key) const {
    if (!workbench.view->PressKey(key)) {
      throw NoSuchKey("the graph has no key \"" + key.name + "\"");
    }
  }
  void operator()(const CursorMove& move) const {
    workbench.view->MoveCursor(move.cursor, move.x, move.graph);
  }
  void operator()(const ThresholdMove& move) const { workbench.view->MoveThreshold(move.graph, move.y); }
  void operator()(const GraphClick& click) const { workbench.view->Click(click.graph, click.how); }
  void operator()(const ImageGesture& image) const {
    PictureOrder order = PictureOfView(workbench);
    order.format = *PictureFormatOf(image.file);
    order.width = image.width;
    order.height = image.height;
    order.paper = image.white ? std::optional(kWhite) : std::nullopt;
    const std::string picture = LoadAndDraw(order);
    try {
      OutputFile file(image.file);
      file.Write(picture);
      CommitSave(workbench, file);
    } catch (const FileError& error) {
      throw std::runtime_error("cannot write " + image.file + ": " + error.what());
    }
  }
};

}  // namespace

void DoGesture(Workbench& workbench, const ViewStep& step) {
  std::visit(Gesture{workbench}, step.what);
}

}  // namespace velmora
