#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace velmora {

/// A file that could not be opened, read or written. what() is the system's own error text.
class FileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Throws FileError with the system's text for `error`, a value of errno.
[[noreturn]] void ThrowFileError(int error);

/// Reads any part of a regular file. Reads, not a memory map: a file that shrinks while it is read
/// then ends early instead of ending the program.
class InputFile {
 public:
  /// Throws FileError when the file cannot be opened for reading or is not a regular file.
  explicit InputFile(const std::string& path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  /// Size in bytes when the file was opened.
  [[nodiscard]] std::int64_t Size() const { return size_; }

  /// Fills `to` from `offset`; returns the bytes read, fewer only at the end of the file.
  /// Throws FileError.
  std::size_t ReadAt(std::int64_t offset, void* to, std::size_t bytes) const;

  /// Asks the system to have these bytes ready soon.
  void Prefetch(std::int64_t offset, std::int64_t bytes) const;

 private:
  int descriptor_ = -1;
  std::int64_t size_ = 0;
};

/// Writes beside the target and puts the result in its place in one step: until Commit, and when
/// anything fails, the old file is as it was. The new file takes the old one's owner, group, permissions,
/// access list and extended attributes; behind a symbolic link, what it points to is written.
class OutputFile {
 public:
  enum class Mode {
    Replace,
    /// Bytes of the old file behind the last one written stay.
    KeepTail,
  };

  /// Throws FileError when the target cannot be written: a directory, a device, a
  /// write-protected file, a directory that takes no new file, what an OutputGuard refuses.
  explicit OutputFile(const std::string& path, Mode mode = Mode::Replace);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  /// Without Commit the target is untouched and nothing is left beside it.
  ~OutputFile();

  /// Appends. Throws FileError.
  void Write(std::string_view bytes);
  /// Writes anywhere. Throws FileError.
  void WriteAt(std::int64_t offset, const void* from, std::size_t bytes);

  /// Everything is on the disk under its own name when this returns. Throws FileError.
  void Commit();

  /// Where the file will stand; what a link points to.
  [[nodiscard]] const std::string& Target() const { return name_; }
  /// What of the old file this user may not give the new one, in words: "owner and group". Mostly empty.
  [[nodiscard]] const std::string& NotKept() const { return notKept_; }

 private:
  void Open(unsigned mode);
  void CopyTail();
  void GiveName();

  std::string name_;
  std::string target_;  // where the file of that name is written
  std::string directory_;
  std::string notKept_;
  std::string temporary_;  // empty while the file has no name
  Mode mode_;
  int descriptor_ = -1;
  std::int64_t end_ = 0;
};

}  // namespace velmora
