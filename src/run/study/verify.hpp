#pragma once

#include <cstddef>
#include <string>

namespace velmora {

/// Runs the recipe of a manifest again, on the same inputs and into a directory of its own that is taken away
/// afterwards, `jobs` inputs at a time, and prints every input that is no longer what it was and every file
/// that is missing, is not what was written, or is not made the same again. Returns the exit status: 0 when
/// there is none.
int VerifyManifest(const std::string& path, std::size_t jobs);

}  // namespace velmora
