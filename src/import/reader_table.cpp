#include "import/reader_table.hpp"

#include <algorithm>
#include <array>

#include "import/native_ascii.hpp"
#include "import/native_binary.hpp"

namespace velmora {
namespace {

// The view that belongs to a trial: the native formats take it from the experiment record.
template <void (*read)(Workbench&, ProgressPanel&)>
void ReadWithView(Workbench& workbench, ProgressPanel& panel) {
  read(workbench, panel);
  if (workbench.trial.NData > 0) {
    ApplyViewFlags(workbench);
  }
}

constexpr std::array kReaders = {
    Reader{"VMA", ReadWithView<ReadNativeAscii>},
    Reader{"VMB", ReadWithView<ReadNativeBinary>},
    Reader{"VME", ReadWithView<ReadNativeAscii>},
};

}  // namespace

const Reader* FindReader(std::string_view extension) {
  const auto* it = std::find_if(kReaders.begin(), kReaders.end(),
                                [extension](const Reader& reader) { return reader.extension == extension; });
  return it == kReaders.end() ? nullptr : &*it;
}

}  // namespace velmora
