#pragma once

#include <QDBusMessage>
#include <QObject>

namespace velmora::ui {

/// Whether the desktop wants its programs dark, and when it changes its mind. The desktop's portal for
/// settings is asked; where there is none, the palette that Qt had when this was made stays the answer.
class DesktopColours : public QObject {
  Q_OBJECT

 public:
  explicit DesktopColours(QObject* parent);

  /// Asks the desktop the first time, and hears of its changes from then on.
  [[nodiscard]] bool PrefersDark();

 Q_SIGNALS:
  void Changed();

 private:
  Q_SLOT void Hear(const QDBusMessage& signal);
  void Ask();
  void Take(const QVariant& scheme);

  bool givenDark_;
  bool asked_ = false;
  bool dark_;
};

}  // namespace velmora::ui
