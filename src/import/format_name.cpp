#include "import/format_name.hpp"

#include "import/reader_table.hpp"

namespace velmora {

std::string FormatNameOf(const Trial& trial) {
  if (!trial.FormatName.empty()) {
    return trial.FormatName;
  }
  for (const Format& format : Formats()) {
    if (format.code == trial.FileTypeCode) {
      return std::string(format.name);
    }
  }
  return trial.FileExt + " file";
}

}  // namespace velmora
