#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

extern char** environ;

namespace velmora::bench {

/// Starts a program with its output thrown away and waits for its end.
inline void RunToEnd(const std::vector<std::string>& command) {
  std::vector<char*> argv;
  for (const std::string& word : command) {
    argv.push_back(const_cast<char*>(word.c_str()));
  }
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  int status = 1;
  if (posix_spawn(&process, argv[0], &actions, nullptr, argv.data(), environ) != 0 ||
      waitpid(process, &status, 0) < 0 || status != 0) {
    std::abort();
  }
  posix_spawn_file_actions_destroy(&actions);
}

}  // namespace velmora::bench
