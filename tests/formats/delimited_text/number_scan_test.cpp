#include <cstdlib>
#include <cstring>
#include <random>

#include "core/simd.hpp"
#include "formats/delimited_text/scan/core_scan.hpp"
#include "formats/delimited_text/scan/fast_scan.hpp"
#include "formats/delimited_text/scan/full_lines.hpp"
#include "formats/line_blocks.hpp"
#include "support/trials.hpp"

namespace velmora::test {
namespace {

using Random = std::mt19937;

ScanPlan PlanOf(int columns, int timeColumn, NumberLayout layout = {}) {
  ScanPlan plan;
  plan.columns = columns;
  plan.stride = columns + (timeColumn > 0 ? 0 : 1);
  plan.layout = layout;
  std::uint8_t next = 1;
  for (int k = 1; k <= columns; ++k) {
    plan.slot[static_cast<std::size_t>(k - 1)] = k == timeColumn ? std::uint8_t{0} : next++;
  }
  return plan;
}

struct Result {
  std::vector<float> frames;
  ScanProgress progress;
  ScanFaults faults;
};

/// By one way of scanning, from a buffer with the padding that the fast ones ask for.
template <typename Way>
Result ScanBy(const std::string& text, const ScanPlan& plan, std::int64_t maxRows, const Way& way) {
  Result result;
  result.frames.assign(static_cast<std::size_t>(plan.stride * maxRows), -777.0F);
  const std::string padding(LineBlocks::kPadding, '7');  // digits: what is read too far must not count
  const std::string buffer = padding + text + padding;
  const std::string_view inside = std::string_view(buffer).substr(padding.size(), text.size());
  result.progress = way(inside, plan, FrameRoom{result.frames.data(), maxRows}, 5, result.faults);
  return result;
}

/// By the plain way, or by the fast way at a level.
Result Scan(const std::string& text, const ScanPlan& plan, std::int64_t maxRows, const SimdLevel* level) {
  return ScanBy(text, plan, maxRows, [level](auto inside, auto& columns, auto room, auto line, auto& faults) {
    return level == nullptr ? ScanRows(inside, columns, room, line, faults)
                            : FastScanRows(inside, columns, room, line, faults, *level);
  });
}

bool SameFault(const ScanFault& a, const ScanFault& b) {
  return a.count == b.count && a.line == b.line && a.column == b.column;
}

void ExpectSame(const Result& plain, const Result& fast, const std::string& text) {
  EXPECT_TRUE(SameBits(plain.frames, fast.frames)) << text.substr(0, 400);
  EXPECT_EQ(plain.progress.rows, fast.progress.rows) << text.substr(0, 400);
  EXPECT_EQ(plain.progress.lines, fast.progress.lines);
  EXPECT_EQ(plain.progress.bytes, fast.progress.bytes);
  EXPECT_TRUE(SameFault(plain.faults.notNumbers, fast.faults.notNumbers)) << text.substr(0, 400);
  EXPECT_TRUE(SameFault(plain.faults.emptyFields, fast.faults.emptyFields));
  EXPECT_TRUE(SameFault(plain.faults.shortLines, fast.faults.shortLines));
  EXPECT_TRUE(SameFault(plain.faults.longLines, fast.faults.longLines));
  EXPECT_EQ(plain.faults.emptyIn, fast.faults.emptyIn);
}

template <typename T>
const T& OneOf(const std::vector<T>& choices, Random& random) {
  return choices[random() % choices.size()];
}

std::string Digits(std::size_t count, Random& random) {
  std::string digits;
  while (digits.size() < count) {
    digits += static_cast<char>('0' + random() % 10);
  }
  return digits;
}

/// A number as files write them: every length, every place of the point, some exponents.
std::string NumberText(Random& random, char point) {
  std::string text = OneOf<std::string>({"", "", "-", "-", "+"}, random);
  const std::size_t whole = random() % 10;
  const std::size_t decimals = random() % (whole == 0 ? 18 : 9);
  text += Digits(whole, random);
  if (decimals > 0 || random() % 4 == 0) {
    text += point + Digits(decimals, random);
  }
  if (whole + decimals == 0) {
    text += "0";
  }
  if (random() % 40 == 0) {
    text += OneOf<std::string>({"e5", "E-07", "e+12", "E-50", "e38", "e39"}, random);
  }
  return text;
}

// Texts half-way between two 32-bit numbers, and just beside.
std::string HalfWayText(Random& random) {
  char text[64];
  const auto below = static_cast<std::uint32_t>(random() % (1U << 23)) | 1U << 23;
  std::snprintf(text, sizeof text, "%.*f", static_cast<int>(random() % 3), 2.0 * below + 1);
  std::string half = text;
  const std::string beside = OneOf<std::string>({"", "", "0001", "9"}, random);
  if (half.find('.') != std::string::npos) {
    half += beside;
  }
  return half;
}

TEST(NumberScanTest, PlainNumbersAreCorrectlyRounded) {
  Random random(1);
  for (int i = 0; i < 200'000; ++i) {
    const std::string text = i % 10 == 0 ? HalfWayText(random) : NumberText(random, '.');
    float value = 0;
    const float expected = std::strtof(text.c_str(), nullptr);  // the C library rounds correctly
    const bool read = ReadNumber(text, false, value);
    EXPECT_EQ(read, std::isfinite(expected)) << text;
    if (read) {
      EXPECT_EQ(std::memcmp(&value, &expected, sizeof value), 0) << text;
    }
  }
  for (const char* text : {"", "-", "+", ".", "-.", "+-1", "--1", "1-2", "1.2.3", "1e", "e5", "0x10", "inf",
                           "nan", "-inf", "1,5", "12a", "1e40", "-1e40"}) {
    float value = 0;
    EXPECT_FALSE(ReadNumber(text, false, value)) << text;
  }
  float value = 1;
  EXPECT_TRUE(ReadNumber("-1e-60", false, value));
  EXPECT_TRUE(value == 0.0F && std::signbit(value));
  EXPECT_TRUE(ReadNumber("-12,5", true, value));
  EXPECT_EQ(value, -12.5F);
  EXPECT_FALSE(ReadNumber("1.234,5", true, value));
  EXPECT_TRUE(ReadNumber(std::string(4000, '0').append("7"), false, value));
  EXPECT_EQ(value, 7.0F);
  EXPECT_TRUE(ReadNumber(std::string("0.").append(4000, '3'), false, value));
  EXPECT_EQ(value, 0.3333333433F);
}

TEST(NumberScanTest, RegularRowsAtEveryWidth) {
  Random random(2);
  for (const SimdLevel level : MachineSimdLevels()) {
    for (int round = 0; round < 300; ++round) {
      const int columns = 1 + static_cast<int>(random() % 64);
      const bool comma = random() % 4 == 0;
      const NumberLayout layout{.semicolons = random() % 4 == 0, .decimalComma = comma};
      const std::string separator = layout.semicolons ? ";"
                                    : comma           ? "\t"
                                                      : OneOf<std::string>({"\t", ",", " "}, random);
      const std::string end = OneOf<std::string>({"\n", "\r\n", "\r"}, random);
      const std::string trailing = random() % 4 == 0 ? separator : "";
      std::string text;
      for (int row = 0; row < 40; ++row) {
        for (int c = 0; c < columns; ++c) {
          text +=
              (c > 0 ? separator : "") +
              (random() % 20 == 0 && !comma ? HalfWayText(random) : NumberText(random, comma ? ',' : '.'));
        }
        text += trailing + (row < 39 || random() % 2 == 0 ? end : "");
      }
      const int timeColumn = static_cast<int>(random() % 3);
      const ScanPlan plan = PlanOf(columns, timeColumn <= columns ? timeColumn : 0, layout);
      const Result plain = Scan(text, plan, 40, nullptr);
      EXPECT_EQ(plain.progress.rows, 40);
      ExpectSame(plain, Scan(text, plan, 40, &level), text);
      ExpectSame(Scan(text, plan, 7, nullptr), Scan(text, plan, 7, &level), text);
    }
  }
}

TEST(NumberScanTest, AnythingElseIsReadAlikeToo) {
  Random random(3);
  const std::string pieces[] = {"1",
                                "23.5",
                                "-4",
                                "\t",
                                "\t",
                                ",",
                                ",",
                                " ",
                                "  ",
                                "\n",
                                "\n",
                                "\r",
                                "\r\n",
                                "x",
                                ".",
                                "-",
                                "1e5",
                                "\0\1",
                                ";",
                                "1,5",
                                "\xE9",
                                "99999999999999999999",
                                "1234567890.123456",
                                "\n\n"};
  for (const SimdLevel level : MachineSimdLevels()) {
    for (int round = 0; round < 3000; ++round) {
      std::string text;
      const std::size_t count = random() % 400;
      for (std::size_t i = 0; i < count; ++i) {
        text += pieces[random() % std::size(pieces)];
      }
      const NumberLayout layout{.semicolons = random() % 2 == 0, .decimalComma = random() % 2 == 0};
      ScanPlan plan = PlanOf(1 + static_cast<int>(random() % 5), static_cast<int>(random() % 2), layout);
      if (random() % 4 == 0) {
        plan.slot[random() % 5] = ScanPlan::kNoSlot;
      }
      ExpectSame(Scan(text, plan, 400, nullptr), Scan(text, plan, 400, &level), text);
    }
    // Lines longer than what is indexed at a time.
    std::string wide;
    for (int row = 0; row < 5; ++row) {
      for (int c = 0; c < 5000; ++c) {
        wide += std::to_string(c * (row + 1)) + ",";
      }
      wide += "\n1,2\n";
    }
    const ScanPlan plan = PlanOf(60, 0);
    ExpectSame(Scan(wide, plan, 20, nullptr), Scan(wide, plan, 20, &level), wide);
  }
}

TEST(NumberScanTest, SeveralCoresReadAsOneDoes) {
  Random random(5);
  const std::string odd[] = {"\n", "\r\n \t\r\n", "1,x,3\n", "1\r", "1,2,3,4,5\n", ",,\n", "\n\r"};
  for (int round = 0; round < 12; ++round) {
    const std::string end = OneOf<std::string>({"\n", "\r\n", "\r"}, random);
    std::string text;
    while (text.size() < 600'000) {  // ten of the smallest pieces
      text += NumberText(random, '.') + "," + NumberText(random, '.') + "," + NumberText(random, '.') + end;
      text += round > 2 && random() % 50 == 0 ? odd[random() % std::size(odd)] : "";
    }
    text += OneOf<std::string>({"", "7,8,9", "\n\n\n"}, random);
    ScanPlan plan = PlanOf(3, static_cast<int>(random() % 2));
    plan.slot[2] = round % 4 == 0 ? ScanPlan::kNoSlot : plan.slot[2];
    const auto rows = static_cast<std::int64_t>(round % 3 == 0 ? 9000 + random() % 5000 : 200'000);
    const Result one = Scan(text, plan, rows, nullptr);
    for (const unsigned cores : {1U, 2U, 3U, 7U, 16U}) {
      ExpectSame(one,
                 ScanBy(text, plan, rows,
                        [cores](auto inside, auto& columns, auto room, auto line, auto& faults) {
                          return ScanOnCores(inside, columns, room, line, faults, {.cores = cores});
                        }),
                 text);
    }
  }
}

TEST(NumberScanTest, FullLinesAreCountedAsLineByLine) {
  Random random(4);
  const std::string pieces[] = {"1", "234", "-5.25 ", "\t", " ", "\n", "\r\n", "\r", "77777777777777777777"};
  int counted = 0;
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    const std::size_t count = random() % 200;
    const std::size_t kinds = round % 2 == 0 ? std::size(pieces) : 3;
    for (std::size_t i = 0; i < count; ++i) {
      text += pieces[random() % kinds];
      text += kinds == 3 && random() % 3 == 0 ? "9\n" : "";
    }
    const FullLines full = CountFullLines(text, SimdLevel::Sse2);
    for (const SimdLevel level : MachineSimdLevels()) {
      const FullLines wide = CountFullLines(text, level);
      EXPECT_EQ(std::pair(wide.lines, wide.bytes), std::pair(full.lines, full.bytes)) << text;
    }
    counted += full.lines > 0 ? 1 : 0;
    std::string_view rest = text;
    for (std::int64_t line = 0; line < full.lines; ++line) {
      EXPECT_FALSE(IsBlankLine(TakeLine(rest))) << text;
    }
    if (full.lines > 0) {
      const std::size_t taken = text.size() - rest.size();
      EXPECT_TRUE(full.bytes == taken || (full.bytes + 1 == taken && text[full.bytes] == '\n')) << text;
    }
  }
  EXPECT_GT(counted, 1000) << "the quick way must be the usual one";
}

}  // namespace
}  // namespace velmora::test
