// velmora2-screenshots DIR light|dark [analyses|ensemble|platforms|recipe|views|xy]: walks through the
// program, or a part of it, and keeps a picture of every window.
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

#include "analysis_screenshots.hpp"
#include "app/command_table.hpp"
#include "core/trial/helpers.hpp"
#include "photographer.hpp"
#include "result_screenshots.hpp"
#include "run/recipe/recipe_questions.hpp"
#include "sample_trials.hpp"
#include "ui/main/main_window.hpp"
#include "ui/main/theme.hpp"
#include "ui/recipes/recipe_dialog.hpp"
#include "view_screenshots.hpp"
#include "xy_screenshots.hpp"

namespace {

using namespace velmora;
using namespace velmora::pictures;

constexpr QSize kWindow{1280, 800};
constexpr int kHintGoes = 8500;  // ms until the graph is without its hint

/// As many channels as there can be: rhythms of many lengths, with noise.
void MakeManyChannels(Trial& trial) {
  constexpr int channels = kMaxChannels;
  constexpr int samples = 20000;
  std::mt19937 random(7);
  trial.Rate = 1000.0;
  trial.TrialTitle = "64 channels";
  trial.AllocateData(channels, samples);
  trial.SetChannelDefaults(0);
  for (int c = 1; c <= channels; ++c) {
    trial.SetChannelDefaults(c);
    trial.ChanLabel[static_cast<std::size_t>(c)] = "Elec " + std::to_string(c);
    trial.ChanUnits[static_cast<std::size_t>(c)] = "mV";
    trial.ChanColour[static_cast<std::size_t>(c)] = DefaultColour(c);
    for (int i = 1; i <= samples; ++i) {
      const double t = i / trial.Rate;
      const double burst = std::exp(-std::pow(std::sin(t * (0.3 + c * 0.01)) * 3, 2));
      trial.Data(i, c) = static_cast<float>(burst * (static_cast<double>(random()) / 0x1p31 - 1.0) +
                                            0.2 * std::sin(t * (1 + c * 0.1)));
    }
  }
  trial.RebuildTimeColumn();
  trial.Duration = (samples - 1) / trial.Rate;
}

std::string Write(const fs::path& directory, const char* name, void (*make)(Trial&)) {
  std::string path = (directory / name).string();
  const std::vector<Answer> answers = {{.what = FileAnswer{{path}}}};
  RecipeQuestions questions;
  Workbench workbench(questions);
  make(workbench.trial);
  questions.BeginStep(answers, workbench.trial);
  RunCommand(workbench, *FindCommand("save.vmb"));
  return path;
}

QTableView* TableOf(QWidget* dialog) {
  return dialog->findChild<QTableView*>();
}

// A band, whose two edges show in the picture.
void FillBand(QWidget* dialog) {
  for (auto* choice : dialog->findChildren<QRadioButton*>()) {
    const QString caption = choice->text().remove('&');
    if (caption == "Band-pass" || caption == "Elliptic") {
      choice->click();
    }
  }
  auto* table = dialog->findChild<QTableView*>();
  test::Person::TypeCell(table, 0, table->model()->columnCount() - 3, "20");
  test::Person::TypeCell(table, 0, table->model()->columnCount() - 2, "150");
  test::Person::TypeCell(table, 0, table->model()->columnCount() - 1, "3");
}

void FillFilter(QWidget* dialog) {
  for (int row = 0; row < 2; ++row) {
    test::Person::TypeCell(TableOf(dialog), row, 4, QStringLiteral("6"));
  }
  TableOf(dialog)->setCurrentIndex(TableOf(dialog)->model()->index(0, 4));
}

void ShowGraph(ui::MainWindow& window, Photographer& photographer) {
  // The dialogue asks anew after each of its buttons.
  photographer.Helper().When("frmGraphChoose", [](QWidget* dialog) { test::Person::Press(dialog, "All"); });
  photographer.Dialogue("graph.single", "frmGraphChoose", "graph-choose", "OK");
  QWidget* graph = WindowOf("frmGraph");
  QTest::qWait(kHintGoes);
  QTest::keyClick(graph, Qt::Key_2);
  photographer.Keep(graph, "graph");
  KeepMenu(graph, Qt::Key_L, photographer, "graph-menu");
  window.RunCommand(*FindCommand("background.white"));
  photographer.Keep(graph, "graph-on-white");
  graph->close();
}

// A level in the graph beside the dialogue, then what the scan found. The two stand side by side.
void ShowTriggering(ui::MainWindow& window, Photographer& photographer) {
  examples::MakeTreadmillWalk(window.State().trial);
  window.State().trial.TrialName = "treadmill-walk";
  window.State().chooser.ChanSelected.fill(false);
  window.State().chooser.ChanSelected[1] = true;
  photographer.Helper().When("frmGraphChoose", [](QWidget* dialog) { test::Person::Press(dialog, "OK"); });
  window.RunCommand(*FindCommand("graph.single"));
  photographer.Helper().Work();
  window.State().preferences.TriggerType = 0;
  window.State().preferences.TriggerHigh = 300;
  const auto keep = [&photographer](QWidget* dialog, const char* name) {
    photographer.KeepScreen(*dialog, *WindowOf("frmGraph"), name);
  };
  photographer.Helper().When("frmTrigger", [&](QWidget* dialog) {
    keep(dialog, "trigger");
    photographer.Helper().When("frmTrigger", [&](QWidget* again) {
      keep(again, "trigger-scanned");
      test::Person::Press(again, "Exit");
    });
    test::Person::Press(dialog, "Scan");
  });
  window.RunCommand(*FindCommand("trigger.open"));
  photographer.Helper().Work();
  WindowOf("frmGraph")->close();
}

void SelectAll(QWidget* dialog) {
  test::Person::Press(dialog, "All");
}

// The stack with its dialogue, two cursors, the largest values; then on white, with thresholds.
void ShowStack(ui::MainWindow& window, Photographer& photographer) {
  photographer.Helper().When("frmGraph2Choose", SelectAll);  // the dialogue asks anew after each button
  photographer.Dialogue("graph.multi", "frmGraph2Choose", "multi-choose", "OK");
  QWidget* graph = WindowOf("frmGraph2");
  window.State().view->Click(2);
  QTest::keyClick(graph, Qt::Key_2);
  window.RunCommand(*FindCommand("value.maximums"));
  photographer.Keep(graph, "multi");
  window.RunCommand(*FindCommand("background.white"));
  photographer.Keep(graph, "multi-on-white");
  graph->close();
}

void ShowManyLanes(ui::MainWindow& window, Photographer& photographer) {
  for (int page = 0; page < 4; ++page) {
    photographer.Helper().When("frmGraph2Choose", SelectAll);
    photographer.Helper().When("frmGraph2Choose",
                               [](QWidget* dialog) { test::Person::Press(dialog, "Next channels"); });
  }
  photographer.Dialogue("graph.multi", "frmGraph2Choose", "multi-choose-64", "OK");
  QWidget* graph = WindowOf("frmGraph2");
  window.State().view->Click(3);
  QTest::keyClick(graph, Qt::Key_2);
  photographer.Keep(graph, "multi-64");
  graph->close();
}

void ShowChannels(ui::MainWindow& window, Photographer& photographer) {
  ShowChannel(window.State(), 1);
  QWidget* channel = WindowOf("frmGraph1");
  photographer.Keep(channel, "channel");
  KeepMenu(channel, Qt::Key_Z, photographer, "channel-menu");
  channel->close();
}

void ShowChannelMenu(ui::MainWindow& window, Photographer& photographer) {
  photographer.Dialogue("channel.move", "frmChoose", "move-channels", "Cancel");
  photographer.Dialogue("channel.combine", "frmCombine", "combine", "Cancel", [](QWidget* dialog) {
    Choose(dialog, "Weighted sum");
    PickRow(dialog, 0);
    PickRow(dialog, 1);
  });
  Run(window, photographer, "channel.generate",
      {{"frmWaveform", "Add", nullptr, [](QWidget* dialog) { Choose(dialog, "Chirp"); }},
       {"frmWaveform", "Cancel", "waveform"}});
  KeepMenu(&window, Qt::Key_C, photographer, "channels-menu");
}

// Six strides: the form on its way, a file before it is added, the results, and their band.
void ShowEnsemble(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  std::vector<std::string>& files = window.State().ensemble.Files;
  for (int stride = 1; stride <= 5; ++stride) {
    files.push_back((data / ("stride-" + std::to_string(stride) + ".vmb")).string());
  }
  const auto previewing = [](QWidget* dialog) { Tick(dialog, "chkPreview"); };
  const auto choosing = [data](QWidget* dialog) {
    auto* line = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    line->setText(QString::fromStdString((data / "stride-6.vmb").string()));
  };
  Run(window, photographer, "ensemble.average",
      {{"frmEnsemble", "5. Channel Selection", "ensemble-start"},
       {"frmChoose", "Process", nullptr, [](QWidget* dialog) { test::Person::Press(dialog, "All"); }},
       {"frmEnsemble", "6. Begin Average"},
       {"frmEnsemble", "7. Open Next File", "ensemble", previewing},
       {"QFileDialog", "Open", nullptr, choosing}});
  QWidget* graph = WindowOf("frmGraph");
  graph->resize(1100, 640);
  photographer.Keep(graph, "ensemble-preview");
  Follow(photographer, {{"frmEnsemble", "8. Add Last File"},
                        {"frmEnsemble", "9. Calculate Means SDs"},
                        {"frmEnsemble", "Exit", "ensemble-results"},
                        {"Results Not Saved", "No"}});
  graph->close();
  photographer.Helper().Work();
  const auto bands = [](QWidget* dialog) { Tick(dialog, "chkSDs"); };
  Run(window, photographer, "graph.multi",
      {{"frmGraph2Choose", "All"}, {"frmGraph2Choose", "OK", nullptr, bands}});
  graph = WindowOf("frmGraph2");
  graph->resize(1100, 760);
  photographer.Keep(graph, "ensemble-bands");
  graph->close();
  window.State().trial.FileChanged = false;
}

void ShowTextFiles(ui::MainWindow& window, Photographer& photographer) {
  auto* tabs = window.findChild<QTabWidget*>();
  tabs->setCurrentIndex(1);
  photographer.Keep(&window, "text-files");
  tabs->setCurrentIndex(0);
  for (auto* action : window.findChildren<QAction*>()) {
    if (action->menu() != nullptr && action->text() == QStringLiteral("&Viewer")) {
      action->menu()->popup(window.mapToGlobal(QPoint(300, 60)));
      photographer.Keep(action->menu(), "viewer-menu");
      action->menu()->close();
    }
  }
}

void Walk(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  photographer.Keep(&window, "empty");
  ShowTextFiles(window, photographer);
  window.OpenFile((data / "emg-bursts.vmb").string());
  QTest::qWait(300);
  photographer.Keep(&window, "trial");
  ShowSpectra(window, photographer);
  ShowStatistics(window, photographer);
  ShowChannelMenu(window, photographer);
  photographer.Dialogue("math.absolute", "frmChoose", "picker", "Process",
                        [](QWidget* dialog) { test::Person::Press(dialog, "All"); });
  photographer.Dialogue("math.multiply", "frmChoose", "picker-values", "Cancel");
  photographer.Dialogue("smooth.butterworth", "frmButterworth", "filter", "Filter", FillFilter);
  photographer.Dialogue("smooth.digital", "frmSmooth", "digital-filter", "Cancel", FillBand);
  photographer.Dialogue("smooth.moving-average", "frmSetEpochDuration", "window-width", "Cancel");
  photographer.Dialogue("smooth.testing", "frmFiltering", "filter-testing", "Cancel");
  ShowGraph(window, photographer);
  ShowStack(window, photographer);
  ShowChannels(window, photographer);
  photographer.Dialogue("edit.experiment-information", "frmExperiment", "experiment", "Cancel");
  QTest::qWait(200);
  photographer.Keep(&window, "history");
  window.State().trial.FileChanged = false;
  window.OpenFile((data / "hold-first.vmb").string());
  QTest::qWait(300);
  ShowEmg(window, photographer);
  window.State().trial.FileChanged = false;
  window.OpenFile((data / "head-impacts.vmb").string());
  QTest::qWait(300);
  ShowImpacts(window, photographer);
  window.State().trial.FileChanged = false;
  window.OpenFile((data / "two-plate-step.vmb").string());
  QTest::qWait(300);
  ShowPlates(window, photographer);
  window.State().trial.FileChanged = false;
  window.OpenFile((data / "many.vmb").string());
  QTest::qWait(400);
  photographer.Keep(&window, "64-channels");
  photographer.Dialogue("math.absolute", "frmChoose", "picker-64", "Cancel");
  photographer.Dialogue("graph.single", "frmGraphChoose", "graph-choose-64", "Cancel");
  ShowManyLanes(window, photographer);
  ShowEnsemble(window, photographer, data);
  ShowXYPlot(window, photographer, data);
}

// Over a folder with one file that cannot be read.
void ShowRecipeRun(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  std::ofstream(data / "peaks.yaml") << R"(velmora2: 1
steps:
  - do: file.load
    file: "${input}"
  - do: analysis.low-pass
    answers: [pick: {values: {"*": 20}}]
  - collect: "${out}/peaks.csv"
    columns: {trial: "${stem}", peak: {channel: 1, statistic: maximum}}
)";
  std::ofstream(data / "stride-7.vmb") << "Velmora2";
  for (auto* action : window.findChildren<QAction*>()) {
    if (action->text().remove('&') == QStringLiteral("Run a recipe...")) {
      action->trigger();
    }
  }
  auto* dialog = window.findChild<ui::RecipeDialog*>();
  const auto path = [&data](const char* name) { return QString::fromStdString((data / name).string()); };
  dialog->SetRecipe(path("peaks.yaml"));
  dialog->findChild<QLineEdit*>(QStringLiteral("results"))->setText(path("results"));
  QStringList files;
  for (int k = 1; k <= 7; ++k) {
    files.append(path(("stride-" + std::to_string(k) + ".vmb").c_str()));
  }
  dialog->AddFiles(files);
  test::Person::Press(dialog, QStringLiteral("Run"));
  const auto* said = dialog->findChild<QLabel*>(QStringLiteral("said"));
  if (!test::WaitFor([said] { return said->text().contains(QStringLiteral("failed")); })) {
    throw std::runtime_error("the recipe does not end: " + said->text().toStdString());
  }
  photographer.Keep(dialog, "recipe");
  dialog->close();
  for (const char* made : {"peaks.yaml", "stride-7.vmb", "results"}) {
    fs::remove_all(data / made);  // the pictures that follow show the folder as it was
  }
}

void ParseText(ui::MainWindow& window, Photographer& photographer, const fs::path& data) {
  photographer.Helper().When("frmParse", [&photographer](QWidget* dialog) {
    photographer.Keep(dialog, "parser");
    test::Person::Press(dialog, "Cancel");
  });
  window.OpenFile((data / "treadmill.txt").string());
  photographer.Helper().Work();
}

void WriteText(const fs::path& path) {
  std::FILE* file = std::fopen(path.c_str(), "w");
  std::fputs(
      "Treadmill walk, subject 12\nSampling rate: 200 Hz\nTime\tKnee angle\tAnkle angle\tVertical force\n"
      "s\tdeg\tdeg\tN\n",
      file);
  for (int i = 0; i < 400; ++i) {
    const double t = i / 200.0;
    std::fprintf(file, "%.3f\t%.3f\t%.3f\t%.2f\n", t, 30 + 28 * std::sin(t * 6), 8 * std::cos(t * 6),
                 std::max(0.0, 700 * std::sin(t * 6)));
  }
  std::fclose(file);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  const std::string part = argc == 4 ? argv[3] : "";
  constexpr std::array kParts = {"", "analyses", "ensemble", "platforms", "recipe", "views", "xy"};
  if (argc < 3 || argc > 4 || std::find(kParts.begin(), kParts.end(), part) == kParts.end()) {
    std::fputs("Usage: velmora2-screenshots DIR light|dark [analyses|ensemble|platforms|recipe|views|xy]\n",
               stderr);
    return 2;
  }
  try {
    const fs::path to = fs::absolute(argv[1]);
    const bool dark = std::string(argv[2]) == "dark";
    fs::create_directories(to);
    QTemporaryDir home(QDir::tempPath() + QStringLiteral("/Laboratory-XXXXXX"));
    const fs::path data = fs::path(home.path().toStdString()) / "Gait study";
    fs::create_directories(data);
    Write(data, "emg-bursts.vmb", examples::MakeEmgBursts);
    Write(data, "force-plate-step.vmb", examples::MakeForcePlateStep);
    Write(data, "reaching.vmb", examples::MakeNoisyDisplacement);
    Write(data, "hold-first.vmb", examples::MakeHoldOfFirst);
    Write(data, "head-impacts.vmb", examples::MakeHeadImpacts);
    Write(data, "head-fall.vmb", examples::MakeHeadFall);
    Write(data, "ankle-step.vmb", examples::MakeAnkleStep);
    Write(data, "two-plate-step.vmb", examples::MakeTwoPlateStep);
    Write(data, "jump.vmb", examples::MakeJump);
    Write(data, "treadmill-walk.vmb", examples::MakeTreadmillWalk);
    Write(data, "quiet-stance.vmb", examples::MakeQuietStance);
    Write(data, "hip-knee-stride.vmb", examples::MakeHipKneeStride);
    Write(data, "many.vmb", MakeManyChannels);
    Write(data, "stride-1.vmb", examples::MakeStride<1>);
    Write(data, "stride-2.vmb", examples::MakeStride<2>);
    Write(data, "stride-3.vmb", examples::MakeStride<3>);
    Write(data, "stride-4.vmb", examples::MakeStride<4>);
    Write(data, "stride-5.vmb", examples::MakeStride<5>);
    Write(data, "stride-6.vmb", examples::MakeStride<6>);
    WriteText(data / "treadmill.txt");
    fs::current_path(data);
    SettingsStore store(home.path().toStdString() + "/settings");
    ui::PrepareTheme(app);
    ui::MainWindow window(store, {";"}, examples::MakeEmgBursts);
    ui::ApplyTheme(app, dark ? ui::ThemeChoice::Dark : ui::ThemeChoice::Light);
    window.State().UserLevel = UserLevelKind::Expert;
    window.resize(kWindow);
    window.show();
    window.Begin();
    if (!QTest::qWaitForWindowExposed(&window)) {
      throw std::runtime_error("the window does not come up");
    }
    QTest::qWait(400);
    Photographer photographer(window, to, dark ? "dark" : "light");
    if (part == "recipe") {
      ShowRecipeRun(window, photographer, data);
      return 0;
    }
    if (part == "ensemble") {
      ShowEnsemble(window, photographer, data);
      return 0;
    }
    if (part == "platforms") {
      ShowPlatforms(window, photographer, data);
      return 0;
    }
    if (part == "views") {
      ShowViews(window, photographer, data);
      return 0;
    }
    if (part == "xy") {
      ShowXYPlot(window, photographer, data);
      return 0;
    }
    if (part.empty()) {
      Walk(window, photographer, data);
      ShowTriggering(window, photographer);
      ParseText(window, photographer, data);
      ShowRecipeRun(window, photographer, data);
    }
    ShowAnalyses(window, photographer, data);
    if (part.empty()) {
      ShowViews(window, photographer, data);
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "velmora2-screenshots: %s\n", error.what());
    return 1;
  }
  return 0;
}
