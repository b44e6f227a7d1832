#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A file as the browser lists it.
struct ListedFile {
  std::string name;
  std::int64_t size = 0;  // bytes
  std::time_t date = 0;   // of the last change
};

struct FileListing {
  std::vector<ListedFile> files;
  int others = 0;  // files of the directory that do not fit the patterns
};

/// The regular files of a directory whose names fit the patterns (core/files/file_filters.hpp), by name
/// without regard to case; hidden ones are left out. A directory that cannot be read has none.
FileListing ListFiles(const std::string& directory, std::string_view patterns);

/// Why no reader takes this data file; empty when one does or when the text parser may try.
std::string WhyUnreadable(const std::string& path);

}  // namespace velmora
