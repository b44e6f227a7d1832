#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "formats/bytes/byte_reader.hpp"

namespace velmora {

/// Bytes of a file in the making, in one byte order (Little or Big).
class ByteBuilder {
 public:
  explicit ByteBuilder(ByteOrder order = ByteOrder::Little) : order_(order) {}

  template <FileNumber T>
  ByteBuilder& Add(T value) {
    const T stored = order_ == ByteOrder::Big ? SwappedBytes(value) : value;
    bytes_.append(reinterpret_cast<const char*>(&stored), sizeof stored);
    return *this;
  }
  ByteBuilder& AddBytes(std::string_view bytes) {
    bytes_ += bytes;
    return *this;
  }
  /// Cut or filled up to exactly `count` bytes.
  ByteBuilder& AddText(std::string_view text, std::size_t count, char padding = ' ') {
    bytes_ += text.substr(0, count);
    bytes_.append(count - std::min(count, text.size()), padding);
    return *this;
  }
  /// Zeros up to this size.
  ByteBuilder& FillTo(std::size_t size) {
    bytes_.resize(std::max(size, bytes_.size()), '\0');
    return *this;
  }
  /// Puts a number over bytes that are there already, or grows the file.
  template <FileNumber T>
  ByteBuilder& Put(std::size_t offset, T value) {
    const T stored = order_ == ByteOrder::Big ? SwappedBytes(value) : value;
    FillTo(offset + sizeof stored);
    bytes_.replace(offset, sizeof stored, reinterpret_cast<const char*>(&stored), sizeof stored);
    return *this;
  }
  ByteBuilder& PutText(std::size_t offset, std::string_view text) {
    FillTo(offset + text.size());
    bytes_.replace(offset, text.size(), text);
    return *this;
  }

  [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

 private:
  ByteOrder order_;
  std::string bytes_;
};

}  // namespace velmora
