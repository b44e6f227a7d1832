#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Text inside the program is UTF-8. "Character" below means code point.

/// Without leading and trailing blanks (the space character alone).
std::string Trim(std::string_view text);
std::string TrimRight(std::string_view text);

/// The first `count` characters, all of them when there are fewer.
std::string Left(std::string_view text, std::size_t count);

std::size_t CharacterCount(std::string_view text);

/// Cut or padded on the right with blanks to exactly `count` characters.
std::string PadRight(std::string_view text, std::size_t count);

/// Padded on the left with blanks to at least `count` characters; longer text stays whole.
std::string PadLeft(std::string_view text, std::size_t count);

/// Of ASCII: what no line of text shows.
inline bool IsControl(char c) {
  return (c >= 0 && c < ' ') || c == 0x7F;
}

/// Blanks in place of line breaks, tabs and other control characters: for a text that has to stay in its
/// place in a line of a file.
std::string OneLine(std::string_view text);

/// ASCII letters only: file extensions, markers and captions are compared without regard to case.
std::string ToUpper(std::string_view text);
std::string ToLower(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);

/// A caption as a person reads it: "&Process" is "Process", "A && B" is "A & B".
std::string WithoutMnemonic(std::string_view caption);
/// The caption that a person reads as this text.
std::string AsCaption(std::string_view text);

/// Fixed fields of files hold Windows-1252, one byte a character. The five bytes that this code page
/// leaves undefined stand for the control characters of the same number, so every byte string
/// survives the way to UTF-8 and back unchanged.
std::string FromWindows1252(std::string_view bytes);

/// Characters outside the code page become "?".
std::string ToWindows1252(std::string_view text);

/// Those characters, each once.
std::vector<std::string> OutsideWindows1252(std::string_view text);

}  // namespace velmora
