#include "core/text/numbers.hpp"

#include <limits>

#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Numbers, PatternsShowDigitsAndLiterals) {
  EXPECT_EQ(FormatNumber(1000, "0.00"), "1000.00");
  EXPECT_EQ(FormatNumber(7, "00"), "07");
  EXPECT_EQ(FormatNumber(-0.5, "0.000"), "-0.500");
  EXPECT_EQ(FormatNumber(12.5, "0."), "12.");
  EXPECT_EQ(FormatNumber(960.25, "0.000 Hz"), "960.250 Hz");
  EXPECT_EQ(FormatNumber(45000, "   # "), "   45000 ");
  EXPECT_EQ(FormatNumber(0, "#"), "");
  EXPECT_EQ(FormatNumber(3, "0 to "), "3 to ");
  EXPECT_EQ(FormatNumber(2.5, "0.0##"), "2.5");
  EXPECT_EQ(FormatNumber(12345.678, "0.00E+00"), "1.23E+04");
  EXPECT_EQ(FormatNumber(-0.00012, "0.0E-0"), "-1.2E-4");
  EXPECT_EQ(FormatNumber(1e300, "0.00").size(), 304U);
  EXPECT_EQ(FormatNumber(kInfinity, "0.00 Hz"), "inf Hz");
  EXPECT_EQ(FormatNumber(std::nan(""), "0.00"), "nan");
  EXPECT_EQ(FormatText("12.00", "@@@@@@@@"), "   12.00");
  EXPECT_EQ(FormatText("123456789", "@@@"), "123456789");
}

// Decimals round as printf does: the binary value decides, an exact half goes to the even digit.
TEST(Numbers, PatternsRoundAsPrintf) {
  for (const double value : {0.125, 0.375, 2.675, 1.005, 0.5, 1.5, 1e15 + 0.5, -2.5, 0.0005, 999.9995}) {
    char expected[64];
    std::snprintf(expected, sizeof expected, "%.3f", value);
    EXPECT_EQ(FormatNumber(value, "0.000"), expected);
    std::snprintf(expected, sizeof expected, "%.0f", value);
    EXPECT_EQ(FormatNumber(value, "0"), expected);
  }
}

TEST(Numbers, HalvesRoundToTheEvenNeighbourAndExtremesSaturate) {
  EXPECT_EQ(RoundHalfEven(0.5), 0);
  EXPECT_EQ(RoundHalfEven(1.5), 2);
  EXPECT_EQ(RoundHalfEven(-2.5), -2);
  EXPECT_EQ(RoundHalfEven(std::nan("")), 0);
  EXPECT_EQ(RoundHalfEven(1e300), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(RoundHalfEven32(-kInfinity), std::numeric_limits<std::int32_t>::min());
}

TEST(Numbers, TypedTextIsReadAsFarAsItIsANumber) {
  EXPECT_EQ(Val("  12.5 Hz"), 12.5);
  EXPECT_EQ(Val("+3e2x"), 300.0);
  EXPECT_EQ(Val("-.5"), -0.5);
  EXPECT_EQ(Val("1,5"), 1.0) << "a decimal comma ends the number, whatever the locale";
  EXPECT_EQ(Val("6."), 6.0);
  for (const char* none : {"", "abc", "-", "+-3", "nan", "inf", "-infinity", "e5", "."}) {
    EXPECT_EQ(Val(none), 0.0) << none;
  }
  EXPECT_EQ(Val("1e999"), kInfinity);
  EXPECT_EQ(Val("-1e-999"), 0.0);
  EXPECT_EQ(Val("0." + std::string(5000, '0') + "1"), 0.0);
  EXPECT_EQ(Val(std::string(5000, '9')), kInfinity);
}

TEST(Numbers, PlainTextIsTheShortestThatReadsBack) {
  EXPECT_EQ(PlainNumber(0.1F), "0.1");
  EXPECT_EQ(PlainNumber(16777216.0F), "16777216");
  EXPECT_EQ(PlainNumber(0.1), "0.1");
  EXPECT_EQ(PlainNumber(1.0 / 3.0), "0.3333333333333333");
  EXPECT_EQ(ChannelNumber(1), "00");
  EXPECT_EQ(ChannelNumber(64), "63");
}

TEST(Text, EveryByteSurvivesTheWayThroughUtf8) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
  }
  EXPECT_EQ(ToWindows1252(FromWindows1252(all)), all);
  EXPECT_EQ(FromWindows1252("\xB0/s \x80 \xB5V"), "°/s € µV");
  EXPECT_EQ(ToWindows1252("α 𝄞 °"), "? ? \xB0");
  EXPECT_EQ(ToWindows1252("\xC3"), "\xC3") << "a cut sequence does not run off the end";
}

TEST(Text, LengthsCountCharacters) {
  EXPECT_EQ(Left("°°°°", 2), "°°");
  EXPECT_EQ(PadRight("°C", 4), "°C  ");
  EXPECT_EQ(PadRight("abcdef", 3), "abc");
  EXPECT_EQ(PadLeft("°C", 4), "  °C");
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_TRUE(EqualNoCase("VmB", "vMb"));
  EXPECT_EQ(WithoutMnemonic("Recall &Previous labels && units"), "Recall Previous labels & units");
}

TEST(Numbers, SecondsAsAClock) {
  EXPECT_EQ(FormatClock(0, 0), "00:00:00");
  EXPECT_EQ(FormatClock(3725.0625, 3), "01:02:05.062") << "a half as printf rounds it";
  EXPECT_EQ(FormatClock(59.9996, 3), "00:01:00.000") << "no part shows 60";
  EXPECT_EQ(FormatClock(3599.99999, 4), "01:00:00.0000");
  EXPECT_EQ(FormatClock(-75.25, 2), "-00:01:15.25");
  EXPECT_EQ(FormatClock(360000.5, 1), "100:00:00.5");
  EXPECT_EQ(FormatClock(1e30, 1), FormatNumber(1e30, "0.0"));
  EXPECT_EQ(FormatClock(std::nan(""), 1), "nan");
}

}  // namespace
}  // namespace velmora
