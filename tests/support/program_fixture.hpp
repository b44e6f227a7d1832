#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/command_test.hpp"
#include "support/texts.hpp"

namespace velmora::test {

struct Ended {
  int status = -1;  // of exit, or minus the signal
  std::string out;
  std::string err;
};

inline void SendTo(int descriptor, const std::string& path) {
  dup2(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
}

class Program : public testing::Test {
 protected:
  pid_t Start(const std::vector<std::string>& arguments, const std::function<void()>& rearrange = {}) {
    const pid_t process = fork();
    if (process != 0) {
      return process;
    }
    std::signal(SIGXFSZ, SIG_DFL);  // what the test ignores the program need not
    SendTo(STDOUT_FILENO, Path("stdout"));
    SendTo(STDERR_FILENO, Path("stderr"));
    if (rearrange) {
      rearrange();
    }
    std::vector<char*> argv = {const_cast<char*>("velmora2-run")};
    for (const std::string& argument : arguments) {
      argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    execv(VELMORA2_RUN, argv.data());
    _exit(99);
  }

  Ended Wait(pid_t process) {
    int status = 0;
    waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), ReadFile(Path("stdout")),
            ReadFile(Path("stderr"))};
  }

  Ended Run(const std::vector<std::string>& arguments) { return Wait(Start(arguments)); }
  /// With other descriptors, which `rearrange` puts in place.
  Ended RunWith(const std::function<void()>& rearrange, const std::vector<std::string>& arguments) {
    return Wait(Start(arguments, rearrange));
  }

  [[nodiscard]] std::string Path(std::string_view name) const { return directory_.Path(name); }

  /// Waits for files in a directory, which is made if missing before `start` runs.
  template <typename Start>
  pid_t StartAndAwait(const std::string& directory, const std::vector<std::string>& names,
                      const Start& start) {
    std::filesystem::create_directories(Path(directory));
    const int watch = inotify_init1(IN_CLOEXEC);
    inotify_add_watch(watch, Path(directory).c_str(), IN_CREATE | IN_MOVED_TO);
    const pid_t process = start();
    const auto there = [&](const std::string& name) {
      return std::filesystem::exists(Path(directory) + "/" + name);
    };
    char events[4096];
    while (!std::all_of(names.begin(), names.end(), there) && read(watch, events, sizeof events) > 0) {
    }
    close(watch);
    return process;
  }

  std::string Recipe(const std::string& steps) {
    WriteFile(Path("r.yaml"), "velmora2: 1\nsteps:\n" + steps);
    return Path("r.yaml");
  }

  /// A file of these channels, saved by the command; returns its path.
  std::string Trial(const std::string& name, const std::vector<std::vector<float>>& channels) {
    WriteTrialFile(Path(name), [&](auto& trial) { SetChannels(trial, channels); });
    return Path(name);
  }

  [[nodiscard]] std::vector<std::string> FilesIn(const std::string& directory) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(directory))) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  TemporaryDirectory directory_;
};

}  // namespace velmora::test
