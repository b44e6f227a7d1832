#include "ui/main/window_settings.hpp"

#include <QFileInfo>
#include <string>
#include <vector>

#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr std::string_view kProgram = "Velmora2";
constexpr std::string_view kSection = "Window";
constexpr int kRecentFiles = 6;

std::string RecentKey(qsizetype k) {
  return "Recent" + std::to_string(k + 1);
}

}  // namespace

QByteArray WindowSettings::Bytes(std::string_view key) const {
  return QByteArray::fromBase64(QByteArray::fromStdString(store_.Get(kProgram, kSection, key, "")));
}

void WindowSettings::SavePlace(const QByteArray& geometry, const QByteArray& state) {
  store_.Save(kProgram, kSection,
              {{"Geometry", geometry.toBase64().toStdString()}, {"State", state.toBase64().toStdString()}});
}

ThemeChoice WindowSettings::Theme() const {
  const std::string stored = store_.Get(kProgram, kSection, "Theme", "");
  const std::string name =
      qEnvironmentVariableIsSet("VELMORA2_THEME") ? qgetenv("VELMORA2_THEME").toStdString() : stored;
  return name == "dark" ? ThemeChoice::Dark : name == "light" ? ThemeChoice::Light : ThemeChoice::Desktop;
}

void WindowSettings::SaveTheme(ThemeChoice theme) {
  store_.Save(kProgram, kSection,
              {{"Theme", theme == ThemeChoice::Dark    ? "dark"
                         : theme == ThemeChoice::Light ? "light"
                                                       : "desktop"}});
}

QStringList WindowSettings::StoredFiles() const {
  QStringList files;
  for (qsizetype k = 0; k < kRecentFiles; ++k) {
    const std::string path = store_.Get(kProgram, kSection, RecentKey(k), "");
    if (!path.empty()) {
      files << ToQt(path);
    }
  }
  return files;
}

QStringList WindowSettings::RecentFiles() const {
  QStringList files = StoredFiles();
  files.removeIf([](const QString& path) { return !QFileInfo(path).isFile(); });
  return files;
}

void WindowSettings::AddRecentFile(const QString& path) {
  QStringList files = StoredFiles();
  files.removeAll(path);
  files.prepend(path);
  std::vector<std::string> keys;
  SettingsStore::Values values;
  for (qsizetype k = 0; k < std::min<qsizetype>(files.size(), kRecentFiles); ++k) {
    keys.push_back(RecentKey(k));
  }
  for (std::size_t k = 0; k < keys.size(); ++k) {
    values.emplace_back(keys[k], ToStd(files[static_cast<qsizetype>(k)]));
  }
  store_.Save(kProgram, kSection, values);
}

}  // namespace velmora::ui
