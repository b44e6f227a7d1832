#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/files.hpp"

namespace velmora {

/// The transcripts of several runs in one file, one run after the other in the order of the inputs,
/// whatever the order in which they tell their lines.
class TranscriptFile {
 public:
  /// Throws FileError when the file cannot be written.
  TranscriptFile(const std::string& path, std::size_t runs) : file_(path), lines_(runs) {}

  void Add(std::size_t run, std::string_view line);
  void EndRun(std::size_t run);

  /// Writes what is left and puts the file in its place. Throws FileError, also for what could not be
  /// written before.
  void Commit();

 private:
  struct Run {
    std::string lines;
    bool ended = false;
  };

  void WriteFirst();

  OutputFile file_;
  std::vector<Run> lines_;
  std::size_t first_ = 0;  // the runs before it are written
  std::string fault_;
};

}  // namespace velmora
