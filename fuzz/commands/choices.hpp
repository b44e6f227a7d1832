#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace velmora::fuzz {

/// The input's bytes as choices, one after the other. Behind the last byte the first possibility is chosen.
class Choices {
 public:
  explicit Choices(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  [[nodiscard]] bool Left() const { return next_ < bytes_.size(); }
  /// 0 to count - 1; 0 for a count of 0.
  std::size_t Below(std::size_t count) {
    std::size_t value = Byte();
    if (count > 256) {
      value = value * 256 + Byte();
    }
    return count == 0 ? 0 : value % count;
  }
  int From(int first, int last) {
    return first + static_cast<int>(Below(static_cast<std::size_t>(last - first + 1)));
  }
  /// True in one of so many cases; never behind the last byte.
  bool OneIn(std::size_t many) { return Below(many) == many - 1; }
  template <typename List>
  const auto& Of(const List& list) {
    return *(std::begin(list) + static_cast<std::ptrdiff_t>(Below(std::size(list))));
  }

 private:
  std::uint8_t Byte() { return Left() ? bytes_[next_++] : std::uint8_t{0}; }

  std::span<const std::uint8_t> bytes_;
  std::size_t next_ = 0;
};

}  // namespace velmora::fuzz
