#pragma once

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::test {

/// A public recording by its name below the folder that VELMORA_RECORDINGS names: nothing when there is
/// none. Tests on recordings that are not ours to pass on skip without it.
inline std::optional<std::string> Recording(std::string_view name) {
  const char* folder = std::getenv("VELMORA_RECORDINGS");
  if (folder == nullptr) {
    return std::nullopt;
  }
  const std::filesystem::path path = std::filesystem::path(folder) / name;
  return std::filesystem::exists(path) ? std::optional(path.string()) : std::nullopt;
}

}  // namespace velmora::test
