#include "import/reader_table.hpp"

#include <algorithm>
#include <array>

#include "import/native_binary.hpp"

namespace velmora {
namespace {

constexpr std::array kReaders = {
    Reader{"VMB", ReadNativeBinary},
};

}  // namespace

const Reader* FindReader(std::string_view extension) {
  const auto* it = std::find_if(kReaders.begin(), kReaders.end(),
                                [extension](const Reader& reader) { return reader.extension == extension; });
  return it == kReaders.end() ? nullptr : &*it;
}

}  // namespace velmora
