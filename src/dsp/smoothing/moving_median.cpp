#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "dsp/smoothing/moving_window.hpp"

namespace velmora {
namespace {

using Keys = std::vector<std::int32_t>;

// Floats as whole numbers in the same order, in which every NaN has its place too.
std::int32_t KeyOf(float value) {
  const auto bits = std::bit_cast<std::int32_t>(value);
  return bits ^ ((bits >> 31) & 0x7FFFFFFF);
}

float ValueOf(std::int32_t key) {
  return std::bit_cast<float>(key ^ ((key >> 31) & 0x7FFFFFFF));
}

Keys KeysOf(const ChannelView& x) {
  Keys keys(static_cast<std::size_t>(x.size()));
  for (std::int64_t i = 0; i < x.size(); ++i) {
    keys[static_cast<std::size_t>(i)] = KeyOf(x[i]);
  }
  return keys;
}

// The keys of a window in ascending order, kept up to date.
class SortedWindow {
 public:
  SortedWindow(const Keys& keys, std::size_t width)
      : keys_(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(width)) {
    std::sort(keys_.begin(), keys_.end());
  }

  [[nodiscard]] std::int32_t At(std::size_t position) const { return keys_[position]; }

  // One key of the window gives way to another: only those between the two places move.
  void Replace(std::int32_t old, std::int32_t fresh) {
    if (old == fresh) {
      return;
    }
    std::int32_t* from = LowerBound(old);
    std::int32_t* to = LowerBound(fresh);
    if (to > from) {
      std::copy(from + 1, to, from);
      *(to - 1) = fresh;
    } else {
      std::copy_backward(to, from, from + 1);
      *to = fresh;
    }
  }

 private:
  // std::lower_bound without branches to guess wrong: in noise every comparison is a coin toss.
  std::int32_t* LowerBound(std::int32_t key) {
    std::int32_t* base = keys_.data();
    std::size_t count = keys_.size();
    while (count > 1) {
      const std::size_t half = count / 2;
      base += base[half - 1] < key ? half : 0;
      count -= half;
    }
    return base + (*base < key ? 1 : 0);
  }

  Keys keys_;
};

void SmoothKeys(Keys& keys, std::size_t width, std::size_t centre, const Turn& turn) {
  constexpr std::size_t mediansATurn = 4096;
  SortedWindow window(keys, width);
  const std::size_t last = keys.size() - width - 1;
  for (std::size_t i = 0;; ++i) {
    const std::int32_t median = window.At(centre);
    window.Replace(keys[i + centre], median);
    keys[i + centre] = median;
    if (i == last) {
      return;
    }
    window.Replace(keys[i], keys[i + width]);
    if (i % mediansATurn == 0) {
      Give(turn);
    }
  }
}

bool HasWindows(const Trial& trial, std::int32_t width) {
  return width >= 1 && width < trial.NData;
}

}  // namespace

void MovingMedian(Trial& trial, const ChannelList& channels, std::int32_t width, const Turn& turn) {
  if (!HasWindows(trial, width)) {
    return;
  }
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    Keys keys = KeysOf(x);
    SmoothKeys(keys, static_cast<std::size_t>(width), static_cast<std::size_t>(WindowCentre(width)), turn);
    for (std::int64_t i = 0; i < x.size(); ++i) {
      x[i] = ValueOf(keys[static_cast<std::size_t>(i)]);
    }
  }
}

void MovingMedianPlain(Trial& trial, const ChannelList& channels, std::int32_t width) {
  const std::int32_t centre = WindowCentre(width);
  for (const int c : channels) {
    const ChannelView x = trial.Channel(c);
    for (std::int64_t i = 0; HasWindows(trial, width) && i < x.size() - width; ++i) {
      Keys window;
      for (std::int64_t k = i; k < i + width; ++k) {
        window.push_back(KeyOf(x[k]));
      }
      std::sort(window.begin(), window.end());
      x[i + centre] = ValueOf(window[static_cast<std::size_t>(centre)]);
    }
  }
}

}  // namespace velmora
