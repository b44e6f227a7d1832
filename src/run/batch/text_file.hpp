#pragma once

#include <string>

namespace velmora {

/// The whole of a text file of up to 1 GiB. Throws FileError.
std::string ReadTextFile(const std::string& path);

}  // namespace velmora
