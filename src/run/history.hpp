#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "core/workbench.hpp"
#include "run/recorder.hpp"

namespace velmora {

/// What was done to the trial since it was loaded, and the way back: there is no undo, but the file can
/// be read again and the steps repeated.
class History {
 public:
  /// Whoever makes the workbench gives it `Recording()` to ask through.
  explicit History(Questions& person) : recorder_(person) {}
  void Attach(Workbench& workbench);

  [[nodiscard]] Questions& Recording() { return recorder_; }
  [[nodiscard]] const std::vector<RecordedStep>& Steps() const { return recorder_.Steps(); }
  void SetOnDone(std::function<void(const Action&)> onDone);

  /// YAML that velmora2-run repeats to the same bits on the same file.
  [[nodiscard]] std::string Recipe() const;

  /// Reads the file again and repeats the steps up to and with `last` (from 0, which is the load). Files
  /// are not saved again. Returns why it could not be done, empty when it was. A file that changed since
  /// it was loaded is not read.
  std::string GoBack(std::size_t last);

 private:
  void ActionDone(const Action& action);
  std::string Repeat(const Step& step);

  Recorder recorder_;
  Workbench* workbench_ = nullptr;
  std::function<void(const Action&)> onDone_;
  std::string file_;
  std::filesystem::file_time_type fileTime_;
};

}  // namespace velmora
