#pragma once

#include <yaml-cpp/yaml.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "run/recipe/recipe_reader.hpp"
#include "run/recipe/variables.hpp"

namespace velmora {

/// Thrown past what cannot be read. Its fault has been noted.
struct Unreadable {};

/// Texts, numbers and keys of YAML nodes, with variables replaced. A fault is noted, and reading goes on
/// behind it, so that one reading tells them all.
class YamlReader {
 public:
  explicit YamlReader(const Variables& variables) : variables_(variables) {}

  void Note(int line, const std::string& why) { faults_.push_back({line, why}); }
  void Note(const YAML::Node& at, const std::string& why) { Note(LineOf(at), why); }
  [[noreturn]] void Fail(int line, const std::string& why) {
    Note(line, why);
    throw Unreadable();
  }
  [[noreturn]] void Fail(const YAML::Node& at, const std::string& why) { Fail(LineOf(at), why); }
  [[nodiscard]] const std::vector<RecipeFault>& Faults() const { return faults_; }
  static int LineOf(const YAML::Node& node) { return node.Mark().line + 1; }

  /// Refuses what is no map, and notes keys given twice and keys outside `allowed` (empty: any key). Returns
  /// whether all were known.
  bool CheckKeys(const YAML::Node& node, std::string_view what,
                 std::initializer_list<std::string_view> allowed);

  std::string Text(const YAML::Node& node, std::string_view what);
  std::string Path(const YAML::Node& node, std::string_view what);
  bool Flag(const YAML::Node& node, std::string_view what);
  double Number(const YAML::Node& node, std::string_view what);
  /// A whole number from 1.
  int Count(const YAML::Node& node, std::string_view what);
  ChannelName Channel(const YAML::Node& node);

 private:
  const Variables& variables_;
  std::vector<RecipeFault> faults_;
};

/// Reads each node of a list; a node that cannot be read is left out.
template <typename Read>
void ReadEach(const YAML::Node& list, const Read& read) {
  for (const auto& node : list) {
    try {
      read(node);
    } catch (const Unreadable&) {  // noted; the next may be read
    }
  }
}

}  // namespace velmora
