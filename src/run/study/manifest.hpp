#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/file_digest.hpp"
#include "run/batch/arguments.hpp"
#include "run/batch/run_result.hpp"

namespace velmora {

/// What a run of a recipe read and wrote, and what came of each input.
struct Manifest {
  std::string version;  // of the program
  std::string recipe;   // its path
  std::string text;     // and what stood there
  Variables set;
  std::string out;
  bool strict = false;
  std::vector<RunResult> results;  // in the order of the inputs
  std::vector<FileDigest> tables;  // of the study
};

/// A text that is no manifest, or not one that this program reads.
class ManifestError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Of a run with these arguments, without what came of it.
Manifest ManifestOf(const Arguments& arguments, const std::string& text);

/// Whether both are of the same recipe, run the same way by the same program.
bool SameStudy(const Manifest& a, const Manifest& b);

/// Writes it beside the old file and puts it in its place. Throws FileError.
void WriteManifest(const std::string& path, const Manifest& manifest);

/// Throws ManifestError, FileError.
Manifest ReadManifest(const std::string& path);

/// The same from its text. Throws ManifestError.
Manifest ParseManifest(std::string_view text);

}  // namespace velmora
