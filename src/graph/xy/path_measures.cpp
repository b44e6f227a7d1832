#include "graph/xy/path_measures.hpp"

#include <cmath>

#include "dsp/math/mean_deviation.hpp"

namespace velmora {

PathMeasures MeasurePath(std::span<const double> x, std::span<const double> y) {
  PathMeasures path{.count = static_cast<std::int64_t>(x.size())};
  if (x.empty()) {
    return path;
  }
  const double meanX = MeanOf(x);
  const double meanY = MeanOf(y);
  double twiceArea = 0.0;
  double length = 0.0;
  double sxx = 0.0;
  double sxy = 0.0;
  double syy = 0.0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const bool last = i + 1 == x.size();
    const std::size_t next = last ? 0 : i + 1;
    twiceArea += x[i] * y[next] - x[next] * y[i];
    if (!last) {
      const double dx = x[next] - x[i];
      const double dy = y[next] - y[i];
      length += std::sqrt(dx * dx + dy * dy);
    }
    sxx += (x[i] - meanX) * (x[i] - meanX);
    sxy += (x[i] - meanX) * (y[i] - meanY);
    syy += (y[i] - meanY) * (y[i] - meanY);
  }
  path.loopArea = twiceArea / 2;
  path.length = length;
  if (sxx > 0) {
    path.slope = sxy / sxx;
  }
  if (sxx > 0 && syy > 0) {
    path.r = sxy / std::sqrt(sxx * syy);
  }
  return path;
}

}  // namespace velmora
