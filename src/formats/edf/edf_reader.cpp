#include "formats/edf/edf_reader.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/text/numbers.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/edf/edf_annotations.hpp"
#include "formats/edf/edf_header.hpp"
#include "formats/edf/edf_samples.hpp"
#include "formats/recording/interleaved.hpp"

namespace velmora {
namespace {

constexpr std::int64_t kEdfPieceBytes = std::int64_t{1} << 20;

class EdfFile : public RecordingFile {
 public:
  explicit EdfFile(const std::string& path) : file_(path), header_(file_) {
    for (std::size_t k = 0; k < header_.signals.size(); ++k) {
      if (!header_.signals[k].isAnnotations && header_.signals[k].samplesInRecord > 0) {
        AddChannel(header_.signals[k]);
        signals_.push_back(k);
      }
    }
    Describe();
    const std::vector<double> times = TakeAnnotations();
    if (signals_.empty()) {
      throw FileError("the file holds no signals but " +
                      CountOf(static_cast<std::int64_t>(found_.events.size()), "annotation"));
    }
    if (header_.isInterrupted) {
      TakeGaps(times);
    }
  }

  std::int64_t ReadSamples(const SampleTarget& target) override {
    std::vector<EdfColumn> columns;
    std::int64_t fastest = 1;
    for (const int channel : target.channels) {
      const auto c = static_cast<std::size_t>(channel);
      const EdfSignal& signal = header_.signals[signals_[c]];
      columns.push_back({.offset = signal.offset,
                         .samples = signal.samplesInRecord,
                         .added = found_.channels[c].offset,
                         .gain = found_.channels[c].gain,
                         .lowest = signal.digitalMin,
                         .highest = signal.digitalMax});
      fastest = std::max(fastest, signal.samplesInRecord);
    }
    const std::int64_t records = std::min(ReadRecords(target, columns), header_.records);
    TellClipped(target, columns, records);
    const std::int64_t read = std::min(records * fastest, target.matrix.Samples());
    StoreTimes(1, read, target);
    return read;
  }

 private:
  void AddChannel(const EdfSignal& signal) {
    RecordedChannel channel{.label = signal.label,
                            .units = signal.units,
                            .rate = static_cast<double>(signal.samplesInRecord) / header_.recordSeconds,
                            .samples = header_.records * signal.samplesInRecord};
    const double physical = signal.physicalMax - signal.physicalMin;
    const double digital = signal.digitalMax - signal.digitalMin;
    const double gain = physical / digital;
    const double offset = signal.physicalMin / gain - signal.digitalMin;
    if (physical != 0 && digital != 0 && std::isfinite(gain) && std::isfinite(offset)) {
      channel.gain = gain;
      channel.offset = offset;
    } else {
      found_.remarks.push_back("The limits of " + signal.label + " say nothing: its values are counts.");
    }
    CheckRange(channel);
    found_.channels.push_back(std::move(channel));
  }

  // No count of the converter may become more than 32 bits hold.
  static void CheckRange(const RecordedChannel& channel) {
    constexpr double mostCounts = 8388608.0;
    const double most = (mostCounts + std::abs(channel.offset)) * std::abs(channel.gain);
    if (!(most <= static_cast<double>(std::numeric_limits<float>::max()))) {
      throw FileError("the values of " + channel.label + " are too large");
    }
  }

  // Events count from the first sample, which need not be at a whole second. Returns the times of the
  // records.
  std::vector<double> TakeAnnotations() {
    std::vector<double> times;
    if (header_.records < 1 || std::none_of(header_.signals.begin(), header_.signals.end(),
                                            [](const EdfSignal& signal) { return signal.isAnnotations; })) {
      return times;
    }
    std::string piece(PieceBytes(), '\0');
    for (std::int64_t done = 0; done < header_.records;) {
      const std::int64_t got = ReadPiece(done, piece);
      if (got == 0) {
        break;
      }
      for (std::int64_t r = 0; r < got; ++r) {
        times.push_back(
            AnnotationsOf(std::string_view(piece).substr(static_cast<std::size_t>(r * header_.recordBytes),
                                                         static_cast<std::size_t>(header_.recordBytes))));
      }
      done += got;
    }
    if (!times.empty() && std::isfinite(times.front()) && times.front() != 0) {
      for (RecordedEvent& event : found_.events) {
        event.time -= times.front();
      }
      found_.lines.push_back("The recording starts " + PlainNumber(times.front()) + " s behind its time");
    }
    return times;
  }

  // Those of one record; returns its time.
  double AnnotationsOf(std::string_view record) {
    double time = std::nan("");
    for (const EdfSignal& signal : header_.signals) {
      if (signal.isAnnotations) {
        const EdfAnnotations some = ReadAnnotations(
            record.substr(static_cast<std::size_t>(signal.offset),
                          static_cast<std::size_t>(signal.samplesInRecord * header_.SampleBytes())));
        found_.events.insert(found_.events.end(), some.events.begin(), some.events.end());
        time = std::isnan(time) ? some.recordTime : time;
      }
    }
    return time;
  }

  [[nodiscard]] std::size_t PieceBytes() const {
    const std::int64_t each = header_.recordBytes;
    return static_cast<std::size_t>(
        std::clamp<std::int64_t>(kEdfPieceBytes / each, 1, std::max<std::int64_t>(header_.records, 1)) *
        each);
  }

  // Returns the whole records that were read, from record `first` (from 0) on.
  std::int64_t ReadPiece(std::int64_t first, std::string& piece) const {
    const std::int64_t at = header_.dataAt + first * header_.recordBytes;
    return static_cast<std::int64_t>(file_.ReadAt(at, piece.data(), piece.size())) / header_.recordBytes;
  }

  void TakeGaps(const std::vector<double>& times) {
    constexpr double tolerance = 1e-6;
    int gaps = 0;
    for (std::size_t r = 1; r < times.size(); ++r) {
      const double gap = times[r] - times[r - 1] - header_.recordSeconds;
      if (std::abs(gap) > tolerance) {
        ++gaps;
        found_.events.push_back({static_cast<double>(r) * header_.recordSeconds,
                                 "gap of " + FormatNumber(gap, "0.000") + " s in the recording"});
      }
    }
    if (gaps > 0) {
      found_.remarks.push_back("The recording was interrupted " + CountOf(gaps, "time") +
                               "; its samples are joined, and the header lines tell where.");
    }
  }

  void Describe() {
    const auto add = [this](const char* what, const std::string& text) {
      if (!text.empty()) {
        found_.lines.push_back(what + text);
      }
    };
    add("Patient: ", header_.patient);
    add("Recording: ", header_.recording);
    add("Started: ", header_.date + (header_.time.empty() ? "" : ", ") + header_.time);
    found_.remarks.insert(found_.remarks.begin(), header_.remarks.begin(), header_.remarks.end());
  }

  // Returns the records that were read.
  std::int64_t ReadRecords(const SampleTarget& target, std::vector<EdfColumn>& columns) {
    std::string piece(PieceBytes(), '\0');
    std::int64_t done = 0;
    while (done < header_.records) {
      if (target.turn(static_cast<double>(done) / static_cast<double>(header_.records))) {
        break;
      }
      const std::int64_t got = ReadPiece(done, piece);
      if (got == 0) {
        break;
      }
      for (std::int64_t r = 0; r < got; ++r) {
        StoreEdfRecord(piece.data() + r * header_.recordBytes, header_.isBdf, columns, done + r,
                       target.matrix);
      }
      done += got;
    }
    return done;
  }

  void TellClipped(const SampleTarget& target, const std::vector<EdfColumn>& columns, std::int64_t records) {
    constexpr double worthTelling = 0.01;
    for (std::size_t k = 0; k < columns.size(); ++k) {
      const double part =
          static_cast<double>(columns[k].atLimit) / static_cast<double>(columns[k].samples * records);
      if (part > worthTelling) {
        found_.remarks.push_back(FormatNumber(100 * part, "0") + " % of " +
                                 found_.channels[static_cast<std::size_t>(target.channels[k])].label +
                                 " is at the limit of the converter.");
      }
    }
  }

  InputFile file_;
  EdfHeader header_;
  std::vector<std::size_t> signals_;  // by channel
};

}  // namespace

std::unique_ptr<RecordingFile> OpenEdf(const std::string& path) {
  return std::make_unique<EdfFile>(path);
}

}  // namespace velmora
