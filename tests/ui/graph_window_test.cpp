// The graph's window as a person uses it. With VELMORA_SCREENSHOTS set to a directory it leaves pictures
// of what it saw there.
#include "ui/graph/graph_window.hpp"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <QWheelEvent>
#include <filesystem>

#include "plot/draw_picture.hpp"
#include "plot/graph_widget.hpp"
#include "support/command_test.hpp"
#include "ui/person.hpp"
#include "ui/plot_mouse.hpp"

namespace velmora::ui {
namespace {

/// Four seconds at 250 Hz: a slow wave, a fast one with a peak of a single sample, and a third channel
/// that is not shown.
struct GraphWindowTest : test::FileTest {
  QPointer<GraphWindow> window;
  int changes = 0;

  void SetUp() override {
    workbench.desktop.draw = DrawPicture;
    test::Samples slow;
    test::Samples fast;
    for (int i = 0; i < 1001; ++i) {
      slow.push_back(static_cast<float>(100 * std::sin(i * 0.0126)));
      fast.push_back(static_cast<float>(40 * std::sin(i * 0.2)) + (i == 700 ? 120.0F : 0.0F));
    }
    test::SetChannels(trial, {slow, fast, test::Samples(1001, 7.0F)}, 250.0);
    const char* labels[] = {"Knee", "Quadriceps", "Marker"};
    const char* units[] = {"deg", "mV", "V"};
    for (std::size_t c = 1; c <= 3; ++c) {
      trial.ChanLabel[c] = labels[c - 1];
      trial.ChanUnits[c] = units[c - 1];
    }
    trial.TrialName = "jump";
    trial.TrialTitle = "Counter movement jump";
    workbench.DataDir = directory.Path("");
    questions.formAnswers.emplace_back([](Form& form) {
      form.FindButton("None")->press();
      test::Type(form, {{"channels 1", "true"}, {"channels 2", "true"}});
      return std::string("OK");
    });
    Run("graph.single");
    ASSERT_NE(workbench.view, nullptr);
    window = new GraphWindow(workbench, [this](const Command& command) { RunCommand(workbench, command); });
    QObject::connect(window, &GraphWindow::Changed, [this] { ++changes; });
    window->resize(1200, 760);
    window->ShowGraph();
    ASSERT_TRUE(test::WaitForWindowExposed(window));
    window->activateWindow();
    ASSERT_TRUE(test::WaitForWindowActive(window));  // shortcuts are those of the active window
  }
  void TearDown() override { delete window; }

  SingleView& View() { return dynamic_cast<SingleView&>(*workbench.view); }
  GraphWidget& Plot() { return window->Plot(); }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) { test::PressIn(Plot(), key, held); }
  void Press(const char* button) {
    QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
    QApplication::processEvents();
  }
  /// The answer to the question which channels are shown.
  void ShowOnly(int channel) {
    questions.pickAnswers.emplace_back([channel](ChannelPicker& picker) {
      picker.None();
      picker.Select(channel, true);
      return std::string("OK");
    });
  }
  void Choose(const char* entry) { test::ChooseIn(*window, entry); }
  [[nodiscard]] bool Marked(const char* entry) const {
    return window->findChild<QAction*>(entry)->isChecked();
  }
  QPoint Place(double x, double part) { return test::PlaceIn(Plot(), x, part); }
  void Drag(QPoint from, QPoint to) { test::DragIn(Plot(), from, to); }
  [[nodiscard]] std::string Text(const char* label) const {
    return window->findChild<QLabel*>(label)->text().toStdString();
  }
  [[nodiscard]] QTreeWidgetItem* Row(const char* name) const {
    const auto found = window->findChild<QTreeWidget*>("sidebar")->findItems(name, Qt::MatchStartsWith);
    return found.isEmpty() ? nullptr : found.front();
  }
  void Shot(const char* name) { test::Shot(*window, name); }
};

TEST_F(GraphWindowTest, APieceIsSelectedWithTwoCursorsAndCropped) {
  Shot("graph");
  EXPECT_EQ(Row("Marker"), nullptr);
  const QSize size = window->size();
  window->resize(window->minimumSizeHint());
  Key(Qt::Key_2);
  if (const auto* hint = window->findChild<QLabel*>("hint")) {  // for a few seconds
    EXPECT_TRUE(test::WaitFor([&] { return Plot().rect().contains(hint->geometry()); })) << Plot().width();
  }
  window->resize(size);
  EXPECT_EQ(View().Cursors(), 2);
  EXPECT_TRUE(Marked("cursor.two"));
  Drag(Place(1.0, 0.7), Place(0.5, 0.7));
  Drag(Place(3.0, 0.7), Place(2.9, 0.2));
  EXPECT_NEAR(trial.CursorLo, 126, 1);
  EXPECT_NEAR(trial.CursorHi, 726, 1);
  EXPECT_NEAR(std::stoi(Text("count")), trial.CursorHi - trial.CursorLo, 1);  // of times, not of samples
  ASSERT_NE(Row("Quadriceps"), nullptr);
  EXPECT_NEAR(Row("Sample")->text(3).toDouble(), 600, 2);
  EXPECT_NEAR(Row("Knee")->text(1).toDouble(), trial.Data(trial.CursorLo, 1), 1e-4);
  EXPECT_NEAR(Row("1 /")->text(3).toDouble(), 1 / 2.4, 2e-3);
  EXPECT_GE(changes, 3);
  Key(Qt::Key_N);
  Shot("graph-two-cursors");
  Key(Qt::Key_N);

  Press("cmdWindow");
  EXPECT_TRUE(View().WindowMode());
  EXPECT_EQ(window->findChild<QPushButton*>("cmdWindow")->text(), "&Full");
  Key(Qt::Key_F);
  EXPECT_FALSE(View().WindowMode());

  questions.formAnswers.emplace_back([](Form& form) {
    EXPECT_EQ(form.Name(), "frmClip");
    return std::string("Crop");
  });
  const std::int32_t kept = trial.CursorHi - trial.CursorLo + 1;
  Choose("crop.outside");
  EXPECT_EQ(trial.NData, kept);
  EXPECT_TRUE(trial.FileChanged);
  EXPECT_EQ(Text("count"), std::to_string(kept - 1));
  Choose("background.white");
  EXPECT_TRUE(Marked("background.white"));
  EXPECT_FALSE(Marked("background.black"));
  Shot("graph-cropped-white");

  window->close();
  EXPECT_EQ(workbench.view, nullptr);
  EXPECT_TRUE(test::WaitFor([this] { return window == nullptr; }));
}

TEST_F(GraphWindowTest, MouseModesAndKeysMoveTheView) {
  const QPoint middle = Place(2.0, 0.5);
  QWheelEvent wheel(middle, Plot().mapToGlobal(middle), {}, {0, 240}, Qt::NoButton, {}, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(&Plot(), &wheel);
  QApplication::processEvents();
  EXPECT_NEAR(View().Drawing().Abscissa.Minimum, 2 - 2 / 1.5625, 0.01);
  Key(Qt::Key_PageDown);
  Key(Qt::Key_PageDown);
  EXPECT_EQ(View().Drawing().Abscissa.Minimum, 0.0);
  Press("optZoom");
  EXPECT_TRUE(Marked("zoom.area"));
  Drag(Place(0.5, 0.25), Place(1.5, 0.75));
  EXPECT_NEAR(View().Drawing().Abscissa.Minimum, 0.5, 0.01);
  EXPECT_NEAR(View().Drawing().Abscissa.Maximum, 1.5, 0.01);
  EXPECT_NEAR(std::stod(Text("place")), 1.5, 0.01);  // the pointer's last place in what was shown then
  Shot("graph-zoomed");
  Key(Qt::Key_Escape);
  EXPECT_EQ(View().Drawing().Track, TrackMode::None);
  EXPECT_TRUE(window->findChild<QPushButton*>("optNone")->isChecked());
  QTest::mouseDClick(&Plot(), Qt::LeftButton, {}, middle);
  EXPECT_EQ(View().Drawing().Abscissa.Maximum, 4.0);
  Key(Qt::Key_1);
  Key(Qt::Key_Right);
  const double pixel = 4.0 / Plot().axisRect()->width();
  EXPECT_NEAR(View().Drawing().Cursors[0].XPosition, 2.0 + std::max(pixel, 0.004), 1e-9);
  Key(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_NEAR(View().Drawing().Cursors[0].XPosition, 2.0 - 9 * std::max(pixel, 0.004), 1e-9);
  EXPECT_EQ(Text("count"), std::to_string(View().SampleOf(1)));
  Key(Qt::Key_5);
  auto* values = window->findChild<QDialog*>("frmCursor");
  EXPECT_TRUE(values->isVisible());
  Shot("graph-one-cursor");
  Key(Qt::Key_5);
  EXPECT_FALSE(values->isVisible());

  Key(Qt::Key_Question, Qt::ShiftModifier);
  EXPECT_EQ(questions.boxes.back().title, "Keyboard Functions");
  Choose("grid.sidebar");
  EXPECT_FALSE(window->findChild<QTreeWidget*>("sidebar")->isVisible());
  Choose("grid.sidebar");
  Key(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);  // not the graph's
}

TEST_F(GraphWindowTest, MenusMarkWhatIsSo) {
  const auto marks = [this](const char* menu) {
    std::string marked;
    for (const QAction* action : window->findChildren<QAction*>()) {
      if (action->isChecked() && action->objectName().startsWith(menu)) {
        marked += (marked.empty() ? "" : " ") + action->objectName().toStdString();
      }
    }
    return marked;
  };
  EXPECT_EQ(marks("line."), "line.solid line.thin");
  EXPECT_EQ(marks("point."), "point.none");
  EXPECT_EQ(marks("grid."),
            "grid.both grid.x-y-numerals grid.title grid.abscissa-label grid.ordinate-label grid.sidebar");

  // Of keys.
  Key(Qt::Key_L);
  Key(Qt::Key_P);
  EXPECT_EQ(marks("line."), "line.none line.thin");
  EXPECT_EQ(marks("point."), "point.dot");
  Key(Qt::Key_L);
  EXPECT_EQ(marks("line."), "line.solid line.thin");
  Key(Qt::Key_R);
  EXPECT_EQ(marks("point."), "point.none");

  // Of menus, some opened by their letters.
  Key(Qt::Key_L, Qt::AltModifier);
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_D);
  QApplication::processEvents();
  EXPECT_EQ(marks("line."), "line.dotted line.thin");
  Choose("line.half");
  Choose("line.thick");
  Choose("line.alternate");
  EXPECT_EQ(marks("line."), "line.alternate line.thick");
  Choose("grid.zero-no-labels");
  EXPECT_EQ(marks("grid.z"), "grid.zero grid.zero-no-labels");
  Choose("grid.y");
  Choose("grid.x-numerals");
  Choose("grid.title");
  EXPECT_EQ(marks("grid."), "grid.y grid.x-numerals grid.abscissa-label grid.ordinate-label grid.sidebar");
  Choose("grid.y");  // once more changes nothing
  EXPECT_TRUE(Marked("grid.y"));

  // Of buttons: with a single channel alternating styles are none.
  ShowOnly(2);
  Press("cmdSelect");
  EXPECT_EQ(View().Drawing().VisiblePlots(), 1);
  EXPECT_EQ(marks("line."), "line.dotted line.thick");
  Press("cmdPoints");
  Press("cmdPoints");
  EXPECT_EQ(marks("line."), "line.solid line.thick");
  EXPECT_EQ(marks("point."), "point.dot");
}

// One letter with Alt: a menu or a button. A button without its letter has a key, told by its tip.
TEST_F(GraphWindowTest, EveryMenuAndButtonHasAKeyOfItsOwn) {
  const auto clashes = [this] {
    std::map<QString, QStringList> owners;
    for (const QAction* menu : window->menuBar()->actions()) {
      owners[QKeySequence::mnemonic(menu->text()).toString()] << menu->text();
    }
    for (const auto* button : window->findChildren<QPushButton*>()) {
      if (!button->shortcut().isEmpty()) {
        owners[button->shortcut().toString()] << button->text();
      } else if (button->isEnabled() && !button->toolTip().endsWith(')')) {
        owners[button->text()] << "unreachable" << button->text();
      }
    }
    QStringList found;
    for (const auto& [key, names] : owners) {
      if (names.size() > 1) {
        found << names.join(", ");
      }
    }
    return found.join("; ").toStdString();
  };
  EXPECT_EQ(clashes(), "");
  Key(Qt::Key_2);
  Key(Qt::Key_W, Qt::AltModifier);
  EXPECT_TRUE(test::WaitFor([this] { return View().WindowMode(); }));
  Key(Qt::Key_F9);
  EXPECT_EQ(window->findChild<QPushButton*>("cmdPoints")->text(), "&Lines");
  EXPECT_EQ(clashes(), "");
  Key(Qt::Key_F, Qt::AltModifier);
  EXPECT_TRUE(View().WindowMode());
  ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  Key(Qt::Key_Escape);  // of the menu bar

  Key(Qt::Key_8);
  EXPECT_TRUE(Marked("zoom.area"));
  Key(Qt::Key_9);
  EXPECT_TRUE(Marked("zoom.pan"));
  Key(Qt::Key_7);
  EXPECT_TRUE(Marked("zoom.cursor"));
  Key(Qt::Key_N, Qt::AltModifier);
  EXPECT_TRUE(test::WaitFor([this] { return Marked("zoom.disable"); }));
  ShowOnly(1);
  Key(Qt::Key_F8);
  EXPECT_EQ(View().Drawing().VisiblePlots(), 1);
}

TEST_F(GraphWindowTest, PicturesAreSavedAsTheyAreShown) {
  for (const char* name : {"p.png", "p.svg", "p.pdf"}) {
    questions.fileAnswers.push_back({directory.Path(name)});
    QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(std::filesystem::exists(directory.Path(name))) << name;
  }
  const QImage picture(QString::fromStdString(directory.Path("p.png")));
  EXPECT_EQ(picture.size(), Plot().size());
  EXPECT_EQ(picture.pixelColor(1, 1), QColor(Qt::white));
  questions.fileAnswers.push_back({directory.Path("p.gif")});
  QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(workbench.report.warnings.size(), 1U);
  EXPECT_EQ(workbench.report.failures.size(), 0U);
}

TEST_F(GraphWindowTest, PrintsOnThePaperThatWasSetUp) {
  test::Person person;
  person.When("QPageSetupDialog", [](QWidget* dialog) {
    test::Shot(*dialog, "page-setup");
    auto* portrait = dialog->findChild<QRadioButton*>("portrait");
    if (portrait == nullptr) {
      throw std::runtime_error("no paper to choose");
    }
    portrait->click();
    test::Person::Press(dialog, "OK");
  });
  for (auto* entry : window->findChildren<QAction*>()) {
    if (entry->text() == "Printer setup") {
      entry->trigger();
    }
  }
  window->activateWindow();
  ASSERT_TRUE(test::WaitForWindowActive(window));
  const QString path = QString::fromStdString(directory.Path("printed.pdf"));
  person.When("QPrintDialog", [&path](QWidget* dialog) {
    test::Shot(*dialog, "print");
    auto* name = dialog->findChild<QLineEdit*>("filename");
    if (name == nullptr) {
      throw std::runtime_error("no file to print to");
    }
    name->selectAll();
    QTest::keyClicks(name, path);
    test::Person::Press(dialog, "Print");
  });
  QTest::keyClick(window, Qt::Key_P, Qt::ControlModifier);
  person.Work();
  const std::string page = test::ReadFile(path.toStdString());
  EXPECT_TRUE(page.starts_with("%PDF")) << page.size();
  EXPECT_EQ(page.find("[*]"), std::string::npos) << "the mark of unsaved changes is no name";
  double width = 0;
  double height = 0;
  const std::size_t box = page.find("/MediaBox");
  ASSERT_NE(box, std::string::npos);
  ASSERT_EQ(std::sscanf(page.c_str() + box, "/MediaBox [0 0 %lf %lf", &width, &height), 2);
  EXPECT_LT(width, height) << "upright, as set up";
}

TEST_F(GraphWindowTest, GoesWhenItsViewGoesElsewhere) {
  CloseView(workbench);
  window->Refresh();
  EXPECT_TRUE(test::WaitFor([this] { return window == nullptr; }));
}

}  // namespace
}  // namespace velmora::ui
