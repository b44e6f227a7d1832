// Force plates in the window: the definition is typed, asked for by a double click, and drawn as it grows.
#include <QComboBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "support/command_test.hpp"
#include "ui/dialogs/form_dialog.hpp"
#include "ui/person.hpp"

namespace velmora::ui {
namespace {

struct PlateWindow : test::CommandTest {
  test::Person person;

  void SetUp() override {
    test::SetChannels(trial, test::NoiseChannels(16, 200));
    trial.FileTypeCode = 255;
  }
  /// The next form is a dialogue, on which `act` works until it is left.
  void InWindow(const std::function<void(QWidget&)>& act) {
    questions.formAnswers.emplace_back([this, act](Form& form) {
      const auto dialog = MakeFormDialog(form, workbench, nullptr);
      QTimer::singleShot(0, dialog.get(), [&] {
        ASSERT_TRUE(test::WaitForWindowExposed(dialog.get()));
        act(*dialog);
      });
      return dialog->Ask();
    });
  }
  static QLineEdit* Line(QWidget& dialog, const char* name) {
    auto* line = dialog.findChild<QLineEdit*>(name);
    EXPECT_NE(line, nullptr) << name;
    return line;
  }
  static void Type(QWidget& dialog, const char* name, const char* text) {
    QLineEdit* line = Line(dialog, name);
    QTest::mouseClick(line, Qt::LeftButton);
    ASSERT_TRUE(test::WaitFor([line] { return line->hasFocus(); }));  // the keyboard comes with the window
    line->selectAll();
    QTest::keyClicks(line, text);
  }
};

TEST_F(PlateWindow, ADefinitionIsTypedAndDrawnAndOKKeepsIt) {
  questions.boxAnswers = {Button::OK};
  InWindow([this](QWidget& dialog) {
    auto* picture = dialog.findChild<QWidget*>("picture");
    ASSERT_NE(picture, nullptr);
    const auto drawn = [picture] { return picture->grab().toImage(); };
    const QImage empty = drawn();
    EXPECT_EQ(Line(dialog, "comGainsFx")->text(), "n.a.");
    EXPECT_FALSE(Line(dialog, "comGainsFx")->isEnabled());
    EXPECT_EQ(Line(dialog, "az0")->text(), "0.00");
    Type(dialog, "Width", "400");
    Type(dialog, "Length", "600");
    const QImage outline = drawn();
    EXPECT_NE(outline, empty);
    Type(dialog, "a", "120");
    Type(dialog, "b", "200");
    const QImage sensors = drawn();
    EXPECT_NE(sensors, outline);
    Type(dialog, "a", "-120");  // the sensors change sides
    EXPECT_NE(drawn(), sensors);
    // A double click asks in the box; an empty answer keeps the value.
    person.WhenA<QInputDialog>([](QWidget* box) {
      EXPECT_EQ(qobject_cast<QInputDialog*>(box)->labelText(), "Enter distance to sensors (mm) vertically.");
      qobject_cast<QInputDialog*>(box)->setTextValue("54.321");
      QTest::keyClick(box, Qt::Key_Return);
    });
    QTest::mouseDClick(Line(dialog, "az0"), Qt::LeftButton);
    person.Work();
    EXPECT_EQ(Line(dialog, "az0")->text(), "54.32");
    test::Person::Press(&dialog, "Defaults");
  });
  InWindow([](QWidget& dialog) {
    EXPECT_EQ(Line(dialog, "ZSens")->text(), "-3.50");
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  Run("plates.change-type");
  const ForcePlate& plate = workbench.plates.PlateTable[0];
  EXPECT_EQ(plate.az0, -54.321);
  EXPECT_EQ(plate.a, -120);
  EXPECT_EQ(plate.XYRange, 5000);
  EXPECT_EQ(trial.NPlates, 1);
}

TEST_F(PlateWindow, EscLeavesEverythingAsItWas) {
  questions.boxAnswers = {Button::OK};
  InWindow([](QWidget& dialog) {
    Type(dialog, "a", "120");
    Type(dialog, "NumPlates", "2");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Run("plates.change-type");
  EXPECT_EQ(workbench.plates, PlateMemory{});
  EXPECT_EQ(trial.NPlates, 0);
}

}  // namespace
}  // namespace velmora::ui
