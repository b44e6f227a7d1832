#pragma once

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/temporary_directory.hpp"
#include "support/trials.hpp"

namespace velmora::test {

/// The Python that has scipy: one's own, or the system's. Empty when none has.
inline std::string PythonWithScipy() {
  for (const char* python : {"python3", "/usr/bin/python3"}) {
    if (std::system((std::string(python) + " -c 'import scipy.signal' > /dev/null 2>&1").c_str()) == 0) {
      return python;
    }
  }
  return {};
}

/// What a script prints, line by line as numbers. It gets the path of a file of the 32-bit samples.
inline std::vector<std::vector<double>> LinesOfScript(const std::string& python, const std::string& script,
                                                      const Samples& samples) {
  const TemporaryDirectory directory;
  WriteFile(directory.Path("script.py"), script);
  WriteFile(directory.Path("x"),
            {reinterpret_cast<const char*>(samples.data()), samples.size() * sizeof(float)});
  const std::string call = python + " " + directory.Path("script.py") + " " + directory.Path("x") + " > " +
                           directory.Path("lines");
  if (std::system(call.c_str()) != 0) {
    return {};
  }
  std::vector<std::vector<double>> lines;
  std::ifstream text(directory.Path("lines"));
  for (std::string line; std::getline(text, line);) {
    std::istringstream numbers(line);
    lines.emplace_back(std::istream_iterator<double>(numbers), std::istream_iterator<double>());
  }
  return lines;
}

}  // namespace velmora::test
