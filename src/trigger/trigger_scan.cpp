#include "trigger/trigger_scan.hpp"

#include <array>

namespace velmora {
namespace {

struct KindRow {
  std::string_view text;
  int levels;
};

constexpr std::array<KindRow, kTriggerKinds> kKinds = {{{"Above (+ve slope)", 1},
                                                        {"Below (-ve slope)", 1},
                                                        {"Above then below", 2},
                                                        {"Below then above", 2},
                                                        {"Outside values", 2},
                                                        {"Inside values", 2},
                                                        {"Peaks & valleys", 0},
                                                        {"Peaks", 0},
                                                        {"Valleys", 0}}};

// The tests have no branch: several samples are tested before one is taken.
bool Up(float a, float b, float level) {
  return static_cast<bool>(static_cast<int>(a < level) & static_cast<int>(b >= level));
}

bool Down(float a, float b, float level) {
  return static_cast<bool>(static_cast<int>(a > level) & static_cast<int>(b <= level));
}

bool Either(bool one, bool other) {
  return static_cast<bool>(static_cast<int>(one) | static_cast<int>(other));
}

bool Peak(float a, float b, float c) {
  return static_cast<bool>(static_cast<int>(a < b) & static_cast<int>(b >= c));
}

bool Valley(float a, float b, float c) {
  return static_cast<bool>(static_cast<int>(a > b) & static_cast<int>(b <= c));
}

/// The first of samples `from` to `last` at which the test holds; last + 1 when there is none. `samples` is
/// the channel, counted from 1.
template <typename Test>
std::int64_t FindNext(const float* samples, std::ptrdiff_t stride, std::int64_t from, std::int64_t last,
                      const Test& test) {
  constexpr std::int64_t kStretch = 16;
  const auto holds = [&](std::int64_t i) {
    const float* at = samples + (i - 1) * stride;
    return test(at[-stride], at[0], at[stride]);
  };
  std::int64_t i = from;
  for (; i + kStretch <= last + 1; i += kStretch) {
    int any = 0;
    for (std::int64_t k = 0; k < kStretch; ++k) {
      any |= static_cast<int>(holds(i + k));
    }
    if (any != 0) {
      break;
    }
  }
  while (i <= last && !holds(i)) {
    ++i;
  }
  return i;
}

/// The channel with what is looked for in it now.
struct Scan {
  const float* samples;
  std::ptrdiff_t stride;
  std::int64_t last;

  template <typename Test>
  [[nodiscard]] std::int64_t Next(std::int64_t from, const Test& test) const {
    return FindNext(samples, stride, from, last, test);
  }

  [[nodiscard]] std::int64_t Find(std::int64_t from, TriggerKind kind, float level,
                                  const TriggerCondition& of) const {
    const float high = of.high;
    const float low = of.low;
    switch (kind) {
      case TriggerKind::Above:
      case TriggerKind::AboveThenBelow:
        return Next(from, [level](float a, float b, float) { return Up(a, b, level); });
      case TriggerKind::Below:
      case TriggerKind::BelowThenAbove:
        return Next(from, [level](float a, float b, float) { return Down(a, b, level); });
      case TriggerKind::Outside:
        return Next(from, [=](float a, float b, float) { return Either(Up(a, b, high), Down(a, b, low)); });
      case TriggerKind::Inside:
        return Next(from, [=](float a, float b, float) { return Either(Down(a, b, high), Up(a, b, low)); });
      case TriggerKind::PeaksAndValleys:
        return Next(from, [](float a, float b, float c) { return Either(Peak(a, b, c), Valley(a, b, c)); });
      case TriggerKind::Peaks:
        return Next(from, Peak);
      case TriggerKind::Valleys:
        return Next(from, Valley);
    }
    return last + 1;
  }
};

}  // namespace

std::string_view KindText(TriggerKind kind) {
  return kKinds.at(static_cast<std::size_t>(kind)).text;
}

int LevelsOf(TriggerKind kind) {
  return kKinds.at(static_cast<std::size_t>(kind)).levels;
}

std::vector<std::int32_t> ScanForTriggers(const SampleMatrix& matrix, int channel,
                                          const TriggerCondition& condition, SampleRange range,
                                          std::size_t most) {
  std::vector<std::int32_t> found;
  const Scan scan{matrix.Frame(1) + channel, matrix.Stride(), std::int64_t{range.hi} - 1};
  TriggerKind kind = condition.kind;
  bool atLow = false;
  for (std::int64_t i = std::int64_t{range.lo} + 1; found.size() < most && i <= scan.last; ++i) {
    i = scan.Find(i, kind, atLow ? condition.low : condition.high, condition);
    if (i > scan.last) {
      break;
    }
    found.push_back(static_cast<std::int32_t>(i));
    if (kind == TriggerKind::AboveThenBelow || kind == TriggerKind::BelowThenAbove) {
      kind = kind == TriggerKind::AboveThenBelow ? TriggerKind::BelowThenAbove : TriggerKind::AboveThenBelow;
      atLow = !atLow;
    }
  }
  return found;
}

std::vector<std::int32_t> ScanPlain(const SampleMatrix& matrix, int channel,
                                    const TriggerCondition& condition, SampleRange range, std::size_t most) {
  const float high = condition.high;
  const float low = condition.low;
  std::vector<std::int32_t> found;
  TriggerKind kind = condition.kind;
  float level = high;
  bool toggle = false;
  for (std::int64_t i = std::int64_t{range.lo} + 1; i < range.hi && found.size() < most; ++i) {
    const float a = matrix.At(i - 1, channel);
    const float b = matrix.At(i, channel);
    const float c = matrix.At(i + 1, channel);
    const std::array<bool, kTriggerKinds> holds = {a < level && b >= level,
                                                   a > level && b <= level,
                                                   a < level && b >= level,
                                                   a > level && b <= level,
                                                   (a < high && b >= high) || (a > low && b <= low),
                                                   (a > high && b <= high) || (a < low && b >= low),
                                                   (a < b && b >= c) || (a > b && b <= c),
                                                   a < b && b >= c,
                                                   a > b && b <= c};
    if (holds.at(static_cast<std::size_t>(kind))) {
      found.push_back(static_cast<std::int32_t>(i));
      if (kind == TriggerKind::AboveThenBelow || kind == TriggerKind::BelowThenAbove) {
        kind =
            kind == TriggerKind::AboveThenBelow ? TriggerKind::BelowThenAbove : TriggerKind::AboveThenBelow;
        toggle = !toggle;
      }
    }
    level = toggle ? low : high;
  }
  return found;
}

}  // namespace velmora
