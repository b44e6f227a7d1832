// Commands in any order, with any answers: the bytes choose both. What holds after every step stands in
// commands/invariants.hpp and commands/session.hpp.
#include <random>

#include "commands/session.hpp"
#include "fuzz_target.hpp"

std::vector<std::string> FuzzSeeds() {
  constexpr int seeds = 300;
  constexpr int bytes = 500;
  std::mt19937 random(1);
  std::vector<std::string> all(seeds);
  for (std::string& seed : all) {
    for (int i = 0; i < bytes; ++i) {
      seed += static_cast<char>(random());
    }
  }
  return all;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velmora::fuzz::Choices choices({data, size});
  velmora::fuzz::Session(choices).Run();
  return 0;
}
