#pragma once

#include <cstddef>
#include <string_view>

namespace velmora::units_file {

/// The units file (.VMU): what the channels of a trial are called, and the factors, cut-offs and
/// thresholds last used on them. Tab-separated text in Windows-1252: a line that names it, the number
/// of channels, the heads of the columns, the abscissa, then a line per channel.
inline constexpr std::string_view kFirstLine = "Velmora2 Labels, units and factors: ";
inline constexpr std::string_view kMagic = "Velmora2 Labels";
inline constexpr std::string_view kOlderMagic = "Velmora2 Units";

inline constexpr std::string_view kCountLine = "Number of channels: ";
inline constexpr std::size_t kCountColumn = 21;  // from 1

inline constexpr std::string_view kHeads =
    "Channels: \tLabels    \tUnits     \tScaling\tLo.cuts\tHi.cuts\tThresholds";
inline constexpr std::string_view kAbscissa = "Abscissa";

inline constexpr std::size_t kLabelWidth = 30;
inline constexpr std::size_t kUnitsWidth = 10;

inline constexpr std::string_view kFilter = "Velmora Units (.vmu)|*.vmu|All files (*.*)|*.*";

}  // namespace velmora::units_file
