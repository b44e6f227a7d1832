#include "formats/recording/slow_channel.hpp"

#include <vector>

namespace velmora {

void InterpolateSlowChannel(SampleMatrix& matrix, int column, std::int64_t own, double slow, double fast) {
  const ChannelView to = matrix.Channel(column);
  std::vector<float> from(static_cast<std::size_t>(own));
  for (std::int64_t i = 0; i < own; ++i) {
    from[static_cast<std::size_t>(i)] = to[i];
  }
  for (std::int64_t i = 0; i < to.size(); ++i) {
    const double place = static_cast<double>(i) * slow / fast;
    const auto before = static_cast<std::int64_t>(place);
    if (before >= own - 1) {
      to[i] = own > 0 ? from.back() : 0.0F;
      continue;
    }
    const double a = from[static_cast<std::size_t>(before)];
    const double b = from[static_cast<std::size_t>(before) + 1];
    to[i] = static_cast<float>(a + (b - a) * (place - static_cast<double>(before)));
  }
}

}  // namespace velmora
