#pragma once

#include <string_view>

namespace velmora {

/// Major digit, two minor digits, three build digits: also the version text in native binary files.
inline constexpr std::string_view VersionText = "1.00 (build 001)";

}  // namespace velmora
