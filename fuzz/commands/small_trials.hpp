#pragma once

#include <string>
#include <vector>

namespace velmora::fuzz {

/// A file to begin with.
struct SmallTrial {
  std::string extension;
  std::string bytes;
};

/// Trials of no, one, two, a few and many samples and channels, with every kind of sample and abscissa.
const std::vector<SmallTrial>& SmallTrials();

}  // namespace velmora::fuzz
