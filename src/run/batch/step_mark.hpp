#pragma once

#include "run/batch/outcome.hpp"

namespace velmora {

/// The step that a worker is in, where the process that started it sees it, too, and finds it when the worker
/// is gone; setting it costs neither a message nor a turn of the other process. Made before the fork.
class StepMark {
 public:
  /// Throws std::bad_alloc.
  StepMark();
  StepMark(StepMark&& other) noexcept;
  StepMark& operator=(StepMark&& other) noexcept;
  ~StepMark();

  /// An action of more than 200 bytes is cut.
  void Set(const StepPlace& place) const;
  [[nodiscard]] StepPlace Get() const;

 private:
  struct Shared;
  Shared* shared_;
};

}  // namespace velmora
