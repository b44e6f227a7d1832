#include "core/files/settings.hpp"

#include <sys/stat.h>

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
constexpr int kDeepest = 4;  // ours are texts in sections; the library copies and writes by recursion

std::string ConfigurationDirectory() {
  const char* xdg = std::getenv("XDG_CONFIG_HOME");
  if (xdg != nullptr && *xdg == '/') {  // relative paths are to be ignored
    return xdg;
  }
  const char* home = std::getenv("HOME");
  return home != nullptr && *home == '/' ? std::string(home) + "/.config" : std::string();
}

// Told from the brackets alone, before anything is made of them.
bool NestsTooDeeply(std::string_view text) {
  int depth = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < text.size() && depth <= kDeepest; ++i) {
    const char c = text[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (quoted) {
      i += c == '\\' ? 1 : 0;
    } else {
      depth += c == '[' || c == '{' ? 1 : 0;
      depth -= c == ']' || c == '}' ? 1 : 0;
    }
  }
  return depth > kDeepest;
}

// Throws FileError.
std::string ReadText(const std::string& path) {
  const InputFile file(path);
  std::string text(static_cast<std::size_t>(std::min(file.Size(), kLargestFile + 1)), '\0');
  text.resize(file.ReadAt(0, text.data(), text.size()));
  return text;
}

json Parse(const std::string& text) {
  if (text.size() > static_cast<std::size_t>(kLargestFile) || NestsTooDeeply(text)) {
    return {};
  }
  return json::parse(text, nullptr, /*allow_exceptions=*/false);
}

struct Settings {
  json sections = json::object();
  bool broken = false;  // the file says something that cannot be taken from it
};

Settings Load(const std::string& path) {
  std::error_code error;
  Settings settings;
  try {
    const std::string text = ReadText(path);
    json sections = Parse(text);
    settings.broken = !text.empty() && !sections.is_object();
    if (sections.is_object()) {
      settings.broken =
          std::any_of(sections.begin(), sections.end(), [](const json& s) { return !s.is_object(); });
      settings.sections = std::move(sections);
    }
  } catch (const FileError&) {  // no settings yet, or none that can be read
    settings.broken = std::filesystem::is_regular_file(path, error);
  }
  return settings;
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

// Which state of which file: another program's save makes a new one.
struct Stamp {
  ino_t file = 0;
  off_t size = 0;
  timespec changed{};

  explicit Stamp(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0) {
      file = status.st_ino;
      size = status.st_size;
      changed = status.st_mtim;
    }
  }
  bool operator==(const Stamp& other) const {
    return file == other.file && size == other.size && changed.tv_sec == other.changed.tv_sec &&
           changed.tv_nsec == other.changed.tv_nsec;
  }
};

// Whoever wrote the file by hand finds it again.
bool KeepBroken(const std::string& path) {
  std::error_code error;
  return std::filesystem::copy_file(path, path + ".broken", std::filesystem::copy_options::overwrite_existing,
                                    error);
}

}  // namespace

struct SettingsStore::Read {
  std::string path;
  Stamp stamp;
  Settings settings;
};

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
  if (directory_.empty()) {
    return std::string(otherwise);
  }
  const std::string path = PathOf(application);
  const Stamp stamp(path);
  if (!last_ || last_->path != path || !(last_->stamp == stamp)) {
    last_ = std::make_shared<const Read>(Read{path, stamp, Load(path)});
  }
  const json& sections = last_->settings.sections;
  const auto values = Find(sections, section);
  if (values != sections.end() && values->is_object()) {
    const auto value = Find(*values, key);
    if (value != values->end() && value->is_string()) {
      return value->get<std::string>();
    }
  }
  return std::string(otherwise);
}

std::string SettingsStore::BrokenFile(std::string_view application) const {
  const std::string path = directory_.empty() ? std::string() : PathOf(application);
  return !path.empty() && Load(path).broken ? path : std::string();
}

bool SettingsStore::Save(std::string_view application, std::string_view section, const Values& values) {
  if (directory_.empty()) {
    return false;
  }
  const std::string path = PathOf(application);
  Settings settings = Load(path);
  if (settings.broken && !KeepBroken(path)) {
    return false;
  }
  json& members = Member(settings.sections, section);
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
    file.Write(settings.sections.dump(2, ' ', false, json::error_handler_t::replace) + "\n");
    file.Commit();
  } catch (const FileError&) {
    return false;
  }
  return true;
}

}  // namespace velmora
