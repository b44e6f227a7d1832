// Drives a fuzz target without libFuzzer: mutates the seeds for a number of seconds, or of inputs. The same
// seed number makes the same inputs. The target runs in a child, so that an input that ends it, or takes too
// long, can be kept in crash-input.bin.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <new>
#include <random>

#include "fuzz_target.hpp"

namespace {

using Random = std::mt19937_64;

std::size_t Below(Random& random, std::size_t limit) {
  return limit == 0 ? 0 : random() % limit;
}

void Overwrite(std::string& bytes, Random& random) {
  // Numbers at which counters overflow and comparisons turn.
  static constexpr std::int32_t kNotable[] = {0,   1,   -1,  64,    65,     127,
                                              128, 255, 256, 32767, -32768, 0x7FFFFFFF};
  const std::int32_t value = Below(random, 2) == 0 ? kNotable[Below(random, std::size(kNotable))]
                                                   : static_cast<std::int32_t>(random());
  const std::size_t width = std::size_t{1} << Below(random, 3);
  if (bytes.size() >= width) {
    std::memcpy(bytes.data() + Below(random, bytes.size() - width + 1), &value, width);
  }
}

void Insert(std::string& bytes, Random& random) {
  static constexpr const char* kPieces[] = {"\r\n",  "\n", "\r",  "\t", ",",  ";", " ", "\"",
                                            "1e999", "-",  "nan", "0",  "E+", ".", "* "};
  const std::size_t at = Below(random, bytes.size() + 1);
  if (Below(random, 2) == 0) {
    bytes.insert(at, kPieces[Below(random, std::size(kPieces))]);
  } else {
    bytes.insert(at, Below(random, 40), static_cast<char>(random()));
  }
}

std::string Mutated(std::string bytes, Random& random) {
  for (std::size_t rounds = 1 + Below(random, 8); rounds > 0; --rounds) {
    switch (Below(random, 6)) {
      case 0:
        bytes.resize(Below(random, bytes.size() + 1));
        break;
      case 1:
        Insert(bytes, random);
        break;
      case 2: {
        const std::size_t at = Below(random, bytes.size());
        bytes.erase(at, Below(random, 100));
        break;
      }
      case 3: {
        const std::string copy = bytes.substr(Below(random, bytes.size()), Below(random, 200));
        bytes.insert(Below(random, bytes.size() + 1), copy);
        break;
      }
      default:
        Overwrite(bytes, random);
    }
  }
  return bytes;
}

// Seen by both processes: the input at hand, and how many there were.
struct Shared {
  static constexpr std::size_t kRoom = std::size_t{1} << 20;

  std::uint64_t runs = 0;
  std::size_t size = 0;
  std::array<char, kRoom> bytes{};
};

Shared* MakeShared() {
  void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  return memory == MAP_FAILED ? nullptr : new (memory) Shared;
}

void RunOne(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

void RunShared(Shared& shared, const std::string& bytes) {
  constexpr unsigned longestSeconds = 20;
  shared.size = std::min(bytes.size(), Shared::kRoom);
  std::memcpy(shared.bytes.data(), bytes.data(), shared.size);
  ++shared.runs;
  alarm(longestSeconds);
  RunOne({shared.bytes.data(), shared.size});
  alarm(0);
}

// How long a run goes on: until the first of these is reached.
struct Limits {
  double seconds = 3;
  std::uint64_t inputs = std::numeric_limits<std::uint64_t>::max();
};

void RunMany(Shared& shared, const Limits& limits, std::uint64_t seed) {
  const std::vector<std::string> seeds = FuzzSeeds();
  for (const std::string& bytes : seeds) {
    RunShared(shared, bytes);
  }
  Random random(seed);
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(limits.seconds);
  while (shared.runs < limits.inputs && std::chrono::steady_clock::now() < end) {
    RunShared(shared, Mutated(seeds[Below(random, seeds.size())], random));
  }
}

// Returns the program's exit status.
int Supervise(const Limits& limits, std::uint64_t seed) {
  Shared* shared = MakeShared();
  const pid_t child = shared == nullptr ? -1 : fork();
  if (child < 0) {
    std::cerr << "no memory to run in\n";
    return 2;
  }
  if (child == 0) {
    RunMany(*shared, limits, seed);
    return 0;
  }
  int status = 0;
  if (waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0) {
    std::cout << shared->runs << " inputs, nothing found\n";
    return 0;
  }
  std::ofstream("crash-input.bin", std::ios::binary)
      .write(shared->bytes.data(), static_cast<std::streamsize>(shared->size));
  std::cerr << "input " << shared->runs << " ended the reader or took too long; it is in crash-input.bin\n";
  return 1;
}

int RunFile(const char* path) {
  std::ifstream in(path, std::ios::binary);
  RunOne({std::istreambuf_iterator<char>(in), {}});
  return 0;
}

// Seeds as files, for a fuzzer that wants a corpus.
int WriteSeeds(const std::string& directory) {
  std::size_t number = 0;
  for (const std::string& bytes : FuzzSeeds()) {
    std::ofstream out(directory + "/seed-" + std::to_string(++number), std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  return 0;
}

}  // namespace

// Arguments: [--seconds S] [--inputs N] [--seed N], or --write-seeds DIRECTORY, or one file to run alone.
int main(int argc, char** argv) {
  Limits limits;
  std::uint64_t seed = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--seconds") == 0 && i + 1 < argc) {
      limits.seconds = std::atof(argv[++i]);
    } else if (std::strcmp(argv[i], "--inputs") == 0 && i + 1 < argc) {
      limits.inputs = std::strtoull(argv[++i], nullptr, 10);
    } else if (std::strcmp(argv[i], "--seed") == 0 && i + 1 < argc) {
      seed = std::strtoull(argv[++i], nullptr, 10);
    } else if (std::strcmp(argv[i], "--write-seeds") == 0 && i + 1 < argc) {
      return WriteSeeds(argv[i + 1]);
    } else {
      return RunFile(argv[i]);
    }
  }
  return Supervise(limits, seed);
}
