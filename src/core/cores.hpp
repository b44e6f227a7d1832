#pragma once

#include <algorithm>
#include <cstddef>
#include <future>
#include <thread>
#include <vector>

namespace velmora {

/// Into how many parts work is cut that goes on at the same time: one for each core of the machine, or
/// `wanted`.
inline std::size_t PartsForCores(unsigned wanted = 0) {
  constexpr unsigned kMost = 16;
  return std::clamp(wanted > 0 ? wanted : std::thread::hardware_concurrency(), 1U, kMost);
}

/// Which of `count` things in a row a part takes: about as many as each other.
struct Share {
  std::size_t first;
  std::size_t end;  // behind the last
};
inline Share ShareOf(std::size_t count, std::size_t part, std::size_t parts) {
  return {count * part / parts, count * (part + 1) / parts};
}

/// Calls work(part) for 0 to parts - 1 at the same time, and returns when all are done. The first is the
/// caller's; a machine without a thread to spare does the others as they are waited for. Throws what a part
/// throws.
template <typename Work>
void OnCores(std::size_t parts, const Work& work) {
  std::vector<std::future<void>> others;
  for (std::size_t part = 1; part < parts; ++part) {
    others.push_back(std::async([&work, part] { work(part); }));
  }
  work(std::size_t{0});
  for (std::future<void>& other : others) {
    other.get();
  }
}

}  // namespace velmora
