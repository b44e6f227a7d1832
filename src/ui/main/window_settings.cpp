#include "ui/main/window_settings.hpp"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <string>
#include <vector>

#include "ui/text.hpp"

namespace velmora::ui {
namespace {

constexpr std::string_view kProgram = "Velmora2";
constexpr std::string_view kSection = "Window";
constexpr int kRecent = 6;
constexpr std::string_view kFiles = "Recent";
constexpr std::string_view kDirectories = "RecentDirectory";
constexpr std::string_view kLayouts = "TextLayouts";

std::string RecentKey(std::string_view list, qsizetype k) {
  return std::string(list) + std::to_string(k + 1);
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

QStringList WindowSettings::Stored(std::string_view list) const {
  QStringList paths;
  for (qsizetype k = 0; k < kRecent; ++k) {
    const std::string path = store_.Get(kProgram, kSection, RecentKey(list, k), "");
    if (!path.empty()) {
      paths << ToQt(path);
    }
  }
  return paths;
}

void WindowSettings::PutFirst(std::string_view list, const QString& path) {
  QStringList paths = Stored(list);
  paths.removeAll(path);
  paths.prepend(path);
  std::vector<std::string> keys;
  SettingsStore::Values values;
  for (qsizetype k = 0; k < std::min<qsizetype>(paths.size(), kRecent); ++k) {
    keys.push_back(RecentKey(list, k));
  }
  for (std::size_t k = 0; k < keys.size(); ++k) {
    values.emplace_back(keys[k], ToStd(paths[static_cast<qsizetype>(k)]));
  }
  store_.Save(kProgram, kSection, values);
}

QStringList WindowSettings::RecentFiles() const {
  QStringList files = Stored(kFiles);
  files.removeIf([](const QString& path) { return !QFileInfo(path).isFile(); });
  return files;
}

std::string WindowSettings::BrokenFile() const {
  return store_.BrokenFile(kProgram);
}

WindowSettings::Layouts WindowSettings::StoredLayouts() const {
  Layouts stored;
  const QByteArray text = QByteArray::fromStdString(store_.Get(kProgram, kSection, kLayouts, ""));
  const QJsonObject layouts = QJsonDocument::fromJson(text).object();
  for (auto layout = layouts.begin(); layout != layouts.end(); ++layout) {
    const QJsonObject fields = layout->toObject();
    for (auto field = fields.begin(); field != fields.end(); ++field) {
      stored[ToStd(layout.key())][ToStd(field.key())] = ToStd(field->toString());
    }
  }
  return stored;
}

TextMemory WindowSettings::TextLayouts() {
  layoutsRead_ = StoredLayouts();
  return {.Remembers = true, .Layouts = layoutsRead_};
}

// Another window may have learned others meanwhile: what is new or gone here is all that changes.
void WindowSettings::SaveTextLayouts(const TextMemory& texts) {
  Layouts all = StoredLayouts();
  for (const auto& [key, values] : layoutsRead_) {
    if (!texts.Layouts.contains(key)) {
      all.erase(key);
    }
  }
  for (const auto& [key, values] : texts.Layouts) {
    const auto before = layoutsRead_.find(key);
    if (before == layoutsRead_.end() || before->second != values) {
      all[key] = values;
    }
  }
  QJsonObject layouts;
  for (const auto& [key, values] : all) {
    QJsonObject fields;
    for (const auto& [name, text] : values) {
      fields[ToQt(name)] = ToQt(text);
    }
    layouts[ToQt(key)] = fields;
  }
  store_.Save(kProgram, kSection,
              {{kLayouts, QJsonDocument(layouts).toJson(QJsonDocument::Compact).toStdString()}});
}

void WindowSettings::AddRecentFile(const QString& path) {
  PutFirst(kFiles, path);
}

QStringList WindowSettings::RecentDirectories() const {
  QStringList directories = Stored(kDirectories);
  directories.removeIf([](const QString& path) { return !QFileInfo(path).isDir(); });
  return directories;
}

void WindowSettings::AddRecentDirectory(const QString& path) {
  PutFirst(kDirectories, path);
}

}  // namespace velmora::ui
