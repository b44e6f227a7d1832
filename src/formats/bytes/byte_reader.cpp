#include "formats/bytes/byte_reader.hpp"

#include <cmath>

#include "formats/text_source.hpp"

namespace velmora {
namespace {

constexpr std::string_view kPadding(" \t\r\n\0", 5);

std::string_view WithoutPadding(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(kPadding);
  if (first == std::string_view::npos) {
    return {};
  }
  bytes.remove_prefix(first);
  bytes = bytes.substr(0, bytes.find('\0'));
  return bytes.substr(0, bytes.find_last_not_of(kPadding) + 1);
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

}  // namespace

double FromVaxFloat(std::uint32_t word) {
  constexpr int kBias = 129;  // of the mantissa 1.f
  constexpr double kMantissa = 0x1p-23;
  const std::uint32_t ieee = word << 16U | word >> 16U;
  const int exponent = static_cast<int>(ieee >> 23U & 0xFFU);
  if (exponent == 0) {
    return 0.0;
  }
  const double size = std::ldexp(1.0 + (ieee & 0x7FFFFFU) * kMantissa, exponent - kBias);
  return (ieee >> 31U) != 0 ? -size : size;
}

std::string_view ByteReader::BytesAt(std::size_t offset, std::size_t count) const {
  if (!Has(offset, count)) {
    throw FileError("the file ends inside its header");
  }
  return bytes_.substr(offset, count);
}

void ByteReader::Seek(std::size_t offset) {
  static_cast<void>(BytesAt(offset, 0));
  position_ = offset;
}

std::string_view ByteReader::TakeBytes(std::size_t count) {
  const std::string_view bytes = BytesAt(position_, count);
  position_ += count;
  return bytes;
}

std::string ByteReader::TextAt(std::size_t offset, std::size_t count) const {
  return FixedFieldText(BytesAt(offset, count));
}

std::string ByteReader::TakeText(std::size_t count) {
  return FixedFieldText(TakeBytes(count));
}

std::string FixedFieldText(std::string_view bytes) {
  return DecodeLine(WithoutPadding(bytes));
}

std::string FixedUnitsText(std::string_view bytes) {
  std::string raw(WithoutPadding(bytes));
  ReplaceAll(raw, "\x83\xCA", "\xB5");  // the Greek letter of the Japanese code page
  std::string text = DecodeLine(raw);
  ReplaceAll(text, "\xCE\xBC", "\xC2\xB5");
  return text;
}

std::string ReadBytes(const InputFile& file, std::int64_t offset, std::int64_t count) {
  const std::int64_t there =
      std::clamp<std::int64_t>(file.Size() - offset, 0, std::max<std::int64_t>(count, 0));
  std::string bytes(static_cast<std::size_t>(there), '\0');
  bytes.resize(file.ReadAt(offset, bytes.data(), bytes.size()));
  return bytes;
}

}  // namespace velmora
