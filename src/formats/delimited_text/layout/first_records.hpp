#pragma once

#include <vector>

#include "formats/delimited_text/layout/parse_settings.hpp"

namespace velmora {

/// The records that stand among the header's lines, by columns.
class FirstRecords {
 public:
  FirstRecords(const TextHeader& header, const ParseSettings& settings);

  /// Every step forward and none far from the mean, over three records at least. Columns count from 1; one
  /// beyond those that can be read does not rise.
  [[nodiscard]] bool RisesEvenly(int column) const;
  /// Every step is exactly 1, as a counter's is and now and then that of times.
  [[nodiscard]] bool RisesByOne(int column) const;
  /// Columns up to the last that holds something in one of the records.
  [[nodiscard]] int FilledColumns() const { return filled_; }
  /// Mean step from record to record; 0 with fewer than two records.
  [[nodiscard]] double MeanStep(int column) const;

 private:
  [[nodiscard]] bool Has(int column) const {
    return column >= 1 && static_cast<std::size_t>(column) <= values_.size();
  }
  std::vector<std::vector<float>> values_;  // of column k, from 0
  int filled_ = 0;
};

}  // namespace velmora
