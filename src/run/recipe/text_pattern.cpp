#include "run/recipe/text_pattern.hpp"

#include <cstddef>

namespace velmora {
namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::size_t CharacterLength(std::string_view text) {
  std::size_t bytes = 1;
  while (bytes < text.size() && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80U) {
    ++bytes;
  }
  return bytes;
}

}  // namespace

bool IsPattern(std::string_view text) {
  return text.find_first_of("*?") != std::string_view::npos;
}

// What stands for a '*' grows by one character when what follows does not fit.
bool FitsPattern(std::string_view text, std::string_view pattern) {
  std::string_view restText;
  std::string_view restPattern;
  bool star = false;
  while (!text.empty() || !pattern.empty()) {
    if (pattern.starts_with('*')) {
      star = true;
      pattern.remove_prefix(1);
      restText = text;
      restPattern = pattern;
    } else if (!text.empty() && pattern.starts_with('?')) {
      text.remove_prefix(CharacterLength(text));
      pattern.remove_prefix(1);
    } else if (!text.empty() && !pattern.empty() && Lower(text.front()) == Lower(pattern.front())) {
      text.remove_prefix(1);
      pattern.remove_prefix(1);
    } else if (star && !restText.empty()) {
      restText.remove_prefix(CharacterLength(restText));
      text = restText;
      pattern = restPattern;
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace velmora
