#pragma once

#include "core/files/files.hpp"

namespace velmora {

/// Throws FileError when a variable of a MATLAB file of version 4 would reach past the file's end: the
/// library that reads them makes room for a name of any length that its header tells. Files of later versions
/// pass. Layout: MathWorks, MAT-File Format, "Level 4 MAT-File Format".
void CheckMatLevel4(const InputFile& file);

}  // namespace velmora
