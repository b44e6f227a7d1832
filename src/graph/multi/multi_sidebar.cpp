#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/abscissa.hpp"
#include "graph/multi/multi_view.hpp"

namespace velmora {
namespace {

constexpr const char* kTime = " 0.000 ";
constexpr const char* kCount = " 0 ";
constexpr const char* kValue = " 0.0000 ";

std::string Line(std::string text) {
  while (!text.empty() && text.back() == ' ') {
    text.pop_back();
  }
  return text;
}

std::string ChannelNumberText(int channel) {
  return FormatNumber(channel - 1, "00");
}

std::string CountLine(double count) {
  return Line("      n = " + FormatNumber(count, kCount));
}

}  // namespace

std::vector<std::string> MultiView::SidebarLines() const {
  std::vector<std::string> lines = EventLines();
  for (std::string& line : ReadOutLines()) {
    lines.push_back(std::move(line));
  }
  return lines;
}

std::vector<std::string> MultiView::ReadOutLines() const {
  std::vector<std::string> lines;
  const Trial& trial = workbench_.trial;
  lines.push_back(Line("Trial: " + trial.TrialTitle));
  if (Cursors() == 0) {
    if (trial.TrialIndex >= 0) {
      lines.push_back("Trial #:  " + std::to_string(trial.TrialIndex));
    }
    lines.push_back("Frequency:" + FormatNumber(trial.Rate, "  #0.00") + " Hz");
    lines.push_back("Duration:" + FormatNumber(trial.Duration, "  #0.000"));
    return lines;
  }
  AddReadOut(lines);
  return lines;
}

void MultiView::AddReadOut(std::vector<std::string>& lines) const {
  const std::vector<double> cursors = CommonCursors();
  const auto time = [this](double x) { return AbscissaText(workbench_, x, kTime); };
  if (cursors.size() == 1) {
    lines.push_back(Line("Cursor time: " + time(cursors[0])));
    lines.push_back(CountLine(SampleOf(1)));
    AddValues(lines, 1);
    return;
  }
  constexpr const char* kHeads[] = {"Cursor#1   Yellow:", "Cursor#2     Red:"};
  for (int cursor = 1; cursor <= 2; ++cursor) {
    lines.emplace_back(kHeads[cursor - 1]);
    lines.push_back(Line("Time: " + time(cursors[static_cast<std::size_t>(cursor - 1)])));
    lines.push_back(CountLine(SampleOf(cursor)));
    AddValues(lines, cursor);
  }
  const double between = std::abs(cursors[1] - cursors[0]);
  lines.emplace_back("Cursor duration:");
  lines.push_back(Line("Duration: " + time(between)));
  lines.push_back(CountLine(RoundHalfEven32(between * SamplesPerUnit(workbench_.trial))));
}

// With one cursor a channel's name stands above its value; with two there is room for its number alone.
void MultiView::AddValues(std::vector<std::string>& lines, int cursor) const {
  const Trial& trial = workbench_.trial;
  const std::int32_t sample = SampleOf(cursor);
  for (int c = 1; c <= trial.NChan; ++c) {
    if (graphOf_[c] == 0) {
      continue;
    }
    const std::string number = ChannelNumberText(c) + ":";
    const std::string value =
        FormatNumber(static_cast<double>(trial.Data(sample, c)), kValue) + Trim(trial.ChanUnits[c].Text());
    if (Cursors() == 1) {
      lines.push_back("Ch.#" + number + Trim(trial.ChanLabel[c].Text()));
      lines.push_back(Line(value));
    } else {
      lines.push_back(Line(number + value));
    }
  }
}

}  // namespace velmora
