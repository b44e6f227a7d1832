#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "core/files/files.hpp"

namespace velmora {

/// How a file's numbers lie. Vax: integers low byte first, 32-bit floats in the F format of DEC machines.
enum class ByteOrder { Little, Big, Vax };

/// The value of a VAX F float, read as a 32-bit integer low byte first; exact. An exponent of 0 is 0, the
/// reserved operand (0 with a sign) too.
double FromVaxFloat(std::uint32_t word);

template <typename T>
concept FileNumber = std::integral<T> || std::floating_point<T>;

/// A number of sizeof(T) bytes that lie high byte first.
template <FileNumber T>
T SwappedBytes(T value) {
  auto bytes = std::bit_cast<std::array<char, sizeof(T)>>(value);
  std::reverse(bytes.begin(), bytes.end());
  return std::bit_cast<T>(bytes);
}

/// Numbers and texts in the bytes of a file, none of them beyond its end: what is not there throws FileError,
/// "the file ends inside its header". At: anywhere. Take: one behind the other, from Position().
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes, ByteOrder order = ByteOrder::Little)
      : bytes_(bytes), order_(order) {}

  [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
  [[nodiscard]] std::size_t Position() const { return position_; }
  [[nodiscard]] std::size_t Rest() const { return bytes_.size() - position_; }
  [[nodiscard]] bool Has(std::size_t offset, std::size_t count) const {
    return offset <= bytes_.size() && count <= bytes_.size() - offset;
  }
  void Seek(std::size_t offset);
  void Skip(std::size_t count) { TakeBytes(count); }

  template <FileNumber T>
  [[nodiscard]] T At(std::size_t offset) const {
    T value;
    std::memcpy(&value, BytesAt(offset, sizeof(T)).data(), sizeof(T));
    if constexpr (std::same_as<T, float>) {
      if (order_ == ByteOrder::Vax) {
        return static_cast<float>(FromVaxFloat(std::bit_cast<std::uint32_t>(value)));
      }
    }
    return order_ == ByteOrder::Big ? SwappedBytes(value) : value;
  }
  template <FileNumber T>
  T Take() {
    const T value = At<T>(position_);
    position_ += sizeof(T);
    return value;
  }

  [[nodiscard]] std::string_view BytesAt(std::size_t offset, std::size_t count) const;
  std::string_view TakeBytes(std::size_t count);
  /// A fixed text as FixedFieldText gives it.
  [[nodiscard]] std::string TextAt(std::size_t offset, std::size_t count) const;
  std::string TakeText(std::size_t count);

 private:
  std::string_view bytes_;
  ByteOrder order_;
  std::size_t position_ = 0;
};

/// The text of a fixed field: up to the first NUL behind its first character, without the blanks, tabs and
/// line ends around it; UTF-8 where it is that, else Windows-1252.
std::string FixedFieldText(std::string_view bytes);

/// The same for units: every sign for micro is U+00B5.
std::string FixedUnitsText(std::string_view bytes);

/// At most `count` bytes of a file, fewer where it ends. Throws FileError.
std::string ReadBytes(const InputFile& file, std::int64_t offset, std::int64_t count);

}  // namespace velmora
