#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "dsp/design/section_runs.hpp"

namespace velmora {

/// A filter by its coefficients: a(0) y(i) = sum of b(k) x(i-k) - sum over k above 0 of a(k) y(i-k).
struct DirectFilter {
  std::vector<double> b;
  std::vector<double> a;  // a(0) is 1
};

/// Numbers parted by blanks, commas or semicolons. Throws FilterDesignError at anything else.
std::vector<double> NumbersOf(std::string_view text);

/// Both lists divided by a(0). Throws FilterDesignError when that is 0, a list is empty or a pole does not
/// lie inside the unit circle.
DirectFilter MakeDirectFilter(std::vector<double> b, std::vector<double> a);

/// In place in 64 bits. Forward: from rest. Zero-lag: forward and backward over the signal continued by
/// reflection by three times the longer list, at most samples - 1, each run begun in the steady state of its
/// first sample.
void RunDirect(std::span<double> x, const DirectFilter& filter, RunDirection direction);

}  // namespace velmora
