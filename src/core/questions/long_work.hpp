#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"

namespace velmora {

/// What a kernel calls every few milliseconds, or more often, with the part it has done, 0 to 1; false: it is
/// to end with whatever it has, which nobody will look at. May be empty.
using GoesOn = std::function<bool(double part)>;

inline bool Goes(const GoesOn& goesOn, double part) {
  return !goesOn || goesOn(part);
}

/// The panel of work that takes a noticeable time, with its Cancel; none for what is done at once.
class LongWork {
 public:
  LongWork(Workbench& workbench, std::string_view what, bool isLong) : workbench_(workbench) {
    if (isLong) {
      panel_.emplace(workbench);
      panel_->SetFormat(what);
      panel_->SetStatus("Processing...");
    } else {
      workbench.CancelRequested = false;
    }
  }

  [[nodiscard]] GoesOn Turns() {
    return [this](double part) {
      constexpr std::chrono::milliseconds kBetweenTurns{20};
      const auto now = std::chrono::steady_clock::now();
      if (panel_ && now - lastTurn_ >= kBetweenTurns) {
        lastTurn_ = now;
        panel_->SetValue(part);
        panel_->GiveTurn();
      }
      return !workbench_.CancelRequested;
    };
  }
  [[nodiscard]] bool Cancelled() const { return workbench_.CancelRequested; }

 private:
  Workbench& workbench_;
  std::optional<ProgressPanel> panel_;
  std::chrono::steady_clock::time_point lastTurn_{};
};

}  // namespace velmora
