#pragma once

#include <string>

#include "core/trial/trial.hpp"

namespace velmora {

/// The title of a question as a pattern that fits the same question about another trial: "*" stands for the
/// file's name and for numbers, such as a count of samples.
std::string TitleForAnyTrial(std::string title, const Trial& trial);

}  // namespace velmora
