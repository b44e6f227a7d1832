#pragma once

#include <string>

namespace velmora {

/// The numeral at a tick of an axis whose ticks are `step` apart and whose largest magnitude is `largest`:
/// a plain number with the decimals that the step needs, beyond 100,000 and below 0.01 with an SI prefix
/// behind it ("250 k", "-2.5 µ") in place of zeros.
std::string TickText(double tick, double step, double largest);

/// The numeral at a power of ten of a logarithmic axis: plain from 0.01 to 10000, else "10⁻⁴". Powers are
/// often percentages, which bear no prefix.
std::string DecadeText(double tick);

/// The same of an axis of seconds that shows hours, minutes and seconds: "00:01:02.5".
std::string ClockTickText(double tick, double step);

}  // namespace velmora
