#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

inline constexpr double Pi = 3.14159265358979323846;
inline constexpr float GravityAccel = 9.80665F;

/// Nearest whole number, an exact half to the even neighbour. Values outside 64 bits saturate; NaN
/// gives 0.
std::int64_t RoundHalfEven(double value);

/// The same, saturated to 32 bits: sample numbers.
std::int32_t RoundHalfEven32(double value);

/// What a person typed: leading blanks are skipped and the longest number at the front is taken;
/// what is no number is 0. Always a decimal point, whatever the locale.
double Val(std::string_view text);

/// Whether `text`, blanks around it aside, is one number from end to end, so that Val loses nothing of it.
bool IsNumber(std::string_view text);

/// `value` through a pattern such as "0.000", "00", "0 Hz", "   # " or "0.00E+00": '0' shows a digit
/// or a zero, '#' a digit or nothing, all other characters stand for themselves. Decimals are
/// rounded as the C library's printf does. NaN and infinities show as "nan", "inf" and "-inf".
std::string FormatNumber(double value, std::string_view pattern);

/// Seconds as a clock shows them, "HH:MM:SS" with 0 to 9 decimals: -75.25 with 1 decimal is "-00:01:15.2".
/// Hours take as many digits as they need. Rounding as FormatNumber's, and so is what is not finite.
std::string FormatClock(double seconds, int decimals);

/// A count as people read it: "30,000,000".
std::string FormatCount(std::int64_t count);

/// `text` right-aligned through a pattern of '@', one for each column.
std::string FormatText(std::string_view text, std::string_view pattern);

/// The shortest text that reads back as the same number.
std::string PlainNumber(double value);
std::string PlainNumber(float value);

/// Fields of ten columns: "0.0000" and "0.000", right-aligned. Longer numbers stay whole.
std::string FormatField10(double value);
std::string FormatField10Short(double value);

/// "1 sample", "500 samples".
std::string CountOf(std::int64_t count, std::string_view thing);

/// A channel as the screen and the messages show it: its index less 1 in the pattern "00".
std::string ChannelNumber(int channel);

}  // namespace velmora
