#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {

/// The bytes of a text file in reading order, as text whose digits and separators are ASCII: a
/// UTF-8 byte order mark is dropped, UTF-16 (either order, with or without a mark) becomes UTF-8,
/// everything else passes as it stands.
class TextSource {
 public:
  /// Throws FileError when the file cannot be opened for reading or is not a regular file.
  explicit TextSource(const std::string& path);

  /// Size of the file in bytes when it was opened.
  [[nodiscard]] std::int64_t Size() const { return file_.Size(); }
  /// Bytes of the file taken so far.
  [[nodiscard]] std::int64_t Position() const { return position_; }

  /// The next bytes, at most `capacity` (8 or more); 0 at the end of the file. Throws FileError.
  std::size_t Read(char* to, std::size_t capacity);

  /// Starts again at the first character.
  void Rewind() { position_ = start_; }

 private:
  enum class Encoding { Bytes, Utf16Little, Utf16Big };

  void FindEncoding();
  std::size_t ReadUtf16(char* to, std::size_t capacity);

  InputFile file_;
  Encoding encoding_ = Encoding::Bytes;
  std::int64_t start_ = 0;  // behind the byte order mark
  std::int64_t position_ = 0;
  std::vector<unsigned char> units_;
};

/// A line for people: kept when it is valid UTF-8, read as Windows-1252 otherwise.
std::string DecodeLine(std::string_view bytes);

}  // namespace velmora
