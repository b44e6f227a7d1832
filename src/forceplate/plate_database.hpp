#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/command_memory.hpp"

namespace velmora {

struct Workbench;

/// A file of plate definitions: records of 620 bytes, the name in the first 80 (Windows-1252, blanks
/// behind). Whole records count; bytes that are left over at the end are kept and never read.
class PlateDatabase {
 public:
  static constexpr std::size_t kRecordBytes = 620;
  static constexpr std::size_t kNameBytes = 80;

  PlateDatabase() = default;
  explicit PlateDatabase(std::string bytes) : bytes_(std::move(bytes)) {}

  [[nodiscard]] std::size_t Records() const { return bytes_.size() / kRecordBytes; }
  /// As text, without the blanks behind it. Records count from 0.
  [[nodiscard]] std::string Name(std::size_t record) const;
  [[nodiscard]] std::vector<std::string> Names() const;
  /// Nothing when the bytes are none: a type that is not in the list, a number that is not finite.
  [[nodiscard]] std::optional<ForcePlate> Plate(std::size_t record) const;

  /// Puts a plate in the place of the first record of its name, else behind the last record. Its name is
  /// cut to 80 characters.
  void Put(const ForcePlate& plate);

  [[nodiscard]] std::string_view Bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

/// A name as a record keeps it: one line of at most 80 characters of Windows-1252, without blanks around.
std::string RecordName(std::string_view name);

/// Reads a whole database; `turn` comes every few records with how far it is (0 to 1). Throws FileError.
PlateDatabase ReadPlateDatabase(const std::string& path, const std::function<void(double)>& turn = {});

/// Writes it beside the target and renames. Throws FileError.
void WritePlateDatabase(Workbench& workbench, const std::string& path, const PlateDatabase& database);

}  // namespace velmora
