#include "plot/axes/tick_text.hpp"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(TickText, NumeralsArePlainOrHaveAPrefix) {
  EXPECT_EQ(TickText(0.25, 0.05, 1.0), "0.25");
  EXPECT_EQ(TickText(0.5, 0.25, 1.0), "0.50");
  EXPECT_EQ(TickText(-20, 5, 20), "-20");
  EXPECT_EQ(TickText(1200, 200, 45000), "1200");
  EXPECT_EQ(TickText(250e3, 50e3, 300e3), "250 k");
  EXPECT_EQ(TickText(1.5e6, 0.5e6, 2e6), "1.5 M");
  EXPECT_EQ(TickText(-2.5e-6, 2.5e-6, 1e-5), "-2.5 µ");
  EXPECT_EQ(TickText(2e-3, 1e-3, 9e-3), "2 m");
  EXPECT_EQ(TickText(3e-17, 0.1, 1.0), "0");                // what rounding leaves of zero
  EXPECT_EQ(TickText(-2.5e38, 0.5e38, 3e38), "-250·10³⁶");  // past all prefixes
  EXPECT_EQ(TickText(5e-31, 5e-31, 1e-30), "0.5·10⁻³⁰");
  // Decades.
  EXPECT_EQ(DecadeText(0.01), "0.01");
  EXPECT_EQ(DecadeText(0.1), "0.1");
  EXPECT_EQ(DecadeText(10000), "10000");
  EXPECT_EQ(DecadeText(99.99999999999999), "100");  // as an axis makes its ticks
  EXPECT_EQ(DecadeText(1e6), "10⁶");
  EXPECT_EQ(DecadeText(1e-12), "10⁻¹²");
  // A clock: 3725 s are an hour, two minutes and five seconds.
  EXPECT_EQ(ClockTickText(3725, 5), "01:02:05");
  EXPECT_EQ(ClockTickText(0.5, 0.25), "00:00:00.50");
  EXPECT_EQ(ClockTickText(-1e-13, 1), "00:00:00");
}

}  // namespace
}  // namespace velmora
