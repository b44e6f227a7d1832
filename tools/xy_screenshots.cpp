#include "xy_screenshots.hpp"

namespace velmora::pictures {
namespace {

constexpr int kHintGoes = 7200;  // milliseconds

}  // namespace

void ShowXYPlot(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  window.State().trial.FileChanged = false;
  window.OpenFile((data / "hip-knee-stride.vmb").string());
  QTest::qWait(300);
  window.State().trial.CursorLo = 1;  // stance
  window.State().trial.CursorHi = 69;
  photographer.Dialogue("graph.xy", "frmXYChoose", "xy-choose", "OK", [](QWidget* dialog) {
    dialog->findChild<QCheckBox*>(QStringLiteral("chkTime"))->click();
  });
  QWidget* plot = WindowOf("frmXY");
  QTest::qWait(kHintGoes);
  photographer.Keep(plot, "xy-time");
  plot->resize(1500, 560);
  window.RunCommand(*FindCommand("xy.ellipse"));
  photographer.Keep(plot, "xy-wide");
  plot->resize(640, 900);
  window.RunCommand(*FindCommand("xy.colour-by-time"));
  window.RunCommand(*FindCommand("background.white"));
  photographer.Keep(plot, "xy-tall");
  plot->close();
}

}  // namespace velmora::pictures
