#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {

/// A signal of an EDF or BDF file: its 256 bytes of the header.
struct EdfSignal {
  std::string label;
  std::string units;
  std::string transducer;
  std::string prefilter;
  double physicalMin = 0.0;
  double physicalMax = 0.0;
  double digitalMin = 0.0;
  double digitalMax = 0.0;
  std::int64_t samplesInRecord = 0;
  std::int64_t offset = 0;  // of its first byte in a record
  bool isAnnotations = false;
};

/// The header of an EDF, EDF+, BDF or BDF+ file (Kemp and others 1992, Kemp and Olivan 2003; BioSemi). Fields
/// are ASCII; what people wrote in them is read leniently: only counts, sizes and limits matter.
struct EdfHeader {
  explicit EdfHeader(const InputFile& file);  // throws FileError

  bool isBdf = false;  // samples of 24 bits, else of 16
  bool isInterrupted = false;
  std::string patient;
  std::string recording;
  std::string date;
  std::string time;
  std::int64_t dataAt = 0;
  std::int64_t promisedRecords = 0;  // -1: not known
  std::int64_t records = 0;          // whole ones that the file holds
  std::int64_t recordBytes = 0;
  double recordSeconds = 0.0;
  std::vector<EdfSignal> signals;
  std::vector<std::string> remarks;

  [[nodiscard]] std::int64_t SampleBytes() const { return isBdf ? 3 : 2; }

 private:
  void TakeSignals(const std::string& bytes);
  void TakeRecords(std::int64_t fileBytes);
};

}  // namespace velmora
