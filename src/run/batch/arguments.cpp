#include "run/batch/arguments.hpp"

#include <CLI/CLI.hpp>
#include <sstream>
#include <string_view>

#include "core/files/files.hpp"
#include "core/version.hpp"
#include "run/batch/text_file.hpp"

namespace velmora {
namespace {

bool IsName(std::string_view text) {
  const auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; };
  const auto inside = [&](char c) { return letter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; };
  return !text.empty() && letter(text.front()) && std::all_of(text.begin(), text.end(), inside);
}

Variables ReadSettings(const std::vector<std::string>& settings) {
  Variables variables;
  for (const std::string& setting : settings) {
    const std::size_t equals = setting.find('=');
    const std::string name = setting.substr(0, equals);
    if (equals == std::string::npos || !IsName(name)) {
      throw CLI::ValidationError("--set", "\"" + setting + "\" is not NAME=VALUE");
    }
    for (const std::string_view own : {"input", "stem", "dir", "out"}) {
      if (name == own) {
        throw CLI::ValidationError("--set", name + " is set by the program");
      }
    }
    variables[name] = setting.substr(equals + 1);
  }
  return variables;
}

void CheckTogether(const CLI::App& app, const Arguments& arguments) {
  const bool asks = arguments.commands || !arguments.info.empty();
  const bool joins = !arguments.joinTables.empty() || !arguments.joinManifests.empty();
  const bool verifies = !arguments.verify.empty();
  const std::size_t others = app.count_all() - 1 - (verifies ? app.count("--jobs") : 0);
  if ((asks || verifies) && others > 1) {
    throw CLI::ExcludesError("--info, --commands and --verify stand alone", CLI::ExitCodes::ExcludesError);
  }
  if (joins && others > arguments.joinTables.size() + arguments.joinManifests.size()) {
    throw CLI::ExcludesError("--join-tables and --join-manifests stand alone", CLI::ExitCodes::ExcludesError);
  }
  if (!asks && !joins && !verifies && arguments.recipe.empty()) {
    throw CLI::RequiredError("RECIPE");
  }
}

// A command line holds no hundred thousand paths, and a line no path that has a line break in it. Lists come
// from Windows, too, with a byte order mark and a carriage return at the end of each line.
std::vector<std::string> ReadInputList(const std::string& path) {
  std::string text;
  try {
    text = ReadTextFile(path);
  } catch (const FileError& error) {
    throw CLI::ValidationError("--inputs", path + ": " + error.what());
  }
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  text.erase(0, text.starts_with(kMark) ? kMark.size() : 0);
  const char separator = text.find('\0') == std::string::npos ? '\n' : '\0';
  std::istringstream lines(text);
  std::vector<std::string> inputs;
  for (std::string line; std::getline(lines, line, separator);) {
    if (separator == '\n' && line.ends_with('\r')) {
      line.pop_back();
    }
    if (!line.empty()) {
      inputs.push_back(line);
    }
  }
  return inputs;
}

void Declare(CLI::App& app, Arguments& arguments, std::vector<std::string>& settings,
             std::string& inputList) {
  app.add_option("RECIPE", arguments.recipe, "The steps to run (YAML)");
  app.add_option("INPUT", arguments.inputs, "Data files: the recipe runs once for each, as ${input}");
  app.add_option("--inputs", inputList, "A file of more of them, one a line, or with a NUL behind each")
      ->type_name("FILE");
  app.add_option("--out", arguments.out, "Directory for results, ${out} in the recipe; made if missing")
      ->type_name("DIR")
      ->capture_default_str();
  app.add_option("--jobs", arguments.jobs, "Inputs at a time, in processes of their own")
      ->type_name("N")
      ->check(CLI::Range(std::size_t{1}, std::size_t{4096}))
      ->capture_default_str();
  app.add_option("--set", settings, "Value of ${NAME} in the recipe; may be given several times")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  app.add_option("--transcript", arguments.transcript, "Every question and its answer, as JSON lines")
      ->type_name("FILE");
  app.add_flag("--strict", arguments.strict, "A warning fails its step");
  app.add_flag("--progress", arguments.progress, "How far the inputs are, as JSON lines on standard output");
  app.add_flag("--check", arguments.check, "Tell what is wrong with recipe and inputs, and run nothing");
  CLI::Option* manifest =
      app.add_option("--manifest", arguments.manifest, "What was read and written, with SHA-256, as JSON")
          ->type_name("FILE");
  app.add_flag("--resume", arguments.resume,
               "Leave out what the manifest tells of as done, if it is unchanged")
      ->needs(manifest);
  app.add_option("--tables", arguments.tables,
                 "Directory for collected tables, when this run is a part of a study")
      ->type_name("DIR");
  app.add_option("--verify", arguments.verify, "Run what a manifest tells of again, compare, and end")
      ->type_name("MANIFEST");
  constexpr int kMostParts = 1'000'000;
  app.add_option("--join-tables", arguments.joinTables, "Join collected tables into the first file, and end")
      ->type_name("OUT IN")
      ->expected(2, kMostParts);
  app.add_option("--join-manifests", arguments.joinManifests, "Join manifests into the first file, and end")
      ->type_name("OUT IN")
      ->expected(2, kMostParts);
  app.add_option("--info", arguments.info, "Print the info of a data file as JSON, and end")
      ->type_name("FILE");
  app.add_flag("--commands", arguments.commands, "List the commands a recipe can use, and end");
  app.set_version_flag("--version", "velmora2-run " + std::string(VersionText));
  app.footer("Exit status: 0 all ran, 1 a step failed, 2 bad usage or an unreadable recipe.");
}

}  // namespace

std::variant<Arguments, LastWords> ReadArguments(int argc, const char* const* argv) {
  CLI::App app("Runs a recipe of Velmora2 commands over data files, without a window.", "velmora2-run");
  Arguments arguments;
  std::vector<std::string> settings;
  std::string inputList;
  Declare(app, arguments, settings, inputList);
  try {
    app.parse(argc, argv);
    arguments.set = ReadSettings(settings);
    CheckTogether(app, arguments);
    if (!inputList.empty()) {
      const std::vector<std::string> listed = ReadInputList(inputList);
      arguments.inputs.insert(arguments.inputs.end(), listed.begin(), listed.end());
    }
  } catch (const CLI::ParseError& error) {
    std::ostringstream text;
    std::ostringstream complaint;
    app.exit(error, text, complaint);
    return LastWords{text.str(), complaint.str()};
  }
  return arguments;
}

}  // namespace velmora
