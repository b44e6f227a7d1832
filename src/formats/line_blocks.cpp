#include "formats/line_blocks.hpp"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace velmora {
namespace {

bool EndsLine(char c) {
  return c == '\n' || c == '\r';
}

}  // namespace

const char* FindLineEnd(const char* from, const char* to) {
  const __m128i lf = _mm_set1_epi8('\n');
  const __m128i cr = _mm_set1_epi8('\r');
  for (; to - from >= 16; from += 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(bytes, lf), _mm_cmpeq_epi8(bytes, cr));
    if (const auto mask = static_cast<unsigned>(_mm_movemask_epi8(ends)); mask != 0) {
      return from + std::countr_zero(mask);
    }
  }
  return std::find_if(from, to, EndsLine);
}

std::string_view TakeLine(std::string_view& text) {
  const char* begin = text.data();
  const char* end = begin + text.size();
  const char* at = FindLineEnd(begin, end);
  const std::string_view line(begin, static_cast<std::size_t>(at - begin));
  const bool pair = end - at >= 2 && at[0] == '\r' && at[1] == '\n';
  text.remove_prefix(std::min(line.size() + (pair ? 2 : 1), text.size()));
  return line;
}

namespace {

// A small file is read a dozen times before its columns are known: it needs no room for a large one.
std::size_t BlockFor(const TextSource& source, std::size_t blockBytes) {
  constexpr std::int64_t kLeast = 4096;
  return std::min(blockBytes, static_cast<std::size_t>(std::max(kLeast, source.Size() + 1)));
}

}  // namespace

LineBlocks::LineBlocks(TextSource& source, std::size_t blockBytes)
    : source_(source),
      buffer_(BlockFor(source, blockBytes) + 2 * kPadding),
      blockBytes_(BlockFor(source, blockBytes)),
      first_(kPadding),
      last_(kPadding),
      searched_(kPadding),
      whole_(kPadding) {}

std::string_view LineBlocks::Lines() {
  while (first_ >= whole_ && !(ended_ && first_ == last_)) {
    Refill();
    whole_ = WholeLinesEnd();
  }
  return {buffer_.data() + first_, whole_ - first_};
}

// A CR as the last byte may be half of a CR LF.
std::size_t LineBlocks::WholeLinesEnd() const {
  if (ended_) {
    return last_;
  }
  for (std::size_t i = last_; i > first_ && i >= searched_; --i) {
    if (buffer_[i - 1] == '\n' || (buffer_[i - 1] == '\r' && i < last_)) {
      return i;
    }
  }
  return first_;
}

void LineBlocks::Refill() {
  const std::size_t kept = last_ - first_;
  std::memmove(buffer_.data() + kPadding, buffer_.data() + first_, kept);
  first_ = kPadding;
  last_ = kPadding + kept;
  searched_ = last_;
  if (dropping_) {
    DropRestOfLine();
  }
  std::size_t room = buffer_.size() - kPadding - last_;
  if (kept >= kLongestLine) {
    dropLf_ = buffer_[last_ - 1] == '\r';
    dropping_ = !dropLf_;
    buffer_[last_++] = '\n';
    return;
  }
  if (room < blockBytes_) {
    buffer_.resize(buffer_.size() + blockBytes_);
    room += blockBytes_;
  }
  const std::size_t got = source_.Read(buffer_.data() + last_, std::min(room, blockBytes_));
  ended_ = got == 0;
  last_ += got;
  if (got > 0 && dropLf_) {
    first_ += buffer_[first_] == '\n' ? 1U : 0U;
    dropLf_ = false;
  }
}

void LineBlocks::DropRestOfLine() {
  std::size_t dropped = kLongestLine;
  while (dropping_) {
    const std::size_t got = source_.Read(buffer_.data() + kPadding, blockBytes_);
    dropped += got;
    if (dropped > kNoLine) {
      throw LineTooLong("a line is longer than 64 MiB");
    }
    const char* begin = buffer_.data() + kPadding;
    const char* at = FindLineEnd(begin, begin + got);
    dropping_ = got > 0 && at == begin + got;
    if (dropping_ || got == 0) {
      continue;
    }
    const bool atLast = at + 1 == begin + got;
    const bool pair = *at == '\r' && !atLast && at[1] == '\n';
    dropLf_ = *at == '\r' && atLast;
    first_ = kPadding + static_cast<std::size_t>(at - begin) + (pair ? 2 : 1);
    last_ = kPadding + got;
    searched_ = first_;
  }
}

bool LineBlocks::ReadTextLine(std::string& line) {
  std::string_view lines = Lines();
  const std::size_t before = lines.size();
  line = TakeLine(lines);
  Consume(before - lines.size());
  return before > 0;
}

std::int64_t LineBlocks::SkipLines(std::int64_t count) {
  std::int64_t skipped = 0;
  while (skipped < count) {
    std::string_view lines = Lines();
    const std::size_t before = lines.size();
    if (before == 0) {
      break;
    }
    for (; skipped < count && !lines.empty(); ++skipped) {
      TakeLine(lines);
    }
    Consume(before - lines.size());
  }
  return skipped;
}

}  // namespace velmora
