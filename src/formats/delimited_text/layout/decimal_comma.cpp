#include "formats/delimited_text/layout/decimal_comma.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include "formats/delimited_text/layout/data_start.hpp"

namespace velmora {
namespace {

// What the commas of the data lines look like, all lines together.
struct CommaSigns {
  bool any = false;
  bool points = false;          // a '.' somewhere
  bool pairs = false;           // two commas in one field
  bool bare = false;            // a comma without a digit on both sides
  bool leadingZeros = false;    // "0,05": no whole number is written "05"
  bool unevenCounts = false;    // lines differ in their number of commas
  std::size_t shortest = 1000;  // digits behind a comma
  std::size_t longest = 0;

  [[nodiscard]] bool CanBeDecimal() const { return any && !points && !pairs && !bare; }
  [[nodiscard]] bool MustBeDecimal() const {
    constexpr std::size_t kFixedDecimals = 4;
    return CanBeDecimal() &&
           (leadingZeros || unevenCounts || (shortest == longest && shortest >= kFixedDecimals));
  }
};

bool IsDigitAt(std::string_view text, std::size_t at) {
  return at < text.size() && kDigits.find(text[at]) != std::string_view::npos;
}

void LookAtField(std::string_view field, CommaSigns& signs) {
  signs.points |= field.find('.') != std::string_view::npos;
  const std::size_t comma = field.find(',');
  if (comma == std::string_view::npos) {
    return;
  }
  signs.any = true;
  signs.pairs |= field.find(',', comma + 1) != std::string_view::npos;
  signs.bare |= comma == 0 || !IsDigitAt(field, comma - 1) || !IsDigitAt(field, comma + 1);
  const std::size_t end = std::min(field.find_first_not_of(kDigits, comma + 1), field.size());
  const std::size_t digits = end - comma - 1;
  signs.leadingZeros |= digits > 1 && field[comma + 1] == '0';
  signs.shortest = std::min(signs.shortest, digits);
  signs.longest = std::max(signs.longest, digits);
}

CommaSigns SignsOf(const TextHeader& header, const DataStart& start, char separator) {
  CommaSigns signs;
  std::ptrdiff_t commas = -1;
  for (int k = start.line; k <= static_cast<int>(header.lines.size()); ++k) {
    const std::string line = header.Line(k);
    if (KindOfLine(line, start.layout, 0) != LineKind::Data) {
      continue;
    }
    const std::ptrdiff_t here = std::count(line.begin(), line.end(), ',');
    signs.unevenCounts |= commas >= 0 && here != commas;
    commas = here;
    for (std::size_t at = 0; at <= line.size();) {
      const std::size_t end = std::min(line.find(separator, at), line.size());
      LookAtField(std::string_view(line).substr(at, end - at), signs);
      at = end + 1;
    }
  }
  return signs;
}

bool HeaderSaysComma(const TextHeader& header) {
  return std::any_of(header.lines.begin(), header.lines.end(),
                     [](const std::string& line) { return line.starts_with("Decimal_Separator\t,"); });
}

}  // namespace

void SettleDecimalComma(const TextHeader& header, DataStart& start) {
  const bool semicolons = start.layout.semicolons;
  const bool tabs = header.Line(start.line).find('\t') != std::string::npos;
  if (!semicolons && !tabs) {
    return;
  }
  const CommaSigns signs = SignsOf(header, start, semicolons ? ';' : '\t');
  start.layout.decimalComma =
      signs.CanBeDecimal() && (semicolons || signs.MustBeDecimal() || HeaderSaysComma(header));
  start.remark += start.remark.empty() || !signs.CanBeDecimal() ? "" : " ";
  if (start.layout.decimalComma) {
    start.remark += "Commas are read as decimal commas.";
  } else if (signs.CanBeDecimal()) {
    start.remark += "Commas are read as separators: check the decimal comma if they are decimal commas.";
  }
}

}  // namespace velmora
