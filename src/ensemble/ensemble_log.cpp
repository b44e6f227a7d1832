#include "ensemble/ensemble_log.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "core/files/files.hpp"
#include "core/files/output_elsewhere.hpp"

namespace velmora {

void EnsembleLog::Open(const std::string& path, std::string_view firstLines) {
  OutputFile file(path);
  file.Write(firstLines);
  file.Commit();
  path_ = path;
  waiting_.clear();
}

// Opened for each line: the file may be looked at, moved or deleted meanwhile, and the log goes on.
std::string EnsembleLog::Add(std::string_view lines) {
  waiting_ += lines;
  constexpr int kReadableByAll = 0644;
  const int descriptor = ::open(OutputElsewhere::ToWrite(path_).c_str(),
                                O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kReadableByAll);
  int error = descriptor < 0 ? errno : 0;
  while (error == 0 && !waiting_.empty()) {
    const ssize_t written = ::write(descriptor, waiting_.data(), waiting_.size());
    if (written < 0) {
      error = errno == EINTR ? 0 : errno;
    } else {
      waiting_.erase(0, static_cast<std::size_t>(written));
    }
  }
  if (descriptor >= 0) {
    ::close(descriptor);
  }
  return error == 0 ? std::string() : std::generic_category().message(error);
}

std::string EnsembleLog::Close(std::string_view lastLines) {
  if (!IsOpen()) {
    return {};
  }
  std::string why = Add(lastLines);
  path_.clear();
  return why;
}

}  // namespace velmora
