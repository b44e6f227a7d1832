#pragma once

#include <QTest>
#include <QWidget>

namespace velmora::test {

/// How long a state is waited for, in milliseconds: on a busy machine it comes late, and that is no fault.
inline constexpr int kPatience = 30000;

template <typename Reached>
bool WaitFor(const Reached& reached) {
  return QTest::qWaitFor(reached, kPatience);
}
inline bool WaitForWindowActive(QWidget* window) {
  return QTest::qWaitForWindowActive(window, kPatience);
}
inline bool WaitForWindowExposed(QWidget* window) {
  return QTest::qWaitForWindowExposed(window, kPatience);
}

}  // namespace velmora::test
