#include "import/reader_table.hpp"

#include <algorithm>
#include <array>

#include "import/native_binary.hpp"

namespace velmora {
namespace {

void ReadNativeBinaryAndView(Workbench& workbench, ProgressPanel& panel) {
  ReadNativeBinary(workbench, panel);
  if (workbench.trial.NData > 0) {
    ApplyViewFlags(workbench);
  }
}

constexpr std::array kReaders = {
    Reader{"VMB", ReadNativeBinaryAndView},
};

}  // namespace

const Reader* FindReader(std::string_view extension) {
  const auto* it = std::find_if(kReaders.begin(), kReaders.end(),
                                [extension](const Reader& reader) { return reader.extension == extension; });
  return it == kReaders.end() ? nullptr : &*it;
}

}  // namespace velmora
