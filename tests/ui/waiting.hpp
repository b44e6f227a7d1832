#pragma once

#include <QTest>
#include <QWidget>
#include <utility>

namespace velmora::test {

/// How long a state is waited for, in milliseconds: on a busy machine it comes late, and that is no fault.
inline constexpr int kPatience = 30000;

template <typename Reached>
bool WaitFor(const Reached& reached) {
  return QTest::qWaitFor(reached, kPatience);
}
/// What may come late or not at all, so that no state tells that it is over: waits until a value has been the
/// same for twenty looks, between which all that was due has been done.
template <typename Look>
bool Rests(const Look& look) {
  int same = 0;
  auto last = look();
  return WaitFor([&] {
    auto now = look();
    same = now == last ? same + 1 : 0;
    last = std::move(now);
    return same == 20;
  });
}
inline bool WaitForWindowActive(QWidget* window) {
  return QTest::qWaitForWindowActive(window, kPatience);
}
inline bool WaitForWindowExposed(QWidget* window) {
  return QTest::qWaitForWindowExposed(window, kPatience);
}

}  // namespace velmora::test
