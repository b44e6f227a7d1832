#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velmora {

/// One choice of which files a list shows.
struct FileFilter {
  std::string_view caption;   // with '&'
  std::string_view patterns;  // separated by semicolons
};

/// The choices of the two file lists, in menu order.
std::span<const FileFilter> DataFileFilters();
std::span<const FileFilter> TextFileFilters();

/// Whether a file name fits one of the patterns: '*' is any text, '?' one character, letters of either
/// case are the same. A name without a point counts as ending in one, so that "*.*" is every file and
/// "setup." a file without an extension.
bool MatchesFilter(const std::string& name, std::string_view patterns);

}  // namespace velmora
