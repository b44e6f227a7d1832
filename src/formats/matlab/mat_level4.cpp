#include "formats/matlab/mat_level4.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "formats/bytes/byte_reader.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kLevel4HeaderBytes = 20;

// Later versions say their number and byte order at the end of a header of 128 bytes; the library goes by
// these.
bool IsLaterMat(const InputFile& file) {
  constexpr std::int64_t kVersionAt = 124;
  const std::string version = ReadBytes(file, kVersionAt, 4);
  using namespace std::string_literals;
  const std::array later = {"\x00\x01IM"s, "\x00\x02IM"s, "\x01\x00MI"s, "\x02\x00MI"s};
  return std::find(later.begin(), later.end(), version) != later.end();
}

/// The first number of a header tells by its thousands in which order its bytes lie.
std::optional<ByteOrder> OrderOf(const std::string& header) {
  for (const ByteOrder order : {ByteOrder::Little, ByteOrder::Big}) {
    const auto type = ByteReader(header, order).At<std::int32_t>(0);
    const int thousands = order == ByteOrder::Little ? 0 : 1;
    if (type >= 0 && type / 1000 == thousands) {
      return order;
    }
  }
  return std::nullopt;
}

/// What a variable takes with its header; -1: more than can be counted, or no variable.
std::int64_t BytesOfLevel4(const std::string& header, ByteOrder order) {
  constexpr std::array<std::int64_t, 6> kSizes = {8, 4, 4, 2, 2, 1};  // of one value, by the tens of the type
  ByteReader reader(header, order);
  const std::size_t precision = static_cast<std::size_t>(reader.Take<std::int32_t>()) % 1000 / 10;
  const std::int64_t rows = reader.Take<std::int32_t>();
  const std::int64_t columns = reader.Take<std::int32_t>();
  const std::int64_t parts = reader.Take<std::int32_t>() == 0 ? 1 : 2;
  const std::int64_t name = reader.Take<std::int32_t>();
  if (precision >= kSizes.size() || rows < 0 || columns < 0 || name < 1 ||
      (rows > 0 && columns > INT64_MAX / 16 / rows)) {
    return -1;
  }
  return kLevel4HeaderBytes + name + rows * columns * parts * kSizes[precision];
}

}  // namespace

void CheckMatLevel4(const InputFile& file) {
  if (IsLaterMat(file)) {
    return;
  }
  for (std::int64_t at = 0; at < file.Size();) {
    const std::string header = ReadBytes(file, at, kLevel4HeaderBytes);
    const std::optional<ByteOrder> order =
        header.size() < static_cast<std::size_t>(kLevel4HeaderBytes) ? std::nullopt : OrderOf(header);
    const std::int64_t bytes = order ? BytesOfLevel4(header, *order) : -1;
    if (bytes < 0) {
      throw FileError("this is no MATLAB file, or a damaged one");
    }
    if (bytes > file.Size() - at) {
      throw FileError("it is damaged: a variable in it reaches past its end");
    }
    at += bytes;
  }
}

}  // namespace velmora
