#include "formats/delimited_text/layout/first_records.hpp"

#include <algorithm>

#include "formats/delimited_text/scan/number_scan.hpp"

namespace velmora {

FirstRecords::FirstRecords(const TextHeader& header, const ParseSettings& settings) {
  const auto columns = static_cast<std::size_t>(std::clamp(settings.columns, 0, kMaxChannels));
  ScanPlan plan{.columns = static_cast<int>(columns), .layout = settings.layout, .dropRest = true};
  for (std::size_t k = 0; k < columns; ++k) {
    plan.slot[k] = static_cast<std::uint8_t>(k);
  }
  values_.resize(columns);
  std::array<float, kMaxChannels> frame{};
  ScanFaults faults;
  std::int64_t records = 0;
  for (int k = settings.ParseSkip + 1; k <= static_cast<int>(header.lines.size()); ++k) {
    if (const std::string line = header.Line(k); !IsBlankLine(line)) {
      ScanLine(line, plan, frame.data(), k, faults);
      ++records;
      for (std::size_t c = 0; c < columns; ++c) {
        values_[c].push_back(frame[c]);
      }
    }
  }
  filled_ = static_cast<int>(columns);
  while (filled_ > 0 && faults.emptyIn[static_cast<std::size_t>(filled_) - 1] == records) {
    --filled_;
  }
}

double FirstRecords::MeanStep(int column) const {
  const std::vector<float>& values = values_[static_cast<std::size_t>(column) - 1];
  return values.size() < 2 ? 0.0
                           : (static_cast<double>(values.back()) - static_cast<double>(values.front())) /
                                 static_cast<double>(values.size() - 1);
}

bool FirstRecords::RisesEvenly(int column) const {
  constexpr std::size_t kFewest = 3;
  if (!Has(column)) {
    return false;
  }
  const std::vector<float>& values = values_[static_cast<std::size_t>(column) - 1];
  const double mean = MeanStep(column);
  const bool farOff = std::adjacent_find(values.begin(), values.end(), [mean](float a, float b) {
                        const double step = static_cast<double>(b) - static_cast<double>(a);
                        return !(step > 0.5 * mean && step < 1.5 * mean);
                      }) != values.end();
  return values.size() >= kFewest && mean > 0 && !farOff;
}

bool FirstRecords::RisesByOne(int column) const {
  if (!RisesEvenly(column)) {
    return false;
  }
  const std::vector<float>& values = values_[static_cast<std::size_t>(column) - 1];
  return std::adjacent_find(values.begin(), values.end(), [](float a, float b) { return b != a + 1.0F; }) ==
         values.end();
}

}  // namespace velmora
