#include "run/history/question_title.hpp"

#include <algorithm>
#include <string_view>

#include "core/files/paths.hpp"

namespace velmora {
namespace {

constexpr std::string_view kDigits = "0123456789";

void ReplaceEach(std::string& text, const std::string& what) {
  for (std::size_t at = text.find(what); !what.empty() && at != std::string::npos; at = text.find(what, at)) {
    text.replace(at, what.size(), "*");
  }
}

bool Holds(std::string_view characters, const std::string& text, std::size_t at) {
  return at < text.size() && characters.find(text[at]) != std::string_view::npos;
}

/// Behind the number that begins here; `at` itself where none does. "2nd" and "3-D" are words.
std::size_t EndOfNumber(const std::string& text, std::size_t at) {
  if (at > 0 && !Holds(" (", text, at - 1)) {
    return at;
  }
  std::size_t end = Holds("-", text, at) ? at + 1 : at;
  if (!Holds(kDigits, text, end)) {
    return at;
  }
  end = std::min(text.find_first_not_of("0123456789.,", end), text.size());
  while (Holds(".,", text, end - 1)) {  // the sentence's own
    --end;
  }
  return end == text.size() || Holds(" .,;:)%", text, end) ? end : at;
}

}  // namespace

std::string TitleForAnyTrial(std::string title, const Trial& trial) {
  ReplaceEach(title, trial.FileName);
  ReplaceEach(title, FileNamePart(trial.FileName));
  for (std::size_t at = 0; at < title.size(); ++at) {
    if (const std::size_t end = EndOfNumber(title, at); end > at) {
      title.replace(at, end - at, "*");
    }
  }
  return title;
}

}  // namespace velmora
