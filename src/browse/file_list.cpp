#include "browse/file_list.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "core/files/file_filters.hpp"
#include "core/files/files.hpp"
#include "core/files/paths.hpp"
#include "core/text/text.hpp"
#include "import/reader_table.hpp"

namespace velmora {

FileListing ListFiles(const std::string& directory, std::string_view patterns) {
  FileListing listing;
  std::vector<ListedFile>& files = listing.files;
  std::error_code error;
  std::filesystem::directory_iterator it(directory, error);
  for (const std::filesystem::directory_iterator end; !error && it != end; it.increment(error)) {
    const std::string name = it->path().filename().string();
    struct stat status {};
    if (name.starts_with('.') || stat(it->path().c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
      continue;
    }
    if (MatchesFilter(name, patterns)) {
      files.push_back({name, status.st_size, status.st_mtime});
    } else {
      ++listing.others;
    }
  }
  std::sort(files.begin(), files.end(), [](const ListedFile& a, const ListedFile& b) {
    const std::string upperA = ToUpper(a.name);
    const std::string upperB = ToUpper(b.name);
    return upperA != upperB ? upperA < upperB : a.name < b.name;
  });
  return listing;
}

std::string WhyUnreadable(const std::string& path) {
  std::string head(kHeadBytes, '\0');
  try {
    const InputFile file(path);
    if (file.Size() == 0) {
      return "The file is empty.";
    }
    head.resize(file.ReadAt(0, head.data(), head.size()));
  } catch (const FileError& error) {
    return error.what();
  }
  const Format* format = FindFormat(ToUpper(FileExtension(path)), head);
  if (format == nullptr || format->read != nullptr || format->open != nullptr) {
    return {};
  }
  return std::string(format->name) + " files cannot be read. " + std::string(format->wayRound);
}

}  // namespace velmora
