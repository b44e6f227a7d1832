#include "core/files/file_attributes.hpp"

#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

constexpr std::string_view kAccessList = "system.posix_acl_access";

// The names, each ended by a NUL; empty where the file system has no attributes.
std::vector<std::string> AttributeNames(const std::string& path) {
  std::vector<std::string> names;
  const ssize_t bytes = listxattr(path.c_str(), nullptr, 0);
  std::vector<char> list(static_cast<std::size_t>(std::max<ssize_t>(bytes, 0)));
  const ssize_t got = listxattr(path.c_str(), list.data(), list.size());
  for (ssize_t at = 0; at < got;) {
    names.emplace_back(list.data() + at);
    at += static_cast<ssize_t>(names.back().size()) + 1;
  }
  return names;
}

bool CopyAttribute(const std::string& path, const std::string& name, int to) {
  const ssize_t bytes = getxattr(path.c_str(), name.c_str(), nullptr, 0);
  std::vector<char> value(static_cast<std::size_t>(std::max<ssize_t>(bytes, 0)));
  const ssize_t got = getxattr(path.c_str(), name.c_str(), value.data(), value.size());
  if (got < 0) {
    return false;
  }
  const auto size = static_cast<std::size_t>(got);
  // Labels of a security module are given to every file, often by a rule and never by hand.
  std::vector<char> own(size);
  const bool same = fgetxattr(to, name.c_str(), own.data(), size) == got && own == value;
  return same || fsetxattr(to, name.c_str(), value.data(), size, 0) == 0;
}

std::string Listed(const std::vector<std::string_view>& things) {
  std::string text;
  for (std::size_t k = 0; k < things.size(); ++k) {
    if (k > 0) {
      text += k + 1 < things.size() ? ", " : " and ";
    }
    text += things[k];
  }
  return text;
}

}  // namespace

std::string CopyAttributes(const std::string& path, const struct stat& status, int to) {
  constexpr mode_t kPermissions = 07777;
  std::vector<std::string_view> notKept;
  struct stat own {};
  fstat(to, &own);
  if (own.st_uid != status.st_uid && fchown(to, status.st_uid, static_cast<gid_t>(-1)) != 0) {
    notKept.emplace_back("owner");
  }
  mode_t mode = status.st_mode & kPermissions;
  bool groupKept = true;
  if (own.st_gid != status.st_gid && fchown(to, static_cast<uid_t>(-1), status.st_gid) != 0) {
    notKept.emplace_back("group");
    groupKept = false;
    mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3U);
  }
  // Behind the owner, whose change takes permissions away; before the access list, which holds them too.
  if (fchmod(to, mode) != 0) {
    notKept.emplace_back("permissions");
  }
  bool others = true;
  for (const std::string& name : AttributeNames(path)) {
    if (name == kAccessList) {
      if (!groupKept || !CopyAttribute(path, name, to)) {
        notKept.emplace_back("access list");
      }
    } else {
      others = CopyAttribute(path, name, to) && others;
    }
  }
  if (!others) {
    notKept.emplace_back("extended attributes");
  }
  return Listed(notKept);
}

}  // namespace velmora
