#pragma once

#include <string>

namespace velmora::fuzz {

/// Says what was promised and not kept, and ends the program.
[[noreturn]] void Breach(const std::string& what);

/// With FUZZ_TRAIL in the environment, a line of what is being done.
void Trail(const std::string& line);

}  // namespace velmora::fuzz
