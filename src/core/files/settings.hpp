#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// Settings of one user: texts under application, section and key, none of which minds the case. Each
/// application has a JSON file of its own, which other running programs may write meanwhile. What
/// cannot be read counts as not set; nothing here throws for the state of a file. A file that a save would
/// lose something of, since it cannot be understood, is kept beside it as settings.json.broken.
class SettingsStore {
 public:
  using Values = std::vector<std::pair<std::string_view, std::string>>;  // key, value

  /// Keeps its files under the user's configuration directory (XDG_CONFIG_HOME, else ~/.config).
  SettingsStore();
  /// Keeps its files in `directory`/APPLICATION/settings.json.
  explicit SettingsStore(std::string directory);

  /// `otherwise` when the key is not set.
  [[nodiscard]] std::string Get(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view otherwise) const;

  /// The application's file when it says something that cannot be read, which counts as not set; else empty.
  /// The next save keeps a copy of it, with ".broken" behind its name.
  [[nodiscard]] std::string BrokenFile(std::string_view application) const;

  /// Sets these keys and keeps all others. Returns false when they could not be stored.
  bool Save(std::string_view application, std::string_view section, const Values& values);

 private:
  [[nodiscard]] std::string PathOf(std::string_view application) const;

  struct Read;

  std::string directory_;                     // empty: there is nowhere to keep settings
  mutable std::shared_ptr<const Read> last_;  // a session begins by asking for dozens of keys
};

}  // namespace velmora
