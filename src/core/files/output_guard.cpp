#include "core/files/output_guard.hpp"

#include <filesystem>
#include <utility>

namespace velmora {
namespace {

OutputGuard* guarding = nullptr;  // files belong to the process, and so does this

std::string Absolute(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.string();
}

}  // namespace

OutputGuard::OutputGuard(Check check, Written written)
    : check_(std::move(check)), written_(std::move(written)), before_(std::exchange(guarding, this)) {}

OutputGuard::~OutputGuard() {
  guarding = before_;
}

void OutputGuard::Ask(const std::string& path) {
  if (guarding != nullptr) {
    guarding->check_(Absolute(path));
  }
}

void OutputGuard::Tell(const std::string& path) {
  if (guarding != nullptr && guarding->written_) {
    guarding->written_(Absolute(path));
  }
}

}  // namespace velmora
