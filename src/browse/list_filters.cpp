#include "browse/list_filters.hpp"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "import/reader_table.hpp"

namespace velmora {
namespace {

// From the table of formats: a new reader is in it by itself.
std::string ReadPatterns() {
  std::string patterns;
  for (const Format& format : Formats()) {
    if (!Reads(format)) {
      continue;
    }
    std::string_view rest = format.extensions;
    while (!rest.empty()) {
      const std::size_t end = std::min(rest.find(' '), rest.size());
      patterns += patterns.empty() ? "*." : ";*.";
      std::transform(rest.begin(), rest.begin() + end, std::back_inserter(patterns),
                     [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
      rest.remove_prefix(std::min(end + 1, rest.size()));
    }
  }
  return patterns;
}

}  // namespace

std::span<const FileFilter> DataListFilters() {
  static const std::string readPatterns = ReadPatterns();
  static const std::vector<FileFilter> filters = [] {
    const std::span<const FileFilter> given = DataFileFilters();
    std::vector<FileFilter> all(given.begin(), given.end());
    all.push_back({"All files this program &reads", readPatterns});
    return all;
  }();
  return filters;
}

}  // namespace velmora
