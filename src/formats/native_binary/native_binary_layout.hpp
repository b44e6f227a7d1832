#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

namespace velmora::native {

/// A piece of every row at a time is read or written and turned over: 64 pieces stay in the second-level
/// cache.
inline constexpr std::int64_t kPieceSamples = 4096;
/// Keeps the pieces of neighbouring rows out of each other's cache sets.
inline constexpr std::int64_t kPieceStride = kPieceSamples + 16;
inline constexpr auto kFloat = static_cast<std::int64_t>(sizeof(float));

/// The native binary file (.VMB): five header blocks, then the samples, channel behind channel, time
/// first. Little-endian without padding, which is the memory of every machine this program runs on.
/// Text is Windows-1252, left-aligned and padded with blanks.
inline constexpr std::size_t kIdentificationBytes = 80;
inline constexpr std::size_t kTrialRecordBytes = 3502;
inline constexpr std::size_t kFilmInfoBytes = 228;
inline constexpr std::size_t kSetupInfoBytes = 328;
inline constexpr std::size_t kExptInfoBytes = 248;

inline constexpr std::int16_t kFileTypeCode = 253;

inline constexpr const char* kMagic = "Velmora2";
inline constexpr const char* kIdentification = "Velmora2 binary file. Version ";

/// Offsets in the trial record. Arrays hold 65 entries, index 0 for the time column.
inline constexpr std::size_t kTitle = 0;
inline constexpr std::size_t kTitleBytes = 100;
inline constexpr std::size_t kNChan = 100;
inline constexpr std::size_t kNData = 102;
inline constexpr std::size_t kRate = 106;
inline constexpr std::size_t kDuration = 114;
inline constexpr std::size_t kAutozero = 122;
inline constexpr std::size_t kNumber = 252;
inline constexpr std::size_t kChanRate = 382;
inline constexpr std::size_t kGain = 902;
inline constexpr std::size_t kOffset = 1422;
inline constexpr std::size_t kGraphSlot = 1942;
inline constexpr std::size_t kColour = 2072;
inline constexpr std::size_t kLabel = 2202;
inline constexpr std::size_t kUnits = 2852;
inline constexpr std::size_t kNameBytes = 10;

/// A text field of a record.
struct TextField {
  std::size_t offset;
  std::size_t bytes;
};

/// Offsets in FILMINFO. Mass and height are 32-bit floats.
inline constexpr TextField kProject{0, 61};
inline constexpr TextField kSurname{61, 26};
inline constexpr TextField kFirstName{87, 16};
inline constexpr TextField kSex{103, 1};
inline constexpr TextField kAge{104, 10};
inline constexpr std::size_t kMass = 114;
inline constexpr std::size_t kHeight = 118;
inline constexpr TextField kCode{174, 10};
inline constexpr TextField kDate{184, 40};

/// The view flags in FILMINFO, and their values.
inline constexpr std::size_t kViewFlags = 224;
inline constexpr std::int16_t kPairedGraphs = 2;
inline constexpr std::int16_t kPercentage = 3;
inline constexpr std::int16_t kPairedAndPercentage = 4;

/// The four experiment lines of EXPTINFO.
inline constexpr int kExperimentLines = 4;
inline constexpr std::size_t kExperimentLineBytes = 61;

template <typename T>
T Get(const std::string& record, std::size_t offset) {
  static_assert(std::is_arithmetic_v<T>);
  T value;
  std::memcpy(&value, record.data() + offset, sizeof(T));
  return value;
}

template <typename T>
void Put(std::string& record, std::size_t offset, T value) {
  static_assert(std::is_arithmetic_v<T>);
  std::memcpy(record.data() + offset, &value, sizeof(T));
}

}  // namespace velmora::native
