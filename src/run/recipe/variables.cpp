#include "run/recipe/variables.hpp"

#include <filesystem>
#include <stdexcept>
#include <vector>

#include "core/files/paths.hpp"
#include "run/recipe/closest_name.hpp"

namespace velmora {
namespace {

std::vector<std::string> NamesOf(const Variables& variables) {
  std::vector<std::string> names;
  for (const auto& [name, value] : variables) {
    names.push_back(name);
  }
  return names;
}

}  // namespace

void SetInputVariables(Variables& variables, const std::string& input) {
  const std::string directory = std::filesystem::path(input).parent_path().string();
  variables["input"] = input;
  variables["stem"] = BaseName(input);
  variables["dir"] = directory.empty() ? "." : directory;
}

std::string ReplaceVariables(std::string_view text, const Variables& variables) {
  std::string out;
  std::size_t at = 0;
  for (std::size_t start = text.find("${"); start != std::string_view::npos; start = text.find("${", at)) {
    const std::size_t end = text.find('}', start);
    if (end == std::string_view::npos) {
      throw std::invalid_argument("\"${\" without \"}\" in \"" + std::string(text) + "\"");
    }
    const std::string_view name = text.substr(start + 2, end - start - 2);
    if (name == "dollar") {
      out.append(text, at, start - at).append("$");
      at = end + 1;
      continue;
    }
    const auto found = variables.find(name);
    if (found == variables.end()) {
      const bool ofInput = name == "input" || name == "stem" || name == "dir";
      throw std::invalid_argument("unknown variable ${" + std::string(name) + "}" +
                                  (ofInput ? ": no INPUT was given" : DidYouMean(name, NamesOf(variables))));
    }
    out.append(text, at, start - at).append(found->second);
    at = end + 1;
  }
  return out.append(text, at);
}

void KeepFromVariables(std::string& text) {
  constexpr std::string_view kDollar = "${dollar}";
  for (std::size_t at = text.find("${"); at != std::string::npos; at = text.find("${", at)) {
    text.replace(at, 1, kDollar);
    at += kDollar.size();
  }
}

}  // namespace velmora
