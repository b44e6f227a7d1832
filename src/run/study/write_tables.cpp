#include "run/study/write_tables.hpp"

#include <filesystem>
#include <map>

#include "core/files/files.hpp"

namespace velmora {
namespace {

namespace fs = std::filesystem;

std::string PlaceOfPart(const std::string& file, const std::string& out, const std::string& directory) {
  std::error_code error;
  const fs::path below = fs::absolute(file, error)
                             .lexically_normal()
                             .lexically_relative(fs::absolute(out, error).lexically_normal());
  const bool inside = !below.empty() && *below.begin() != "..";
  const fs::path place = fs::path(directory) / (inside ? below : fs::path(file).filename());
  fs::create_directories(place.parent_path(), error);
  return place.string();
}

std::string Write(const std::string& path, const StudyTable& table) {
  try {
    OutputFile file(path);
    file.Write(table.Text(*SeparatorOf(path)));
    file.Commit();
  } catch (const FileError& error) {
    return error.what();
  }
  return {};
}

}  // namespace

std::vector<WrittenTable> WriteTables(const std::vector<RunResult>& results, const std::string& out,
                                      const std::string& partsIn) {
  struct Table {
    std::string file;
    StudyTable table;
  };
  std::map<std::string, Table> tables;  // by the path behind all ways to spell it
  for (const RunResult& result : results) {
    for (const TableRows& rows : result.collected) {
      std::error_code error;
      const std::string real = std::filesystem::weakly_canonical(rows.file, error).string();
      Table& table = tables.try_emplace(error ? rows.file : real, Table{rows.file, {}}).first->second;
      table.table.Add(rows);
    }
  }
  std::vector<WrittenTable> written;
  for (const auto& [real, table] : tables) {
    const std::string where = partsIn.empty() ? table.file : PlaceOfPart(table.file, out, partsIn);
    written.push_back({table.file, where, Write(where, table.table)});
  }
  return written;
}

}  // namespace velmora
