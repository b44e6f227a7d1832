#pragma once

#include <QByteArray>
#include <QStringList>

#include "core/command_memory.hpp"
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
  /// The same of directories that files were opened from.
  [[nodiscard]] QStringList RecentDirectories() const;
  void AddRecentDirectory(const QString& path);

  /// How texts were read, from session to session.
  [[nodiscard]] TextMemory TextLayouts();
  void SaveTextLayouts(const TextMemory& texts);

  /// The file of settings when some of it cannot be read, else empty.
  [[nodiscard]] std::string BrokenFile() const;

 private:
  using Layouts = decltype(TextMemory::Layouts);
  [[nodiscard]] Layouts StoredLayouts() const;
  [[nodiscard]] QByteArray Bytes(std::string_view key) const;
  [[nodiscard]] QStringList Stored(std::string_view list) const;
  void PutFirst(std::string_view list, const QString& path);

  SettingsStore& store_;
  Layouts layoutsRead_;
};

}  // namespace velmora::ui
