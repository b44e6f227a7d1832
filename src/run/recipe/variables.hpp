#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace velmora {

/// Names and values that a recipe writes as ${NAME}.
using Variables = std::map<std::string, std::string, std::less<>>;

/// Sets `input` to the path as given, `stem` to its name without directory and extension, and `dir`
/// to its directory ("." when it has none).
void SetInputVariables(Variables& variables, const std::string& input);

/// `text` with each ${NAME} replaced by its value; values are not looked into again. ${dollar} is a "$" that
/// begins no name.
/// Throws std::invalid_argument for a name that is not in `variables` and for a "${" without "}".
std::string ReplaceVariables(std::string_view text, const Variables& variables);

/// Rewrites `text` so that ReplaceVariables gives it back as it stands.
void KeepFromVariables(std::string& text);

}  // namespace velmora
