#include "dsp/filters/filter_padding.hpp"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace velmora {
namespace {

using Kind = FilterPadding::Kind;

// Samples first to last, counted from 1.
float SumOf(const ChannelView& x, std::int64_t first, std::int64_t last) {
  float sum = 0.0F;
  for (std::int64_t k = first; k <= last; ++k) {
    sum += x[k - 1];
  }
  return sum;
}

float Reflected(float through, float sample) {
  return static_cast<float>(double{through} - (double{sample} - double{through}));
}

void Fill(const ChannelView& to, float value) {
  for (std::int64_t i = 0; i < to.size(); ++i) {
    to[i] = value;
  }
}

}  // namespace

FilterPadding MakePadding(std::int32_t padding, bool zeros, std::int64_t nData, std::int64_t limit) {
  const std::int64_t wanted = std::min(std::abs(std::int64_t{padding}), limit);
  const auto count = static_cast<std::int32_t>(std::min(wanted, std::max<std::int64_t>(nData - 1, 0)));
  if (padding < 0) {
    return {count, Kind::Means};
  }
  return {count, zeros ? Kind::Zeros : Kind::Reflective};
}

void FillPadding(const ChannelView& x, SampleRange range, const FilterPadding& padding,
                 const ChannelView& head, const ChannelView& tail) {
  const std::int64_t count = padding.count;
  if (count == 0) {
    return;
  }
  const std::int64_t start = range.lo;
  const std::int64_t end = range.hi;
  const bool beyond = padding.kind == Kind::Reflective && start + count > x.size();
  if (padding.kind != Kind::Zeros && (beyond || end - count < 1)) {
    throw std::out_of_range("there are too few samples beside the range for the padding");
  }
  switch (padding.kind) {
    case Kind::Zeros:
      Fill(head, 0.0F);
      Fill(tail, 0.0F);
      break;
    case Kind::Means:
      Fill(head, SumOf(x, 1, count) / static_cast<float>(count));
      Fill(tail, SumOf(x, end - count, end) / static_cast<float>(count));
      break;
    case Kind::Reflective:
      for (std::int64_t k = 1; k <= count; ++k) {  // k samples away from the end sample
        head[count - k] = Reflected(x[start - 1], x[start - 1 + k]);
        tail[k - 1] = Reflected(x[end - 1], x[end - 1 - k]);
      }
      break;
  }
}

}  // namespace velmora
