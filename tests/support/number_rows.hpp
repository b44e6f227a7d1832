#pragma once

#include <algorithm>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "support/trials.hpp"

namespace velmora::test {

using NumberRows = std::vector<std::vector<double>>;

/// The rows of numbers of a text, whatever separates them.
inline NumberRows NumbersOf(const std::string& path) {
  std::ifstream file(path);
  NumberRows rows;
  for (std::string line; std::getline(file, line);) {
    std::replace(line.begin(), line.end(), ',', ' ');
    std::istringstream text(line);
    std::vector<double> row;
    for (double x = 0; text >> x;) {
      row.push_back(x);
    }
    if (row.size() > 1) {
      rows.push_back(row);
    }
  }
  return rows;
}

/// A trial of channels that are made of each row.
inline void SetFrom(Trial& trial, const NumberRows& rows,
                    const std::function<Samples(const std::vector<double>&)>& channels, double rate = 1000) {
  std::vector<Samples> all(channels(rows.front()).size());
  for (const std::vector<double>& row : rows) {
    const Samples samples = channels(row);
    for (std::size_t c = 0; c < all.size(); ++c) {
      all[c].push_back(samples[c]);
    }
  }
  SetChannels(trial, all, rate);
}

}  // namespace velmora::test
