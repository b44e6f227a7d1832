#pragma once

#include <cstddef>
#include <cstdint>

// C3D (C3D User Guide, Motion Lab Systems): blocks of 512 bytes, counted from 1; a header of one block,
// parameters in groups, then frames of points and analog samples. Positions below are bytes from the header's
// first.
namespace velmora::c3d {

inline constexpr std::size_t kBlock = 512;
inline constexpr unsigned char kMagic = 0x50;           // at byte 1 of the header
inline constexpr std::size_t kMostLeadingZeros = 4096;  // some writers put them before the header

inline constexpr std::size_t kParameterBlock = 0;  // u8
inline constexpr std::size_t kPoints = 2;          // u16, as the rest
inline constexpr std::size_t kAnalogInFrame = 4;   // channels x samples in a frame
inline constexpr std::size_t kFirstFrame = 6;
inline constexpr std::size_t kLastFrame = 8;
inline constexpr std::size_t kScale = 12;  // f32; negative: all data are floats
inline constexpr std::size_t kDataBlock = 16;
inline constexpr std::size_t kSamplesInFrame = 18;
inline constexpr std::size_t kFrameRate = 20;  // f32, Hz
inline constexpr std::size_t kLabelKey = 298;
inline constexpr std::size_t kEvents = 300;
inline constexpr std::size_t kEventTimes = 304;      // 18 f32, s
inline constexpr std::size_t kEventLabels = 396;     // 18 labels
inline constexpr std::uint16_t kLongLabels = 12345;  // in kLabelKey: labels of 4 characters, else of 2
inline constexpr std::size_t kMostEvents = 18;

/// The fourth byte of the parameters: who wrote the numbers of the whole file. Some write 1, 2, 3.
inline constexpr unsigned char kIntel = 84;
inline constexpr unsigned char kDec = 85;
inline constexpr unsigned char kMips = 86;

inline constexpr std::uint16_t kMostFrames = 0xFFFF;  // in a word: there are that many or more

/// A point that was not seen, as one maker writes it.
inline constexpr double kMissingPoint = 9999999.0;

}  // namespace velmora::c3d
