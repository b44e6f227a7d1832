#pragma once

#include <string_view>

#include "core/workbench.hpp"

namespace velmora {

/// The common end of a reader that cannot open or read its file: says so with the system's error text
/// and leaves NData 0.
void ReportReadError(Workbench& workbench, std::string_view errorText);

/// Whether the trial's file has no bytes: says so and leaves NData 0. Throws FileError.
bool RefuseEmptyFile(Workbench& workbench);

}  // namespace velmora
