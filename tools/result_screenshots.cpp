#include "result_screenshots.hpp"

#include <QComboBox>
#include <initializer_list>
#include <utility>

namespace velmora::pictures {
namespace {

// Stopped while it is made, where each pause lets the panel show another row, then done to its end.
void ShowFatigue(ui::MainWindow& window, Photographer& photographer) {
  const auto prepare = [](QWidget* dialog) {
    Type(dialog, "txtInterval", QStringLiteral("1"));
    Choose(dialog, QStringLiteral("50%"));
    Tick(dialog, "chkPause");
  };
  const auto goOn = [](QWidget* dialog) { Tick(dialog, "chkPause"); };
  std::deque<DialogueStep> steps = {{"frmFatigue", "Select Channel", "fatigue", prepare},
                                    {"frmChoose", "Process", nullptr, Pick({0})}};
  for (int pause = 0; pause < 5; ++pause) {
    steps.push_back({"QMessageBox", "OK", nullptr, [](QWidget*) { QTest::qWait(100); }});
  }
  const auto keepPanel = [&photographer](QWidget*) {
    photographer.Keep(WindowOf("frmLoading"), "fatigue-running");
  };
  const std::deque<DialogueStep> rest = {
      {"QMessageBox", "Cancel", nullptr, keepPanel},
      {"frmFatigueTable", "Done"},
      {"frmFatigue", "Select Channel", nullptr, goOn},
      {"frmChoose", "Process", nullptr, Pick({0})},
      {"frmFatigueTable", "Graph", "fatigue-table"},
      {"frmFatigueTable", "Graph", "fatigue-graph"},
      {"frmFatigueTable", "Graph", "fatigue-spectra", GraphOf("Spectra by interval")},
      {"frmFatigueTable", "Done", "fatigue-first-last", GraphOf("First and last spectrum")},
      {"frmFatigue", "Exit"}};
  steps.insert(steps.end(), rest.begin(), rest.end());
  Run(window, photographer, "emg.fatigue", steps);
}

// Chooses an entry of a list as a person does, by the keyboard.
void ChooseEntry(QWidget* dialog, const char* field, int entry) {
  auto* list = dialog->findChild<QComboBox*>(QString::fromUtf8(field));
  list->setFocus();
  for (int k = 0; k < entry; ++k) {
    QTest::keyClick(list, Qt::Key_Down);
  }
}

// Presses one button, which leads to the view of results.
void KeepBoth(ui::MainWindow& window, Photographer& photographer, const char* id, const QString& form,
              const char* dialogue, const char* results, const test::Person::Act& fill) {
  Run(window, photographer, id, {{form, "Compute", dialogue, fill}, {form, "Exit", results}});
}

}  // namespace

// One channel by harmonic regression: linear, three series by decades, the table; then by the fast transform.
void ShowSpectra(ui::MainWindow& window, Photographer& photographer) {
  test::Person& helper = photographer.Helper();
  window.RunCommand(*FindCommand("fourier.window-hanning"));
  const auto leaveReport = [&helper] {
    helper.When("QMessageBox", [](QWidget* box) { test::Person::Press(box, "OK"); });
  };
  const auto pickFirst = [&helper] {
    helper.When("frmChoose", [](QWidget* dialog) {
      auto* table = dialog->findChild<QTableView*>();
      table->setCurrentIndex(table->model()->index(0, 0));
      QTest::keyClick(table, Qt::Key_Space);
      test::Person::Press(dialog, "Process");
    });
  };
  pickFirst();
  // The dialogue asks anew after each button: the next look is taken once the one before is over.
  helper.When("frm4Series", [&](QWidget* dialog) {
    Choose(dialog, "Frequency (Hz)");
    photographer.Keep(dialog, "spectrum");
    helper.When("frm4Series", [&](QWidget* again) {
      photographer.Keep(again, "spectrum-table");
      helper.When("frm4Series", [&](QWidget* last) {
        Choose(last, "1, 2 and 3");
        Choose(last, "Log");
        photographer.Keep(last, "spectrum-log");
        leaveReport();
        test::Person::Press(last, "Exit");
      });
      test::Person::Press(again, "Graph");
    });
    test::Person::Press(dialog, "Table");
  });
  window.RunCommand(*FindCommand("fourier.harmonic-regression"));
  helper.Work();
  pickFirst();
  helper.When("frmFFT", [&](QWidget* dialog) {
    Choose(dialog, "White");
    photographer.Keep(dialog, "spectrum-fft");
    leaveReport();
    test::Person::Press(dialog, "Exit");
  });
  window.RunCommand(*FindCommand("fourier.fft"));
  helper.Work();
  helper.WhenA<QInputDialog>([](QWidget* dialog) { test::Person::Press(dialog, "OK"); });
  helper.When("Confirm Request", [](QWidget* box) { test::Person::Press(box, "Yes"); });
  photographer.Dialogue("fourier.statistics", "frmFourierStats", "spectrum-statistics", "Exit");
  helper.When("frmGenerateFourier", [](QWidget* dialog) { test::Person::Press(dialog, "Add"); });
  photographer.Dialogue("fourier.generate", "frmGenerateFourier", "generate-fourier", "Exit");
}

void ShowEmg(ui::MainWindow& window, Photographer& photographer) {
  photographer.Dialogue("emg.statistics", "frmEMGstats", "emg-statistics", "Exit");
  photographer.Dialogue("emg.trigno-delay", "frmChoose", "trigno-delay", "Cancel", Pick({1}));
  photographer.Dialogue("emg.linear-envelope", "frmChoose", "linear-envelope", "Cancel", [](QWidget* dialog) {
    auto* table = dialog->findChild<QTableView*>();
    test::Person::TypeCell(table, 0, table->model()->columnCount() - 1, "6");
    table->setCurrentIndex(table->model()->index(0, table->model()->columnCount() - 1));
  });
  const auto tickBoth = [](QWidget* dialog) {
    Tick(dialog, "chkAll");
    Tick(dialog, "chkLimits");
  };
  Run(window, photographer, "emg.apdf",
      {{"frmChoose", "Process", nullptr, Pick({0, 1})},
       {"frmAPDF", "Table", "apdf", tickBoth},
       {"frmAPDF", "Exit", "apdf-table"},
       {"C/APDF statistics", "Cancel"}});
  ShowFatigue(window, photographer);
}

void ShowStatistics(ui::MainWindow& window, Photographer& photographer) {
  Run(window, photographer, "statistics.descriptive",
      {{"frmChoose", "Process", nullptr, Pick({0, 1, 2})}, {"frmMeans", "Exit", "means"}});
  Run(window, photographer, "statistics.median",
      {{"frmChoose", "Process", nullptr, Pick({0, 1, 2})}, {"frmMedians", "Exit", "medians"}});
  Run(window, photographer, "statistics.correlation",
      {{"frmChoose", "Process", nullptr, Pick({0, 1, 2})}, {"frmCorrelation", "Exit", "correlation"}});
  KeepBoth(window, photographer, "statistics.windows", "frmWindowStats", "windows", "windows-table",
           [](QWidget* dialog) {
             Choose(dialog, "Equal windows");
             PickRow(dialog, 0);
           });
  KeepBoth(window, photographer, "statistics.regression", "frmRegression", "regression", "regression-tables",
           [](QWidget* dialog) {
             ChooseEntry(dialog, "comY", 2);
             PickRow(dialog, 0);
           });
  KeepBoth(window, photographer, "statistics.cross-correlation", "frmCrossCorrelation", "cross-correlation",
           "cross-correlation-curve", [](QWidget* dialog) {
             ChooseEntry(dialog, "comX", 1);
             ChooseEntry(dialog, "comY", 2);
             Type(dialog, "txtMaxLag", QStringLiteral("0.2"));
           });
  KeepMenu(&window, Qt::Key_S, photographer, "statistics-menu");
}

void ShowImpacts(ui::MainWindow& window, Photographer& photographer) {
  const auto fill = [](QWidget* dialog) {
    Type(dialog, "cwnHICtime", QStringLiteral("15"));
    Type(dialog, "HeadformMass", QStringLiteral("4.5"));
  };
  Run(window, photographer, "impact.gsi-hic",
      {{"frmChoose", "Process"},
       {"Acceleration Data Present", "OK"},
       {"frmGSIHIC", "Exit", "head-impact", fill}});
  photographer.Dialogue("integrate.statistics", "frmIntegral", "integration-statistics", "Exit");
}

// Two plates of eight channels, defined, drawn and reduced, and the path of the centre of pressure over them.
void ShowPlates(ui::MainWindow& window, Photographer& photographer) {
  const auto define = [](QWidget* dialog) {
    Choose(dialog, QStringLiteral("Kistler 9281B"));
    Choose(dialog, QStringLiteral("Millimetres"));
    for (const auto& [field, value] :
         std::initializer_list<std::pair<const char*, int>>{{"a", 120},
                                                            {"b", 200},
                                                            {"az0", 54},
                                                            {"Width", 400},
                                                            {"Length", 600},
                                                            {"XYRange", 1},
                                                            {"ZRange", 1},
                                                            {"XSens", -1},
                                                            {"YSens", -1},
                                                            {"ZSens", -1},
                                                            {"PlateOffsetY", 600}}) {
      Type(dialog, field, QString::number(value));
    }
  };
  const auto two = [define](QWidget* dialog) {
    Type(dialog, "NumPlates", QStringLiteral("2"));
    define(dialog);
  };
  Run(window, photographer, "plates.reduce",
      {{"frmDefinePlate", "Plate 2", nullptr, two},
       {"frmDefinePlate", "OK", "define-plate", define},
       {"Minimum Force Threshold", "OK"},
       {"Autozeroing", "Yes"},
       {"Autozeroing", "Yes"}});
  Run(window, photographer, "plates.pressure", {{"frmPressurePath", "Exit", "pressure-path"}});
}

}  // namespace velmora::pictures
