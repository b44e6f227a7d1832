#include "core/questions/result_table.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace velmora::test {
namespace {

TEST(ResultTableTest, WhatIsNoNumberIsEmptyOnTheScreenAndInFiles) {
  const ResultTable table{.columns = {"a", "b", "c", "d"},
                          .rows = {{std::nan(""), -INFINITY, 0.1234567891, std::monostate()}},
                          .formats = {nullptr, ThroughPattern("0.00")}};
  EXPECT_EQ(TableText(table), "a\tb\tc\td\n\t\t0.1234568\t\n");
  EXPECT_EQ(TableTextInFull(table), "a\tb\tc\td\n\t\t0.1234567891\t\n");
}

}  // namespace
}  // namespace velmora::test
