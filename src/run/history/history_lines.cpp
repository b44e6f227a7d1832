#include "run/history/history_lines.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace velmora {
namespace {

std::string_view IdOf(const RecordedStep& step) {
  const auto* command = std::get_if<CommandStep>(&step.steps.front().what);
  return command != nullptr ? std::string_view(command->id) : std::string_view();
}

bool IsOneOf(std::string_view id, const auto& prefixes) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [id](std::string_view prefix) { return id.starts_with(prefix); });
}

// Whole channels, wherever the cursors stand. Every other command may go by them.
bool IgnoresRange(const RecordedStep& step) {
  constexpr std::array<std::string_view, 18> whole = {"math.",          "analysis.",
                                                      "edit.",          "time.",
                                                      "timebase.",      "smooth.butterworth",
                                                      "smooth.digital", "smooth.moving-average",
                                                      "smooth.rms",     "smooth.mav",
                                                      "smooth.median",  "bias.autozero",
                                                      "bias.drift",     "bias.both",
                                                      "bias.manual",    "bias.file",
                                                      "file.load",      "data."};
  return IdOf(step) != "math.path-length" && IsOneOf(IdOf(step), whole);
}

// They take what the last picker was left with.
bool UsesPicked(const RecordedStep& step) {
  constexpr std::array<std::string_view, 4> takers = {"smooth.polynomial", "smooth.spline", "bias.save",
                                                      "save.bsv"};
  return IsOneOf(IdOf(step), takers);
}

/// What the looks of one graph left, or a single look outside of any.
struct LookTraces {
  bool range = false;
  bool colours = false;
  bool picked = false;
};

LookTraces LeftBy(const std::vector<RecordedStep>& steps, std::size_t look) {
  const int view = steps[look].view;
  LookTraces left;
  for (std::size_t k = 0; k < steps.size(); ++k) {
    const RecordedStep& step = steps[k];
    if (step.deeds.empty() && (k == look || (view != 0 && step.view == view))) {
      left.range = left.range || step.movedRange;
      left.colours = left.colours || step.coloured;
      left.picked = left.picked || step.picked;
    }
  }
  return left;
}

// A graph that is opened starts with the whole trial in its range.
bool DependsOn(const RecordedStep& deed, const RecordedStep& look, const LookTraces& left, int lastView) {
  const bool rangeStands = left.range && lastView <= look.view;
  return (deed.needsView && deed.view == look.view) || (rangeStands && !IgnoresRange(deed)) || left.colours ||
         (left.picked && UsesPicked(deed));
}

bool AnyOfView(const std::vector<RecordedStep>& steps, const std::vector<bool>& needed, int view) {
  for (std::size_t k = 0; k < steps.size(); ++k) {
    if (needed[k] && steps[k].view == view) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<bool> NeededSteps(const std::vector<RecordedStep>& steps) {
  std::vector<bool> needed(steps.size());
  for (std::size_t k = 0; k < steps.size(); ++k) {
    const RecordedStep& step = steps[k];
    const LookTraces left = LeftBy(steps, k);
    const bool closes = step.closesView && AnyOfView(steps, needed, step.view);
    needed[k] = !step.deeds.empty();
    int lastView = step.view;
    for (std::size_t later = k + 1; later < steps.size() && !needed[k]; ++later) {
      lastView = std::max(lastView, steps[later].view);
      needed[k] = !steps[later].deeds.empty() && (closes || DependsOn(steps[later], step, left, lastView));
    }
  }
  return needed;
}

std::vector<HistoryLine> HistoryLines(const std::vector<RecordedStep>& steps, std::size_t done) {
  const std::vector<bool> needed = NeededSteps(steps);
  std::vector<HistoryLine> lines;
  const RecordedStep* before = nullptr;  // the look that the last line tells of
  for (std::size_t k = 0; k < steps.size(); ++k) {
    const RecordedStep& step = steps[k];
    const bool look = step.deeds.empty();
    if (!needed[k] || (look && step.graph.empty())) {
      continue;
    }
    const bool goesOn = look && before != nullptr && before->view == step.view;
    if (!goesOn) {
      lines.emplace_back();
    }
    lines.back() = {.words = look ? step.graph : WordsOf(step.deeds),
                    .inFull = look ? step.graph : WordsOf(step.deeds, Telling::InFull),
                    .last = k,
                    .undone = k >= done};
    before = look ? &step : nullptr;
  }
  return lines;
}

}  // namespace velmora
