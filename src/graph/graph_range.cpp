#include <algorithm>
#include <cmath>

#include "core/trial/abscissa.hpp"
#include "graph/graph.hpp"

namespace velmora {
namespace {

// Wide enough for numbers of which 32 bits (samples) or 64 bits (times) are kept.
bool CanShow(const Axis& axis, double low, double high, double narrowest) {
  const double most = std::max(std::abs(low), std::abs(high));
  return std::isfinite(high - low) && high - low > narrowest * most && (!axis.Log || low > 0);
}

}  // namespace

Graph::Ends Graph::TrialEnds() const {
  return {AbscissaStart(*trial_),
          std::max(AbscissaEnd(*trial_), static_cast<double>(trial_->Data(trial_->NData, 0)))};
}

bool Graph::ShowRange(double left, double right, double bottom, double top) {
  constexpr double kNarrowestTime = 1e-9;
  constexpr double kNarrowestValue = 1e-6;
  const bool moves = (left != Abscissa.Minimum || right != Abscissa.Maximum) &&
                     CanShow(Abscissa, left, right, kNarrowestTime);
  if (moves) {
    const Ends ends = TrialEnds();
    const double first = std::min(ends.first, Abscissa.Minimum);
    const double last = std::max(ends.last, Abscissa.Maximum);
    // Zero is never in reach of a logarithm; a path, and equal scales, have room beside the samples.
    if (!Abscissa.Log && !EqualScales && !Path) {
      const double width = std::min(right - left, last - first);
      left = std::clamp(left, first, last - width);
      right = left + width;
    }
    Abscissa.SetMinMax(left, right);
  }
  if (CanShow(Ordinate, bottom, top, kNarrowestValue)) {
    Ordinate.SetMinMax(bottom, top);
  }
  return moves;
}

}  // namespace velmora
