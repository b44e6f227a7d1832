#include "run/output_claims.hpp"

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

std::string OutputClaims::Reserve(const std::string& path, const std::string& why) {
  const auto [owner, isFree] = owners_.try_emplace(Identity(path), Owner{std::nullopt, why});
  return isFree ? std::string() : owner->second.why;
}

std::string OutputClaims::Claim(std::size_t run, const std::string& path) {
  const std::string name = run < inputs_.size() ? inputs_[run] : "another run";
  const auto [owner, isFree] = owners_.try_emplace(Identity(path), Owner{run, name + " writes it too"});
  return isFree || owner->second.run == run ? std::string() : owner->second.why;
}

}  // namespace velmora
