#include "commands/breach.hpp"

#include <cstdlib>
#include <iostream>

namespace velmora::fuzz {

void Breach(const std::string& what) {
  std::cerr << "BREACH: " << what << "\n";
  std::abort();
}

void Trail(const std::string& line) {
  static const bool told = std::getenv("FUZZ_TRAIL") != nullptr;
  if (told) {
    std::cerr << line << "\n";
  }
}

}  // namespace velmora::fuzz
