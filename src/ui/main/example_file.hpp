#pragma once

#include <functional>
#include <string>

#include "core/trial/trial.hpp"

namespace velmora::ui {

/// The trial that people can start with as a file of theirs; written when it is not there. Returns its
/// path; throws std::exception with the reason when it cannot be written.
std::string ExampleFile(const std::function<void(Trial&)>& make);

}  // namespace velmora::ui
