#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/command_memory.hpp"
#include "core/questions/result_table.hpp"
#include "core/workbench.hpp"

namespace velmora {

// The reference contractions of a session, by label, and the files they are kept in.

/// The maximum of a label, trimmed and without regard to case; nullptr when there is none.
const StoredMaximum* FindMaximum(const std::vector<StoredMaximum>& all, std::string_view label);

/// Puts one in place of the one of its label, or behind the others. With `keepLarger` a larger one that is
/// there stays. Returns whether it was put.
bool StoreMaximum(std::vector<StoredMaximum>& all, const StoredMaximum& one, bool keepLarger);

/// Tells which of the channels have one label, and so one maximum.
void TellSharedMaximums(Workbench& workbench, const std::vector<int>& channels);

/// "frmMaximums": a row a maximum.
ResultTable MaximumTable(const Workbench& workbench, const std::vector<StoredMaximum>& all);

/// The maximums of a file; nothing when it is no such file or is cut off. Throws FileError.
std::optional<std::vector<StoredMaximum>> ReadMaximums(const std::string& path);

/// The text of a file of maximums, its lines ended CR LF.
std::string MaximumFileText(const Workbench& workbench, const std::vector<StoredMaximum>& all);

/// Asks for a name and writes them. Of a file of maximums that is there the larger value of each label stays.
/// A file that is there and is none is not overwritten, which is told.
void SaveMaximums(Workbench& workbench, const std::vector<StoredMaximum>& all);

}  // namespace velmora
