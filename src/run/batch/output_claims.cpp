#include "run/batch/output_claims.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "core/files/output_elsewhere.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

// Where an absolute path leads, links and all, whether anything is there or not.
fs::path Behind(const fs::path& path) {
  std::error_code error;
  fs::path real = fs::weakly_canonical(path, error);
  return error ? path : real;
}

// A name that is only a name: no way up, and no link.
bool IsPlainName(const fs::path& path) {
  const fs::path name = path.filename();
  std::error_code error;
  return !name.empty() && name != "." && name != ".." && !fs::is_symlink(fs::symlink_status(path, error));
}

}  // namespace

OutputClaims::OutputClaims(const Arguments& arguments) : inputs_(arguments.inputs) {
  Reserve(arguments.recipe, "it is the recipe");
  for (const std::string& input : inputs_) {
    Reserve(input, "it is an input of this run");
  }
}

OutputClaims::Place OutputClaims::PlaceOf(const std::string& path) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  const fs::path named = IsPlainName(absolute) ? absolute : Behind(absolute);
  return {OwnersIn(named.parent_path().string()), named.filename().string()};
}

OutputClaims::Owners& OutputClaims::OwnersIn(const std::string& directory) {
  Owners*& owners = directories_[directory];
  if (owners == nullptr) {
    owners = &owners_[Behind(directory).string()];
  }
  return *owners;
}

std::string OutputClaims::WhyOf(const Owner& owner) const {
  if (owner.run == Owner::kNoRun) {
    return owner.why;
  }
  return (owner.run < inputs_.size() ? inputs_[owner.run] : "another run") + " writes it too";
}

std::string OutputClaims::Reserve(const std::string& path, const char* why) {
  const Place place = PlaceOf(path);
  const auto [owner, isFree] = place.owners.try_emplace(place.name, Owner{.why = why});
  return isFree ? std::string() : WhyOf(owner->second);
}

std::string OutputClaims::Claim(std::size_t run, const std::string& path) {
  const Place place = PlaceOf(path);
  const auto number = static_cast<std::uint32_t>(run);
  const auto [owner, isFree] = place.owners.try_emplace(place.name, Owner{.run = number});
  return isFree || owner->second.run == number ? std::string() : WhyOf(owner->second);
}

std::string OutputClaims::ClaimTable(const std::string& path) {
  const Place place = PlaceOf(path);
  const auto [owner, isFree] =
      place.owners.try_emplace(place.name, Owner{.isTable = true, .why = "a table of the study goes there"});
  if (!isFree) {
    return owner->second.isTable ? std::string() : WhyOf(owner->second);
  }
  // It is written when all runs have ended: then it is late to learn that there is no way to.
  const std::string directory = fs::path(OutputElsewhere::ToWrite(path)).parent_path().string();
  const bool writable = access(directory.empty() ? "." : directory.c_str(), W_OK) == 0;
  return writable ? std::string() : std::string(std::strerror(errno));
}

}  // namespace velmora
