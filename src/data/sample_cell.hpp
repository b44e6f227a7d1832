#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

// A cell of the data table: a sample (from 1) of a channel, or of the abscissa (channel 0).
namespace velmora {

/// A sample as a grid shows it: through the pattern, or its first seven digits where the pattern would show
/// none of them (2.5e-07) or a row of them that is too long to read (1e+30).
std::string ShownSample(float value, std::string_view pattern);

/// A value of the abscissa: through the pattern of values, as a clock while the time base is HH:MM:SS.
std::string ShownAbscissa(const Workbench& workbench, float value);

/// "01: Vastus lat", or the abscissa's label, on one line.
std::string ColumnName(const Trial& trial, int channel);

/// Gives a cell the typed value, rounded to 32 bits, and reports it. Refuses, by a box, what is no number or
/// too large for 32 bits, a sample or channel that is not there, and the abscissa while it counts seconds.
/// Returns false when it refused.
bool ChangeValue(Workbench& workbench, std::int32_t sample, int channel, std::string_view typed);

/// The sample that somebody asks for: by its number, or, with "s" behind it, by its time on the abscissa.
/// Refuses, by a box, what is neither or lies outside the trial.
std::optional<std::int32_t> SampleNamed(Workbench& workbench, std::string_view typed);

/// Cells with all their digits, apart by tabs, each row ended by a line break.
std::string TextOfCells(const Trial& trial, SampleRange samples, int firstChannel, int lastChannel);

}  // namespace velmora
