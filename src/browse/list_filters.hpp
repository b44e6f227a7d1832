#pragma once

#include <span>

#include "core/files/file_filters.hpp"

namespace velmora {

/// What the list of data files offers: DataFileFilters() and, behind them, all files that this version reads.
std::span<const FileFilter> DataListFilters();

}  // namespace velmora
