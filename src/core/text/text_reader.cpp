#include "core/text/text_reader.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::size_t kPiece = std::size_t{256} << 10;

template <typename Number>
Number Fitting(std::string_view field) {
  const auto value = static_cast<Number>(Val(field));
  if (!std::isfinite(value)) {
    const std::string_view number = field.substr(0, field.find_first_not_of(" \t+-.0123456789eE"));
    throw FileError("the number " + Trim(number) + " is too large");
  }
  return value;
}

}  // namespace

TextReader::TextReader(const std::string& path) : file_(path), piece_(kPiece) {}

std::int64_t TextReader::Position() const {
  return readUpTo_ - static_cast<std::int64_t>(rest_.size());
}

bool TextReader::Refill() {
  const std::size_t got = file_.ReadAt(readUpTo_, piece_.data(), piece_.size());
  readUpTo_ += static_cast<std::int64_t>(got);
  rest_ = {piece_.data(), got};
  return got > 0;
}

bool TextReader::Take(char c) {
  const bool there = (!rest_.empty() || Refill()) && rest_.front() == c;
  rest_.remove_prefix(there ? 1 : 0);
  return there;
}

bool ReadTextLine(TextReader& from, std::string& line) {
  line.clear();
  // The CR behind an LF is the other half of that end of line, or the first half of the next.
  if (std::exchange(from.afterLineFeed_, false) && from.Take('\r') && from.Take('\n')) {
    return true;
  }
  if (from.rest_.empty() && !from.Refill()) {
    return false;
  }
  while (!from.rest_.empty() || from.Refill()) {
    std::string_view& rest = from.rest_;
    const auto end = static_cast<std::size_t>(
        std::find_if(rest.begin(), rest.end(), [](char c) { return c == '\r' || c == '\n'; }) - rest.begin());
    line.append(rest.substr(0, std::min(end, TextReader::kLongestLine - line.size())));
    if (end == rest.size()) {
      rest = {};
      continue;
    }
    const bool carriageReturn = rest[end] == '\r';
    rest.remove_prefix(end + 1);
    if (carriageReturn) {
      from.Take('\n');
    }
    from.afterLineFeed_ = !carriageReturn;
    break;
  }
  return true;
}

double FieldNumber(std::string_view field) {
  return Fitting<double>(field);
}
float FieldNumber32(std::string_view field) {
  return Fitting<float>(field);
}

}  // namespace velmora
