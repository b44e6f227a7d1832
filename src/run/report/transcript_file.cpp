#include "run/report/transcript_file.hpp"

#include <utility>

namespace velmora {

void TranscriptFile::Add(std::size_t run, std::string_view line) {
  lines_[run].lines.append(line).append(1, '\n');
}

void TranscriptFile::EndRun(std::size_t run) {
  lines_[run].ended = true;
  while (first_ < lines_.size() && lines_[first_].ended) {
    WriteFirst();
  }
}

// A full disk must not stop the runs: the fault is told at the end.
void TranscriptFile::WriteFirst() {
  const std::string text = std::exchange(lines_[first_++].lines, {});
  try {
    file_.Write(text);
  } catch (const FileError& error) {
    fault_ = error.what();
  }
}

void TranscriptFile::Commit() {
  while (first_ < lines_.size()) {
    WriteFirst();
  }
  if (!fault_.empty()) {
    throw FileError(fault_);
  }
  file_.Commit();
}

}  // namespace velmora
