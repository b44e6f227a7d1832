#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "run/batch/arguments.hpp"

namespace velmora {

/// Which of the runs writes which file. A run may write a file of its own again; what another run writes,
/// and what the runs read, is refused.
class OutputClaims {
 public:
  /// The recipe and the inputs are nobody's to write.
  explicit OutputClaims(const Arguments& arguments);

  /// Nobody is to write `path`, for this reason. Returns why it was not free any more; empty when it was.
  std::string Reserve(const std::string& path, const char* why);

  /// From now on only what lies below this directory may be written; `why` is told of all else.
  void ConfineTo(const std::string& directory, const std::string& why);

  /// A run (from 0) wants to write `path`. Returns why it must not; empty when it may.
  std::string Claim(std::size_t run, const std::string& path);

  /// A table of the study, which every run may add to, goes to `path`. Returns why it must not; empty when it
  /// may.
  std::string ClaimTable(const std::string& path);

 private:
  struct Owner {
    std::optional<std::size_t> run;
    bool isTable = false;
    const char* why = nullptr;  // what whoever comes later is told; of a run: its input
  };

  [[nodiscard]] std::string WhyOf(const Owner& owner) const;
  [[nodiscard]] bool IsOutside(const std::string& identity) const;

  std::vector<std::string> inputs_;
  std::string below_;  // empty: anywhere
  std::string whyNotOutside_;
  std::map<std::string, Owner> owners_;  // by the path behind all links
};

}  // namespace velmora
