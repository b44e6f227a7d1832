#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/action_listener.hpp"
#include "core/open_view.hpp"
#include "core/preferences.hpp"
#include "core/questions/picker.hpp"
#include "core/questions/questions.hpp"
#include "core/questions/result_table.hpp"
#include "core/shell_request.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// What the abscissa of the trial counts.
enum class TimeBase { Count, Percentage, Seconds, UserUnits, Frames, HhMmSs };

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

/// What came of a command beyond its effect on the trial: a recipe stops at a failure and lists
/// warnings in its closing table.
struct CommandReport {
  std::vector<std::string> failures;
  std::vector<std::string> warnings;
};

/// A trial set aside until the next file is joined to it.
struct MergeStore {
  bool MergePending = false;
  std::int32_t NFilesMerged = 1;  // files in the current trial
  bool changed = false;           // FileChanged of the trial that was stored
  Trial stored;
};

/// What outlives a graph view, or is passed on by one.
struct GraphMemory {
  double ViewDuration = 0.0;  // seconds, the length of the view window; 0 until one was chosen
  double PanSize = 0.0;       // seconds; 0: to the next window
  std::int32_t GraphScaleChoice = 0;
  bool GraphWindowMaximized = false;
  std::int32_t StatLo = 0;  // the samples a statistics form is to use
  std::int32_t StatHi = 0;
  bool ClipResetTime = false;
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
  std::function<void(int channel)> onShowChannel;  // empty without a window
  Trial trial;
  ChooserState chooser;
  NativeRecords records;
  MergeStore merge;
  CommandReport report;

  std::int16_t FirstChanShown = 1;
  std::int16_t LastChanShown = 0;
  UserLevelKind UserLevel = UserLevelKind::Novice;
  bool CancelRequested = false;
  TimeBase timeBase = TimeBase::Seconds;
  double SecondsRate = 0.0;      // Rate and Duration while the base was last seconds;
  double SecondsDuration = 0.0;  // 0 when that is not known of this trial
  bool TimeReversed = false;     // the check mark of the reversal

  Preferences preferences;
  std::string DataDir;
  std::string StartDir;
  std::string ExeName = "Velmora2.exe";
  std::string LoadedFile;  // where the trial was read from; FileName may name a file chosen since
  std::string OutputFileName;
  bool SaveQuietly = false;
  bool SaveRangeSet = false;

  double TimeStep = 0.0;  // seconds per sample, recomputed on entry by the commands that use it
  PerChannel<float> ScaleMemory{};
  ChannelFlags ZeroLag{};                   // of the last filter dialogue
  PerChannel<float> FilterCutoffs{};        // Hz, in force
  PerChannel<float> SecondCutoffs{};        // Hz, the upper edge of a band
  PerChannel<float> LastLowPassCutoffs{};   // Hz
  PerChannel<float> LastHighPassCutoffs{};  // Hz
  GraphMemory graph;
  PerChannel<double> ChanThreshold{};
  bool ThresholdsValid = false;
  std::int16_t WindowWidth = 3;    // samples; of moving windows and epochs
  bool WindowInSeconds = false;    // the width was entered in seconds
  PerChannel<float> BiasMemory{};  // levels, or slopes, of the last bias removal
  bool BiasLevelsKnown = false;    // a menu offers to save them
  std::string ResultText;
  std::vector<ResultTable> ResultTables;  // of the last analysis that made any

  std::string RatePattern = "0.00";
  std::string TimePattern = "0.000";  // durations too
  std::string ValuePattern = "0.0000";

  /// Id of a command to run as soon as the one that set it has ended.
  std::string_view NextCommand;

  /// The graph that is open, if any. Last, since it looks at all the rest.
  std::unique_ptr<OpenView> view;
};

}  // namespace velmora
