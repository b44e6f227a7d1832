#include "formats/matlab/mat_compression.hpp"

#include <zlib.h>

#include <algorithm>
#include <string>
#include <vector>

#include "formats/bytes/byte_reader.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kMatHeaderBytes = 128;
constexpr std::uint32_t kCompressedElement = 15;

/// Unpacks a stream piece by piece and forgets what comes out: its check sum stands at its end.
class Unpacker {
 public:
  Unpacker() : out_(std::size_t{1} << 16) {
    if (inflateInit(&stream_) != Z_OK) {
      throw FileError("there is not enough memory to unpack it");
    }
  }
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;
  ~Unpacker() { inflateEnd(&stream_); }

  /// Returns whether the stream is sound so far; Ended tells that it is whole.
  bool Take(std::string& packed) {
    stream_.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream_.avail_in = static_cast<uInt>(packed.size());
    int state = Z_OK;
    while (state == Z_OK && (stream_.avail_in > 0 || stream_.avail_out == 0)) {
      stream_.next_out = out_.data();
      stream_.avail_out = static_cast<uInt>(out_.size());
      state = inflate(&stream_, Z_NO_FLUSH);
    }
    ended_ = state == Z_STREAM_END;
    return ended_ || state == Z_OK || state == Z_BUF_ERROR;
  }
  [[nodiscard]] bool Ended() const { return ended_; }

 private:
  z_stream stream_{};
  std::vector<Bytef> out_;
  bool ended_ = false;
};

bool IsSound(const InputFile& file, std::int64_t at, std::int64_t bytes) {
  constexpr std::int64_t kPiece = std::int64_t{1} << 20;
  Unpacker unpacker;
  for (std::int64_t done = 0; done < bytes && !unpacker.Ended(); done += kPiece) {
    std::string packed = ReadBytes(file, at + done, std::min(kPiece, bytes - done));
    if (packed.empty() || !unpacker.Take(packed)) {
      return false;
    }
  }
  return unpacker.Ended();
}

}  // namespace

void CheckMatCompression(const InputFile& file) {
  constexpr std::size_t kOrderAt = 126;
  constexpr std::int64_t kTagBytes = 8;
  const std::string header = ReadBytes(file, 0, kMatHeaderBytes);
  if (!header.starts_with("MATLAB 5.0 MAT-file") ||
      header.size() < static_cast<std::size_t>(kMatHeaderBytes)) {
    return;  // older and newer versions are told apart, and checked, by the library
  }
  const ByteOrder order = header.substr(kOrderAt, 2) == "MI" ? ByteOrder::Big : ByteOrder::Little;
  for (std::int64_t at = kMatHeaderBytes; at + kTagBytes <= file.Size();) {
    const std::string tag = ReadBytes(file, at, kTagBytes);
    const ByteReader reader(tag, order);
    const std::int64_t bytes = reader.At<std::uint32_t>(4);
    at += kTagBytes;
    if (reader.At<std::uint32_t>(0) == kCompressedElement && !IsSound(file, at, bytes)) {
      throw FileError("a compressed variable in it is damaged or cut off");
    }
    at += bytes;
  }
}

}  // namespace velmora
