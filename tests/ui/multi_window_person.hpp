#pragma once

#include <QAction>
#include <QApplication>
#include <QListWidget>
#include <QPointer>
#include <QTest>

#include "plot/draw_picture.hpp"
#include "support/command_test.hpp"
#include "ui/graph/multi_window.hpp"
#include "ui/plot_mouse.hpp"

namespace velmora::ui {

/// A person at the multi-axis graph of made EMG channels.
struct MultiWindowTest : test::FileTest {
  QPointer<ViewWindow> window;

  void Open(int channels, int samples = 2001) {
    workbench.desktop.draw = DrawPicture;
    std::vector<test::Samples> all(static_cast<std::size_t>(channels));
    for (int c = 0; c < channels; ++c) {
      for (int i = 0; i < samples; ++i) {
        const double burst = i > 600 + 10 * c && i < 1100 + 10 * c ? 1.0 : 0.15;
        all[static_cast<std::size_t>(c)].push_back(
            static_cast<float>(burst * (c + 1) * std::sin(i * (0.31 + 0.05 * c)) * std::cos(i * 0.077)));
      }
    }
    test::SetChannels(trial, all, 500.0);
    for (int c = 1; c <= channels; ++c) {
      trial.ChanLabel[c] = "EMG " + std::to_string(c);
      trial.ChanUnits[c] = "mV";
      trial.ChanColour[c] = DefaultColour(c);
    }
    trial.TrialName = "squat";
    trial.TrialTitle = "Squat, 60 kg";
    questions.formAnswers.emplace_back([channels](Form& form) {
      for (int c = 1; c <= channels; ++c) {
        test::Type(form, {{"channels " + std::to_string(c), "true"}});
      }
      return std::string("OK");
    });
    Run("graph.multi");
    ASSERT_NE(workbench.view, nullptr);
    window = MakeViewWindow(
        workbench, [this](const Command& command) { RunCommand(workbench, command); }, nullptr);
    window->resize(1200, 800);
    window->ShowGraph();
    ASSERT_TRUE(test::WaitFor([this] { return window->isVisible() && !Plot().ShownLanes().empty(); }));
    QApplication::processEvents();
  }
  void TearDown() override {
    delete window;
    test::FileTest::TearDown();
  }

  [[nodiscard]] StackWidget& Plot() const { return qobject_cast<MultiWindow*>(window)->Plot(); }
  [[nodiscard]] MultiView& View() { return OpenMultiView(workbench); }
  /// The pixel of a value of the abscissa in the lane of a graph, at a part of its height from above.
  [[nodiscard]] QPoint Place(int graph, double x, double part = 0.5) const {
    return test::PlaceIn(Plot(), graph, x, part);
  }
  void Click(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(&Plot(), button, {}, at);
    QApplication::processEvents();
  }
  void Drag(QPoint from, QPoint to) { test::DragIn(Plot(), from, to); }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = {}) { test::PressIn(Plot(), key, held); }
  [[nodiscard]] QStringList Sidebar() const {
    QStringList lines;
    const auto* list = window->findChild<QListWidget*>("txtInfo");
    for (int k = 0; k < list->count(); ++k) {
      if (!list->isRowHidden(k)) {
        lines << list->item(k)->text();
      }
    }
    return lines;
  }
};

}  // namespace velmora::ui
