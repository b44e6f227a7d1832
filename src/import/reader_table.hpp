#pragma once

#include <span>
#include <string_view>

#include "core/questions/progress.hpp"
#include "core/workbench.hpp"
#include "formats/recording/recording.hpp"

namespace velmora {

/// The first bytes of a file, by which formats are told apart.
inline constexpr std::size_t kHeadBytes = 4096;

/// One row of the table of formats: which files, and who reads them.
struct Format {
  int code;                     // FileTypeCode after a load
  std::string_view extensions;  // upper case, separated by blanks; empty: found by contents alone
  std::string_view name;        // for people
  /// Takes its path from trial.FileName, fills the trial, drives the panel and leaves NData 0 on
  /// failure. nullptr, with `open` too: nobody can read the format but by guessing.
  void (*read)(Workbench&, ProgressPanel&) = nullptr;
  /// Tells whether the file is of this format where several share an extension; nullptr: it is.
  bool (*recognise)(std::string_view head) = nullptr;
  /// `read` only tells what is in the way, or offers to take the file for text.
  bool onlyTells = false;
  /// In place of `read`: opens a file of channels, which ReadRecording makes a trial of.
  OpenRecording open = nullptr;
  /// Tells a file of this format by its first bytes alone, where its extension is of no format; nullptr:
  /// nothing does.
  bool (*signature)(std::string_view head) = nullptr;
  /// Of a format that nobody reads because its layout is not public: what to do instead, a whole sentence.
  std::string_view wayRound = {};
  /// Why it is not read, where it is not that its layout is not published.
  std::string_view whyNot = {};
};

/// Whether this version makes a trial of files of this format.
inline bool Reads(const Format& format) {
  return (format.read != nullptr || format.open != nullptr) && !format.onlyTells;
}

/// All formats, in the order in which they are tried.
std::span<const Format> Formats();

/// The format that an extension (upper case) and the first kHeadBytes of the file select, the bytes alone
/// where no format has the extension; nullptr: none.
const Format* FindFormat(std::string_view extension, std::string_view head);

/// The first row with this code. The code must be in the table.
const Format& FormatOfCode(int code);

/// Runs the format's reader, or tells what to do instead.
void ReadFormat(Workbench& workbench, ProgressPanel& panel, const Format& format);

}  // namespace velmora
