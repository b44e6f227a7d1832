#pragma once

#include <cstdint>
#include <functional>
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

/// Of the file as it is now. `goesOn` is called every few milliseconds with the part that is read; when it
/// returns false, what was read so far counts, which nobody should look at. Throws FileError.
FileDigest DigestOf(const std::string& path, const std::function<bool(double part)>& goesOn = {});

/// Whether the file is what it was.
bool IsUnchanged(const FileDigest& digest);

}  // namespace velmora
