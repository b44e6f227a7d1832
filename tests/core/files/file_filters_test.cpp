#include "core/files/file_filters.hpp"

#include <gtest/gtest.h>

namespace velmora {
namespace {

std::vector<std::size_t> RowsThatShow(std::span<const FileFilter> filters, const std::string& name) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < filters.size(); ++row) {
    if (MatchesFilter(name, filters[row].patterns)) {
      rows.push_back(row);
    }
  }
  return rows;
}

using Rows = std::vector<std::size_t>;

TEST(FileFilters, WhatTheListsShow) {
  EXPECT_EQ(RowsThatShow(DataFileFilters(), "Walk.VMB"), (Rows{0, 4, 8}));
  EXPECT_EQ(RowsThatShow(DataFileFilters(), "walk.csv"), (Rows{7, 8})) << "text, and no known analog file";
  EXPECT_EQ(RowsThatShow(DataFileFilters(), "plate.rf2"), (Rows{0, 7, 8}));
  EXPECT_EQ(RowsThatShow(DataFileFilters(), "SETUP"), (Rows{0, 8})) << "a file without extension";
  EXPECT_EQ(RowsThatShow(DataFileFilters(), "setup.exe"), (Rows{8}));
  EXPECT_EQ(RowsThatShow(TextFileFilters(), "results.txt"), (Rows{0, 4, 5, 6}));
  EXPECT_EQ(RowsThatShow(TextFileFilters(), "readme"), (Rows{0, 1, 6}));
  // Odd patterns are used as they stand.
  EXPECT_EQ(RowsThatShow(TextFileFilters(), "book.qpw"), (Rows{6})) << "\".qpw\" has no star";
  EXPECT_EQ(RowsThatShow(TextFileFilters(), ".qpw"), (Rows{2, 6}));
  // Names are no patterns.
  EXPECT_TRUE(MatchesFilter("[a]*.vmb", "*.vmb"));
  EXPECT_TRUE(MatchesFilter("a\\b.vmb", "*.vmb"));
  EXPECT_FALSE(MatchesFilter("x.vmb", ""));
}

}  // namespace
}  // namespace velmora
