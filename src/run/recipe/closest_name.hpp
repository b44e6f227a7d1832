#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velmora {

/// The name that was probably meant, by the fewest letters to add, drop, change or swap with their neighbour
/// (Damerau 1964), case aside; empty when none is near.
std::string ClosestName(std::string_view wrong, std::span<const std::string> names);

/// `; did you mean "smooth.butterworth"?`, empty when no name is near.
std::string DidYouMean(std::string_view wrong, std::span<const std::string> names);

}  // namespace velmora
