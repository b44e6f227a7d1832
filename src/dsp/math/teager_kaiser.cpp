#include "dsp/math/teager_kaiser.hpp"

#include <cmath>

#include "dsp/math/channel_math.hpp"

namespace velmora {

void TeagerKaiser(Trial& trial, const ChannelList& channels) {
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    double before = x[0];
    double here = x[1];
    for (std::int64_t i = 1; i + 1 < x.size(); ++i) {
      const double next = x[i + 1];
      const auto energy = static_cast<float>(here * here - before * next);
      if (!std::isfinite(energy) && std::isfinite(before) && std::isfinite(here) && std::isfinite(next)) {
        throw ArithmeticFault(c, i + 1);
      }
      x[i] = energy;
      before = here;
      here = next;
    }
    x[0] = x[1];
    x[x.size() - 1] = x[x.size() - 2];
  }
}

}  // namespace velmora
