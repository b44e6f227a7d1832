#include "dsp/time_base/interpolation.hpp"

namespace velmora {

void InterpolateLine(Trial& trial, const ChannelList& channels, std::int32_t first, std::int32_t last) {
  for (const int c : channels) {
    const double rise = double{trial.Data(last, c)} - double{trial.Data(first, c)};
    const double slope = rise / static_cast<double>(std::int64_t{last} - first);
    for (std::int64_t i = std::int64_t{first} + 1; i <= last; ++i) {
      trial.Data(i, c) = static_cast<float>(trial.Data(i - 1, c) + slope);
    }
  }
}

}  // namespace velmora
