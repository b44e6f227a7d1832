#pragma once

#include <string>
#include <vector>

namespace velmora {

/// Both join what several runs over parts of a study wrote, in the order given, into the file that one run
/// over all of it writes. What cannot be read, or does not belong together, is told on standard error and
/// nothing is written. Return the exit status.

/// Tables that runs collected.
int JoinTables(const std::string& out, const std::vector<std::string>& parts);

/// Manifests of the same recipe and settings. The tables that they name are told as they are now, so they are
/// joined first.
int JoinManifests(const std::string& out, const std::vector<std::string>& parts);

}  // namespace velmora
