#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/command_memory.hpp"
#include "core/trial/trial.hpp"

namespace velmora {

/// A channel as a file describes it. Its values are (count + offset) * gain.
struct RecordedChannel {
  std::string label{};
  std::string units{};
  double rate = 0.0;         // Hz; 0: the file does not say
  std::int64_t samples = 0;  // that the file really holds
  double gain = 1.0;
  double offset = 0.0;
  std::int16_t number = -1;  // of the hardware; -1: none is told
};

struct RecordedEvent {
  double time = 0.0;  // seconds from the first sample
  std::string words;
};

/// A force plate that a file describes.
struct RecordedPlate {
  std::string words{};          // for the header lines
  std::vector<int> channels{};  // from 0, in the order that the reduction takes
  ForcePlate definition{};
  std::optional<PlateMatrix>
      loads{};  // what its channels are; none: loads, or volts of a plate of eight channels
  std::optional<C3dPlateRecord> record{};
  /// The program can reduce plates of this kind, and `definition` says how.
  bool reducible = false;
};

/// What a file's header tells. Nothing here is believed that the file's bytes contradict.
struct Recording {
  std::string title{};
  std::vector<std::string> lines{};  // name, date, subject, device ..., for the trial's header lines
  std::vector<RecordedChannel> channels{};
  std::vector<RecordedEvent> events{};
  std::vector<RecordedPlate> plates{};
  std::int64_t promised = 0;           // samples per channel by the header; 0: it does not say
  std::vector<std::string> remarks{};  // what is to be told of the file: notices on the trial
};

/// Where samples go.
struct SampleTarget {
  SampleMatrix& matrix;
  /// Channels of the recording, from 0, ascending; the first goes to column 1.
  std::span<const int> channels;
  double rate;  // Hz, of the fastest of them: for column 0, the times
  /// Called every few milliseconds with the part that is done, 0 to 1; true: stop now.
  std::function<bool(double part)> turn;
};

/// An instrument's file, opened. It asks nobody: which channels, and at which rate, is up to the caller.
class RecordingFile {
 public:
  RecordingFile() = default;
  RecordingFile(const RecordingFile&) = delete;
  RecordingFile& operator=(const RecordingFile&) = delete;
  virtual ~RecordingFile() = default;

  [[nodiscard]] const Recording& Found() const { return found_; }

  /// Fills the columns of the target, each from sample 1 at the channel's own rate, and column 0 with the
  /// times. The matrix has the samples of the fastest channel. Returns how many of these were read: fewer
  /// when `turn` stopped it or the file became shorter. Throws FileError, for a value that does not fit 32
  /// bits too.
  virtual std::int64_t ReadSamples(const SampleTarget& target) = 0;

 protected:
  Recording found_;
};

/// Opens a file of one format. Throws FileError, with a text for people, when it is none or is damaged
/// beyond reading.
using OpenRecording = std::unique_ptr<RecordingFile> (*)(const std::string& path);

}  // namespace velmora
