#include "core/trial/event_lines.hpp"

#include <algorithm>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"

namespace velmora {
namespace {

constexpr std::string_view kEvent = "Event ";
constexpr std::string_view kSeconds = " s ";

// Events are in seconds, which row 0 need not count.
bool CanPlaceEvents(const Trial& trial) {
  return trial.NData > 0 && trial.Rate > 0 && Trim(trial.ChanUnits[0].Text()) == "s";
}

// The last sample (from 1) that is not behind `time`; the first when all are.
std::int64_t SampleBefore(const Trial& trial, double time) {
  constexpr double rounding = 1e-6;  // of times in 32 bits
  std::int64_t below = 1;
  std::int64_t above = std::int64_t{trial.NData} + 1;
  while (above - below > 1) {
    const std::int64_t middle = (below + above) / 2;
    const double there = trial.Data(middle, 0);
    (there <= time + rounding * std::max(1.0, std::abs(there)) ? below : above) = middle;
  }
  return below;
}

// Nothing when its samples were cut off.
std::optional<double> FromFirstSample(const Trial& trial, double time) {
  const std::int64_t i = SampleBefore(trial, time);
  const double step = 1.0 / trial.Rate;
  const double behind = time - trial.Data(i, 0);
  const double moved = static_cast<double>(i - 1) * step - trial.Data(i, 0);
  const bool stays = std::abs(moved) < step / 2;
  const bool outside = behind < -step || behind > 1.5 * step;
  if (outside && (!stays || (i > 1 && i < trial.NData))) {
    return std::nullopt;
  }
  return stays ? time : time + moved;
}

}  // namespace

std::string EventLineText(const EventLine& event) {
  return std::string(kEvent) + FormatNumber(event.time, "0.000") + std::string(kSeconds) + event.words;
}

std::optional<EventLine> ReadEventLine(std::string_view line) {
  const std::size_t behind = line.find(kSeconds, kEvent.size());
  if (!line.starts_with(kEvent) || behind == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view time = line.substr(kEvent.size(), behind - kEvent.size());
  if (time.empty() || time.find_first_not_of("-0123456789.") != std::string_view::npos) {
    return std::nullopt;
  }
  return EventLine{.time = Val(time), .words = Trim(line.substr(behind + kSeconds.size()))};
}

std::vector<EventLine> EventsFromFirstSample(const Trial& trial) {
  std::vector<EventLine> events;
  for (int k = 1; k <= trial.HeaderLineCount && CanPlaceEvents(trial); ++k) {
    if (std::optional<EventLine> event = ReadEventLine(trial.HeaderLines[k])) {
      if (const std::optional<double> time = FromFirstSample(trial, event->time)) {
        event->time = *time;
        events.push_back(std::move(*event));
      }
    }
  }
  return events;
}

void RetimeEventLines(Trial& trial, const std::function<double(double)>& timeOf) {
  if (!CanPlaceEvents(trial)) {
    return;
  }
  const std::vector<EventLine> events = EventsFromFirstSample(trial);
  std::vector<std::string> lines;
  auto next = events.begin();
  for (int k = 1; k <= trial.HeaderLineCount; ++k) {
    if (!ReadEventLine(trial.HeaderLines[k])) {
      lines.push_back(trial.HeaderLines[k]);
      continue;
    }
    for (; next != events.end(); ++next) {  // all of them where the first stood
      lines.push_back(EventLineText({.time = timeOf(next->time), .words = next->words}));
    }
  }
  trial.HeaderLines.fill("");
  std::copy(lines.begin(), lines.end(), trial.HeaderLines.begin() + 1);
  trial.HeaderLineCount = static_cast<std::int32_t>(lines.size());
}

}  // namespace velmora
