#include "events/contacts.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace velmora::test {
namespace {

using Values = std::vector<double>;

/// "2-5 9-9!" from sample 1; an exclamation mark where the range cuts.
std::string Found(const Values& signal, const ContactRule& rule) {
  std::string text;
  for (const Contact& contact : FindContacts(signal, rule)) {
    text += (text.empty() ? "" : " ") + std::to_string(contact.first + 1) + "-" +
            std::to_string(contact.last + 1) + (contact.whole ? "" : "!");
  }
  return text;
}

TEST(Contacts, ShortOnesGoBeforeShortGapsAreBridged) {
  const Values steps{0, 30, 30, 5, 30, 0, 0, 0, 30, 0};
  EXPECT_EQ(Found(steps, {.shortest = 1, .shortestGap = 2}), "2-5 9-9");
  EXPECT_EQ(Found(steps, {.shortest = 2, .shortestGap = 2}), "2-3");
  EXPECT_EQ(Found(steps, {.shortest = 1}), "2-3 5-5 9-9");
  EXPECT_EQ(Found(steps, {.shortest = 1, .shortestGap = 4}), "2-9");
  EXPECT_EQ(Found(steps, {.shortest = 5, .shortestGap = 4}), "");
}

TEST(Contacts, NoiseBetweenTheThresholdsPartsNothing) {
  const Values noisy{0, 12, 19, 21, 15, 22, 10, 9.9, 15, 19.9, 20, 10, 9};
  EXPECT_EQ(Found(noisy, {}), "4-7 11-12");
  EXPECT_EQ(Found(noisy, {.on = 20, .off = 20}), "4-4 6-6 11-11");
}

TEST(Contacts, CutByTheRangeTheyStayHoweverShort) {
  EXPECT_EQ(Found({30, 0, 0, 30, 0, 0, 30}, {.shortest = 3}), "1-1! 7-7!");
  EXPECT_EQ(Found({30, 30, 30}, {}), "1-3!");
  EXPECT_EQ(Found({30, 0, 30, 30, 0}, {.shortestGap = 2}), "1-4!");  // bridged to one that is cut
  EXPECT_EQ(Found({}, {}), "");
  EXPECT_EQ(Found({0, 15, 0}, {}), "");
}

TEST(Contacts, TimesAreWhereTheLineCrossesTheThresholds) {
  const auto found = FindContacts(Values{0, 40, 50, 30, 5, 0, 100}, {});
  ASSERT_EQ(found.size(), 2U);
  EXPECT_DOUBLE_EQ(found[0].on, 0.5);       // 20 of 40
  EXPECT_DOUBLE_EQ(found[0].off, 3 + 0.8);  // 30 to 5 passes 10 after 20 of 25
  EXPECT_DOUBLE_EQ(found[1].on, 5.2);
  EXPECT_EQ(found[1].off, 6);  // cut: the sample itself
  const auto cut = FindContacts(Values{100, 0}, {});
  ASSERT_EQ(cut.size(), 1U);
  EXPECT_EQ(cut[0].on, 0);
  EXPECT_DOUBLE_EQ(cut[0].off, 0.9);
}

TEST(Contacts, WhatIsNoNumberNeitherBeginsNorEndsOne) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Found({0, nan, 30, nan, 30, 0, nan}, {}), "3-5");
}

}  // namespace
}  // namespace velmora::test
