#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formats/text_source.hpp"

namespace velmora {

/// First CR or LF of [from, to); `to` when there is none.
const char* FindLineEnd(const char* from, const char* to);

/// Takes the first line off `text`, which holds whole lines, and returns it without its end.
/// LF, CR LF and CR alone end a line; the last line of a file may have no end.
std::string_view TakeLine(std::string_view& text);

/// A line of more than LineBlocks::kNoLine bytes: the file is none of lines.
class LineTooLong : public FileError {
 public:
  using FileError::FileError;
};

/// A text file as blocks of whole lines.
class LineBlocks {
 public:
  /// What is longer is cut here, the rest of the line is dropped: a file without line ends must not
  /// take all memory.
  static constexpr std::size_t kLongestLine = std::size_t{1} << 20;
  /// No text of numbers has such a line; reading on to its end would only take time.
  static constexpr std::size_t kNoLine = std::size_t{64} << 20;
  /// Bytes of lines after which a reader gives the interface a turn, however few lines they are.
  static constexpr std::size_t kBytesPerTurn = std::size_t{32} << 20;
  /// Bytes that may be read before and behind a block (they are no part of it).
  static constexpr std::size_t kPadding = 64;

  /// Throws FileError as TextSource does; the source must outlive this object.
  explicit LineBlocks(TextSource& source, std::size_t blockBytes = std::size_t{256} << 10);

  /// Whole lines that have not been consumed, empty at the end of the file; valid until the next
  /// call. Throws FileError, on a line of more than kNoLine bytes LineTooLong.
  std::string_view Lines();
  /// Marks the first `bytes` of the lines, themselves whole lines, as read.
  void Consume(std::size_t bytes) { first_ += bytes; }

  /// The next line as its bytes, without its end; false at the end of the file. Throws FileError.
  bool ReadTextLine(std::string& line);
  /// Passes over lines; returns how many there were.
  std::int64_t SkipLines(std::int64_t count);

 private:
  [[nodiscard]] std::size_t WholeLinesEnd() const;
  void Refill();
  void DropRestOfLine();

  TextSource& source_;
  std::vector<char> buffer_;
  std::size_t blockBytes_;
  std::size_t first_;
  std::size_t last_;       // end of what was read
  std::size_t searched_;   // no whole line ends before
  std::size_t whole_;      // end of the whole lines
  bool ended_ = false;     // the source is exhausted
  bool dropping_ = false;  // inside the rest of a line that was cut
  bool dropLf_ = false;    // the line cut ended with a CR as the last byte read
};

}  // namespace velmora
