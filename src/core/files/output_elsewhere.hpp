#pragma once

#include <set>
#include <string>

namespace velmora {

/// While it lives, what this process and those it forks write goes below a directory of its own, and is read
/// from there again; whoever writes and reads knows nothing of it and goes on using the files' own names.
/// Commands that are done again so leave what is there alone, and tell the same names as before.
class OutputElsewhere {
 public:
  /// `directory` is there. Of the files in `toCome` only what is written from now on counts: as
  /// they are they are not seen.
  OutputElsewhere(std::string directory, const std::set<std::string>& toCome);
  OutputElsewhere(const OutputElsewhere&) = delete;
  OutputElsewhere& operator=(const OutputElsewhere&) = delete;
  ~OutputElsewhere();

  /// Where the file is to be written: `path` itself when no such object lives.
  static std::string ToWrite(const std::string& path);
  /// Where the file is to be looked for.
  static std::string ToRead(const std::string& path);

 private:
  [[nodiscard]] std::string Below(const std::string& identity) const { return directory_ + identity; }

  std::string directory_;
  std::set<std::string> toCome_;
  OutputElsewhere* before_;
};

}  // namespace velmora
