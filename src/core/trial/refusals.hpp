#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/trial/helpers.hpp"
#include "core/workbench.hpp"

// What analyses refuse alike. Each shows its box with the exclamation icon, which a recipe hears as a
// warning.
namespace velmora {

/// "You must choose at least 2 channels."
void RefuseTooFewChannels(Workbench& workbench, int least);

/// "Too few data points."
void RefuseTooFewData(Workbench& workbench, const char* text = "Too few data points.");

/// Whether so many samples can be integrated, which five can. Refuses otherwise: "Too few data points to
/// integrate."
bool EnoughToIntegrate(Workbench& workbench, std::int64_t samples);

/// Whether a trial of that size may be made: one beyond 1 GB only after a question, since a few zeros too
/// many in a rate would take all the memory there is, and the program with it.
bool MayBeLarge(Workbench& workbench, std::int64_t samples, int channels);

/// A number outside its limits: the name of its field, and what it may be.
std::string EntryMustBe(const std::string& field, double lowest, double highest);
void RefuseEntry(Workbench& workbench, const std::string& field, double lowest, double highest);

/// Where an analysis needs seconds: whether samples have a rate and the abscissa counts seconds. Refuses
/// otherwise.
bool HasTimeBase(Workbench& workbench);

/// The range that such an analysis is asked for, at least so many samples. None where there is no trial, no
/// time base or too little of it, which is refused.
std::optional<SampleRange> AskTimedRange(Workbench& workbench, std::int64_t fewest = 1);

}  // namespace velmora
