#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "run/variables.hpp"

namespace velmora {

/// What the command line asks for.
struct Arguments {
  std::string recipe;
  std::vector<std::string> inputs;
  std::string out = ".";
  std::size_t jobs = 1;
  Variables set;
  std::string transcript;  // empty: none
  bool strict = false;

  std::string info;  // a data file: print its info and nothing else
  bool commands = false;
};

/// The status to end the program with, where the command line already says all: help, version, an
/// error. The text has been printed.
using ExitStatus = int;

std::variant<Arguments, ExitStatus> ReadArguments(int argc, const char* const* argv);

}  // namespace velmora
