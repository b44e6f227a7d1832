#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {

/// Types of numbers, by their codes in the file.
enum class TdmsType : std::uint32_t {
  Void = 0,
  Int8 = 1,
  Int16,
  Int32,
  Int64,
  UInt8,
  UInt16,
  UInt32,
  UInt64,
  Float32,
  Float64,
  Float32WithUnit = 0x19,
  Float64WithUnit = 0x1A,
  Text = 0x20,
  Boolean = 0x21,
  Time = 0x44,
  DaqMx = 0xFFFFFFFF,  // raw data of a card, told apart by its own index
};

/// Bytes of one value; 0 for what is no number.
std::int64_t BytesOfTdms(TdmsType type);

/// A run of a channel's values in the file, `stride` bytes apart.
struct TdmsRun {
  std::int64_t offset = 0;
  std::int64_t count = 0;
  std::int64_t stride = 0;
  bool big = false;
};

struct TdmsChannel {
  std::string group;
  std::string name;
  TdmsType type = TdmsType::Void;
  std::map<std::string, std::string> texts;  // properties
  std::map<std::string, double> numbers;
  std::vector<TdmsRun> runs;
  std::int64_t samples = 0;
};

/// All objects of a file, channels in the order in which they first appear.
struct TdmsFile {
  std::vector<TdmsChannel> channels;
  std::map<std::string, std::string> texts;  // properties of the file
  bool cut = false;                          // the last segment ends early
};

/// Throws FileError: not such a file, or damaged beyond reading.
TdmsFile ReadTdmsMetadata(const InputFile& file);

}  // namespace velmora
