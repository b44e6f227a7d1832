#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "formats/bytes/byte_reader.hpp"
#include "formats/c3d/c3d_parameters.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// The head of a C3D file: its first block and its parameters, with what follows from both of them.
struct C3dHead {
  explicit C3dHead(const InputFile& file);  // throws FileError: not such a file, or damaged beyond reading

  std::int64_t start = 0;  // of the header: behind leading zeros
  std::string bytes;       // from the header to the data
  ByteOrder order = ByteOrder::Little;
  C3dParameters parameters;

  std::int64_t points = 0;
  std::int64_t channels = 0;         // analog
  std::int64_t samplesPerFrame = 1;  // analog, of one channel
  bool floats = false;               // all data are 32-bit floats, else 16-bit integers
  double pointScale = 1.0;
  double frameRate = 0.0;   // Hz; 0: unknown
  double analogRate = 0.0;  // Hz
  std::int64_t firstFrame = 1;
  std::int64_t frames = 0;  // promised
  std::int64_t dataAt = 0;  // byte of the file
  std::vector<std::string> remarks;
  std::vector<std::string> lines;  // about the recording

  /// Seconds from frame 1 to the first frame of the file.
  [[nodiscard]] double StartTime() const {
    return firstFrame > 1 && frameRate > 0 ? static_cast<double>(firstFrame - 1) / frameRate : 0.0;
  }

 private:
  void TakeRates(const ByteReader& header);
  void TakeFrames(const ByteReader& header);
  void TakeChannels(const ByteReader& header, std::int64_t fileBytes);
};

/// Events of the group EVENT, else of the header; times count from the first sample of the trial.
std::vector<RecordedEvent> C3dEvents(const C3dHead& head);

}  // namespace velmora
