#include "view_screenshots.hpp"

#include <limits>

#include "ui/data/data_window.hpp"
#include "ui/data/sample_grid.hpp"

namespace velmora::pictures {
namespace {

// 64 channels, from a sample in the middle on: rows between the cursors, a block that is selected, and a
// value of every kind.
void ShowTable(ui::MainWindow& window, Photographer& photographer) {
  Trial& trial = window.State().trial;
  trial.CursorLo = 9996;
  trial.CursorHi = 10012;
  trial.Data(10003, 2) = std::numeric_limits<float>::quiet_NaN();
  trial.Data(10004, 5) = 2.5e-7F;
  trial.Data(10006, 3) = 3e12F;
  for (auto* action : window.findChildren<QAction*>()) {
    if (action->text() == QStringLiteral("Data &table")) {
      action->trigger();
    }
  }
  auto* table = qobject_cast<ui::DataWindow*>(WindowOf("frmData"));
  table->Grid().GoTo({10018, 1});
  table->Grid().GoTo({10000, 4});
  photographer.Keep(table, "data-table");
  table->Grid().GoTo({10008, 6}, true);
  photographer.Keep(table, "data-table-selected");
  table->close();
  trial.FileChanged = false;
}

}  // namespace

void ShowViews(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  Open(window, data / "emg-bursts.vmb");
  photographer.Dialogue("data.header", "frmHeaderLines", "header", "Exit");
  photographer.Dialogue("report.save", "frmReport", "report", "Cancel");
  Open(window, data / "many.vmb");
  ShowTable(window, photographer);
}

}  // namespace velmora::pictures
