#pragma once

#include <vector>

namespace velmora::test {

/// So many samples of a function of their index, from 0.
template <typename Number = float, typename Of>
std::vector<Number> Sampled(int count, const Of& of) {
  std::vector<Number> samples;
  for (int i = 0; i < count; ++i) {
    samples.push_back(static_cast<Number>(of(i)));
  }
  return samples;
}

}  // namespace velmora::test
