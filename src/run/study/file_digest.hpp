#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

/// What a file held.
struct FileDigest {
  std::string path;
  std::int64_t size = 0;  // bytes
  std::string sha256;     // 64 hexadecimal digits

  friend bool operator==(const FileDigest&, const FileDigest&) = default;
};

std::string Sha256(std::string_view bytes);

/// Of the file as it is now. Throws FileError.
FileDigest DigestOf(const std::string& path);

/// Whether the file is what it was.
bool IsUnchanged(const FileDigest& digest);

}  // namespace velmora
