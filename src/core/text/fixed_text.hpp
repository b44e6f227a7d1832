#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/text/text.hpp"

namespace velmora {

/// A text field of at most N characters (UTF-8 code points, not bytes). Longer text is cut;
/// trailing blanks, which pad the field in files, are not kept.
template <std::size_t N>
class FixedText {
 public:
  static constexpr std::size_t kLength = N;

  FixedText() = default;
  FixedText(std::string_view text) : text_(TrimRight(Left(text, N))) {}      // NOLINT: a field is a text
  FixedText(const char* text) : FixedText(std::string_view(text)) {}         // NOLINT: as above
  FixedText(const std::string& text) : FixedText(std::string_view(text)) {}  // NOLINT: as above

  [[nodiscard]] const std::string& Text() const { return text_; }
  operator const std::string&() const { return text_; }  // NOLINT: a field is a text
  [[nodiscard]] bool empty() const { return text_.empty(); }

  friend bool operator==(const FixedText&, const FixedText&) = default;
  friend bool operator==(const FixedText& a, std::string_view b) { return a.text_ == b; }
  friend bool operator==(const FixedText& a, const char* b) { return a.text_ == b; }

 private:
  std::string text_;
};

using Label = FixedText<30>;
using Units = FixedText<10>;

}  // namespace velmora
