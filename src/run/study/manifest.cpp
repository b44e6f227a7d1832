#include "run/study/manifest.hpp"

#include <array>

#include "core/files/files.hpp"
#include "core/version.hpp"
#include "run/batch/text_file.hpp"
#include "run/report/json_text.hpp"

namespace velmora {
namespace {

constexpr int kLayout = 1;
constexpr const char* kMark = "velmora2-manifest";

using State = RunResult::State;

struct StateName {
  State state;
  const char* name;
};
constexpr std::array kStates = {StateName{State::Done, "done"}, StateName{State::Failed, "failed"},
                                StateName{State::Interrupted, "interrupted"},
                                StateName{State::NotRun, "not run"}};

// A path is bytes: one that is no UTF-8 is written as {"bytes": "636166e9"}.
Json TextJson(const std::string& text) {
  try {
    static_cast<void>(Json(text).dump());
    return text;
  } catch (const Json::exception&) {
    std::string digits;
    for (const char c : text) {
      constexpr std::string_view kDigits = "0123456789abcdef";
      digits += kDigits[static_cast<unsigned char>(c) >> 4U];
      digits += kDigits[static_cast<unsigned char>(c) & 15U];
    }
    return {{"bytes", digits}};
  }
}

std::string TextOf(const Json& json) {
  if (json.is_string()) {
    return json.get<std::string>();
  }
  const auto digits = json.at("bytes").get<std::string>();
  std::string text;
  for (std::size_t k = 0; k + 1 < digits.size(); k += 2) {
    text += static_cast<char>(std::stoi(digits.substr(k, 2), nullptr, 16));
  }
  return text;
}

Json ListJson(const std::vector<std::string>& texts) {
  Json list = Json::array();
  for (const std::string& text : texts) {
    list.push_back(TextJson(text));
  }
  return list;
}

std::vector<std::string> ListOf(const Json& json) {
  std::vector<std::string> texts;
  for (const Json& text : json) {
    texts.push_back(TextOf(text));
  }
  return texts;
}

Json DigestJson(const FileDigest& digest) {
  return {{"path", TextJson(digest.path)}, {"size", digest.size}, {"sha256", digest.sha256}};
}

FileDigest DigestFromObject(const Json& json) {
  return {TextOf(json.at("path")), json.at("size").get<std::int64_t>(), json.at("sha256").get<std::string>()};
}

Json DigestList(const std::vector<FileDigest>& digests) {
  Json list = Json::array();
  for (const FileDigest& digest : digests) {
    list.push_back(DigestJson(digest));
  }
  return list;
}

std::vector<FileDigest> DigestsIn(const Json& json) {
  std::vector<FileDigest> digests;
  for (const Json& digest : json) {
    digests.push_back(DigestFromObject(digest));
  }
  return digests;
}

Json PlaceJson(const StepPlace& at) {
  return {{"step", at.step}, {"action", TextJson(at.action)}, {"line", at.line}};
}

StepPlace PlaceIn(const Json& json) {
  return {json.at("step").get<int>(), json.at("line").get<int>(), TextOf(json.at("action"))};
}

Json ProblemJson(const StepProblem& problem) {
  Json json = PlaceJson(problem.at);
  json["why"] = TextJson(problem.why);
  return json;
}

StepProblem ProblemIn(const Json& json) {
  return {PlaceIn(json), TextOf(json.at("why"))};
}

Json RowsJson(const TableRows& rows) {
  Json list = Json::array();
  for (const std::vector<std::string>& row : rows.rows) {
    list.push_back(ListJson(row));
  }
  return {{"file", TextJson(rows.file)}, {"columns", ListJson(rows.columns)}, {"rows", list}};
}

TableRows RowsIn(const Json& json) {
  TableRows rows{TextOf(json.at("file")), ListOf(json.at("columns")), {}};
  for (const Json& row : json.at("rows")) {
    rows.rows.push_back(ListOf(row));
  }
  return rows;
}

Json ResultJson(const RunResult& result) {
  const Outcome& outcome = result.outcome;
  Json json = {{"path", TextJson(result.input)}};
  if (outcome.read) {
    json["size"] = outcome.read->size;
    json["sha256"] = outcome.read->sha256;
  }
  for (const StateName& known : kStates) {
    if (known.state == result.state) {
      json["outcome"] = known.name;
    }
  }
  if (outcome.failure) {
    json["failure"] = ProblemJson(*outcome.failure);
  }
  if (outcome.interrupted) {
    json["interrupted"] = PlaceJson(*outcome.interrupted);
  }
  json["warnings"] = Json::array();
  for (const StepProblem& warning : outcome.warnings) {
    json["warnings"].push_back(ProblemJson(warning));
  }
  json["files"] = DigestList(outcome.files);
  json["collected"] = Json::array();
  for (const TableRows& rows : result.collected) {
    json["collected"].push_back(RowsJson(rows));
  }
  return json;
}

State StateIn(const Json& json) {
  const auto name = json.at("outcome").get<std::string>();
  for (const StateName& known : kStates) {
    if (name == known.name) {
      return known.state;
    }
  }
  throw ManifestError("\"" + name + "\" is no outcome of an input");
}

RunResult ResultIn(const Json& json) {
  RunResult result{.input = TextOf(json.at("path")), .state = StateIn(json)};
  Outcome& outcome = result.outcome;
  if (json.contains("sha256")) {
    outcome.read = DigestFromObject(json);
  }
  if (json.contains("failure")) {
    outcome.failure = ProblemIn(json.at("failure"));
  }
  if (json.contains("interrupted")) {
    outcome.interrupted = PlaceIn(json.at("interrupted"));
  }
  for (const Json& warning : json.at("warnings")) {
    outcome.warnings.push_back(ProblemIn(warning));
  }
  outcome.files = DigestsIn(json.at("files"));
  for (const Json& rows : json.at("collected")) {
    result.collected.push_back(RowsIn(rows));
  }
  return result;
}

Json HeadJson(const Manifest& manifest) {
  Json set = Json::object();
  for (const auto& [name, value] : manifest.set) {
    set[name] = TextJson(value);
  }
  return {{kMark, kLayout},
          {"program", "velmora2-run"},
          {"version", manifest.version},
          {"recipe",
           {{"path", TextJson(manifest.recipe)},
            {"sha256", Sha256(manifest.text)},
            {"text", TextJson(manifest.text)}}},
          {"set", set},
          {"out", TextJson(manifest.out)},
          {"strict", manifest.strict}};
}

Manifest FromJson(const Json& json) {
  if (!json.is_object() || !json.contains(kMark)) {
    throw ManifestError("it is no manifest");
  }
  if (json.at(kMark) != kLayout) {
    throw ManifestError("it is a manifest of another layout, " + json.at(kMark).dump() +
                        "; this program reads " + std::to_string(kLayout));
  }
  Manifest manifest{.version = TextOf(json.at("version")),
                    .recipe = TextOf(json.at("recipe").at("path")),
                    .text = TextOf(json.at("recipe").at("text")),
                    .out = TextOf(json.at("out")),
                    .strict = json.at("strict").get<bool>()};
  if (Sha256(manifest.text) != json.at("recipe").at("sha256").get<std::string>()) {
    throw ManifestError("it is damaged: the recipe in it has another SHA-256");
  }
  for (const auto& [name, value] : json.at("set").items()) {
    manifest.set[name] = TextOf(value);
  }
  for (const Json& result : json.at("inputs")) {
    manifest.results.push_back(ResultIn(result));
  }
  manifest.tables = DigestsIn(json.at("tables"));
  return manifest;
}

}  // namespace

Manifest ManifestOf(const Arguments& arguments, const std::string& text) {
  return {.version = std::string(VersionText),
          .recipe = arguments.recipe,
          .text = text,
          .set = arguments.set,
          .out = arguments.out,
          .strict = arguments.strict};
}

bool SameStudy(const Manifest& a, const Manifest& b) {
  return a.version == b.version && a.text == b.text && a.set == b.set && a.out == b.out &&
         a.strict == b.strict;
}

// Input by input, so that a text of all of them never stands in memory.
void WriteManifest(const std::string& path, const Manifest& manifest) {
  OutputFile file(path);
  std::string head = JsonText(HeadJson(manifest), 2);
  head.erase(head.rfind("\n}"));
  file.Write(head + ",\n  \"inputs\": [");
  const char* separator = "\n";
  for (const RunResult& result : manifest.results) {
    file.Write(separator + JsonText(ResultJson(result), -1));
    separator = ",\n";
  }
  file.Write("\n  ],\n  \"tables\": " + JsonText(DigestList(manifest.tables), -1) + "\n}\n");
  file.Commit();
}

Manifest ReadManifest(const std::string& path) {
  return ParseManifest(ReadTextFile(path));
}

Manifest ParseManifest(std::string_view text) {
  try {
    return FromJson(Json::parse(text));
  } catch (const Json::parse_error&) {
    throw ManifestError("it is cut off, or no manifest");
  } catch (const ManifestError&) {
    throw;
  } catch (const std::exception& error) {  // a key that is not there, a value of another kind
    throw ManifestError(std::string("it is damaged: ") + error.what());
  }
}

}  // namespace velmora
