#pragma once

#include <cstddef>
#include <cstdint>

// The maker's list of items; an array of two holds both plates. Records are aligned to two bytes, but some
// writers leave the byte out that this takes at kReverse.
namespace velmora::bioware2 {

inline constexpr const char* kMagic = "BioWare 2";
inline constexpr std::size_t kTitle = 0;          // 80 characters
inline constexpr std::size_t kTime = 80;          // 14
inline constexpr std::size_t kDate = 94;          // 14
inline constexpr std::size_t kPatient = 108;      // 31
inline constexpr std::size_t kPatientId = 139;    // 31
inline constexpr std::size_t kDescription = 170;  // 2 x 51
inline constexpr std::size_t kRate = 272;         // f32, Hz
inline constexpr std::size_t kSeconds = 276;      // f32
inline constexpr std::size_t kChannels = 280;     // i16
inline constexpr std::size_t kPlates = 282;       // i16
inline constexpr std::size_t kWidth = 284;        // f32 x 2, as the next; cm
inline constexpr std::size_t kLength = 292;
inline constexpr std::size_t kA = 300;
inline constexpr std::size_t kB = 308;
inline constexpr std::size_t kAz0 = 316;
inline constexpr std::size_t kXSens = 324;
inline constexpr std::size_t kYSens = 332;
inline constexpr std::size_t kZSens = 340;
inline constexpr std::size_t kReverse = 348;  // u8, and perhaps a byte of padding
inline constexpr std::size_t kXYRange = 350;
inline constexpr std::size_t kZRange = 358;
inline constexpr std::size_t kAuxiliary = 366;       // 8 u8: enabled
inline constexpr std::size_t kMultiplier = 374;      // 8 f32
inline constexpr std::size_t kAuxiliaryNames = 406;  // 8 x (10 + 40 characters)
inline constexpr std::size_t kData = 806;            // i16, 8 a plate, then auxiliaries
inline constexpr std::size_t kAuxiliaries = 8;
inline constexpr int kChannelsAPlate = 8;
inline constexpr double kVolts = 10.0 / 2048.0;  // a count

}  // namespace velmora::bioware2
