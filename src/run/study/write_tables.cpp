#include "run/study/write_tables.hpp"

#include <filesystem>
#include <map>

#include "core/files/files.hpp"

namespace velmora {
namespace {

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

std::vector<WrittenTable> WriteTables(const std::vector<RunResult>& results) {
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
    written.push_back({table.file, Write(table.file, table.table)});
  }
  return written;
}

}  // namespace velmora
