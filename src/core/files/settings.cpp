#include "core/files/settings.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "core/files/files.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

using nlohmann::json;

constexpr std::int64_t kLargestFile = 1 << 20;
constexpr int kDeepest = 3;  // ours are texts in sections; the library copies and writes by recursion

std::string ConfigurationDirectory() {
  const char* xdg = std::getenv("XDG_CONFIG_HOME");
  if (xdg != nullptr && *xdg == '/') {  // relative paths are to be ignored
    return xdg;
  }
  const char* home = std::getenv("HOME");
  return home != nullptr && *home == '/' ? std::string(home) + "/.config" : std::string();
}

json Load(const std::string& path) {
  try {
    const InputFile file(path);
    std::string text(static_cast<std::size_t>(std::min(file.Size(), kLargestFile + 1)), '\0');
    text.resize(file.ReadAt(0, text.data(), text.size()));
    if (text.size() <= static_cast<std::size_t>(kLargestFile)) {
      int deepest = 0;
      const auto measure = [&deepest](int depth, json::parse_event_t /*event*/, json& /*value*/) {
        deepest = std::max(deepest, depth);
        return true;
      };
      json settings = json::parse(text, measure, /*allow_exceptions=*/false);
      if (settings.is_object() && deepest <= kDeepest) {
        return settings;
      }
    }
  } catch (const FileError&) {  // NOLINT: no settings yet, or none that can be read
  }
  return json::object();
}

template <typename Object>
auto Find(Object& object, std::string_view key) {
  auto it = object.begin();
  while (it != object.end() && !EqualNoCase(it.key(), key)) {
    ++it;
  }
  return it;
}

// The member of an object that is to hold a value, under the spelling it already has.
json& Member(json& object, std::string_view key) {
  const auto it = Find(object, key);
  return it == object.end() ? object[std::string(key)] : it.value();
}

}  // namespace

SettingsStore::SettingsStore() : SettingsStore(ConfigurationDirectory()) {}

SettingsStore::SettingsStore(std::string directory) : directory_(std::move(directory)) {}

std::string SettingsStore::PathOf(std::string_view application) const {
  std::string folder(application);
  std::transform(folder.begin(), folder.end(), folder.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return (std::filesystem::path(directory_) / folder / "settings.json").string();
}

std::string SettingsStore::Get(std::string_view application, std::string_view section, std::string_view key,
                               std::string_view otherwise) const {
  const json settings = directory_.empty() ? json::object() : Load(PathOf(application));
  const auto values = Find(settings, section);
  if (values != settings.end() && values->is_object()) {
    const auto value = Find(*values, key);
    if (value != values->end() && value->is_string()) {
      return value->get<std::string>();
    }
  }
  return std::string(otherwise);
}

bool SettingsStore::Save(std::string_view application, std::string_view section, const Values& values) {
  if (directory_.empty()) {
    return false;
  }
  const std::string path = PathOf(application);
  json settings = Load(path);
  json& members = Member(settings, section);
  if (!members.is_object()) {
    members = json::object();
  }
  for (const auto& [key, value] : values) {
    Member(members, key) = value;
  }
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
  try {
    OutputFile file(path);
    // A path is bytes to the system; what is no UTF-8 in it is stored as a replacement character.
    file.Write(settings.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
    file.Commit();
  } catch (const FileError&) {
    return false;
  }
  return true;
}

}  // namespace velmora
