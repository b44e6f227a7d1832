#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "run/recipe/variables.hpp"

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
  bool progress = false;  // how far the inputs are, on standard output
  bool check = false;     // tell the faults and run nothing
  std::string manifest;   // empty: none
  std::string tables;  // a directory for tables that are a part of the study's; empty: they go where they say
  bool resume = false;  // what the manifest tells of as done is not done again

  std::string info;  // a data file: print its info and nothing else
  bool commands = false;
  std::string verify;                      // a manifest
  std::vector<std::string> joinTables;     // where to, then the parts
  std::vector<std::string> joinManifests;  // the same
};

/// What is left to say where the command line already says all.
struct LastWords {
  std::string text;   // help, version
  std::string error;  // of bad usage
};

std::variant<Arguments, LastWords> ReadArguments(int argc, const char* const* argv);

}  // namespace velmora
