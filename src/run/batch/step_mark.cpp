#include "run/batch/step_mark.hpp"

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace velmora {

struct StepMark::Shared {
  static constexpr std::size_t kMostAction = 200;

  int step = 0;
  int line = 0;
  std::size_t length = 0;
  std::array<char, kMostAction> action{};
};

StepMark::StepMark() {
  void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {
    throw std::bad_alloc();
  }
  shared_ = new (memory) Shared;
}

StepMark::StepMark(StepMark&& other) noexcept : shared_(std::exchange(other.shared_, nullptr)) {}

StepMark& StepMark::operator=(StepMark&& other) noexcept {
  std::swap(shared_, other.shared_);
  return *this;
}

StepMark::~StepMark() {
  if (shared_ != nullptr) {
    munmap(shared_, sizeof(Shared));
  }
}

void StepMark::Set(const StepPlace& place) const {
  shared_->step = place.step;
  shared_->line = place.line;
  shared_->length = std::min(place.action.size(), Shared::kMostAction);
  std::copy_n(place.action.begin(), shared_->length, shared_->action.begin());
}

StepPlace StepMark::Get() const {
  return {shared_->step, shared_->line, std::string(shared_->action.data(), shared_->length)};
}

}  // namespace velmora
