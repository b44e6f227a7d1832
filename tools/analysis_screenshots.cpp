#include "analysis_screenshots.hpp"

#include <QMenu>
#include <tuple>

namespace velmora::pictures {
namespace {

void TickChannel(QWidget* dialog, int row) {
  auto* table = dialog->findChild<QTableView*>();
  for (int column = 0; column < table->model()->columnCount(); ++column) {
    const QModelIndex index = table->model()->index(row, column);
    if (index.flags().testFlag(Qt::ItemIsUserCheckable)) {
      table->model()->setData(index, Qt::Checked, Qt::CheckStateRole);
    }
  }
}

test::Person::Act Channels(std::vector<int> rows, const test::Person::Act& more = {}) {
  return [rows, more](QWidget* dialog) {
    for (const int row : rows) {
      TickChannel(dialog, row);
    }
    if (more) {
      more(dialog);
    }
  };
}

// Each family with its response; the last one is cancelled as all are.
void ShowFilterDesign(Photographer& photographer) {
  const std::pair<const char*, const char*> families[] = {{"Butterworth", "filter-design"},
                                                          {"Chebyshev", "filter-chebyshev"},
                                                          {"Inverse Chebyshev", "filter-inverse-chebyshev"},
                                                          {"Elliptic", "filter-elliptic"},
                                                          {"FIR (windowed sinc)", "filter-fir"},
                                                          {"Notch", "filter-notch"},
                                                          {"CFC (impacts)", "filter-cfc"},
                                                          {"Savitzky-Golay", "filter-savitzky-golay"},
                                                          {"Coefficients", "filter-coefficients"}};
  for (const auto& [family, picture] : families) {
    const std::string name = family;
    photographer.Dialogue("filter.design", "frmFilterDesign", picture, "Cancel",
                          Channels({0}, [name](QWidget* dialog) {
                            Choose(dialog, QString::fromStdString(name));
                            if (name == "Coefficients") {
                              Type(dialog, "txtNumerator", QStringLiteral("0.2, 0.2"));
                              Type(dialog, "txtDenominator", QStringLiteral("1, -0.6"));
                              Choose(dialog, QStringLiteral("Step response"));
                            }
                          }));
  }
}

void ShowResiduals(ui::MainWindow& window, Photographer& photographer) {
  const auto fill =
      Channels({0}, [](QWidget* dialog) { Type(dialog, "txtLinearity", QStringLiteral("0.95")); });
  Run(window, photographer, "filter.residuals",
      {{"frmResiduals", "Compute", "residuals", fill}, {"frmResiduals", "Exit", "residual-curve"}});
}

void ShowSlopes(ui::MainWindow& window, Photographer& photographer) {
  const auto fill = [](QWidget* dialog) { Type(dialog, "txtInterval", QStringLiteral("1")); };
  Run(window, photographer, "emg.fatigue",
      {{"frmFatigue", "Select Channel", nullptr, fill},
       {"frmChoose", "Process", nullptr, Pick({0})},
       {"frmFatigueTable", "Graph", "fatigue-slope-table"},
       {"frmFatigueTable", "Done", "fatigue-slopes"},
       {"frmFatigue", "Exit"}});
}

void ShowMaximums(ui::MainWindow& window, Photographer& photographer) {
  Run(window, photographer, "emg.maximums",
      {{"frmMaximums", "Compute", "maximums", Channels({0, 1})}, {"frmMaximums", "Exit", "maximums-found"}});
  photographer.Dialogue("emg.normalize", "frmNormalize", "normalize", "Cancel", Channels({0, 1}));
}

void ShowOnsets(ui::MainWindow& window, Photographer& photographer) {
  Run(window, photographer, "emg.onsets",
      {{"frmOnsets", "Compute", "onsets", Channels({0, 1})}, {"frmOnsets", "Exit", "onsets-found"}});
  Run(window, photographer, "emg.co-contraction", {{"frmCoContraction", "Cancel", "co-contraction"}});
}

void ShowIntegrals(ui::MainWindow& window, Photographer& photographer) {
  Run(window, photographer, "integrate.epoch",
      {{"frmSetEpochDuration", "OK", nullptr, Channels({0})}, {"frmEpoch", "Exit", "epochs"}});
  photographer.Dialogue("emg.integrate-reset", "frmIntegrateReset", "integrate-reset", "Cancel",
                        Channels({0}));
}

// The entries of force plates, in the Analysis menu.
void ShowPlateMenu(ui::MainWindow& window, Photographer& photographer) {
  for (auto* menu : window.findChildren<QMenu*>()) {
    if (menu->title().contains(QStringLiteral("Force Plate"))) {
      menu->popup(window.mapToGlobal(QPoint(0, 0)));
      photographer.Keep(menu, "plates-menu");
      menu->close();
    }
  }
}

// What a jump came to; steps on a treadmill; who stands, in a wide and in a tall window.
void ShowJump(ui::MainWindow& window, Photographer& photographer) {
  Run(window, photographer, "plates.gravity",
      {{"frmGravity", "Compute", "gravity"}, {"frmGravity", "Exit", "jump"}});
}

void ShowSteps(ui::MainWindow& window, Photographer& photographer) {
  Run(window, photographer, "plates.contacts",
      {{"frmContacts", "Compute", "contacts", Channels({0})}, {"frmContacts", "Exit", "contacts-found"}});
}

void ShowStance(ui::MainWindow& window, Photographer& photographer) {
  const auto define = [](QWidget* dialog) {
    Choose(dialog, QStringLiteral("AMTI 18.25x20\""));
    Choose(dialog, QStringLiteral("Millimetres"));
    Choose(dialog, QStringLiteral("As published"));
    Type(dialog, "az0", QStringLiteral("41.3"));
  };
  Run(window, photographer, "plates.reduce",
      {{"frmDefinePlate", "OK", nullptr, define}, {"Minimum Force Threshold", "OK"}});
  const auto sized = [](int width, int height) {
    return [width, height](QWidget* dialog) { dialog->resize(width, height); };
  };
  Run(window, photographer, "plates.sway",
      {{"frmSway", "Compute", "sway"}, {"frmSway", "Exit", "sway-found"}});
  for (const auto& [picture, width, height] : {std::tuple("sway-wide", 1400, 620), {"sway-tall", 620, 900}}) {
    Run(window, photographer, "plates.sway",
        {{"frmSway", "Compute"}, {"frmSway", "Graph"}, {"frmSway", "Exit", picture, sized(width, height)}});
  }
  const auto pendulum = [](QWidget* dialog) {
    Choose(dialog, QStringLiteral("Pendulum"));
    Type(dialog, "txtHeight", QStringLiteral("1.7"));
  };
  Run(window, photographer, "plates.gravity",
      {{"frmGravity", "Compute", "gravity-pendulum", pendulum}, {"frmGravity", "Exit", "gravity-found"}});
}

void ShowThreeAxes(ui::MainWindow& window, Photographer& photographer) {
  const auto fill = [](QWidget* dialog) { Choose(dialog, QStringLiteral("1000")); };
  Run(window, photographer, "impact.accelerometry",
      {{"frmAccelerometry", "Compute", "accelerometry", fill},
       {"frmAccelerometry", "Exit", "accelerometry-found"}});
}

void ShowStrikes(ui::MainWindow& window, Photographer& photographer) {
  const auto fill = Channels({2}, [](QWidget* dialog) {
    Choose(dialog, QStringLiteral("First local maximum"));
    Type(dialog, "txtPeakWindow", QStringLiteral("0.3"));
    Type(dialog, "txtBodyWeight", QStringLiteral("720"));
  });
  Run(window, photographer, "impact.analysis",
      {{"frmImpact", "Compute", "impacts", fill}, {"frmImpact", "Exit", "impacts-found"}});
}

void ShowWork(ui::MainWindow& window, Photographer& photographer) {
  const auto fill = [](QWidget* dialog) { Type(dialog, "txtSmallest", QStringLiteral("0.2")); };
  Run(window, photographer, "integrate.moment-power",
      {{"frmMomentPower", "Compute", "moment-power", fill},
       {"frmMomentPower", "Exit", "moment-power-found"}});
  Run(window, photographer, "integrate.work",
      {{"frmWork", "Compute", "work", Channels({0})}, {"frmWork", "Exit", "work-found"}});
}

}  // namespace

void ShowAnalyses(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  Open(window, data / "emg-bursts.vmb");
  ShowFilterDesign(photographer);
  ShowMaximums(window, photographer);
  ShowOnsets(window, photographer);
  ShowIntegrals(window, photographer);
  Open(window, data / "reaching.vmb");
  ShowResiduals(window, photographer);
  Open(window, data / "hold-first.vmb");
  ShowSlopes(window, photographer);
  Open(window, data / "head-fall.vmb");
  ShowThreeAxes(window, photographer);
  Open(window, data / "force-plate-step.vmb");
  ShowStrikes(window, photographer);
  Open(window, data / "ankle-step.vmb");
  ShowWork(window, photographer);
  ShowPlatforms(window, photographer, data);
}

void ShowPlatforms(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  Open(window, data / "jump.vmb");
  ShowPlateMenu(window, photographer);
  ShowJump(window, photographer);
  Open(window, data / "treadmill-walk.vmb");
  ShowSteps(window, photographer);
  Open(window, data / "quiet-stance.vmb");
  ShowStance(window, photographer);
}

}  // namespace velmora::pictures
