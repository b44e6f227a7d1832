#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
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

/// Does work whose parts are too long for a turn in between on a thread of its own, while `goesOn` gives the
/// turns here; the work hears of Cancel between its parts. Returns what it returns and throws what it throws.
/// It must touch nothing that a window shows meanwhile.
template <typename Work>
auto WithTurns(const GoesOn& goesOn, const Work& work) {
  constexpr std::chrono::milliseconds kTurn{10};
  std::atomic<bool> wanted = true;
  std::atomic<double> done = 0.0;
  const GoesOn between = [&wanted, &done](double part) {
    done = part;
    return wanted.load();
  };
  auto result = std::async(std::launch::async, [&work, &between] { return work(between); });
  do {
    wanted = goesOn(done) && wanted;
  } while (result.wait_for(kTurn) != std::future_status::ready);
  return result.get();
}

}  // namespace velmora
