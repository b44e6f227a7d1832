#include "core/files/output_guard.hpp"

#include <filesystem>
#include <utility>

namespace velmora {
namespace {

OutputGuard* guarding = nullptr;  // files belong to the process, and so does this

}  // namespace

OutputGuard::OutputGuard(Check check) : check_(std::move(check)), before_(std::exchange(guarding, this)) {}

OutputGuard::~OutputGuard() {
  guarding = before_;
}

void OutputGuard::Ask(const std::string& path) {
  if (guarding != nullptr) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    guarding->check_(error ? path : absolute.string());
  }
}

}  // namespace velmora
