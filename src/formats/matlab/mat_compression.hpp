#pragma once

#include "core/files/files.hpp"

namespace velmora {

/// Throws FileError when a compressed variable of a MATLAB file (version 5 to 7) does not unpack to its end:
/// the library that reads them does not notice, and gives what memory held.
void CheckMatCompression(const InputFile& file);

}  // namespace velmora
