#pragma once

#include <sys/resource.h>

#include <csignal>

namespace velmora::test {

/// While it lives, no file of this process or of one it starts grows beyond so many bytes.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, SIG_DFL);
  }

 private:
  rlimit before_{};
};

}  // namespace velmora::test
