#include "graph/save_picture.hpp"

#include <stdexcept>

#include "core/files/files.hpp"
#include "core/trial/helpers.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {

PictureOrder PictureOfView(Workbench& workbench) {
  const GraphView& view = OpenGraphView(workbench);
  const MultiView* multi = FindMultiView(workbench);
  return {.graph = view.Lead(),
          .title = view.TitleText(),
          .lanes = multi != nullptr ? LanesOf(*multi) : std::vector<Lane>{}};
}

void SavePicture(Workbench& workbench, PictureOrder order) {
  const std::vector<std::string> chosen = workbench.questions.AskFile(
      {.mode = FileQuestion::Mode::Save,
       .title = "Save picture",
       .defaultName = workbench.trial.TrialName + ".png",
       .extension = ".png",
       .filter = "PNG image (.png)|*.png|SVG drawing (.svg)|*.svg|PDF document (.pdf)|*.pdf",
       .directory = workbench.DataDir});
  if (chosen.empty()) {
    return;
  }
  const std::optional<PictureFormat> format = PictureFormatOf(chosen.front());
  if (!format) {
    ShowRefusal(workbench, {.title = "Save picture",
                            .text = "A picture is a .png, .svg or .pdf file.",
                            .icon = Icon::Exclamation});
    return;
  }
  order.format = *format;
  try {
    if (!workbench.desktop.draw) {
      throw std::runtime_error("Pictures cannot be drawn here.");
    }
    OutputFile file(chosen.front());
    file.Write(workbench.desktop.draw(order));
    CommitSave(workbench, file);
  } catch (const std::exception& error) {
    ShowFailure(workbench, {.title = "Save picture", .text = error.what(), .icon = Icon::Exclamation});
  }
}

}  // namespace velmora
