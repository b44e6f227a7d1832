#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// Writes a file of this name into a new directory that only this user can enter, among the temporary files
/// of the system, for another program to open. Returns its path. Throws FileError.
std::string WriteTemporaryFile(std::string_view name, std::string_view bytes);

}  // namespace velmora
