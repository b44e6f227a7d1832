#pragma once

#include <QByteArray>
#include <QStringList>

#include "core/files/settings.hpp"
#include "ui/main/theme.hpp"

namespace velmora::ui {

/// What the window itself remembers: its place, its looks, the files that were open last.
class WindowSettings {
 public:
  explicit WindowSettings(SettingsStore& store) : store_(store) {}

  [[nodiscard]] QByteArray Geometry() const { return Bytes("Geometry"); }
  [[nodiscard]] QByteArray State() const { return Bytes("State"); }
  void SavePlace(const QByteArray& geometry, const QByteArray& state);

  [[nodiscard]] ThemeChoice Theme() const;
  void SaveTheme(ThemeChoice theme);

  /// The latest first; only files that are still there.
  [[nodiscard]] QStringList RecentFiles() const;
  void AddRecentFile(const QString& path);

 private:
  [[nodiscard]] QByteArray Bytes(std::string_view key) const;
  [[nodiscard]] QStringList StoredFiles() const;

  SettingsStore& store_;
};

}  // namespace velmora::ui
