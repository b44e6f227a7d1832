#include "graph/copied_channels.hpp"

#include <vector>

namespace velmora {

void CopyChannels(const Trial& from, int abscissa, std::span<const int> channels, SampleRange range,
                  Trial& to) {
  std::vector<int> rows = {abscissa};
  rows.insert(rows.end(), channels.begin(), channels.end());
  to.AllocateData(static_cast<int>(channels.size()), range.hi - range.lo + 1);
  for (std::int64_t i = range.lo; i <= range.hi; ++i) {
    const float* source = from.matrix.Frame(i);
    float* copy = to.matrix.Frame(i - range.lo + 1);
    for (std::size_t row = 0; row < rows.size(); ++row) {
      copy[row] = source[rows[row]];
    }
  }
  for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
    const int channel = rows[static_cast<std::size_t>(row)];
    to.ChanLabel[row] = from.ChanLabel[channel];
    to.ChanUnits[row] = from.ChanUnits[channel];
    to.ChanColour[row] = from.ChanColour[channel];
  }
  to.Rate = from.Rate;
  to.Duration = from.Duration;
}

}  // namespace velmora
