#pragma once

#include <sys/stat.h>

#include <string>

namespace velmora {

/// Gives the open file the owner, group, permissions, access list and extended attributes of the one at
/// `path`, whose status is given. Returns what this user may not give it, in words ("owner and group");
/// empty: it has all. A group that could not be kept leaves its members no more than everybody has.
std::string CopyAttributes(const std::string& path, const struct stat& status, int to);

}  // namespace velmora
