#include "core/text/text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace velmora {
namespace {

// Code points of the bytes 0x80 to 0x9F; everywhere else the code page equals Unicode.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool IsHigh(char byte) {
  return static_cast<unsigned char>(byte) >= 0x80;
}

void AppendUtf8(std::string& out, char32_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0U | (point >> 6U));
    out += static_cast<char>(0x80U | (point & 0x3FU));
  } else {
    out += static_cast<char>(0xE0U | (point >> 12U));
    out += static_cast<char>(0x80U | ((point >> 6U) & 0x3FU));
    out += static_cast<char>(0x80U | (point & 0x3FU));
  }
}

// The code point that starts at `at`, which moves behind it. A byte that starts no whole sequence
// counts as itself.
char32_t NextPoint(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  std::size_t more = 0;
  if (lead >= 0xF0) {
    more = 3;
  } else if (lead >= 0xE0) {
    more = 2;
  } else if (lead >= 0xC0) {
    more = 1;
  }
  const std::string_view tail = text.substr(at, more);
  if (more == 0 || tail.size() < more || !std::all_of(tail.begin(), tail.end(), IsContinuation)) {
    return lead;
  }
  char32_t point = lead & (0x3FU >> more);
  for (const char byte : tail) {
    point = (point << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
  }
  at += more;
  return point;
}

std::optional<char> Windows1252Byte(char32_t point) {
  if (const auto* it = std::find(kHighControls.begin(), kHighControls.end(), point);
      it != kHighControls.end()) {
    return static_cast<char>(0x80 + (it - kHighControls.begin()));
  }
  const bool same = point < 0x80 || (point >= 0xA0 && point <= 0xFF);
  return same ? std::optional(static_cast<char>(static_cast<unsigned char>(point))) : std::nullopt;
}

char UpperOf(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Byte index at which `count` characters have passed.
std::size_t ByteOfCharacter(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; count > 0 && at < text.size(); --count) {
    ++at;
    while (at < text.size() && IsContinuation(text[at])) {
      ++at;
    }
  }
  return at;
}

}  // namespace

std::string TrimRight(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : TrimRight(text.substr(first));
}

std::string Left(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, ByteOfCharacter(text, count)));
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return !IsContinuation(c); }));
}

std::string PadRight(std::string_view text, std::size_t count) {
  std::string out = Left(text, count);
  out.append(count - std::min(count, CharacterCount(out)), ' ');
  return out;
}

std::string PadLeft(std::string_view text, std::size_t count) {
  return std::string(count - std::min(count, CharacterCount(text)), ' ').append(text);
}

std::string OneLine(std::string_view text) {
  std::string out(text);
  std::replace_if(out.begin(), out.end(), IsControl, ' ');
  return out;
}

std::string ToUpper(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), UpperOf);
  return out;
}

std::string ToLower(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return out;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperOf(x) == UpperOf(y); });
}

std::string WithoutMnemonic(std::string_view caption) {
  std::string out;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) {
      ++i;
    }
    out += caption[i];
  }
  return out;
}

std::string AsCaption(std::string_view text) {
  std::string caption;
  for (const char c : text) {
    caption += c == '&' ? "&&" : std::string(1, c);
  }
  return caption;
}

std::string FromWindows1252(std::string_view bytes) {
  if (std::none_of(bytes.begin(), bytes.end(), IsHigh)) {
    return std::string(bytes);
  }
  std::string out;
  out.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    const bool high = value >= 0x80 && value < 0xA0;
    AppendUtf8(out, high ? kHighControls[value - 0x80U] : char32_t{value});
  }
  return out;
}

std::string ToWindows1252(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    out += Windows1252Byte(NextPoint(text, at)).value_or('?');
  }
  return out;
}

std::vector<std::string> OutsideWindows1252(std::string_view text) {
  std::vector<std::string> characters;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    if (!Windows1252Byte(NextPoint(text, at))) {
      std::string character(text.substr(start, at - start));
      if (std::find(characters.begin(), characters.end(), character) == characters.end()) {
        characters.push_back(std::move(character));
      }
    }
  }
  return characters;
}

}  // namespace velmora
