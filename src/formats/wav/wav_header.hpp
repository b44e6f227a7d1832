#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/files/files.hpp"
#include "formats/bytes/byte_reader.hpp"

namespace velmora {

/// The chunks of a wave file (Microsoft RIFF/WAVE, RIFX, EBU Tech 3306 RF64) that say what its samples are.
struct WavHeader {
  enum class Coding { Integers, Floats, MuLaw, ALaw };

  explicit WavHeader(const InputFile& file);  // throws FileError, for a coding that is not read too

  ByteOrder order = ByteOrder::Little;
  Coding coding = Coding::Integers;
  std::int64_t channels = 0;
  double rate = 0.0;
  std::int64_t bits = 0;       // of a sample that mean something
  std::int64_t wordBytes = 0;  // of a sample
  std::int64_t dataAt = 0;
  std::int64_t promised = 0;          // frames; 0: unknown
  std::vector<std::string> comments;  // texts of the file, as they stand

  /// Whole frames that the file holds.
  [[nodiscard]] std::int64_t FramesIn(std::int64_t fileBytes) const;
  /// "32-bit floats"
  [[nodiscard]] std::string CodingName() const;

 private:
  void TakeChunks(const InputFile& file);
  void TakeFormat(const std::string& bytes);
  void TakeTexts(const std::string& bytes);

  std::int64_t longDataBytes_ = 0;  // of an RF64 file
};

}  // namespace velmora
