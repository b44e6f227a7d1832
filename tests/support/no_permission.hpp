#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

namespace velmora::test {

/// Does something in a process that may read `directory` and change nothing in it; the administrator becomes
/// somebody else for it. Returns what it returned there.
inline bool WithoutPermission(const std::string& directory, const std::function<bool()>& act) {
  using std::filesystem::perms;
  const perms before = std::filesystem::status(directory).permissions();
  std::filesystem::permissions(directory, perms(0555));
  const pid_t process = fork();
  if (process == 0) {
    const bool other = geteuid() != 0 || (setgid(9999) == 0 && setuid(9998) == 0);
    _exit(other && act() ? 0 : 1);
  }
  int status = -1;
  waitpid(process, &status, 0);
  std::filesystem::permissions(directory, before);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace velmora::test
