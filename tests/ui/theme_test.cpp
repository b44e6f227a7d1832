// The looks of the program on a desktop that changes its own. The desktop is a message bus of the test with
// a portal on it, so this is a program by itself.
#include "ui/main/theme.hpp"

#include <signal.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QThread>
#include <clocale>
#include <cstdio>

#include "ui/main/desktop_colours.hpp"
#include "ui/story.hpp"

namespace velmora::test {
namespace {

constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";

/// Answers in a thread of its own, as another program would.
class Portal : public QDBusVirtualObject {
 public:
  Portal() : bus_(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), "portal")) {
    thread_.start();
    moveToThread(&thread_);
    EXPECT_TRUE(bus_.registerVirtualObject(kPath, this));
    EXPECT_TRUE(bus_.registerService("org.freedesktop.portal.Desktop"));
  }
  Portal(const Portal&) = delete;
  Portal& operator=(const Portal&) = delete;
  ~Portal() override {
    QDBusConnection::disconnectFromBus("portal");
    thread_.quit();
    thread_.wait();
  }

  void Tell(const char* group, unsigned scheme) {
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kInterface, "SettingChanged");
    signal << group << "color-scheme" << QVariant::fromValue(QDBusVariant(scheme));
    EXPECT_TRUE(bus_.send(signal));
  }

  [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const QVariant wrapped = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(1U))));
    return message.member() == "Read" && message.arguments().value(1) == "color-scheme" &&
           connection.send(message.createReply(wrapped));
  }

 private:
  QDBusConnection bus_;
  QThread thread_;
};

class Theme : public Story {
 protected:
  /// How light the window is drawn: 0 to 255.
  int Ground() {
    const QImage picture = window_->grab().toImage();
    return qGray(picture.pixel(picture.width() / 2, picture.height() - 60));
  }
  bool Becomes(bool dark) {
    return test::WaitFor([this, dark] { return dark ? Ground() < 60 : Ground() > 230; });
  }
  /// How far what is drawn in a widget stands out from its ground.
  template <typename Widget>
  int Contrast(Widget* widget) {
    const QImage picture = widget->grab().toImage();
    int low = 255;
    int high = 0;
    for (int y = 3; y < picture.height() - 3; ++y) {
      for (int x = 3; x < picture.width() - 3; ++x) {
        low = std::min(low, qGray(picture.pixel(x, y)));
        high = std::max(high, qGray(picture.pixel(x, y)));
      }
    }
    return high - low;
  }
  void Look(bool dark) {
    ASSERT_TRUE(Becomes(dark)) << Ground();
    int quiet = 0;
    for (QLabel* label : window_->findChildren<QLabel*>()) {
      if (label->isVisible() && label->property("tone") == "quiet" && !label->text().isEmpty()) {
        EXPECT_GT(Contrast(label), 60) << label->text().toStdString();
        ++quiet;
      }
    }
    EXPECT_GE(quiet, 4);
    for (QToolButton* button : window_->findChild<QToolBar*>("toolBar")->findChildren<QToolButton*>()) {
      if (button->isVisible() && button->isEnabled()) {
        const QImage icon = button->icon().pixmap(18, 18).toImage();
        int sum = 0;
        int drawn = 0;
        for (int k = 0; k < 18 * 18; ++k) {
          const QRgb pixel = icon.pixel(k % 18, k / 18);
          sum += qAlpha(pixel) > 200 ? qGray(qUnpremultiply(pixel)) : 0;
          drawn += qAlpha(pixel) > 200 ? 1 : 0;
        }
        ASSERT_GT(drawn, 0);
        EXPECT_EQ(sum / drawn > 128, dark) << button->text().toStdString();
      }
    }
  }
};

TEST_F(Theme, FollowsTheDesktopWhileItRunsAndWhatIsChosenAtOnce) {
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
    GTEST_SKIP() << "no message bus on this computer";
  }
  Portal portal;
  ui::ApplyTheme(*qApp, ui::ThemeChoice::Desktop);
  Look(true);
  portal.Tell("org.freedesktop.appearance", 2);
  Look(false);
  portal.Tell("org.gnome.other", 1);
  portal.Tell("org.freedesktop.appearance", 1);
  Look(true);
  Choose("Light");
  Look(false);
  ui::DesktopColours other(nullptr);  // hears what the theme hears, and changes
  int changes = 0;
  QObject::connect(&other, &ui::DesktopColours::Changed, [&changes] { ++changes; });
  ASSERT_TRUE(other.PrefersDark());
  portal.Tell("org.freedesktop.appearance", 2);
  portal.Tell("org.freedesktop.appearance", 1);
  ASSERT_TRUE(test::WaitFor([&] { return changes == 2; }));
  Look(false);  // chosen
  Choose("As the desktop");
  Look(true);
  portal.Tell("org.freedesktop.appearance", 0);  // no preference: as Qt was given it
  Look(false);
  EXPECT_EQ(store_.Get("Velmora2", "Window", "Theme", ""), "desktop");
}

/// A message bus for this process alone. Returns its process id, 0 when there is none to be had.
int StartBus() {
  int process = 0;
  char address[512] = "";
  std::FILE* daemon = popen("dbus-daemon --session --fork --print-address=1 --print-pid=1", "r");
  if (daemon != nullptr && std::fscanf(daemon, "%511s %d", address, &process) == 2) {
    setenv("DBUS_SESSION_BUS_ADDRESS", address, 1);
  } else {
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
  }
  if (daemon != nullptr) {
    pclose(daemon);
  }
  return process;
}

}  // namespace
}  // namespace velmora::test

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const int bus = velmora::test::StartBus();
  int result = 0;
  {
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    result = RUN_ALL_TESTS();
  }
  if (bus > 0) {
    kill(bus, SIGTERM);
  }
  return result;
}
