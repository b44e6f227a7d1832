#include "formats/text_source.hpp"

#include <algorithm>
#include <array>
#include <span>

#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::size_t kHeadBytes = 512;
constexpr std::size_t kUnitPiece = std::size_t{64} << 10;
constexpr char32_t kReplacement = 0xFFFD;

bool IsTextCharacter(unsigned char byte) {
  return byte == '\t' || byte == '\r' || byte == '\n' || (byte >= ' ' && byte != 0x7F);
}

// Whether every second byte from `high` is mostly 0 and its partner always a character: Western text
// in 16-bit units. Binary data do not keep that up.
bool LooksLikeUtf16(std::span<const unsigned char> head, std::size_t high) {
  const std::size_t units = head.size() / 2;
  std::size_t zeros = 0;
  for (std::size_t i = 0; i < units; ++i) {
    const unsigned char low = head[2 * i + 1 - high];
    if (head[2 * i + high] == 0) {
      ++zeros;
      if (!IsTextCharacter(low)) {
        return false;
      }
    }
  }
  return units >= 4 && zeros * 10 >= units * 9;
}

std::size_t PutUtf8(char* to, char32_t point) {
  const auto tail = [](char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
  if (point < 0x80) {
    to[0] = static_cast<char>(point);
    return 1;
  }
  if (point < 0x800) {
    to[0] = static_cast<char>(0xC0U | (point >> 6U));
    to[1] = tail(point);
    return 2;
  }
  if (point < 0x10000) {
    to[0] = static_cast<char>(0xE0U | (point >> 12U));
    to[1] = tail(point >> 6U);
    to[2] = tail(point);
    return 3;
  }
  to[0] = static_cast<char>(0xF0U | (point >> 18U));
  to[1] = tail(point >> 12U);
  to[2] = tail(point >> 6U);
  to[3] = tail(point);
  return 4;
}

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

// Length of the valid UTF-8 sequence at the start of `text`, 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) {
    return 1;
  }
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
    return 0;
  }
  const bool continued = std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length),
                                     [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; });
  const auto second = static_cast<unsigned char>(text[1]);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool outside = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
  return continued && !overlong && !outside ? length : 0;
}

}  // namespace

TextSource::TextSource(const std::string& path) : file_(path) {
  FindEncoding();
  position_ = start_;
}

void TextSource::FindEncoding() {
  std::array<unsigned char, kHeadBytes> bytes{};
  const std::span<const unsigned char> head(bytes.data(), file_.ReadAt(0, bytes.data(), bytes.size()));
  const auto startsWith = [head](std::initializer_list<unsigned char> mark) {
    return head.size() >= mark.size() && std::equal(mark.begin(), mark.end(), head.begin());
  };
  if (startsWith({0xEF, 0xBB, 0xBF})) {
    start_ = 3;
  } else if (startsWith({0xFF, 0xFE})) {
    encoding_ = Encoding::Utf16Little;
    start_ = 2;
  } else if (startsWith({0xFE, 0xFF})) {
    encoding_ = Encoding::Utf16Big;
    start_ = 2;
  } else if (LooksLikeUtf16(head, 1)) {
    encoding_ = Encoding::Utf16Little;
  } else if (LooksLikeUtf16(head, 0)) {
    encoding_ = Encoding::Utf16Big;
  }
}

std::size_t TextSource::Read(char* to, std::size_t capacity) {
  if (encoding_ != Encoding::Bytes) {
    return ReadUtf16(to, capacity);
  }
  const std::size_t got = file_.ReadAt(position_, to, capacity);
  position_ += static_cast<std::int64_t>(got);
  return got;
}

std::size_t TextSource::ReadUtf16(char* to, std::size_t capacity) {
  units_.resize(std::min(capacity / 3, kUnitPiece) * 2);  // a unit becomes at most three bytes
  const std::size_t units = file_.ReadAt(position_, units_.data(), units_.size()) / 2;
  const std::size_t high = encoding_ == Encoding::Utf16Little ? 1 : 0;
  const auto unitAt = [this, high](std::size_t i) {
    return static_cast<char32_t>(units_[2 * i + high] << 8U | units_[2 * i + 1 - high]);
  };
  std::size_t put = 0;
  std::size_t i = 0;
  while (i < units) {
    char32_t point = unitAt(i);
    if (IsHighSurrogate(point)) {
      if (i + 1 == units && i > 0) {
        break;  // its partner comes with the next piece
      }
      const bool paired = i + 1 < units && IsLowSurrogate(unitAt(i + 1));
      point = paired ? 0x10000 + ((point - 0xD800) << 10U) + (unitAt(i + 1) - 0xDC00) : kReplacement;
      i += paired ? 1 : 0;
    } else if (IsLowSurrogate(point)) {
      point = kReplacement;
    }
    ++i;
    put += PutUtf8(to + put, point);
  }
  position_ += static_cast<std::int64_t>(2 * i);
  return put;
}

std::string DecodeLine(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t length = SequenceLength(bytes.substr(at));
    if (length == 0) {
      return FromWindows1252(bytes);
    }
    at += length;
  }
  return std::string(bytes);
}

}  // namespace velmora
