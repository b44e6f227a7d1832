#pragma once

namespace velmora {

inline constexpr int kAllRan = 0;
inline constexpr int kStepFailed = 1;
inline constexpr int kBadUsage = 2;
inline constexpr int kSignalled = 128;  // and the signal's number

}  // namespace velmora
