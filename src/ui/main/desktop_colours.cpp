#include "ui/main/desktop_colours.hpp"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QPalette>

namespace velmora::ui {
namespace {

constexpr int kDesktopAnswersWithin = 150;  // ms
// The values of the setting; 0 is no preference.
constexpr int kPrefersDark = 1;
constexpr int kPrefersLight = 2;

QString Service() {
  return QStringLiteral("org.freedesktop.portal.Desktop");
}
QString Path() {
  return QStringLiteral("/org/freedesktop/portal/desktop");
}
QString Interface() {
  return QStringLiteral("org.freedesktop.portal.Settings");
}
QString Group() {
  return QStringLiteral("org.freedesktop.appearance");
}
QString Key() {
  return QStringLiteral("color-scheme");
}

}  // namespace

DesktopColours::DesktopColours(QObject* parent)
    : QObject(parent),
      givenDark_(QApplication::palette().color(QPalette::Window).lightnessF() < 0.5),
      dark_(givenDark_) {}

bool DesktopColours::PrefersDark() {
  if (!asked_) {
    asked_ = true;
    Ask();
  }
  return dark_;
}

void DesktopColours::Ask() {
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) {
    return;
  }
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.connect(Service(), Path(), Interface(), QStringLiteral("SettingChanged"), this,
              SLOT(Hear(QDBusMessage)));
  QDBusMessage ask = QDBusMessage::createMethodCall(Service(), Path(), Interface(), QStringLiteral("Read"));
  ask << Group() << Key();
  const QDBusMessage answer = bus.call(ask, QDBus::Block, kDesktopAnswersWithin);
  if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
    Take(answer.arguments().constFirst());
  }
}

// Takes the whole message: a slot with its parameters cannot be connected before the first call is made.
void DesktopColours::Hear(const QDBusMessage& signal) {
  const bool before = dark_;
  const QVariantList told = signal.arguments();  // group, key, value
  if (told.size() == 3 && told[0].toString() == Group() && told[1].toString() == Key()) {
    Take(told[2]);
  }
  if (dark_ != before) {
    Q_EMIT Changed();
  }
}

// Some portals wrap the value more than once.
void DesktopColours::Take(const QVariant& scheme) {
  QVariant value = scheme;
  while (value.canConvert<QDBusVariant>()) {
    value = value.value<QDBusVariant>().variant();
  }
  dark_ = value.toInt() == kPrefersDark || (value.toInt() != kPrefersLight && givenDark_);
}

}  // namespace velmora::ui
