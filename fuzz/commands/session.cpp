#include "commands/session.hpp"

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "app/command_table.hpp"
#include "commands/breach.hpp"
#include "commands/invariants.hpp"
#include "commands/small_trials.hpp"
#include "commands/undo.hpp"
#include "core/trial/helpers.hpp"
#include "graph/multi/multi_view.hpp"
#include "graph/threshold_lines.hpp"

namespace velmora::fuzz {
namespace {

using Family = std::vector<const Command*>;

// They leave the process or its directory, delete what is there, or tell how something is done.
bool IsLeftAlone(std::string_view id) {
  static constexpr std::array<std::string_view, 11> kAlone = {"file.open-directory",
                                                              "file.make-subdirectory",
                                                              "file.remove-directory",
                                                              "file.delete",
                                                              "file.explore",
                                                              "file.exit",
                                                              "file.close",
                                                              "view.print",
                                                              "threshold.help",
                                                              "table-stats.",
                                                              "help."};
  return std::any_of(kAlone.begin(), kAlone.end(),
                     [id](std::string_view one) { return id.starts_with(one); });
}

/// Commands by the front of their id, so that a family of many does not drown the others.
std::vector<Family> Families(bool inView) {
  std::map<std::string_view, Family> families;
  for (const Command& command : AllCommands()) {
    if (!IsLeftAlone(command.id) && (command.needs == Needs::View) == inView) {
      families[command.id.substr(0, command.id.find('.'))].push_back(&command);
    }
  }
  std::vector<Family> all;
  for (auto& [name, family] : families) {
    all.push_back(std::move(family));
  }
  return all;
}

/// What a step may cost in time and memory, whatever was answered.
class Costs {
 public:
  explicit Costs(std::string step) : step_(std::move(step)) {}
  Costs(const Costs&) = delete;
  Costs& operator=(const Costs&) = delete;
  ~Costs() {
    constexpr std::clock_t mostSeconds = 8;
    constexpr long mostKilobytes = 1'500'000;
    if (std::clock() - begin_ > mostSeconds * CLOCKS_PER_SEC) {
      Breach(step_ + " takes too long");
    }
    rusage usage{};
    if (getrusage(RUSAGE_SELF, &usage) == 0 && usage.ru_maxrss > mostKilobytes) {
      Breach(step_ + " takes too much memory");
    }
  }

 private:
  std::string step_;
  std::clock_t begin_ = std::clock();
};

}  // namespace

Session::Session(Choices& choices) : choices_(choices) {
  history_.Attach(workbench_);
  const auto picture = [](const auto& /*order*/) { return std::string("a picture"); };
  workbench_.desktop.draw = picture;
  workbench_.desktop.drawDocument = picture;
  int number = 0;
  for (const char* name : {"a", "b", "c"}) {
    const SmallTrial& trial = number++ == 1 ? SmallTrials().front() : choices_.Of(SmallTrials());
    place_.Write(name + trial.extension, trial.bytes);
  }
}

void Session::Run() {
  RunSome(*FindCommand("file.load"));
  while (choices_.Left() && !IsTooLarge()) {
    Step();
    WantWhole(workbench_);
  }
  CheckUndo();
}

void Session::Step() {
  const std::size_t what = choices_.Below(32);
  if (what == 31) {
    RunSome(*FindCommand("file.load"));
  } else if (what >= 28) {
    CheckUndo();
  } else if (what >= 14 && workbench_.view != nullptr) {
    Act("a gesture", [this] { Gesture(); });
  } else {
    RunSome(SomeCommand());
  }
}

const Command& Session::SomeCommand() {
  static const std::vector<Family> outside = Families(false);
  static const std::vector<Family> inView = Families(true);
  const bool view = workbench_.view != nullptr && !choices_.OneIn(3);
  return *choices_.Of(choices_.Of(view ? inView : outside));
}

void Session::RunSome(const Command& command) {
  const bool merges = workbench_.merge.MergePending;
  constexpr double longSeconds = 100.0;  // many rates that can be entered would fill the memory
  if (command.id == "time.change-rate" && workbench_.trial.Duration > longSeconds) {
    return;
  }
  const bool loads = command.id == "file.load";
  if (loads) {
    LeaveOldTrial();
    if (workbench_.view != nullptr) {
      return;  // it was to stay
    }
    workbench_.trial.FileName = answers_.AnyFile("");
  }
  Trail("do: " + std::string(command.id) + (loads ? " " + workbench_.trial.FileName : ""));
  const Label abscissa = workbench_.trial.ChanLabel[0];
  Act(std::string(command.id), [&] { RunCommand(workbench_, command); });
  if (command.id == "smooth.polynomial" || command.id == "smooth.spline") {
    tellsAll_ = false;  // they go by what the picker was left with, which steps that failed change, too
  }
  if (command.id == "edit.recall-labels" && workbench_.trial.ChanLabel[0] != abscissa) {
    repeatable_ = false;  // no recipe names the abscissa alone
  }
  if (loads && !merges && DidAnything(workbench_.report.deeds)) {
    input_ = workbench_.LoadedFile;
    tellsAll_ = true;
    repeatable_ = !input_.ends_with(".ftf");  // what it is asked depends on the trial before
  }
}

// No history knows of a graph that stays open for the next trial, and no recipe what the picker was left
// with.
void Session::LeaveOldTrial() {
  if (workbench_.view != nullptr) {
    RunSome(*FindCommand("view.exit"));
  }
  workbench_.chooser = {};
}

template <typename Action>
void Session::Act(const std::string& name, const Action& action) {
  const Costs costs(name);
  answers_.BeginStep(workbench_.trial);
  workbench_.report = {};
  const TrialState before(workbench_.trial);
  action();
  if (!workbench_.report.failures.empty() && !(before == TrialState(workbench_.trial))) {
    repeatable_ = false;  // what was written before the fault stays
  }
  if (workbench_.trial.Rate == 0.0) {
    repeatable_ = false;  // a graph that is looked at gives it the rate of the trial before
  }
  Trail("  did: " + WordsOf(workbench_.report.deeds));
}

double Session::SomePlace() {
  const Trial& trial = workbench_.trial;
  if (choices_.OneIn(8)) {
    return choices_.Of(std::array{0.0, -1.0, 1e30, 1e-9, 1.0, 50.0});
  }
  const std::int64_t samples = trial.NData;
  return samples < 1
             ? 0.0
             : trial.Data(1 + static_cast<std::int64_t>(choices_.Below(256)) * (samples - 1) / 255, 0);
}

void Session::PressSomeKey(OpenView& view) {
  static constexpr std::array kKeys = {
      "0",    "1",    "2",     "3",    "4",   "5",      "6",        "7",      "8",      "9", "A",  "B",  "C",
      "D",    "E",    "F",     "G",    "H",   "I",      "J",        "K",      "L",      "M", "N",  "O",  "P",
      "Q",    "R",    "S",     "T",    "U",   "V",      "W",        "X",      "Y",      "Z", "F1", "F2", "F3",
      "F4",   "F5",   "F6",    "F7",   "F8",  "F9",     "F10",      "F11",    "F12",    "2", "2",  "2",  "Up",
      "Down", "Left", "Right", "Home", "End", "PageUp", "PageDown", "Insert", "Delete", "+", "-"};
  const KeyPress key{.name = choices_.Of(kKeys), .shift = choices_.OneIn(8), .ctrl = choices_.OneIn(6)};
  Trail("key: " + std::string(key.shift ? "shift+" : "") + (key.ctrl ? "ctrl+" : "") + key.name);
  view.PressKey(key);
}

// Only what is there can be dragged.
void Session::DragSomething(OpenView& view, int graph) {
  const auto* time = FindTimeView(workbench_);
  const bool threshold = graph > 0 && FindMultiView(workbench_) != nullptr &&
                         ThresholdLineOf(OpenGraphView(workbench_).GraphAt(graph)) != nullptr;
  if (threshold && choices_.OneIn(3)) {
    Trail("threshold of " + std::to_string(graph));
    view.MoveThreshold(graph, choices_.Of(std::array{0.0, 0.5, 50.0, -1.0, 1e30}));
  } else if (time != nullptr && time->Cursors() > 0) {
    const int cursor = choices_.From(1, time->Cursors());
    const double x = SomePlace();
    Trail("cursor " + std::to_string(cursor) + " to " + std::to_string(x));
    view.MoveCursor(cursor, x);
  }
}

// One that shows something.
int Session::SomeGraph() {
  const auto* multi = FindMultiView(workbench_);
  const std::vector<int> shown = multi != nullptr ? multi->ShownGraphs() : std::vector{1};
  return shown.empty() ? 0 : choices_.Of(shown);
}

void Session::Gesture() {
  OpenView& view = *workbench_.view;
  const int graph = SomeGraph();
  switch (choices_.Below(8)) {
    case 0:
    case 1:
    case 2:
      return PressSomeKey(view);
    case 3:
    case 4:
    case 5:
      return DragSomething(view, graph);
    case 6:
      if (graph == 0) {
        return;
      }
      Trail("click on " + std::to_string(graph));
      return view.Click(graph, choices_.Of(std::array{Clicked::Once, Clicked::Twice, Clicked::Right}));
    default:
      return RunSome(*FindCommand("view.exit"));
  }
}

void Session::CheckUndo() {
  static const bool repeats = std::getenv("FUZZ_REPEAT") != nullptr;
  // Steps that took long take as long again: a fit of a thousandth order, as the sanitizers run it.
  const bool slow = std::clock() - begin_ > CLOCKS_PER_SEC;
  if (slow || !repeatable_ || history_.Place() < 0) {
    return;
  }
  const Costs costs("going through the history");
  answers_.BeginStep(workbench_.trial);
  if (choices_.Left() && !choices_.OneIn(4)) {
    WantWayBack(history_, workbench_, place_, choices_.Below(history_.Lines().size()));
  } else if (repeats && tellsAll_) {
    WantSameByRecipe(history_, workbench_, place_, input_);
  }
}

// Long trials are for benchmarks.
bool Session::IsTooLarge() const {
  constexpr std::int64_t most = 20'000;
  return workbench_.trial.NData * std::int64_t{workbench_.trial.NChan} > most;
}

}  // namespace velmora::fuzz
