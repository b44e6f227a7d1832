#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/action_listener.hpp"
#include "core/command_memory.hpp"
#include "core/command_report.hpp"
#include "core/desktop_services.hpp"
#include "core/open_view.hpp"
#include "core/preferences.hpp"
#include "core/questions/picker.hpp"
#include "core/questions/questions.hpp"
#include "core/shell_request.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

enum class UserLevelKind : std::int16_t { Novice = 0, Expert = 1 };

/// Records of the native binary file that outlive a load: a later save writes back what it does not
/// itself know. Raw bytes as they lie in the file.
struct NativeRecords {
  NativeRecords();

  std::string TrialRecord;  // 3502 bytes
  std::string FILMINFO;     // 228 bytes, the experiment information
  std::string SETUPINFO;    // 328 bytes, carried and never interpreted
  std::string EXPTINFO;     // 248 bytes, the experiment lines
};

/// A trial set aside until the next file is joined to it.
struct MergeStore {
  bool MergePending = false;
  std::int32_t NFilesMerged = 1;  // files in the current trial
  bool changed = false;           // FileChanged of the trial that was stored
  Trial stored;
  TimeMemory time;     // of the trial that was stored
  PlateMemory plates;  // as they were defined for it
};

/// The state of the program, one object made in main and passed by reference.
struct Workbench {
  explicit Workbench(Questions& answers) : questions(answers) {}
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;
  ~Workbench() = default;

  Questions& questions;
  /// Hears of every command and of what is done in the view; may be missing.
  ActionListener* listener = nullptr;
  std::function<void(ShellRequest)> onShellRequest;
  /// Who keeps what was done tells it; may be missing.
  std::function<StepsDone()> stepsDone;
  std::function<void(int channel)> onShowChannel;  // empty without a window
  DesktopServices desktop;
  Trial trial;
  ChooserState chooser;
  NativeRecords records;
  MergeStore merge;
  CommandReport report;

  std::int16_t FirstChanShown = 1;
  std::int16_t LastChanShown = 0;
  UserLevelKind UserLevel = UserLevelKind::Novice;
  bool CancelRequested = false;

  Preferences preferences;
  std::string DataDir;
  std::string StartDir;
  std::string ExeName = "Velmora2.exe";
  /// Where the trial was read from, told once by the load; empty when there is none. FileName may name a
  /// file chosen since.
  std::string LoadedFile;
  std::string OutputFileName;
  bool SaveQuietly = false;
  bool SaveRangeSet = false;

  double TimeStep = 0.0;  // seconds per sample, recomputed on entry by the commands that use it
  // What outlives a command, a struct a family.
  FilterMemory filters;
  SmoothingMemory smoothing;
  ScalingMemory scaling;
  BiasLevels bias;
  TimeMemory time;
  ThresholdMemory thresholds;
  EventMemory events;
  EmgMemory emg;
  ImpactMemory impact;
  GraphMemory graph;
  TextMemory texts;
  PlateMemory plates;
  SpectrumMemory spectrum;
  EnsembleMemory ensemble;
  ResultMemory results;
  NumberPatterns patterns;

  /// Runs a command by its id from inside another action, as a key of a view does. Set by the first command.
  void (*RunById)(Workbench&, std::string_view id) = nullptr;
  /// Id of a command to run as soon as the one that set it has ended.
  std::string_view NextCommand;

  /// What comes back when a person leaves the graph that it opened. It runs once.
  std::function<void()> AfterView;

  /// The graph that is open, if any. Last, since it looks at all the rest.
  std::unique_ptr<OpenView> view;
};

}  // namespace velmora
