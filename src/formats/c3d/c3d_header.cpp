#include "formats/c3d/c3d_header.hpp"

#include <cmath>

#include "core/text/numbers.hpp"
#include "formats/c3d/c3d_layout.hpp"
#include "formats/recording/usable_rate.hpp"

namespace velmora {
namespace {

std::int64_t FindC3dHeader(const InputFile& file) {
  const std::string head = ReadBytes(file, 0, c3d::kMostLeadingZeros + 2);
  const std::size_t at = head.find_first_not_of('\0');
  if (at > c3d::kMostLeadingZeros || at + 1 >= head.size() ||
      static_cast<unsigned char>(head[at + 1]) != c3d::kMagic || static_cast<unsigned char>(head[at]) > 127) {
    throw FileError("this is no C3D file");
  }
  return static_cast<std::int64_t>(at);
}

// From the header to the data: parameters end where these start, whatever the count of their blocks says.
std::string ReadC3dHead(const InputFile& file, std::int64_t start) {
  constexpr std::int64_t most = std::int64_t{0xFFFF} * c3d::kBlock;
  std::string bytes = ReadBytes(file, start, most);
  if (bytes.size() < c3d::kBlock) {
    throw FileError("the file ends inside its header");
  }
  return bytes;
}

std::size_t ParametersAt(const std::string& bytes) {
  return (static_cast<std::size_t>(static_cast<unsigned char>(bytes[c3d::kParameterBlock])) - 1) *
         c3d::kBlock;
}

ByteOrder OrderOfProcessor(const std::string& bytes) {
  const std::size_t at = ParametersAt(bytes) + 3;
  switch (at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : c3d::kIntel) {
    case c3d::kDec:
    case 2:
      return ByteOrder::Vax;
    case c3d::kMips:
    case 3:
      return ByteOrder::Big;
    default:
      return ByteOrder::Little;
  }
}

std::string_view SectionOf(const std::string& bytes, ByteOrder order) {
  const std::size_t at = std::min(ParametersAt(bytes), bytes.size());
  const std::size_t dataAt =
      (ByteReader(bytes, order).At<std::uint16_t>(c3d::kDataBlock) - std::size_t{1}) * c3d::kBlock;
  const std::size_t end = dataAt > at && dataAt < bytes.size() ? dataAt : bytes.size();
  return std::string_view(bytes).substr(at, end - at);
}

// Two words, low word first; 0 when there is no such parameter.
std::int64_t LongCount(const C3dParameters& parameters, std::string_view group, std::string_view name) {
  constexpr double word = 65536.0;
  const std::vector<double> words = parameters.Numbers(group, name, true);
  return words.size() < 2 ? 0 : static_cast<std::int64_t>(words[0] + word * words[1]);
}

}  // namespace

C3dHead::C3dHead(const InputFile& file)
    : start(FindC3dHeader(file)),
      bytes(ReadC3dHead(file, start)),
      order(OrderOfProcessor(bytes)),
      parameters(SectionOf(bytes, order), order) {
  const ByteReader header(bytes, order);
  points = header.At<std::uint16_t>(c3d::kPoints);
  const auto scale = header.At<float>(c3d::kScale);
  floats = scale < 0;
  pointScale = parameters.Number("POINT", "SCALE", scale);
  std::int64_t block = header.At<std::uint16_t>(c3d::kDataBlock);
  if (block < 2) {
    block = parameters.Count("POINT", "DATA_START", 0);
  }
  if (block < 2) {
    throw FileError("the header does not say where the data start");
  }
  dataAt = start + (block - 1) * static_cast<std::int64_t>(c3d::kBlock);
  if (parameters.Damaged()) {
    remarks.emplace_back("The parameters of the file are damaged: what stands behind the damage is unknown.");
  }
  TakeFrames(header);
  TakeChannels(header, file.Size());
  TakeRates(header);
}

void C3dHead::TakeFrames(const ByteReader& header) {
  const std::int64_t last = header.At<std::uint16_t>(c3d::kLastFrame);
  firstFrame = header.At<std::uint16_t>(c3d::kFirstFrame);
  frames = last - firstFrame + 1;
  const std::int64_t actualStart = LongCount(parameters, "TRIAL", "ACTUAL_START_FIELD");
  const std::int64_t actualEnd = LongCount(parameters, "TRIAL", "ACTUAL_END_FIELD");
  if (actualEnd > 0 && actualEnd >= actualStart) {
    firstFrame = actualStart;
    frames = actualEnd - actualStart + 1;
  } else if (last == c3d::kMostFrames) {
    frames = std::max(
        {frames, parameters.Count("POINT", "FRAMES", 0), parameters.Count("POINT", "LONG_FRAMES", 0)});
  }
  if (frames < 1) {
    throw FileError("the header counts no frames");
  }
}

void C3dHead::TakeChannels(const ByteReader& header, std::int64_t fileBytes) {
  const std::int64_t words = header.At<std::uint16_t>(c3d::kAnalogInFrame);
  samplesPerFrame = std::max<std::int64_t>(header.At<std::uint16_t>(c3d::kSamplesInFrame), 1);
  const std::int64_t used = parameters.Count("ANALOG", "USED", words / samplesPerFrame);
  const std::int64_t wordBytes = floats ? 4 : 2;
  const std::int64_t frameBytes = (points * 4 + used * samplesPerFrame) * wordBytes;
  // One maker counts channels where the count of all analog values belongs.
  const bool countsChannels =
      words == used && samplesPerFrame > 1 && frameBytes > 0 && (fileBytes - dataAt) / frameBytes >= frames;
  channels = countsChannels ? used : words / samplesPerFrame;
  if (channels != used) {
    remarks.push_back("The header counts " + CountOf(channels, "analog channel") + ", the parameters " +
                      std::to_string(used) + "; the header was followed.");
  }
}

void C3dHead::TakeRates(const ByteReader& header) {
  const double inHeader = UsableRate(header.At<float>(c3d::kFrameRate));
  frameRate = UsableRate(parameters.Number("POINT", "RATE", 0));
  if (frameRate == 0) {
    frameRate = inHeader;
  } else if (inHeader > 0 && inHeader != frameRate) {
    lines.push_back("Frame rate: " + PlainNumber(static_cast<float>(frameRate)) + " Hz by the parameters, " +
                    PlainNumber(static_cast<float>(inHeader)) + " Hz by the header");
  }
  analogRate = UsableRate(parameters.Number("ANALOG", "RATE", 0));
  if (analogRate == 0) {
    analogRate = frameRate * static_cast<double>(samplesPerFrame);
  }
}

namespace {

std::vector<RecordedEvent> EventsOfGroup(const C3dHead& head, std::string_view group) {
  const C3dParameters& parameters = head.parameters;
  const std::vector<double> times = parameters.LongNumbers(group, "TIMES");
  const std::vector<std::string> labels = parameters.LongTexts(group, "LABELS");
  const std::vector<std::string> contexts = parameters.LongTexts(group, "CONTEXTS");
  const auto used =
      static_cast<std::size_t>(parameters.Count(group, "USED", static_cast<std::int64_t>(times.size() / 2)));
  std::vector<RecordedEvent> events;
  for (std::size_t k = 0; k < std::min(used, times.size() / 2); ++k) {
    std::string words = k < labels.size() ? labels[k] : "";
    if (k < contexts.size() && !contexts[k].empty()) {
      words += (words.empty() ? "" : " ") + contexts[k];
    }
    constexpr double minute = 60.0;
    events.push_back({minute * times[2 * k] + times[2 * k + 1] - head.StartTime(), words});
  }
  return events;
}

std::vector<RecordedEvent> EventsOfHeader(const C3dHead& head) {
  const ByteReader header(head.bytes, head.order);
  const std::size_t width = header.At<std::uint16_t>(c3d::kLabelKey) == c3d::kLongLabels ? 4 : 2;
  const std::size_t count = header.At<std::uint16_t>(c3d::kEvents);
  std::vector<RecordedEvent> events;
  for (std::size_t k = 0; k < count && count <= c3d::kMostEvents; ++k) {
    events.push_back({header.At<float>(c3d::kEventTimes + 4 * k) - head.StartTime(),
                      header.TextAt(c3d::kEventLabels + width * k, width)});
  }
  return events;
}

}  // namespace

std::vector<RecordedEvent> C3dEvents(const C3dHead& head) {
  for (const char* group : {"EVENT", "EVENTS"}) {
    if (std::vector<RecordedEvent> events = EventsOfGroup(head, group); !events.empty()) {
      return events;
    }
  }
  return EventsOfHeader(head);
}

}  // namespace velmora
