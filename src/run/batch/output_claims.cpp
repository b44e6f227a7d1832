#include "run/batch/output_claims.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace velmora {
namespace {

std::string Identity(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  const std::filesystem::path real = std::filesystem::weakly_canonical(absolute, error);
  return error ? path : real.string();
}

}  // namespace

OutputClaims::OutputClaims(const Arguments& arguments) : inputs_(arguments.inputs) {
  Reserve(arguments.recipe, "it is the recipe");
  for (const std::string& input : inputs_) {
    Reserve(input, "it is an input of this run");
  }
}

std::string OutputClaims::WhyOf(const Owner& owner) const {
  if (!owner.run) {
    return owner.why;
  }
  return (*owner.run < inputs_.size() ? inputs_[*owner.run] : "another run") + " writes it too";
}

std::string OutputClaims::Reserve(const std::string& path, const char* why) {
  const auto [owner, isFree] = owners_.try_emplace(Identity(path), Owner{std::nullopt, false, why});
  return isFree ? std::string() : WhyOf(owner->second);
}

void OutputClaims::ConfineTo(const std::string& directory, const std::string& why) {
  below_ = Identity(directory) + "/";
  whyNotOutside_ = why;
}

bool OutputClaims::IsOutside(const std::string& identity) const {
  return !below_.empty() && !identity.starts_with(below_);
}

std::string OutputClaims::Claim(std::size_t run, const std::string& path) {
  const std::string identity = Identity(path);
  if (IsOutside(identity)) {
    return whyNotOutside_;
  }
  const auto [owner, isFree] = owners_.try_emplace(identity, Owner{run, false});
  return isFree || owner->second.run == run ? std::string() : WhyOf(owner->second);
}

std::string OutputClaims::ClaimTable(const std::string& path) {
  const std::string identity = Identity(path);
  if (IsOutside(identity)) {
    return whyNotOutside_;
  }
  const auto [owner, isFree] =
      owners_.try_emplace(identity, Owner{std::nullopt, true, "a table of the study goes there"});
  if (!isFree) {
    return owner->second.isTable ? std::string() : WhyOf(owner->second);
  }
  // It is written when all runs have ended: then it is late to learn that there is no way to.
  const std::string directory = std::filesystem::path(path).parent_path().string();
  const bool writable = access(directory.empty() ? "." : directory.c_str(), W_OK) == 0;
  return writable ? std::string() : std::string(std::strerror(errno));
}

}  // namespace velmora
