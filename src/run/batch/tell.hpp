#pragma once

#include <cstdio>
#include <string>

namespace velmora {

/// Standard output carries only what was asked for; how it went is told on standard error.
inline void Tell(const std::string& message) {
  std::fputs(("velmora2-run: " + message + "\n").c_str(), stderr);
}

}  // namespace velmora
