#pragma once

#include "run/batch/arguments.hpp"

namespace velmora {

/// Runs the recipe over the inputs, with all that is to be kept of it: tables, transcript, manifest. Tells
/// how it went on standard error. Returns the exit status.
int RunStudy(const Arguments& arguments);

}  // namespace velmora
