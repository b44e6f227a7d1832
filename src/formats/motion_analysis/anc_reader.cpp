#include "formats/motion_analysis/anc_reader.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/text/numbers.hpp"
#include "core/text/text.hpp"
#include "formats/delimited_text/scan/core_scan.hpp"
#include "formats/delimited_text/scan/full_lines.hpp"
#include "formats/delimited_text/scan/number_scan.hpp"
#include "formats/line_blocks.hpp"
#include "formats/motion_analysis/anc_header.hpp"
#include "formats/motion_analysis/motion_analysis_scale.hpp"
#include "formats/recording/interleaved.hpp"
#include "formats/recording/scale_samples.hpp"

namespace velmora {
namespace {

// Its text and its samples stay in the second-level cache until they are volts.
constexpr std::size_t kAncBlock = std::size_t{2} << 20;
constexpr int kMostAncLines = 50;

// The whole number in front of `at`, which moves behind it; mostly there is nothing else in a field.
double TakeWhole(const char*& at, const char* end) {
  constexpr std::ptrdiff_t mostDigits = 9;  // that cannot overflow
  const bool negative = at < end && *at == '-';
  at += negative ? 1 : 0;
  const char* const last = end - at > mostDigits ? at + mostDigits : end;
  std::int32_t digits = 0;
  while (at < last && *at >= '0' && *at <= '9') {
    digits = 10 * digits + (*at++ - '0');
  }
  return negative ? -digits : digits;
}

class AncFile : public RecordingFile {
 public:
  explicit AncFile(const std::string& path) : source_(path) {
    AncHeader header;
    std::int64_t rows = 0;
    {
      LineBlocks blocks(source_, kAncBlock);
      std::string line;
      while (headerLines_ < kMostAncLines && blocks.ReadTextLine(line) && header.Take(line)) {
        ++headerLines_;
      }
      rows = (headerLines_ < kMostAncLines && !line.empty() ? 1 : 0) + CountRows(blocks);
    }
    Check(header);
    Describe(header, rows);
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    source_.Rewind();
    LineBlocks blocks(source_, kAncBlock);
    blocks.SkipLines(headerLines_);
    const std::int64_t wanted = target.matrix.Samples();
    std::int64_t done = 0;
    bool goesOn = true;
    while (goesOn && done < wanted && !target.turn(static_cast<double>(done) / static_cast<double>(wanted))) {
      const std::string_view lines = blocks.Lines();
      Rows rows = ReadTogether(lines, target, done);
      if (rows.count == 0) {
        rows = ReadOneByOne(lines, target, done);
      }
      StoreTimes(done + 1, rows.count, target);
      done += rows.count;
      goesOn = rows.goesOn;
      blocks.Consume(rows.bytes);
    }
    return done;
  }

 private:
  /// What was read of a block of lines.
  struct Rows {
    std::int64_t count = 0;
    std::size_t bytes = 0;
    bool goesOn = false;
  };

  static std::int64_t CountRows(LineBlocks& blocks) {
    std::int64_t rows = 0;
    for (std::string_view lines = blocks.Lines(); !lines.empty(); lines = blocks.Lines()) {
      const std::size_t bytes = lines.size();
      while (!lines.empty()) {
        const FullLines full = FullLinesAhead(lines);
        rows += full.lines;
        lines.remove_prefix(full.bytes);
        if (full.lines == 0) {
          rows += IsBlankLine(TakeLine(lines)) ? 0 : 1;
        }
      }
      blocks.Consume(bytes);
    }
    return rows;
  }

  static void Check(const AncHeader& header) {
    if (header.labels.empty()) {
      throw FileError("its header has no line of names");
    }
    if (header.generation != 2) {
      throw FileError("generation " + PlainNumber(header.generation) +
                      " of the format is not known; export the trial as C3D");
    }
  }

  void Describe(AncHeader& header, std::int64_t rows) {
    constexpr double kExactBits = 24;  // counts that 32-bit floats hold exactly
    scans_ = header.bits <= kExactBits && header.labels.size() < static_cast<std::size_t>(kMostColumns);
    double rate = header.preciseRate;
    if (!(rate > 0) || !std::isfinite(rate)) {
      rate = header.rates.empty() ? 0.0 : std::max(header.rates.front(), 0.0);
    }
    const bool bipolar = EqualNoCase(header.polarity, "Bipolar");
    if (header.channels != static_cast<double>(header.labels.size())) {
      found_.remarks.push_back("The header counts " + PlainNumber(header.channels) + " channels and names " +
                               std::to_string(header.labels.size()) + ".");
    }
    if (!bipolar || header.ranges.empty()) {
      found_.remarks.push_back(std::string("The values are counts, since the ") +
                               (bipolar ? "file tells no ranges." : "converter was not bipolar."));
    }
    for (std::size_t c = 0; c < header.labels.size(); ++c) {
      RecordedChannel channel{.label = header.labels[c], .rate = rate, .samples = rows};
      ScaleToVolts(channel, bipolar && c < header.ranges.size() ? header.ranges[c] : 0.0, header.bits);
      TellOwnRate(found_, channel, rate, c < header.rates.size() ? header.rates[c] : 0.0);
      found_.channels.push_back(std::move(channel));
    }
    found_.title = header.trialName;
    if (!header.board.empty()) {
      found_.lines.push_back("Board: " + header.board);
    }
    found_.lines.push_back(ScaleLine(header.bits));
    constexpr double slack = 1e-6;  // durations are cut to that
    const double promised = std::floor(header.duration * rate + 1 + slack);
    found_.promised = promised >= 1 && promised < INT32_MAX ? static_cast<std::int64_t>(promised) : 0;
  }

  // All rows of a block by the scan of the text parser, then from counts to volts. None where a row is not
  // plain numbers between tabs, as many as the header names: only the way row by row knows where the trial
  // ends then.
  [[nodiscard]] Rows ReadTogether(std::string_view lines, const SampleTarget& target,
                                  std::int64_t done) const {
    const bool onlyTabs =
        lines.find(',') == std::string_view::npos && lines.find(' ') == std::string_view::npos;
    if (!scans_ || !onlyTabs || lines.empty()) {
      return {};
    }
    ScanPlan plan;
    plan.columns = static_cast<int>(found_.channels.size()) + 1;
    plan.stride = target.matrix.Stride();
    plan.slot.fill(ScanPlan::kNoSlot);
    plan.slot[0] = 0;  // written over later, but a row with all its columns is copied in one piece
    std::uint8_t next = 1;
    for (const int c : target.channels) {
      plan.slot[static_cast<std::size_t>(c) + 1] = next++;
    }
    ScanFaults faults;
    const ScanProgress read =
        ScanOnCores(lines, plan, {target.matrix.Frame(done + 1), target.matrix.Samples() - done}, 1, faults);
    const bool plain = faults.notNumbers.count + faults.emptyFields.count + faults.shortLines.count +
                           faults.longLines.count ==
                       0;
    if (!plain) {
      return {};
    }
    ToVolts(target, done + 1, read.rows);
    return {.count = read.rows, .bytes = read.bytes, .goesOn = true};
  }

  void ToVolts(const SampleTarget& target, std::int64_t first, std::int64_t count) const {
    constexpr std::int64_t kFramesAtOnce = 64;  // frames that stay in the first-level cache
    std::array<double, kMaxChannels> offset{};
    std::array<double, kMaxChannels> gain{};
    for (std::size_t k = 0; k < target.channels.size(); ++k) {
      const RecordedChannel& channel = found_.channels[static_cast<std::size_t>(target.channels[k])];
      offset.at(k) = channel.offset;
      gain.at(k) = channel.gain;
    }
    const std::int64_t stride = target.matrix.Stride();
    std::array<float, (kMaxChannels + 1) * kFramesAtOnce> counts;  // NOLINT: filled before it is read
    for (std::int64_t done = 0; done < count; done += kFramesAtOnce) {
      const std::int64_t frames = std::min(kFramesAtOnce, count - done);
      float* const out = target.matrix.Frame(first + done);
      std::copy_n(out, frames * stride, counts.data());
      ScaleFrames(FramesToScale<float>{.words = reinterpret_cast<const char*>(counts.data() + 1),
                                       .wordStride = stride * static_cast<std::int64_t>(sizeof(float)),
                                       .frames = frames,
                                       .channels = static_cast<int>(target.channels.size()),
                                       .offset = offset.data(),
                                       .gain = gain.data(),
                                       .out = out + 1,
                                       .outStride = stride});
    }
  }

  [[nodiscard]] Rows ReadOneByOne(std::string_view lines, const SampleTarget& target,
                                  std::int64_t done) const {
    Rows rows{.goesOn = !lines.empty()};
    const std::size_t before = lines.size();
    while (rows.goesOn && done + rows.count < target.matrix.Samples() && !lines.empty()) {
      const std::string_view line = TakeLine(lines);
      if (!IsBlankLine(line)) {
        rows.goesOn = StoreRow(line, target, target.matrix.Frame(done + rows.count + 1) + 1);
        rows.count += rows.goesOn ? 1 : 0;
      }
    }
    rows.bytes = before - lines.size();
    return rows;
  }

  // One row behind its time. Returns false, with the row half stored, when a channel is missing.
  [[nodiscard]] bool StoreRow(std::string_view line, const SampleTarget& target, float* out) const {
    const char* at = line.data();
    const char* const end = at + line.size();
    std::size_t wanted = 0;  // of the channels taken
    for (std::size_t c = 0; c < found_.channels.size(); ++c) {
      at = std::find(at, end, '\t');  // behind the time, or a field that was passed over
      if (at == end) {
        return false;
      }
      const char* const field = ++at;
      if (wanted == target.channels.size() || static_cast<std::size_t>(target.channels[wanted]) != c) {
        continue;
      }
      double count = TakeWhole(at, end);
      if (at == field || (at < end && *at != '\t')) {
        at = std::find(field, end, '\t');
        float value = 0.0F;
        if (!ReadNumber({field, static_cast<std::size_t>(at - field)}, false, value)) {
          return false;
        }
        count = value;
      }
      const RecordedChannel& channel = found_.channels[c];
      out[wanted++] = static_cast<float>((count + channel.offset) * channel.gain);
    }
    return true;
  }

  TextSource source_;
  std::int64_t headerLines_ = 0;
  bool scans_ = false;  // the scan of the text parser gives the same numbers
};

}  // namespace

std::unique_ptr<RecordingFile> OpenAnc(const std::string& path) {
  return std::make_unique<AncFile>(path);
}

}  // namespace velmora
