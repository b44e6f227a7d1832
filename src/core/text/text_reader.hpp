#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {

/// A text file from its start, read ahead in pieces.
class TextReader {
 public:
  /// Longer lines are delivered cut to this many bytes, so that a file without line ends cannot take
  /// all memory.
  static constexpr std::size_t kLongestLine = std::size_t{64} << 20;

  /// Throws FileError when the file cannot be opened for reading or is not a regular file.
  explicit TextReader(const std::string& path);

  /// Size in bytes when the file was opened.
  [[nodiscard]] std::int64_t Size() const { return file_.Size(); }
  /// Bytes that the lines read so far took, line ends included.
  [[nodiscard]] std::int64_t Position() const;

 private:
  friend bool ReadTextLine(TextReader& from, std::string& line);

  bool Refill();
  /// Whether the next byte was this one; drops it then.
  bool Take(char c);

  InputFile file_;
  std::vector<char> piece_;
  std::string_view rest_;      // of the piece
  std::int64_t readUpTo_ = 0;  // of the file
  bool afterLineFeed_ = false;
};

/// The next line, as its bytes without the line end; CR LF, LF CR, CR alone and LF alone end a
/// line. The last line needs no end. Returns false, with `line` empty, when nothing is left.
/// Throws FileError.
bool ReadTextLine(TextReader& from, std::string& line);

/// Val() of a field of a file, as it is kept: in 64 or in 32 bits. Throws FileError when it does not fit,
/// since an infinity among the data would go unnoticed.
double FieldNumber(std::string_view field);
float FieldNumber32(std::string_view field);

}  // namespace velmora
