#pragma once

namespace velmora {

/// The number that the shortest decimal text of a 32-bit value reads as: 0.1 for 0.1F, which itself is
/// 0.100000001490116. Not finite values stay.
double DecimalNumber(float value);

/// The same through the text: what the fast way is held to.
double DecimalNumberPlainly(float value);

}  // namespace velmora
