#include "formats/c3d/c3d_writer.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "core/trial/event_lines.hpp"
#include "core/trial/helpers.hpp"
#include "formats/bytes/byte_builder.hpp"
#include "formats/c3d/c3d_parameter_section.hpp"

namespace velmora {
namespace {

constexpr std::size_t kC3dBlock = 512;
constexpr std::int64_t kMostInAWord = 65535;

/// How the samples are told as 3-D frames, although there are no points.
struct C3dFrames {
  std::int64_t samples = 1;  // of a channel in one frame
  std::int64_t count = 0;
};

// A header counts frames, and the words of a frame, in 16 bits. One sample a frame where that is enough; else
// the fewest that divide the samples evenly; else one, and the true count stands in parameters alone.
C3dFrames C3dFramesOf(const Trial& trial) {
  const std::int64_t n = trial.NData;
  for (std::int64_t d = 1; d * trial.NChan <= kMostInAWord && d <= n; ++d) {
    if (n % d == 0 && n / d <= kMostInAWord) {
      return {d, n / d};
    }
  }
  return {1, n};
}

/// Words of a 32-bit count, low word first.
std::array<std::int16_t, 2> C3dWordsOf(std::int64_t count) {
  constexpr int kBits = 16;
  return {static_cast<std::int16_t>(static_cast<std::uint16_t>(count & kMostInAWord)),
          static_cast<std::int16_t>(static_cast<std::uint16_t>(count >> kBits))};
}

std::int16_t C3dWord(std::int64_t count) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(std::min(count, kMostInAWord)));
}

template <typename PerChannelText>
std::vector<std::string> C3dTextsOf(const Trial& trial, const PerChannelText& all) {
  std::vector<std::string> texts;
  for (int c = 1; c <= trial.NChan; ++c) {
    texts.push_back(Trim(all[c].Text()));
  }
  return texts;
}

struct WrittenEvent {
  float minutes = 0.0F;
  float seconds = 0.0F;
  std::string words;
};

std::vector<WrittenEvent> WrittenEventsOf(const Trial& trial) {
  constexpr double kMinute = 60.0;
  std::vector<WrittenEvent> events;
  for (const EventLine& event : EventsFromFirstSample(trial)) {
    const double minutes = std::trunc(event.time / kMinute);
    events.push_back({.minutes = static_cast<float>(minutes),
                      .seconds = static_cast<float>(event.time - kMinute * minutes),
                      .words = event.words});
  }
  return events;
}

void AddWrittenEvents(C3dParameterSection& section, const std::vector<WrittenEvent>& events) {
  std::vector<std::string> labels;
  std::vector<float> times;
  for (const WrittenEvent& event : events) {
    labels.push_back(event.words);
    times.insert(times.end(), {event.minutes, event.seconds});
  }
  section.StartGroup("EVENT");
  section.Add("USED", static_cast<std::int16_t>(events.size()));
  section.Add("LABELS", labels);
  section.Add("CONTEXTS", std::vector<std::string>(events.size()));
  section.Add("TIMES", times, {2, static_cast<int>(events.size())});
}

// Plates that came with the file and whose channels are what they were.
std::vector<FilePlate> WrittenPlatesOf(const Trial& trial) {
  std::vector<FilePlate> plates;
  if (!trial.ForcesReduced) {
    std::copy_if(trial.FilePlates.begin(), trial.FilePlates.end(), std::back_inserter(plates),
                 [](const FilePlate& plate) { return plate.record.has_value(); });
  }
  return plates;
}

void AddWrittenPlates(C3dParameterSection& section, const std::vector<FilePlate>& plates) {
  constexpr std::size_t kMatrix = 36;
  const auto count = static_cast<int>(plates.size());
  section.StartGroup("FORCE_PLATFORM");
  section.Add("USED", static_cast<std::int16_t>(count));
  if (plates.empty()) {
    return;
  }
  const int most = std::max_element(plates.begin(), plates.end(), [](const auto& a, const auto& b) {
                     return a.channels < b.channels;
                   })->channels;
  std::vector<std::int16_t> types;
  std::vector<std::int16_t> channels;
  std::vector<float> corners;
  std::vector<float> origins;
  std::vector<float> matrices;
  for (const FilePlate& plate : plates) {
    types.push_back(plate.record->type);
    for (int k = 1; k <= most; ++k) {
      channels.push_back(static_cast<std::int16_t>(k <= plate.channels ? plate.base + k : 0));
    }
    corners.insert(corners.end(), plate.record->corners.begin(), plate.record->corners.end());
    origins.insert(origins.end(), plate.record->origin.begin(), plate.record->origin.end());
    matrices.insert(matrices.end(), plate.record->matrix.begin(), plate.record->matrix.end());
    matrices.resize(types.size() * kMatrix);
  }
  section.Add("TYPE", types, {count});
  section.Add("CHANNEL", channels, {most, count});
  section.Add("CORNERS", corners, {3, 4, count});
  section.Add("ORIGIN", origins, {3, count});
  section.Add("CAL_MATRIX", matrices, {6, 6, count});
  section.Add("ZERO", std::vector<std::int16_t>{0, 0}, {2});
}

std::string C3dParameterBytes(const Trial& trial, const C3dFrames& frames, std::int16_t dataBlock) {
  const std::vector<std::string> labels = C3dTextsOf(trial, trial.ChanLabel);
  const std::vector<int> channels = {trial.NChan};
  const std::vector<FilePlate> plates = WrittenPlatesOf(trial);
  C3dParameterSection section;
  section.StartGroup("POINT");
  section.Add("USED", std::int16_t{0});
  section.Add("SCALE", -1.0F);
  section.Add("RATE", static_cast<float>(trial.Rate / static_cast<double>(frames.samples)));
  section.Add("DATA_START", dataBlock);
  section.Add("FRAMES", C3dWord(frames.count));
  if (frames.count > kMostInAWord) {
    section.Add("LONG_FRAMES", static_cast<float>(frames.count));
  }
  section.Add("LABELS", std::span<const std::string>());
  section.Add("UNITS", std::vector<std::string>{plates.empty() ? "mm" : plates.front().record->units});
  section.StartGroup("ANALOG");
  section.Add("USED", trial.NChan);
  section.Add("LABELS", labels);
  section.Add("DESCRIPTIONS", labels);
  section.Add("GEN_SCALE", 1.0F);
  section.Add("OFFSET", std::vector<std::int16_t>(labels.size()), channels);
  section.Add("SCALE", std::vector<float>(labels.size(), 1.0F), channels);
  section.Add("UNITS", C3dTextsOf(trial, trial.ChanUnits));
  section.Add("RATE", static_cast<float>(trial.Rate));
  AddWrittenPlates(section, plates);
  section.StartGroup("TRIAL");
  section.Add("ACTUAL_START_FIELD", C3dWordsOf(1), {2});
  section.Add("ACTUAL_END_FIELD", C3dWordsOf(frames.count), {2});
  section.StartGroup("MANUFACTURER");
  section.Add("SOFTWARE", std::vector<std::string>{"Velmora2"});
  if (const std::vector<WrittenEvent> events = WrittenEventsOf(trial); !events.empty()) {
    AddWrittenEvents(section, events);
  }
  return section.Bytes();
}

// Blocks before the samples, and the samples' own place: it stands among the parameters, whose size it does
// not change.
std::string C3dHeadBytes(const Trial& trial) {
  const C3dFrames frames = C3dFramesOf(trial);
  const std::size_t blocks = C3dParameterBytes(trial, frames, 0).size() / kC3dBlock;
  const auto dataBlock = static_cast<std::int16_t>(2 + blocks);
  constexpr std::size_t kScale = 12;
  ByteBuilder head;
  head.Add(std::uint8_t{2}).Add(std::uint8_t{0x50});
  head.Add(std::int16_t{0});  // points
  head.Add(C3dWord(trial.NChan * frames.samples));
  head.Add(std::int16_t{1}).Add(C3dWord(frames.count));
  head.Put(kScale, -1.0F);  // floats
  head.Add(dataBlock).Add(C3dWord(frames.samples));
  head.Add(static_cast<float>(trial.Rate / static_cast<double>(frames.samples)));
  head.FillTo(kC3dBlock);
  head.AddBytes(C3dParameterBytes(trial, frames, dataBlock));
  return head.Bytes();
}

// The matrix without its column of times, frame after frame.
void WriteC3dSamples(const Trial& trial, ProgressPanel& panel, OutputFile& file) {
  constexpr std::int32_t kSamplesAtOnce = 4096;
  std::vector<float> block;
  for (std::int32_t j = 1; j <= trial.NData;) {
    block.clear();
    for (const std::int32_t end = std::min(trial.NData, j + kSamplesAtOnce - 1); j <= end; ++j) {
      const float* frame = trial.matrix.Frame(j);
      block.insert(block.end(), frame + 1, frame + 1 + trial.NChan);
    }
    file.Write({reinterpret_cast<const char*>(block.data()), block.size() * sizeof(float)});
    panel.SetValue(j - 1);
  }
  const std::size_t bytes =
      static_cast<std::size_t>(trial.NData) * static_cast<std::size_t>(trial.NChan) * sizeof(float);
  file.Write(std::string((kC3dBlock - bytes % kC3dBlock) % kC3dBlock, '\0'));
}

void TellC3dDifferences(Workbench& workbench) {
  const Trial& trial = workbench.trial;
  if (!IsTimeBased(workbench)) {
    AddNotice(workbench, "The C3D file counts seconds at the rate of the trial; its abscissa is not kept.");
  } else if (trial.Data(1, 0) != 0.0F) {
    AddNotice(workbench, "The times of the C3D file start at 0 s, those of the trial at " +
                             PlainNumber(trial.Data(1, 0)) + " s.");
  }
  if (const auto rate = static_cast<float>(trial.Rate); static_cast<double>(rate) != trial.Rate) {
    AddNotice(workbench, "The rate in the C3D file is " +
                             FormatNumber(static_cast<double>(rate), "0.00000000") +
                             " Hz, the nearest that it can hold to " + PlainNumber(trial.Rate) + " Hz.");
  }
}

}  // namespace

void WriteC3d(Workbench& workbench, ProgressPanel& panel) {
  const Trial& trial = workbench.trial;
  if (!AskSaveName(workbench, {.title = "Save data as",
                               .defaultName = trial.TrialName + ".c3d",
                               .extension = ".c3d",
                               .filter = "C3D (.c3d)|*.c3d|All files (*.*)|*.*"})) {
    return;
  }
  OutputFile file(workbench.OutputFileName);
  file.Write(C3dHeadBytes(trial));
  WriteC3dSamples(trial, panel, file);
  CommitSave(workbench, file);
  TellC3dDifferences(workbench);
  DidSave(workbench);
  MarkChanged(workbench, false);
}

}  // namespace velmora
