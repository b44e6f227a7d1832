#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// Both '/' and '\\' separate directories when a path is read; a colon ends a drive.

/// The text behind the last point of the file's name, empty if there is none.
std::string FileExtension(std::string_view path);

/// The file's name without directory and extension.
std::string BaseName(std::string_view path);

/// The part behind the last separator or colon.
std::string FileNamePart(std::string_view path);

/// The path from the root, so that it stays right wherever the program goes on to work; the path itself
/// when there is no working directory.
std::string FullPath(const std::string& path);

/// The directory with its trailing separator; "./" when the path has none.
std::string DirectoryOf(std::string_view path);

/// Whether anything of this name is there.
bool PathExists(const std::string& path);

/// Whether `name` in `directory` (empty: as it stands) can be opened for reading.
bool FileExists(std::string_view directory, std::string_view name);

/// The size in bytes, in digits; empty when there is no such file.
std::string FileSizeText(const std::string& path);

/// The short form of a file's name, which here is the name itself.
std::string ShortNameOf(std::string_view path);

}  // namespace velmora
