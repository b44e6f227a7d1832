#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "run/batch/arguments.hpp"

namespace velmora {

/// Which of the runs writes which file. A run may write a file of its own again; what another run writes,
/// and what the runs read, is refused.
class OutputClaims {
 public:
  /// The recipe and the inputs are nobody's to write. `arguments` must outlive this.
  explicit OutputClaims(const Arguments& arguments);

  /// Nobody is to write `path`, for this reason. Returns why it was not free any more; empty when it was.
  std::string Reserve(const std::string& path, const char* why);

  /// A run (from 0) wants to write `path`. Returns why it must not; empty when it may.
  std::string Claim(std::size_t run, const std::string& path);

  /// A table of the study, which every run may add to, goes to `path`. Returns why it must not; empty when it
  /// may.
  std::string ClaimTable(const std::string& path);

 private:
  struct Owner {
    static constexpr std::uint32_t kNoRun = UINT32_MAX;

    std::uint32_t run = kNoRun;
    bool isTable = false;
    const char* why = nullptr;  // what whoever comes later is told; of a run: its input
  };
  using Owners = std::unordered_map<std::string, Owner>;  // by the name in a directory
  struct Place {
    Owners& owners;
    std::string name;
  };

  Place PlaceOf(const std::string& path);
  Owners& OwnersIn(const std::string& directory);
  [[nodiscard]] std::string WhyOf(const Owner& owner) const;

  const std::vector<std::string>& inputs_;
  // A hundred thousand files lie in few directories: of each file its name is kept, and the way through the
  // links is gone once a directory.
  std::map<std::string, Owners> owners_;                  // by the directory behind all links
  std::unordered_map<std::string, Owners*> directories_;  // as they are spelled
};

}  // namespace velmora
